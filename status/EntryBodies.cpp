#include "status/EntryBodies.h"

#include "status/EntryJson.h"
#include "store/EventFolder.h"

#include <algorithm>
#include <utility>

namespace nordkeep {
namespace {

constexpr std::size_t kEntriesOfPiece = 20;
constexpr int kQuietMs = 15'000;

}  // namespace

HttpBody::State EntryLines::Next(std::string& piece) {
    const std::size_t most = std::min(left_, kEntriesOfPiece);
    std::size_t count = 0;
    const bool isRead = most > 0 && journal_.ReadSome(after_, most, [&](const JournalRow& row) {
        piece.append(form_(row)).append("\n");
        after_ = row.id;
        ++count;
    });
    left_ -= count;
    return isRead && count == most ? State::More : State::End;
}

EntryStream::EntryStream(Journal& journal, const Clock& clock, std::int64_t after)
    : journal_(journal), clock_(clock), after_(after), toldAtMs_(clock.MonotonicMs()) {}

HttpBody::State EntryStream::Next(std::string& piece) {
    // Said at once, so that the reader knows that it is connected and may wait.
    if (std::exchange(isFirst_, false)) piece = "retry: 3000\n\n";
    std::size_t count = 0;
    const bool isRead = journal_.ReadSome(after_, kEntriesOfPiece, [&](const JournalRow& row) {
        piece.append("id: ").append(std::to_string(row.id));
        piece.append("\ndata: ").append(EntryJson(row)).append("\n\n");
        after_ = row.id;
        ++count;
    });
    if (!isRead) return State::End;  // the reader comes again and goes on where it was
    const std::int64_t now = clock_.MonotonicMs();
    if (piece.empty() && now - toldAtMs_ >= kQuietMs) piece = ": nothing new\n\n";
    if (!piece.empty()) toldAtMs_ = now;
    return count == kEntriesOfPiece ? State::More : State::Wait;
}

HttpBody::State AlarmLines::Next(std::string& piece) {
    const auto& open = events_.Unacknowledged();
    auto next = open.upper_bound(at_);
    for (std::size_t i = 0; i < kEntriesOfPiece && next != open.end(); ++i, ++next) {
        at_ = *next;
        const cAlarm& alarm = *events_.Find(at_);
        const Text pointer = EventPointerOf(alarm.m_FilePointer);
        const auto newest = journal_.LastOf(pointer, std::nullopt);
        const auto first = journal_.LastOf(pointer, JournalKind::Event);
        piece.append(AlarmJson(alarm, newest ? newest->id : 0, first ? first->time : "")).append("\n");
    }
    return next == open.end() ? State::End : State::More;
}

}  // namespace nordkeep
