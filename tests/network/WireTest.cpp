#include "network/FileDates.h"
#include "network/messages/CentreMessages.h"
#include "network/messages/EventRecord.h"
#include "network/messages/Frames.h"
#include "network/messages/HistoryMessages.h"
#include "network/messages/ObjectMessages.h"
#include "runtime/Fields.h"
#include "store/Alarm.h"
#include "tests/doubles/ManualTime.h"
#include "translation/ObjectLookup.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <random>

namespace nordkeep {
namespace {

/// The frames of tests/data/network_messages.txt by name.
std::map<Text, Text> GoldenBytes() {
    std::map<Text, Text> golden;
    std::ifstream file(NORDKEEP_SOURCE_DIR "/tests/data/network_messages.txt");
    for (Text line; std::getline(file, line);) {
        const std::size_t colon = line.find(": ");
        Text bytes;
        for (const Text& digits : Split(TextView(line).substr(colon + 2), ' '))
            bytes += static_cast<char>(std::stoi(digits, nullptr, 16));
        golden[line.substr(0, colon)] = bytes;
    }
    return golden;
}

Text Golden(const Text& name) {
    static const std::map<Text, Text> golden = GoldenBytes();
    return golden.at(name);
}
Text GoldenPayload(const Text& name) {
    return Golden(name).substr(5);
}

cAlarm GoldenAlarm() {
    cAlarm alarm;
    alarm.m_FilePointer = 1234567;
    alarm.m_IsStored = true;
    alarm.m_Status = 2;
    alarm.m_Repeated = -1;
    alarm.m_SentToTorvex = -1;
    // The fraction is cut, but a time that lacks less than a millisecond counts as the full second.
    alarm.m_TimeStamp = OleDate::FromDays(OleDate::FromCivil({2026, 3, 10, 10, 0, 1}).Days() - 1e-10);
    alarm.m_ArrivedTime = OleDate::FromCivil({2026, 3, 10, 10, 0, 2}, 900);
    alarm.m_RepeatedCompareTime = alarm.m_ArrivedTime;
    alarm.m_AlarmCodeToStore = "1234E1";
    alarm.m_AlarmCode = "1234E1raw";
    alarm.m_ExtraText = "extra";
    alarm.m_ProtocolType = "Robofon";
    alarm.m_TranslatedPrio = "1";
    alarm.m_TranslatedTypeCode = "Inbrott";
    alarm.m_TranslatedIDCode = "Butik \xC5";
    alarm.m_TranslatedMapName = "Plan1/10/20";
    alarm.m_TranslationFile = "Kunder";
    alarm.m_ResetTypeCode = "R1";
    alarm.m_Prio = "2";
    alarm.m_TypeCode = "E1";
    alarm.m_IdCode = "1234";
    alarm.m_SIAStatus = "sia";
    alarm.m_SIAAddress = "adr";
    alarm.m_SIAModifier = "mod";
    alarm.m_Originator = "070123";
    alarm.m_User = "ABC";
    alarm.m_PortDescription = "Port ett";
    alarm.m_Customer = "Kund";
    alarm.m_LineCardNumber = "7";
    alarm.m_AlarmId = 42;
    alarm.m_ResetIdCode = "99";
    alarm.m_ObjectInformation = "info";
    alarm.m_RawAlarmCode = "raw\x1A";
    alarm.m_URL = "http://stays";
    return alarm;
}

cTranslate GoldenSet() {
    cTranslate set;
    set.m_FileName = "Kunder";
    auto object = std::make_unique<cIDCode>();
    object->m_AliveTestIntervalOrTimeStamps = "1440";
    object->m_AliveTestIntervalHasExceeded = true;
    object->m_IdCode = "1234";
    object->m_LastIncomingEvent = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});
    object->SetNextAliveTestExpirationTime(1, OleDate::FromCivil({2024, 3, 6, 7, 8, 9}));
    object->m_MapName = "Plan1/1/2";
    object->m_ServiceMode = 2;
    object->m_ServicePeriodBegin = OleDate::FromCivil({2024, 3, 5});
    object->m_ServicePeriodEnd = OleDate::FromCivil({2024, 3, 6, 12, 30});
    object->m_ObjectName = "Butik \xC4";
    object->m_Originator = "0701";
    object->m_RBM600ExportAlarmCode = "EXP";
    object->m_RBM600ExportProtocol = "RBM";
    object->m_Customer = "Kund";
    object->m_ResetIdCode = "99";
    object->m_AliveTest2IntervalOrTimeStamps = "08:00:00";
    object->SetNextAliveTestExpirationTime(2, OleDate::FromCivil({2024, 3, 7, 8}));
    set.m_IdCodes.push_back(std::move(object));
    auto plain = std::make_unique<cIDCode>();
    plain->m_IdCode = "5";
    plain->m_AliveTest2IntervalHasExceeded = true;
    set.m_IdCodes.push_back(std::move(plain));
    set.m_TypeCodes.push_back(
        {.m_TypeCode = "E1", .m_Prio = 3, .m_Name = "Inbrott", .m_ResetTypeCode = "R1"});
    set.index.Rebuild(set);
    return set;
}

