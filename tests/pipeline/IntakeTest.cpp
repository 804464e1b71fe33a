#include "tests/pipeline/PipelineTest.h"

namespace nordkeep {
namespace {

constexpr const char* kTown =
    "FORMAT=1,4,0,0,5,2\r\n"
    "1001;Bakery;;Plan/1/2;;;Customer A\r\n"
    "1002;Pump;;\r\n";
constexpr const char* kTypes = "01;1;Fire;02\r\n02;3;Fire restored;\r\n05;-1;Test;\r\n06;;No prio;\r\n";

class IntakeTest : public PipelineTest {};

TEST_F(IntakeTest, TranslatesStoresAndLogsAnEvent) {
    WriteSet(kTown, kTypes);
    folder.Write("Information\\Town\\1001.TXT", "Key in box 14\r\nSecond line\r\n");
    Start();
    const cAlarm stored = Stored(TakeIn("100101"));
    EXPECT_EQ(stored.m_TranslatedIDCode, "Bakery");
    EXPECT_EQ(stored.m_TranslatedTypeCode, "Fire");
    EXPECT_EQ(stored.m_TranslatedPrio, "1");
    EXPECT_EQ(stored.m_ResetTypeCode, "02");
    EXPECT_EQ(stored.m_Status, kStatusNewWaiting);
    EXPECT_EQ(stored.m_TranslationFile, "Town");
    EXPECT_EQ(stored.m_Customer, "Customer A");
    EXPECT_EQ(stored.m_ObjectInformation, "Key in box 14");
    EXPECT_EQ(stored.m_SentToTorvex, -1);
    EXPECT_EQ(stored.m_AlarmId, 0);
    EXPECT_EQ(folder.Read("AlarmFiles\\2024-03-05.ALM"),
              "5;24-03-05;07:08:09 ;2024-03-05;07:08:09;Robofon;1;Bakery;Fire;100101;\r\n");
    EXPECT_EQ(folder.Read("AlarmLogFile.spl"), "2024-03-05|07:08:09|100101|Robofon|1|Fire|Bakery\r\n");
}

TEST_F(IntakeTest, ChoosesPriorityAndStatusByRule) {
    WriteSettings("NonTextDefaultPrio=7\r\n");
    WriteSet("FORMAT=1,4,7,1,5,2\r\n1001;Bakery;\r\n1002;/;;\r\n", kTypes);
    Start();
    struct Case {
        const char* name;
        const char* code;
        const char* prio;
        const char* translatedPrio;
        int status;
    };
    for (const Case& c : {Case{"type row", "1001014", "4", "1", kStatusNewWaiting},
                          Case{"type row without priority is 0", "1001064", "4", "0", kStatusNew},
                          Case{"unknown type", "1001994", "4", "4", kStatusNew},
                          Case{"code too short for a priority", "100199", "", "", kStatusNew},
                          Case{"-1 raises no alarm", "1001054", "4", "-1", kStatusAcknowledged},
                          Case{"unknown object", "9999994", "4", "4", kStatusNew}}) {
        const cAlarm& alarm = TakeIn(c.code);
        EXPECT_EQ(alarm.m_Prio, c.prio) << c.name;
        EXPECT_EQ(alarm.m_TranslatedPrio, c.translatedPrio) << c.name;
        EXPECT_EQ(alarm.m_Status, c.status) << c.name;
        EXPECT_EQ(alarm.m_AckedTime.IsNever(), c.status != kStatusAcknowledged) << c.name;
    }
}

TEST_F(IntakeTest, ReadsThePrioritySettingsAtEachEvent) {
    WriteSet("FORMAT=1,4,7,1,5,2\r\n1001;Bakery;\r\n");
    Start();
    EXPECT_EQ(TakeIn("9999994").m_Prio, "4");
    WriteSettings("NonTextDefaultPrio=7\r\nAlwaysApplyNonTextDefaultPrio=1\r\n");
    EXPECT_EQ(TakeIn("9999994").m_Prio, "7") << "an unknown object keeps the default";
    EXPECT_EQ(TakeIn("1001994").m_Prio, "4") << "a known one does not";
    port.m_DefaultPrio = 2;
    EXPECT_EQ(TakeIn("9999994").m_Prio, "2");
}

TEST_F(IntakeTest, LogsAndKeepsCodesApart) {
    WriteSet(kTown);
    Start();
    const cAlarm& alarm = TakeIn({.AlarmTime = time.Now(),
                                  .DefaultAlarmCode = "1001;1",
                                  .ExtraText = " door; open ",
                                  .PortObject = &port,
                                  .TranslationNumberToUse = Protocol::Robofon,
                                  .LineCardNumber = "2:1",
                                  .MessageIsFollowedBySpeech = true});
    EXPECT_EQ(alarm.m_AlarmCode, "1001;1");
    EXPECT_EQ(alarm.m_AlarmCodeToStore, "1001:1  door: open");
    EXPECT_EQ(alarm.m_PortDescription, "Receiver (2:1)");
    EXPECT_EQ(alarm.m_SIAStatus, "Speech");
}

TEST_F(IntakeTest, PadsWithTheFirstSetForAll) {
    folder.Write("Settings\\Port1.ini", "[Translate]\r\nRobofon=First,Second\r\n");
    folder.Write("Settings\\First.IDCode", "FORMAT=1,4,0,0,5,2\r\nPADDING=6,48\r\n7777;Other;\r\n");
    folder.Write("Settings\\First.TypeCode", "34;9;From the first;55\r\n");
    folder.Write("Settings\\Second.IDCode", "FORMAT=1,4,0,0,5,2\r\n0012;Found;\r\n");
    Start();
    const cAlarm& alarm = TakeIn("1234");
    EXPECT_EQ(alarm.m_AlarmCode, "1234") << "the record keeps the code as received";
    EXPECT_EQ(alarm.m_TranslatedIDCode, "Found");
    EXPECT_EQ(alarm.m_TranslationFile, "Second");
    EXPECT_EQ(alarm.m_TypeCode, "34");
    EXPECT_EQ(alarm.m_TranslatedTypeCode, "34") << "the second set has no such type";
    EXPECT_EQ(alarm.m_ResetTypeCode, "55") << "what the first set gave stays";
}

TEST_F(IntakeTest, DecodesSIAByItsDataCodes) {
    WriteSet(
        "FORMAT=1,6,0,0,7,2\r\n001234;Villa;\r\n", "BA;9;wrong way;\r\n",
        "[Event]\r\nBA=Burglary; br; 2\r\n[Environmental]\r\nKA=Heat\r\n[Modifiers]\r\nri=\"area \"\r\n");
    folder.Write("Information\\SIA\\001234\\Zones.SIA",
                 "[BA]\r\n01=Hall window\r\n[General]\r\n02=Kitchen\r\n");
    port.m_DefaultSIAPrioN = 4;
    Start();
    const auto take = [&](const Text& code, const Text& block) -> cAlarm& {
        return TakeIn({.AlarmTime = time.Now(),
                       .ProtocolType = "SIA",
                       .DefaultAlarmCode = code,
                       .ExtraText = "text",
                       .ObjectID = "001234",
                       .PortObject = &port,
                       .TranslationNumberToUse = Protocol::SIA,
                       .SIAModifier = "ri1,zz2",
                       .SIABlockType = block,
                       .SIAPrefixText = "in front",
                       .SIASuffixText = "behind"});
    };
    const cAlarm& alarm = take("BA01", "N");
    EXPECT_EQ(alarm.m_AlarmCodeToStore, "#001234\\Nri1,zz2^in front^BA01^behind^\\Atext");
    EXPECT_EQ(alarm.m_ExtraText, "text in front behind");
    EXPECT_EQ(alarm.m_TranslatedTypeCode, "Burglary");
    EXPECT_EQ(alarm.m_ResetTypeCode, "BR");
    EXPECT_EQ(alarm.m_Prio, "4");
    EXPECT_EQ(alarm.m_TranslatedPrio, "2");
    EXPECT_EQ(alarm.m_SIAStatus, "New");
    EXPECT_EQ(alarm.m_SIAModifier, "area 1,zz2 ^in front^");
    EXPECT_EQ(alarm.m_SIAAddress, "Hall window ^behind^");
    EXPECT_EQ(take("BA02", "O").m_SIAAddress, "Kitchen ^behind^");
    EXPECT_EQ(take("KA09", "E").m_TranslatedTypeCode, "Heat");
    EXPECT_EQ(take("ZZ09", "N").m_TranslatedTypeCode, "ZZ") << "an unlisted code stands for itself";
}

TEST_F(IntakeTest, DecodesContactIDByQualifierAndClass) {
    WriteSet("FORMAT=1,4,7,1,8,3,11,2,13,3\r\n1234;Villa;\r\n", "602;5;By type;\r\n",
             "[Event]\r\n121=Duress;U;1\r\n130=Burglary;z;1\r\n602=\r\n");
    Start();
    const auto take = [&](const Text& code) -> cAlarm& {
        return TakeIn({.AlarmTime = time.Now(),
                       .ProtocolType = "Contact ID",
                       .DefaultAlarmCode = code,
                       .PortObject = &port,
                       .TranslationNumberToUse = Protocol::ContactID});
    };
    struct Case {
        const char* code;
        const char* type;
        const char* status;
        const char* address;
        const char* prio;
        const char* reset;
    };
    for (const Case& c : {Case{"123418113001003", "Burglary", "Alarm", "Group:01/Zone:003", "1", "*"},
                          Case{"123418313001003", "Burglary", "Restore", "Group:01/Zone:003", "1", ""},
                          Case{"123418112101012", "Duress", "Opening", "Group:01/User:012", "1", "*"},
                          Case{"123418e13001003", "Burglary", "Alarm", "Group:01/Zone:003", "1", ""},
                          Case{"123418160201000", "By type", "", "", "5", ""},
                          Case{"123418199901000", "999", "", "", "1", "*"}}) {
        const cAlarm& alarm = take(c.code);
        EXPECT_EQ(alarm.m_TranslatedTypeCode, c.type) << c.code;
        EXPECT_EQ(alarm.m_SIAStatus, c.status) << c.code;
        EXPECT_EQ(alarm.m_SIAAddress, c.address) << c.code;
        EXPECT_EQ(alarm.m_TranslatedPrio, c.prio) << c.code;
        EXPECT_EQ(alarm.m_ResetTypeCode, c.reset) << c.code;
    }
}

TEST_F(IntakeTest, TakesAConfirmationAsItStands) {
    WriteSet(kTown);
    Start();
    const cAlarm& alarm = TakeIn({.AlarmTime = time.Now(),
                                  .ExtraText = "stored|proto|9|type|object",
                                  .Originator = "0701",
                                  .PortObject = &port,
                                  .IsAConfirmationSMS = true});
    EXPECT_EQ(alarm.m_Status, kStatusReset);
    EXPECT_EQ(alarm.m_AlarmCodeToStore, "stored");
    EXPECT_EQ(alarm.m_TranslatedIDCode, "object");
    EXPECT_EQ(alarm.m_TranslatedPrio, "1") << "the port's own priority";
    EXPECT_EQ(alarm.m_ExtraText, "Confirmed");
    EXPECT_EQ(alarm.m_SentToTorvex, -1);
}

TEST_F(IntakeTest, KeepsAnObjectInServiceOutOfTheNewAlarms) {
    WriteSet(kTown, kTypes);
    Start();
    cTranslate& set = *running->translations.Find("town");
    StoreServicePeriod(set, *set.m_IdCodes.front(), LogOnly());
    const cAlarm& alarm = TakeIn("100101");
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
    EXPECT_EQ(running->views.UnackedCount(), 0u);
    EXPECT_EQ(running->views.AckedCount(), 1u);
}

TEST_F(IntakeTest, EventWithoutAPortMeetsNoObject) {
    WriteSet(kTown, kTypes);
    Start();
    const cAlarm& alarm =
        TakeIn({.AlarmTime = time.Now(), .ProtocolType = kOwnProtocol, .DefaultAlarmCode = "100101"});
    EXPECT_EQ(alarm.m_IdCode, "");
    EXPECT_EQ(alarm.m_TranslationFile, "");
    EXPECT_EQ(alarm.m_PortDescription, "");
}

}  // namespace
}  // namespace nordkeep
