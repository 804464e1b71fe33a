#include "runtime/Dates.h"
#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

/// What has a deadline on the wall clock, and must come once: not before its time, and not lost.
struct Deadline {
    const char* name;
    const char* settings;
    int minutes;  // from the beginning to the time that has to be over
    std::function<void()> begin;
    std::function<void()> look;
    std::function<bool()> hasCome;
};

/// The wall clock goes from one time to another in an instant.
struct ClockChange {
    const char* name;
    OleDate begin;
    OleDate from;
    OleDate to;
};

class ClockChangesTest : public PipelineTest {
 protected:
    void StartWith(const Text& general) {
        folder.MakeFolders("Data");
        for (const Text& file : ListFiles(folder.Resolve("Data\\Events")))
            RemoveFile(folder.Resolve("Data\\Events\\" + file));
        WriteSettings("AliveTestType=77\r\nAliveTestBehaviour=1\r\nMaxAlarmDays=1\r\n" + general);
        // The reset code of the first object is one that no object has.
        WriteSet("FORMAT=1,4,0,0,5,2\r\n1002;Pump;;;;;;;;1001\r\n1003;Shop;60\r\n1004;Yard\r\n",
                 "01;1;Fire;02\r\n02;3;Fire restored;\r\n03;2;Fault;\r\n77;2;Silent;\r\n");
        Start();
    }
    void Scan() {
        running->aliveScan.Tick(60'000, time.Now());
        while (running->aliveScan.IsRunning()) running->aliveScan.Continue();
    }
    cIDCode& Yard() { return *running->translations.Sets().at(0)->m_IdCodes.at(2); }
    bool HasStatus(int status) {
        return std::ranges::any_of(All(), [&](const cAlarm* alarm) { return alarm->m_Status == status; });
    }
    std::vector<Deadline> Deadlines();
};

std::vector<Deadline> ClockChangesTest::Deadlines() {
    return {
        {"alive test", "", 60, [this] { TakeIn("100303"); }, [this] { Scan(); },
         [this] { return All().size() == 2; }},
        {"end of a service period", "", 60,
         [this] {
             running->servicePeriods.Set(*running->translations.Sets()[0], Yard(),
                                         LogUntil(time.Now(), time.Now().PlusMinutes(60)));
         },
         [this] { Scan(); }, [this] { return Yard().m_ServiceMode == 0; }},
        {"parked reset", "UnAssociatedResetEventsTimeout=3600\r\n", 60,
         [this] {
             running->intake.HandleIncomingEvent({.DefaultAlarmCode = "100103",
                                                  .PortObject = &port,
                                                  .TranslationNumberToUse = Protocol::Robofon});
         },
         [this] { running->parked.Tick(time.Now()); }, [this] { return All().size() == 1; }},
        {"delayed acknowledge", "AutoAckResetEvents=2\r\nAutoAckResetEventsTimeout=60\r\n", 60,
         [this] {
             TakeIn("100401");
             TakeIn("100402");
         },
         [this] { running->resets.AcknowledgeDelayed(time.Now()); },
         [this] { return HasStatus(kStatusAcknowledged); }},
        {"retry to the dispatcher", "\r\n[Torvex]\r\nDelayAndWaitForAck=3600\r\n", 60,
         [this] { TakeIn("100403"); }, [this] { running->dispatcher.SendWaitingToTorvex(time.Now()); },
         [this] { return All().at(0)->m_SentToTorvex == -1; }},
        {"age", "", 2 * 24 * 60, [this] { TakeIn("100403"); },
         [this] {
             running->store.PruneOldAlarms();
             while (running->store.UpkeepSlice()) {
             }
         },
         [this] { return All().empty(); }},
    };
}

TEST_F(ClockChangesTest, LoseNoDeadlineAndRaiseNothingEarly) {
    const auto on = [](int month, int day, int hour, int minute) {
        return OleDate::FromCivil({2026, month, day, hour, minute, 0});
    };
    const ClockChange changes[] = {
        {"summer time begins", on(3, 29, 1, 50), on(3, 29, 2, 0), on(3, 29, 3, 0)},
        {"summer time ends", on(10, 25, 2, 50), on(10, 25, 3, 0), on(10, 25, 2, 0)},
        {"set back over midnight", on(5, 5, 0, 10), on(5, 5, 0, 20), on(5, 4, 23, 20)},
        {"unchanged", on(5, 5, 12, 0), on(5, 5, 12, 10), on(5, 5, 12, 10)},
    };
    for (const ClockChange& change : changes) {
        for (const Deadline& deadline : Deadlines()) {
            const Text what = Text(deadline.name) + ", " + change.name;
            time.Set(change.begin);
            StartWith(deadline.settings);
            deadline.begin();
            const OleDate due = change.begin.PlusMinutes(deadline.minutes);
            for (OleDate now = change.begin; now < change.from; now = now.PlusMinutes(1)) {
                time.Set(now);
                deadline.look();
                ASSERT_FALSE(deadline.hasCome()) << what;
            }
            const bool isLong = deadline.minutes > 60;
            OleDate now = change.to;
            for (; now < due; now = now.PlusMinutes(isLong ? 60 : 1)) {
                time.Set(now);
                deadline.look();
                // The age is counted in whole days.
                if (now < due.PlusMinutes(isLong ? -24 * 60 : 0)) {
                    ASSERT_FALSE(deadline.hasCome()) << what << " at " << GeneralDate(now);
                }
            }
            time.Set(std::max(now, due).PlusMinutes(isLong ? 24 * 60 : 1));
            deadline.look();
            EXPECT_TRUE(deadline.hasCome()) << what;
            deadline.look();
            EXPECT_TRUE(deadline.hasCome()) << what << ", once";
        }
    }
}

TEST_F(ClockChangesTest, LogsGoToTheFileOfTheDayThatTheClockShows) {
    StartWith("");
    for (const int minutes : {0, 60, 0}) {
        time.Set(OleDate::FromCivil({2026, 5, 4, 23, 30, 0}).PlusMinutes(minutes));
        log.WriteSysLog("at " + std::to_string(minutes), LogKind::Information);
    }
    Text found;
    for (const Text& name : ListFiles(folder.Resolve("LogFiles"))) {
        const Text text = folder.Read("LogFiles\\" + name);
        found += name + ":" + std::to_string(std::count(text.begin(), text.end(), '\n')) + " ";
    }
    EXPECT_EQ(found, "2026-05-04.LOG:2 2026-05-05.LOG:1 ");
}

}  // namespace
}  // namespace nordkeep
