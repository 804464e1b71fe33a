#pragma once

#include "reports/HistoryQuery.h"
#include "store/Journal.h"

#include <vector>

namespace nordkeep {

/// A part of what was looked for, newest first.
struct HistoryPage {
    std::vector<HistoryEntry> entries{};
    HistoryPlace reached{};  // the entry that was looked at last
    bool isEnd = false;      // there is no more
    bool isReadable = true;  // else the journal could not be read
};

/// Looks through the journal for one query, a slice at a time, and holds one page.
class HistoryWalk {
 public:
    static constexpr std::size_t kPage = 100;

    HistoryWalk(HistoryQuery query, const Clock& clock);

    /// Looks at one more slice, some milliseconds' work. True when the page is full or all has been seen.
    bool Step(Journal& journal);
    const HistoryPage& Page() const { return page_; }

 private:
    bool IsOneSubject() const { return !query_.event.empty() || !query_.exactObject.empty(); }
    bool ReadSlice(Journal& journal);
    void Take(const JournalRow& row);

    HistoryQuery query_;
    const Clock& clock_;
    std::string from_{};
    std::string to_{};
    HistoryPage page_{};
    std::size_t seen_ = 0;  // of the slice
    bool isPast_ = false;   // what comes is older than what is looked for
};

}  // namespace nordkeep
