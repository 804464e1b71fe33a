#pragma once

#include "platform/sqlite/SqliteJournal.h"
#include "reports/HistoryWork.h"
#include "store/RecordJson.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {

/// A journal with entries of a played night, and who asks it.
struct HistoryWorld : HistoryTaker {
    HistoryWorld() {
        folder.MakeFolders("Data");
        EXPECT_TRUE(journal.Open());
    }
    Text Come(const Text& object, const Text& type = "E1", const Text& priority = "1") {
        cAlarm alarm{.m_FilePointer = ++lastEvent, .m_TranslatedPrio = priority};
        alarm.m_TypeCode = type;
        alarm.m_IdCode = object;
        alarm.m_TranslatedIDCode = "Shop " + object;
        alarm.m_TranslatedTypeCode = "Burglary";
        alarm.m_TranslationFile = "A";
        alarm.m_AlarmCodeToStore = "hall " + object;
        alarm.m_ArrivedTime = time.Now();
        alarms[lastEvent] = alarm;
        JournalEntry entry = EntryOf(JournalKind::Event, alarm);
        journal.Note(entry);
        return entry.event;
    }
    void Do(JournalKind kind, int event, const Text& user, int status) {
        cAlarm& alarm = alarms[event];
        alarm.m_Status = status;
        journal.Note(EntryOf(JournalKind::Changed, alarm));
        JournalEntry deed = EntryOf(kind, alarm);
        deed.user = user;
        deed.station = "local";
        deed.data = "{\"comment\":\"seen by " + user + "\"}";
        journal.Note(deed);
    }

    HistoryPage Search(const HistoryQuery& query) {
        journal.Commit();
        pages.clear();
        work.Ask(*this, ++number, query);
        while (!work.IsIdle()) time.Advance(10);
        EXPECT_EQ(pages.size(), 1u);
        return pages.empty() ? HistoryPage() : pages.back();
    }
    AlarmFigures Report(OleDate from, OleDate to) {
        journal.Commit();
        work.Ask(*this, ++number, ReportSpan{from, to});
        while (!work.IsIdle()) time.Advance(10);
        return figures;
    }
    void TakePage(std::int32_t of, const HistoryPage& page) override {
        EXPECT_EQ(of, number);
        pages.push_back(page);
    }
    void TakeReport(std::int32_t of, const AlarmFigures& taken) override {
        EXPECT_EQ(of, number);
        figures = taken;
    }

    TempFolder folder{};
    ManualTime time{};
    SqliteJournal file{};
    Journal journal{file, folder.Tree(), time};
    HistoryWork work{journal, time, time};
    std::map<int, cAlarm> alarms{};
    int lastEvent = 0;
    std::int32_t number = 0;
    std::vector<HistoryPage> pages{};
    AlarmFigures figures{};
};

}  // namespace nordkeep