LineFigures GoldenLine() {
    return {.name = "Port1",
            .description = "Modem \xD6",
            .kind = "RS232 1, GSM",
            .state = LineState::Failed,
            .since = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}),
            .lastTraffic = {},
            .telegramsToday = 7,
            .refusedToday = 1,
            .reconnectsToday = 2,
            .caller = "10.0.0.5"};
}

ConditionFact GoldenFact() {
    return {.kind = ConditionKind::LineFailed,
            .name = "Modem",
            .since = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}),
            .count = 3};
}

HistoryQuery GoldenQuery() {
    return {.from = OleDate::FromCivil({2024, 3, 5, 7, 8, 9}),
            .to = {},
            .what = HistoryQuery::What::Deeds,
            .object = "Butik \xD6",
            .type = "E1",
            .priority = "1-3",
            .doer = "anna",
            .text = "hall",
            .event = "A0000007",
            .exactObject = "1234",
            .after = {"2024-03-05T06:08:09.123Z", 7}};
}

HistoryPage GoldenPage(const Clock& clock) {
    HistoryEntry entry{.place = {"2024-03-05T06:08:09.123Z", 7},
                       .time = {},
                       .kind = "end",
                       .event = "A0000007",
                       .status = 5,
                       .priority = "1",
                       .object = "1234",
                       .objectName = "Butik \xD6",
                       .set = "Kunder",
                       .type = "E1",
                       .typeName = "Inbrott",
                       .port = "Port1",
                       .user = "anna",
                       .station = "10.0.0.5",
                       .text = "hall",
                       .comment = "sett"};
    entry.time = clock.LocalOf(UtcMsOf(entry.place.time));
    return {.entries = {entry}, .reached = {"2024-03-05T06:08:09.123Z", 6}, .isEnd = true};
}

AlarmFigures GoldenFigures() {
    const Reaction reaction{
        .group = "1", .alarms = 2, .touch = {2, 10, 20, 20}, .comment = {1, 30, 30, 30}, .end = {}};
    return {.from = OleDate::FromCivil({2024, 3, 5}),
            .to = OleDate::FromCivil({2024, 3, 6}),
            .alarms = 2,
            .isCut = true,
            .isReadable = true,
            .all = reaction,
            .byPriority = {reaction},
            .byHour = {},
            .byOperator = {reaction},
            .bins = {2, 0, 1},
            .floods = 1,
            .floodSeconds = 600,
            .frequent = {{"1234", "Butik \xD6", {}, 2}},
            .chattering = {},
            .stale = {{"1234", "Butik", "Inbrott", 1}},
            .unknown = {}};
}

