#include "console/setup/LinesBox.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nordkeep {
namespace {

Text DeliveredDescriptor() {
    std::ifstream file(NORDKEEP_SOURCE_DIR "/templates/Nordkeep.Default_desc", std::ios::binary);
    return Text{std::istreambuf_iterator<char>(file), {}};
}

TEST(LineKinds, CarryOnlyTheFormatsThatComeThatWay) {
    using F = MessageFormat;
    const struct {
        PortType type;
        F format;
        bool can;
    } rows[] = {{PortType::TCPS, F::Robofon, true},
                {PortType::TCPS, F::Mail, false},
                {PortType::SMTP, F::Mail, true},
                {PortType::POP3, F::Robofon, false},
                {PortType::HTTP, F::VirtualReceiver, true},
                {PortType::UDP, F::VirtualReceiver, false},
                {PortType::FILE, F::NordkeepFile, true},
                {PortType::FILE, F::PlainText, false},
                {PortType::RS232, F::GSM, true}};
    for (const auto& row : rows) EXPECT_EQ(GoTogether(row.type, row.format), row.can) << NameOf(row.format);
    EXPECT_TRUE(ReadsKey({PortType::TCPS, F::PlainText}, "General", "wrapwithstxetx"));
    EXPECT_FALSE(ReadsKey({PortType::TCPS, F::Robofon}, "General", "WrapWithSTXETX"));
    EXPECT_FALSE(ReadsKey({PortType::TCPS, F::GSM}, "General", "Handshaking"));
    for (const bool isDc09 : {false, true}) {
        const LineKind kind{PortType::TCPS, isDc09 ? F::SiaDc09 : F::Robofon};
        EXPECT_EQ(ReadsKey(kind, "General", "MaxCallers"), !isDc09);
        EXPECT_EQ(ReadsKey(kind, "DC09", "MaxCallers"), isDc09);
    }
    EXPECT_FALSE(ReadsKey({PortType::UDP, F::SiaDc09}, "DC09", "MaxCallers"));
}

TEST(LineKinds, EveryDescribedKeyIsReadBySomeKindOfLine) {
    const SetupDescriptor read = ParseDescriptor(DeliveredDescriptor());
    for (const DescribedPage& page : read.pages) {
        for (const DescribedGroup& group : page.groups) {
            for (const DescribedKey& key : group.keys) {
                if (key.scope != SettingScope::Port) continue;
                bool isRead = false;
                for (int type = 0; type <= static_cast<int>(PortType::SMTP); ++type) {
                    for (const MessageFormat format : MessageFormats()) {
                        isRead =
                            isRead || ReadsKey({static_cast<PortType>(type), format}, key.section, key.key);
                    }
                }
                EXPECT_TRUE(isRead) << key.key;
            }
        }
    }
}

struct LinesWorld : ConsoleWorld {
    LinesWorld() {
        std::ifstream file(NORDKEEP_SOURCE_DIR "/languages/NK_Lang.044", std::ios::binary);
        language.LoadFrom(Text{std::istreambuf_iterator<char>(file), {}});
        folder.Write("Settings\\Town.IDCode", "");
        folder.Write("Settings\\Port1.ini",
                     "; by hand\r\n[General]\r\nPortType=TCPS\r\nMessageFormat=0\r\nPortNumber=17601\r\n"
                     "PortDescription=Receiver\r\n[Translate]\r\nRobofon=Town\r\n");
        folder.Write("Settings\\Port2.ini",
                     "[General]\r\nPortType=UDP\r\nMessageFormat=2\r\nPortNumber=17602\r\n");
        control.files = &folder.Tree();
        box.SetView(view);
    }
    void Load() { box.Load(ParseDescriptor(DeliveredDescriptor())); }
    std::size_t At(TextView key) const {
        std::size_t number = 0;
        while (number < box.Fields().size() && box.Fields()[number].key.key != key) ++number;
        return number;
    }
    const SetupField& Field(TextView key) const { return box.Fields().at(At(key)); }
    void Type(TextView key, const Text& value) { box.Type(At(key), value); }
    bool IsShown(TextView key) const {
        for (const SetupGroup& group : box.Shown()) {
            for (const std::size_t number : group.fields) {
                if (box.Fields()[number].key.key == key) return true;
            }
        }
        return false;
    }
    RecordingLines control{};
    RecordingView view{};
    LinesBox box{{.files = dataFiles,
                  .dialogs = dialogs,
                  .captions = captions,
                  .state = *this,
                  .clock = time,
                  .dataFolder = folder.Tree(),
                  .control = control}};
};

TEST(LinesBox, ShowsWhatTheFilesSayAndHowTheLinesDo) {
    LinesWorld w;
    w.control.lines = {
        {.name = "PORT1", .state = LineState::Held, .since = w.time.Now(), .telegramsToday = 7}};
    w.Load();
    ASSERT_EQ(w.box.Rows().size(), 2u);
    EXPECT_EQ(w.box.Rows()[0].description, "Receiver");
    EXPECT_EQ(w.box.Rows()[0].kind, "TCPS 17601, " + Text(NameOf(MessageFormat::Robofon)));
    EXPECT_EQ(w.box.Rows()[1].description, "Port2");
    EXPECT_TRUE(w.box.StateText(w.box.Rows()[0]).starts_with(w.captions(4547)));
    EXPECT_EQ(w.box.StateText(w.box.Rows()[1]), "") << "a file that no line has been made from";
    EXPECT_TRUE(w.box.IsHeld());
    w.box.ToggleHeld();
    EXPECT_EQ(w.control.calls, "free Port1;");
}

TEST(LinesBox, ShowsOnlyTheKeysOfTheKind) {
    LinesWorld w;
    w.Load();
    EXPECT_TRUE(w.IsShown("TimeStampFromRBM"));
    EXPECT_TRUE(w.IsShown("BindSocketToAddress"));
    EXPECT_FALSE(w.IsShown("WrapWithSTXETX"));
    EXPECT_TRUE(w.IsShown("ContactID")) << "a protocol that the format raises";
    EXPECT_FALSE(w.IsShown("MAIL"));
    w.Type("MessageFormat", "2");
    EXPECT_TRUE(w.IsShown("WrapWithSTXETX"));
    EXPECT_TRUE(w.IsShown("Robofon")) << "what the file binds stays in sight";
    w.Type("PortType", "SMTP");
    EXPECT_NE(w.Field("MessageFormat").fault, "");
    const auto fitting = w.box.ChoicesOf(w.Field("MessageFormat"));
    ASSERT_EQ(fitting.size(), 1u);
    EXPECT_EQ(fitting[0].value, "11");
}

TEST(LinesBox, TellsFaultsBetweenLines) {
    LinesWorld w;
    w.Load();
    EXPECT_EQ(w.box.Faults(), 0);
    w.Type("PortNumber", "17602");
    EXPECT_EQ(w.box.Faults(), 0) << "UDP and TCP have numbers of their own";
    w.Type("PortType", "UDP");
    EXPECT_EQ(w.Field("PortNumber").fault, w.captions(4554, {"Port2"}));
    w.Type("PortNumber", "abc");
    EXPECT_EQ(w.Field("PortNumber").fault, w.captions(4553));
    w.Type("Robofon", "Town, Village");
    EXPECT_EQ(w.Field("Robofon").fault, w.captions(4555, {"Village"}));
    w.Type("PortType", "TCPX");
    EXPECT_NE(w.Field("PortType").fault, "");
}

TEST(LinesBox, WritesWhatWasChangedAndLeavesTheRestOfTheFile) {
    LinesWorld w;
    w.Load();
    w.Type("PortNumber", "17700");
    w.Type("SIA", "Town");
    w.box.Apply();
    EXPECT_EQ(w.folder.Read("Settings\\Port1.ini"),
              "; by hand\r\n[General]\r\nPortType=TCPS\r\nMessageFormat=0\r\nPortNumber=17700\r\n"
              "PortDescription=Receiver\r\n[Translate]\r\nRobofon=Town\r\nSIA=Town\r\n");
    EXPECT_EQ(w.control.calls, "changed Settings\\Port1.ini;");
    EXPECT_TRUE(w.box.Notice().isGood);
    EXPECT_FALSE(w.box.IsChanged());
    w.Type("PortNumber", "17701");
    w.folder.Write("Settings\\Port1.ini", "[General]\r\nPortType=TCPS\r\nPortNumber=1\r\n");
    w.box.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 1u) << "somebody else has written it";
    EXPECT_EQ(w.folder.Read("Settings\\Port1.ini"), "[General]\r\nPortType=TCPS\r\nPortNumber=1\r\n");
}

