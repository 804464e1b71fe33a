#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

class TrialTest : public PipelineTest {
 protected:
    Intake::Trial Try(const Text& code) {
        return running->intake.Try({.AlarmTime = time.Now(),
                                    .ProtocolType = "Robofon",
                                    .DefaultAlarmCode = code,
                                    .TranslationNumberToUse = Protocol::Robofon,
                                    .SpecificTranslationToUse = running->translations.Find("Town")});
    }
};

TEST_F(TrialTest, SaysWhatTheEventBecomes) {
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Bakery;60;Plan/1/2;;;Customer A\r\n",
             "01;1;Fire;02\r\n02;3;Fire restored;\r\n05;-1;Test;\r\n");
    Start();
    for (const char* code : {"100101", "100102", "100105", "100177", "999901", ""}) {
        const Intake::Trial trial = Try(code);
        const cAlarm& alarm = TakeIn(code);
        EXPECT_EQ(trial.alarm->m_IdCode, alarm.m_IdCode) << code;
        EXPECT_EQ(trial.alarm->m_TranslatedIDCode, alarm.m_TranslatedIDCode) << code;
        EXPECT_EQ(trial.alarm->m_TranslatedTypeCode, alarm.m_TranslatedTypeCode) << code;
        EXPECT_EQ(trial.alarm->m_TranslatedPrio, alarm.m_TranslatedPrio) << code;
        EXPECT_EQ(trial.isFound, alarm.m_TranslationIsOk) << code;
        running->handling.EndAll();
    }
}

TEST_F(TrialTest, LeavesNothingBehind) {
    WriteSet("FORMAT=1,4,0,0,5,2\r\n1001;Bakery;60\r\n", "01;1;Fire;02\r\n02;3;Over;\r\n");
    Start();
    const cAlarm& fire = TakeIn("100101");
    cIDCode& object = *running->translations.Find("Town")->m_IdCodes.front();
    const OleDate heard = object.m_LastIncomingEvent;
    const OleDate expires = object.GetNextAliveTestExpirationTime(1);
    const Text settings = folder.Read("Settings\\Nordkeep.INI");
    object.m_AliveTestIntervalHasExceeded = true;
    time.Advance(5000);
    const Intake::Trial trial = Try("100102");
    running->commit.Commit();
    EXPECT_TRUE(trial.isFound);
    EXPECT_EQ(All().size(), 1u);
    EXPECT_EQ(fire.m_Status, kStatusNewWaiting) << "a trial resets nothing";
    EXPECT_EQ(object.m_LastIncomingEvent, heard);
    EXPECT_EQ(object.GetNextAliveTestExpirationTime(1), expires);
    EXPECT_TRUE(object.m_AliveTestIntervalHasExceeded);
    EXPECT_EQ(folder.Read("Settings\\Nordkeep.INI"), settings) << "no number is used up";
}

}  // namespace
}  // namespace nordkeep