TEST(Wire, MessagesHaveTheirBytes) {
    const ManualTime time;
    const cTranslate set = GoldenSet();
    const OleDate then = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});
    const std::pair<const char*, Text> cases[] = {
        {"KEEPALIVE", FrameOf(Message::KeepAlive, {})},
        {"OLDEVENT", FrameOf(Message::OldEvent, EventPayload(GoldenAlarm()))},
        {"TRANSLATION", FrameOf(Message::Translation, TranslationPayload(set))},
        {"UPDATEIDCODE", FrameOf(Message::UpdateIdCode, ObjectUpdatePayload(set, *set.m_IdCodes[0]))},
        {"PORTTREE",
         FrameOf(Message::PortTree,
                 PortTreePayload({{0, "Port ett"}, {1, "Robofon"}, {2, "Kunder"}, {0, "\\Port tv\xE5"}}))},
        {"RESETALIVETESTTIMER",
         FrameOf(Message::ResetAliveTestTimer, PayloadOf(ObjectName{"Kunder", "1234"}))},
        {"SETSERVICEMODE",
         FrameOf(Message::SetServiceMode, PayloadOf(ServiceModeChange{{"Kunder", "1234"}, 1, then, {}}))},
        {"LOGIN request", FrameOf(Message::Login, PayloadOf(LoginRequest{"anna", "hemlig"}))},
        {"LOGIN answer", FrameOf(Message::Login, PayloadOf(LoginAnswer{2, "Anna \xD6", "A\xD6"}))},
        {"WRITETEXTFILE",
         FrameOf(Message::WriteTextFile, PayloadOf(FileToWrite{"Comments\\1.txt", "rad\r\n"}))},
        {"FILEDATETIMESTAMP answer",
         FrameOf(Message::FileDateTimeStamp, PayloadOf(LongNumber{FileDateToLong(then)}))},
        {"NETWORK_PROTOCOLVERSION answer",
         FrameOf(Message::ProtocolVersion, PayloadOf(LongNumber{kProtocolVersion}))},
        {"EXTENSIONS", FrameOf(Message::Extensions, PayloadOf(LongNumber{32}))},
        {"LINES", FrameOf(Message::Lines, LinesPayload({GoldenLine()}))},
        {"CONDITIONS", FrameOf(Message::Conditions, ConditionsPayload({GoldenFact()}))},
        {"HISTORY question", FrameOf(Message::History, HistoryQuestionPayload({3, GoldenQuery()}))},
        {"HISTORY answer", FrameOf(Message::History, HistoryAnswerPayload({3, GoldenPage(time)}))},
        {"REPORT question", FrameOf(Message::Report, PayloadOf(ReportQuestion{4, {then, then.PlusDays(1)}}))},
        {"REPORT answer", FrameOf(Message::Report, ReportAnswerPayload({4, GoldenFigures()}))},
        {"ACCOUNTS", FrameOf(Message::Accounts, AccountsPayload({"Port1", {{"1234", then, true}}}))},
        {"HANDOVER", FrameOf(Message::Handover, PayloadOf(HandoverGiven{"lugnt", "rad\r\n"}))},
    };
    for (const auto& [name, bytes] : cases) EXPECT_EQ(bytes, Golden(name)) << name;
}

TEST(Wire, ReadersTakeBackWhatWritersGave) {
    cAlarm alarm;
    alarm.m_URL = "http://kept";
    ASSERT_TRUE(ReadEvent(GoldenPayload("OLDEVENT"), alarm));
    EXPECT_EQ(EventPayload(alarm), GoldenPayload("OLDEVENT"));
    EXPECT_EQ(alarm.m_URL, "http://kept");
    EXPECT_EQ(ReadEventHead(GoldenPayload("OLDEVENT")).status, 2);

    const auto change = ReadWholePayload<ServiceModeChange>(GoldenPayload("SETSERVICEMODE"));
    ASSERT_TRUE(change);
    EXPECT_EQ(PayloadOf(*change), GoldenPayload("SETSERVICEMODE"));

    const auto nodes = ReadPortTree(GoldenPayload("PORTTREE"));
    EXPECT_EQ(PortTreePayload(nodes), GoldenPayload("PORTTREE"));
    EXPECT_EQ(nodes.at(2), (PortTreeNode{2, "Kunder"}));

    EXPECT_EQ(ReadLines(GoldenPayload("LINES")), std::vector{GoldenLine()});
    EXPECT_EQ(ReadConditions(GoldenPayload("CONDITIONS")), std::vector{GoldenFact()});

    EXPECT_EQ(AccountsPayload(ReadAccounts(GoldenPayload("ACCOUNTS"))), GoldenPayload("ACCOUNTS"));
    EXPECT_TRUE(ReadAccounts(GoldenPayload("ACCOUNTS")).accounts.at(0).isSilent);

    const ManualTime time;
    EXPECT_EQ(ReadHistoryQuestion(GoldenPayload("HISTORY question"))->query, GoldenQuery());
    const auto answer = ReadHistoryAnswer(GoldenPayload("HISTORY answer"), time);
    EXPECT_EQ(answer->page.entries, GoldenPage(time).entries);
    EXPECT_EQ(answer->page.reached, GoldenPage(time).reached);
    EXPECT_EQ(ReadReportAnswer(GoldenPayload("REPORT answer"))->figures, GoldenFigures());
}