TEST(LinesBox, MakesCopiesAndRemovesLines) {
    LinesWorld w;
    w.Load();
    w.box.New();
    EXPECT_TRUE(w.box.IsNew());
    EXPECT_TRUE(w.IsShown("PortType"));
    EXPECT_FALSE(w.IsShown("PortNumber")) << "first what it is";
    EXPECT_FALSE(w.box.MayApply());
    w.Type("PortDescription", "Third");
    w.box.GoOn();
    EXPECT_TRUE(w.IsShown("TimeStampFromRBM"));
    EXPECT_FALSE(w.IsShown("ReopenInterval"));
    w.box.GoOn();
    EXPECT_EQ(w.box.Step(), 1) << "a new line needs a number";
    EXPECT_NE(w.box.Notice().text.find(w.captions(4553)), Text::npos);
    w.Type("PortNumber", "17603");
    w.box.GoOn();
    EXPECT_TRUE(w.IsShown("ReopenInterval"));
    EXPECT_FALSE(w.IsShown("PortNumber"));
    w.box.GoOn();
    EXPECT_TRUE(w.IsShown("Robofon"));
    EXPECT_FALSE(w.IsShown("MAIL")) << "only what the format raises";
    w.Type("Robofon", "Town");
    w.box.GoBack();
    w.box.GoOn();
    w.box.Apply();
    EXPECT_EQ(w.folder.Read("Settings\\Port3.ini"),
              "[General]\r\nPortDescription=Third\r\nPortType=TCPS\r\nMessageFormat=0\r\nPortNumber=17603\r\n"
              "[Translate]\r\nRobofon=Town\r\n");
    ASSERT_EQ(w.box.Rows().size(), 3u);
    EXPECT_EQ(w.box.Current(), 2u);
    w.box.Copy();
    EXPECT_EQ(w.Field("PortNumber").fault, w.captions(4554, {"Third"}));
    w.box.Revert();
    EXPECT_FALSE(w.box.IsNew());
    w.control.calls.clear();
    w.box.Select(2);
    w.box.Remove();
    EXPECT_EQ(w.control.calls, "") << "asked first, and a no keeps it";
    w.dialogs.answers = {true};
    w.box.Remove();
    EXPECT_EQ(w.control.calls, "remove Port3;changed Settings\\Port3.ini;");
    EXPECT_EQ(w.box.Rows().size(), 2u);
    w.control.canRemove = false;
    w.dialogs.answers = {true};
    w.box.Select(1);
    w.box.Remove();
    EXPECT_EQ(w.folder.Read("Settings\\Port2.ini"),
              "[General]\r\nPortType=NONE\r\nMessageFormat=2\r\nPortNumber=17602\r\n")
        << "a client cannot take the file away";
}

