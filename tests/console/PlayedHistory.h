#pragma once

#include "reports/HistoryWork.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/MemoryJournal.h"
#include "tests/doubles/TempFolder.h"

namespace nordkeep {

/// A journal in memory as the history of a place.
struct PlayedHistory final : HistorySource {
    explicit PlayedHistory(ManualTime& time_) : time(time_) { journal.Open(); }

    State Readiness() const override { return state; }
    void Ask(HistoryTaker& taker, std::int32_t number, const HistoryQuery& query) override {
        work.Ask(taker, number, query);
    }
    void Ask(HistoryTaker& taker, std::int32_t number, const ReportSpan& span) override {
        work.Ask(taker, number, span);
    }
    void Forget(HistoryTaker& taker) override { work.Forget(taker); }
    bool SignOver(const Text& note, const Text& list) override {
        signedOver.push_back(note + "\n" + list);
        return state == State::Ready;
    }
    /// An alarm of an object, and perhaps who ended it a minute later.
    void Note(const Text& event, const Text& object, const Text& endedBy = {}) {
        const Text data = "{\"objectName\":\"Shop " + object + "\",\"set\":\"A\",\"typeName\":\"Fire\"}";
        journal.Note({.kind = JournalKind::Event,
                      .event = event,
                      .status = 0,
                      .priority = "1",
                      .object = object,
                      .type = "E1",
                      .text = "hall",
                      .data = data});
        journal.Commit();
        time.Advance(60'000);
        if (endedBy.empty()) return;
        journal.Note({.kind = JournalKind::End,
                      .event = event,
                      .status = 5,
                      .priority = "1",
                      .object = object,
                      .user = endedBy,
                      .station = "local"});
        journal.Commit();
    }

    ManualTime& time;
    TempFolder folder{};
    MemoryJournal file{};
    Journal journal{file, folder.Tree(), time};
    HistoryWork work{journal, time, time};
    State state = State::Ready;
    std::vector<Text> signedOver{};
};

}  // namespace nordkeep