// A later copy may know more states and kinds, and tell more of each.
TEST(Wire, WhatALaterCopyAddsDoesNoHarm) {
    Text lines = LinesPayload({GoldenLine()});
    const std::size_t stateAt = lines.find("GSM") + 3;
    lines[stateAt] = 0x40;
    lines[3] = static_cast<char>(lines[3] + 2);
    EXPECT_EQ(ReadLines(lines + "xy").at(0).state, LineState::Unusable);
    EXPECT_EQ(ReadLines(lines + "xy").at(0).caller, "10.0.0.5");
    Text facts = ConditionsPayload({GoldenFact()});
    facts[4] = 0x40;
    EXPECT_TRUE(ReadConditions(facts).empty());
}

TEST(Wire, ATranslationBringsBothExpirationsIntoTheSecondPlace) {
    cTranslate mirror;
    ReadTranslation(GoldenPayload("TRANSLATION"), mirror);
    mirror.index.Rebuild(mirror);
    cIDCode& object = *FindExactObject(mirror, "1234");
    EXPECT_TRUE(object.GetNextAliveTestExpirationTime(1).IsNever());
    EXPECT_EQ(object.GetNextAliveTestExpirationTime(2), OleDate::FromCivil({2024, 3, 7, 8}));
    EXPECT_EQ(mirror.m_TypeCodes.at(0).m_ResetTypeCode, "R1");

    StoreObjectUpdate(mirror, object, ReadObjectUpdate(GoldenPayload("UPDATEIDCODE"))->object);
    EXPECT_EQ(object.GetNextAliveTestExpirationTime(1), OleDate::FromCivil({2024, 3, 6, 7, 8, 9}));
    EXPECT_TRUE(object.m_AliveTestIntervalHasExceeded);
    EXPECT_EQ(TranslationPayload(mirror), GoldenPayload("TRANSLATION"));
}

// Every cut and every flipped byte of every message goes through every reader.
TEST(Wire, NoReaderRunsPastItsPayload) {
    std::mt19937 random(7);
    const ManualTime time;
    for (const auto& [name, golden] : GoldenBytes()) {
        for (std::size_t cut = 0; cut <= golden.size(); ++cut) {
            Text bytes = golden.substr(0, cut);
            if (!bytes.empty() && cut % 2 == 0) bytes[random() % bytes.size()] = static_cast<char>(random());
            const Text payload = bytes.substr(std::min<std::size_t>(5, bytes.size()));
            cAlarm alarm;
            cTranslate set;
            ReadEvent(payload, alarm);
            ReadTranslation(payload, set);
            ReadObjectUpdate(payload);
            ReadPortTree(payload);
            ReadLines(payload);
            ReadConditions(payload);
            ReadAccounts(payload);
            ReadHistoryQuestion(payload);
            ReadHistoryAnswer(payload, time);
            ReadReportAnswer(payload);
            ReadPayload<HandoverGiven>(payload);
            ReadPayload<FileToWrite>(payload);
            ReadPayload<LoginAnswer>(payload);
            ReadPayload<ServiceModeChange>(payload);
        }
    }
    const Text event = GoldenPayload("OLDEVENT");
    for (std::size_t cut = 0; cut < event.size(); ++cut) {
        cAlarm alarm;
        EXPECT_FALSE(ReadEvent(event.substr(0, cut), alarm)) << cut;
    }
}