TEST(LinesBox, KeepsWhatWasTypedUntilAPersonDropsIt) {
    LinesWorld w;
    w.Load();
    w.Type("PortNumber", "5");
    w.box.Select(1);
    EXPECT_EQ(w.box.Current(), 0u);
    w.dialogs.answers = {true};
    w.box.Select(1);
    EXPECT_EQ(w.box.Current(), 1u);
    EXPECT_EQ(w.Field("PortNumber").typed, "17602");
}

TEST(LinesBox, TellsWhatCameOfATestTelegram) {
    LinesWorld w;
    w.Load();
    w.box.SendTest();
    EXPECT_EQ(w.control.calls, "test Port1;");
    w.box.Tick();
    EXPECT_EQ(w.box.Notice().text, w.captions(4578)) << "still on its way";
    w.control.outcome = false;
    w.box.Tick();
    EXPECT_EQ(w.box.Notice(), (WindowNotice{w.captions(4576), false}));
}

TEST(LinesBox, OffersWhatTheMachineHasAndKeepsTheDeviceInTheMainSettings) {
    LinesWorld w;
    w.folder.Write("Settings\\Nordkeep.INI",
                   "; ours\r\n[General]\r\nLanguage=044\r\n[SerialPorts]\r\nCOM2=/dev/two\r\n");
    w.Load();
    EXPECT_FALSE(w.IsShown("Device"));
    EXPECT_EQ(w.box.ChoicesOf(w.Field("BindSocketToAddress")).size(), 2u);
    w.Type("PortType", "RS232");
    w.Type("PortNumber", "2");
    EXPECT_TRUE(w.IsShown("Device"));
    EXPECT_EQ(w.Field("Device").typed, "/dev/two") << "of the number that is typed";
    w.Type("PortNumber", "3");
    EXPECT_EQ(w.Field("Device").typed, "");
    ASSERT_EQ(w.box.ChoicesOf(w.Field("Device")).size(), 1u);
    w.Type("Device", "COM7");
    EXPECT_NE(w.Field("Device").fault, "");
    w.Type("Device", "/dev/null");
    EXPECT_EQ(w.Field("Device").fault, "");
    w.box.Apply();
    EXPECT_EQ(w.folder.Read("Settings\\Nordkeep.INI"),
              "; ours\r\n[General]\r\nLanguage=044\r\n[SerialPorts]\r\nCOM2=/dev/two\r\nCOM3=/dev/null\r\n");
    EXPECT_EQ(w.folder.Read("Settings\\Port1.ini").find("Device"), Text::npos);
    EXPECT_FALSE(w.box.IsChanged());
}

TEST(LinesBox, MutesOneLineOnlyWhenAPersonSaysSo) {
    LinesWorld w;
    w.control.lines = {{.name = "Port1", .state = LineState::Open}};
    w.Load();
    w.dialogs.answers = {false};
    w.box.ToggleMuted();
    EXPECT_EQ(w.control.muted, "");
    w.dialogs.answers = {true};
    w.box.ToggleMuted();
    EXPECT_TRUE(w.box.IsMuted());
    w.box.ToggleMuted();
    EXPECT_FALSE(w.box.IsMuted()) << "back without a question";
}

TEST(LinesBox, WithoutALineThereIsNothingToEdit) {
    LinesWorld w;
    RemoveFile(w.folder.Resolve("Settings\\Port1.ini"));
    RemoveFile(w.folder.Resolve("Settings\\Port2.ini"));
    w.Load();
    EXPECT_TRUE(w.box.Shown().empty());
    EXPECT_FALSE(w.box.MayApply());
    w.box.Copy();
    w.box.Remove();
    w.box.Apply();
    w.box.New();
    EXPECT_FALSE(w.box.Shown().empty());
}

}  // namespace
}  // namespace nordkeep
