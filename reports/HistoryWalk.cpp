#include "reports/HistoryWalk.h"

namespace nordkeep {
namespace {

/// A slice is read whole, so that it must be short also where each entry is large.
constexpr std::size_t kSlice = 100;

std::string StampOf(OleDate local, const Clock& clock) {
    return local.IsNever() ? std::string() : UtcStamp(clock.UtcOf(local));
}

}  // namespace

HistoryWalk::HistoryWalk(HistoryQuery query, const Clock& clock)
    : query_(std::move(query)),
      clock_(clock),
      from_(StampOf(query_.from, clock)),
      to_(StampOf(query_.to, clock)) {
    page_.reached = query_.after;
}

bool HistoryWalk::ReadSlice(Journal& journal) {
    const auto take = [this](const JournalRow& row) { Take(row); };
    if (IsOneSubject()) {
        return journal.ReadSubject({.event = ToUtf8(query_.event),
                                    .object = query_.event.empty() ? ToUtf8(query_.exactObject) : "",
                                    .below = page_.reached.id,
                                    .most = kSlice},
                                   take);
    }
    return journal.ReadStretch({.from = from_,
                                .to = to_,
                                .besideTime = page_.reached.time,
                                .besideId = page_.reached.id,
                                .isNewestFirst = true,
                                .most = kSlice},
                               take);
}

bool HistoryWalk::Step(Journal& journal) {
    seen_ = 0;
    page_.isReadable = ReadSlice(journal);
    page_.isEnd = !page_.isReadable || isPast_ || seen_ < kSlice;
    // What did not fit in any more is looked at again with the next page.
    const bool isFull = page_.entries.size() >= kPage;
    if (isFull) page_.isEnd = false;
    return isFull || page_.isEnd;
}

void HistoryWalk::Take(const JournalRow& row) {
    ++seen_;
    if (page_.entries.size() >= kPage || isPast_) return;
    page_.reached = {row.time, row.id};
    if (IsOneSubject()) {
        isPast_ = !from_.empty() && row.time < from_;
        if (isPast_ || (!to_.empty() && row.time >= to_)) return;
    }
    if (!Fits(query_, row)) return;
    HistoryEntry entry = HistoryEntryOf(row, clock_);
    if (Fits(query_, entry)) page_.entries.push_back(std::move(entry));
}

}  // namespace nordkeep