TEST(Wire, OddFieldsAreReadAsFarAsTheyGo) {
    const auto readText = [](TextView bytes) { return ReadPayload<ShortText>(bytes).text; };
    using namespace std::string_literals;
    EXPECT_EQ(readText("\x00\x05"s + "abc"), "abc");
    EXPECT_EQ(readText("\x80\x01"s + "abc"), "");
    EXPECT_EQ(readText("\x01"s), "");
    EXPECT_EQ(ReadPayload<LongText>("\x7F\xFF\xFF\xFF"s + "xy").text, "xy");
    EXPECT_EQ(ReadPayload<LongText>("\xFF\xFF\xFF\xFF"s + "xy").text, "");
    EXPECT_EQ(ReadPayload<LongNumber>("\x01\x02\x03"s).value, 0);
    EXPECT_EQ(PayloadOf(LongNumber{-5}), "\0\0\0\0"s);
    EXPECT_EQ(PayloadOf(ShortText{Text(40000, 'x')}), "\x7F\xFF"s + Text(kLongestShortString, 'x'));

    OleDate date = OleDate::FromDays(5);
    PayloadReader("\x07\xE8\x00"s).DateTime(date);
    EXPECT_TRUE(date.IsNever());
    PayloadReader(Text(12, '\x7F')).DateTime(date);
    EXPECT_TRUE(date.IsNever());
    PayloadWriter wire;
    wire.DateTime({});
    EXPECT_EQ(wire.Bytes(), Golden("empty date"));
}

TEST(Frames, ComeOutWholeAndInOrderHoweverTheyArrive) {
    const Text stream = FrameOf(Message::KeepAlive, {}) + FrameOf(Message::OldEvent, "payload") +
                        FrameOf(static_cast<Message>(77), Text(300, 'x'));
    for (std::size_t step = 1; step <= stream.size(); ++step) {
        FrameBuffer buffer;
        std::vector<Frame> frames;
        for (std::size_t at = 0; at < stream.size(); at += step) {
            buffer.Append(TextView(stream).substr(at, step));
            while (auto frame = buffer.Next()) frames.push_back(std::move(*frame));
        }
        ASSERT_EQ(frames.size(), 3u) << step;
        EXPECT_EQ(frames[0].payload, "");
        EXPECT_EQ(frames[1].payload, "payload");
        EXPECT_EQ(frames[2].number, 77);
        EXPECT_EQ(frames[2].payload, Text(300, 'x'));
    }
}

TEST(Frames, AreRefusedByTheirHeaderWhenTooLong) {
    using namespace std::string_literals;
    FrameBuffer buffer;
    buffer.Append("\x07\x04\x00\x00\x00"s);  // 64 MiB are still taken
    EXPECT_FALSE(buffer.IsTooLong());
    buffer.Clear();
    buffer.Append("\x07\x04\x00\x00"s);
    EXPECT_FALSE(buffer.IsTooLong());
    buffer.Append("\x01"s);
    EXPECT_TRUE(buffer.IsTooLong());
    EXPECT_FALSE(buffer.Next());
}

TEST(FileDates, KeepTheUncorrectedHour) {
    const OleDate date = OleDate::FromCivil({2024, 7, 1, 12, 0, 59}, 999);
    EXPECT_EQ(LongToFileDate(FileDateToLong(date)), OleDate::FromCivil({2024, 7, 1, 11, 0, 59}));
    EXPECT_EQ(FileDateToLong({}), 0);
    EXPECT_EQ(FileDateToLong(OleDate::FromCivil({1969, 12, 31, 23, 0, 0})), 0);
    EXPECT_EQ(FileDateToLong(OleDate::FromCivil({1970, 1, 1, 0, 30, 0})), 0);
    EXPECT_TRUE(LongToFileDate(0).IsNever());
    EXPECT_TRUE(LongToFileDate(-1).IsNever());
    // In days as a fraction some of these are one second less.
    for (std::int32_t value = 1'700'000'000; value < 1'700'002'000; ++value) {
        EXPECT_EQ(FileDateToLong(LongToFileDate(value)), value - 3600);
    }
}

TEST(MessageNames, AreThoseOfTheTrafficLog) {
    EXPECT_EQ(MessageName(0), "KEEPALIVE");
    EXPECT_EQ(MessageName(24), "NETWORK_MAKEDIR");
    EXPECT_EQ(MessageName(32), "CONDITIONS");
    EXPECT_EQ(MessageName(1), "Unknown (1)");
}

}  // namespace
}  // namespace nordkeep
