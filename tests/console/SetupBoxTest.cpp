#include "console/setup/SetupBox.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

// --- The descriptor

constexpr TextView kDelivered =
    "; a remark\r\n"
    "Page;sound;1\r\n"
    "Group;2\r\n"
    "Key;General;AlarmSound;choice 0=10,1=11;3;4;workstation;now;0\r\n"
    "Key;General;AlarmSoundFile;sound;5;6;workstation;now;\r\n"
    "Page;limits;7\r\n"
    "Group;\"Own words\"\r\n"
    "Key;General;MaxAlarms;number 1..;\"Most alarms\";8;centre;now;5000\r\n"
    "Key;General;FontName;font;9;9;workstation;restart;\r\n"
    "Key;General;Format;template;9;9;centre;now;[A];[B]\r\n"
    "Key;General;PortType;text;9;9;port;reopen;\r\n";

TEST(Descriptor, HoldsPagesGroupsAndKeys) {
    const SetupDescriptor read = ParseDescriptor(kDelivered);
    ASSERT_FALSE(read.fault);
    ASSERT_EQ(read.pages.size(), 2u);
    const DescribedKey& sound = read.pages[0].groups.at(0).keys.at(0);
    EXPECT_EQ(sound.choices.at(1).value, "1");
    EXPECT_EQ(sound.choices.at(1).caption.number, 11);
    const DescribedKey* most = FindKey(read, {"general", "MAXALARMS"});
    ASSERT_TRUE(most);
    EXPECT_EQ(most->caption.own, "Most alarms");
    EXPECT_EQ(most->low, 1);
    EXPECT_EQ(most->high, INT_MAX);
    EXPECT_EQ(FindKey(read, {"General", "Format"})->byDefault, "[A];[B]")
        << "a default may hold the separator";
    EXPECT_FALSE(FindKey(read, {"General", "PortType"})) << "the main file has no such key";
}

TEST(Descriptor, NamesTheLineOfItsDamage) {
    const struct {
        const char* line;
        int number;
    } rows[] = {
        {"Key;General;A;text;1;2;centre;now", 0},
        {"Sheet;x;1", 3},
        {"Key;General;A;text;1;2;centre;later;", 3},
        {"Key;General;A;slider;1;2;centre;now;", 3},
        {"Key;General;A;number 9..1;1;2;centre;now;", 3},
        {"Key;General;A;number x;1;2;centre;now;", 3},
        {"Key;General;A;choice;1;2;centre;now;", 3},
        {"Key;General;A;choice 1;1;2;centre;now;", 3},
        {"Key;General;A;text;one;2;centre;now;", 3},
        {"Key;;A;text;1;2;centre;now;", 3},
        {"Key;General;A;text 5;1;2;centre;now;", 3},
        {"Page;two", 3},
        {"Page;two;1;gone", 3},
        {"Hide;General;A;everybody", 3},
        {"Group;", 3},
    };
    for (const auto& row : rows) {
        const SetupDescriptor read = ParseDescriptor(Text("Page;one;1\nGroup;2\n") + row.line + "\n");
        EXPECT_EQ(read.fault ? read.fault->line : 0, row.number) << row.line;
    }
    EXPECT_TRUE(ParseDescriptor("").fault) << "a file without a page is none";
    EXPECT_EQ(ParseDescriptor("Key;General;A;text;1;2;centre;now;\n").fault->line, 1);
    const Text twice = "Key;General;A;text;1;2;centre;now;\n";
    EXPECT_EQ(ParseDescriptor("Page;one;1\nGroup;2\n" + twice + twice).fault->line, 4);
}

TEST(Descriptor, OfACentreIsCompletedByTheDeliveredOne) {
    const SetupDescriptor delivered = ParseDescriptor(kDelivered);
    const SetupDescriptor own = ParseDescriptor(
        "Page;sound;\"Noise\";hidden\nGroup;2\n"
        "Page;mine;\"Mine\"\nGroup;2\nKey;General;MaxAlarms;text;\"All\";8;centre;now;5000\n"
        "Hide;General;FontName;workstation\n");
    ASSERT_FALSE(own.fault);
    const SetupDescriptor all = Complete(own, delivered);
    EXPECT_EQ(FindKey(all, {"General", "MaxAlarms"})->caption.own, "All");
    EXPECT_FALSE(FindKey(all, {"General", "FontName"}));
    EXPECT_TRUE(FindKey(all, {"General", "AlarmSound"})) << "on its page, which is hidden";
    ASSERT_EQ(all.pages.size(), 3u);
    EXPECT_TRUE(all.pages[0].isHidden);
    EXPECT_EQ(all.pages[2].name, "limits");
}

// --- Values

struct CheckWorld : ConsoleWorld {
    Text Of(ControlKind control, TextView value) {
        DescribedKey key{.control = control, .low = 1, .high = 9};
        key.choices = {{.value = "1", .caption = {}}};
        return FaultOf(key, value, {.captions = captions, .dataFolder = folder.Tree()});
    }
};

TEST(FieldCheck, TellsWhatIsWrongInASentence) {
    CheckWorld w;
    w.folder.Write("Sounds\\Bell.wav", "x");
    using K = ControlKind;
    const struct {
        K control;
        const char* value;
        bool isGood;
    } rows[] = {
        {K::Number, "5", true},
        {K::Number, " 5 ", true},
        {K::Number, "0", false},
        {K::Number, "10", false},
        {K::Number, "5x", false},
        {K::Number, "", false},
        {K::Number, "99999999999999999999", false},
        {K::Switch, "-1", true},
        {K::Switch, "yes", false},
        {K::Choice, "1", true},
        {K::Choice, "2", false},
        {K::Priorities, "1-3", true},
        {K::Priorities, "-1", true},
        {K::Priorities, "2", true},
        {K::Priorities, "1-", false},
        {K::Priorities, "high", false},
        {K::ColorPair, "00ff00;000000", true},
        {K::ColorPair, "", true},
        {K::ColorPair, "00ff0;000000", false},
        {K::ColorPair, "red", false},
        {K::Color, "-1", true},
        {K::Color, "", true},
        {K::Color, "blue", false},
        {K::Sound, "sounds/bell.WAV", true},
        {K::Sound, "Sounds\\Gong.wav", false},
        {K::Words, "anything", true},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(w.Of(row.control, row.value).empty(), row.isGood)
            << static_cast<int>(row.control) << " " << row.value;
    }
    EXPECT_EQ(w.Of(ControlKind::Number, "12"), w.captions(3870, {"1", "9"}));
}

TEST(FieldCheck, CountsContrastAsItIsRead) {
    EXPECT_EQ(ContrastText(Contrast({0, 0, 0}, {255, 255, 255})), "21.0");
    EXPECT_EQ(ContrastText(Contrast({0x77, 0x77, 0x77}, {255, 255, 255})), "4.4") << "never rounded up";
    EXPECT_EQ(PairText(ColorsOfPair("8c1d00; ffffff")), "8C1D00;FFFFFF");
    EXPECT_EQ(ColorNumber({1, 2, 0}), "513") << "red is the lowest byte";
}

// --- The dialog

struct SetupWorld : ConsoleWorld {
    SetupWorld() {
        language.LoadFrom(
            "1=Sound page\r\n3=Sound of an alarm\r\n4=What is "
            "heard\r\n9=Something\r\n10=None\r\n11=Beep\r\n");
        folder.Write("Nordkeep.Default_desc", kDelivered);
        folder.Write(kMain, "[General]\r\nMaxAlarms=100\r\nNextAlarmId=7\r\n; a remark\r\n");
        box.SetView(view);
        lineControl.files = &folder.Tree();
    }
    /// The first page behind that of the lines.
    void OpenAtFirstPage() {
        box.Open();
        box.ShowPage(1);
    }
    /// The number of a key in the dialog.
    std::size_t At(TextView key) const {
        std::size_t number = 0;
        while (number < box.Fields().size() && box.Fields()[number].key.key != key) ++number;
        return number;
    }
    const SetupField& Field(TextView key) const { return box.Fields().at(At(key)); }
    Text ShownKeys() const {
        Text keys;
        for (const SetupGroup& group : box.Shown()) {
            keys += "[" + group.caption + "]";
            for (const std::size_t number : group.fields) keys += box.Fields()[number].key.key + " ";
        }
        return keys;
    }

    static constexpr const char* kMain = "Settings\\Nordkeep.INI";
    RecordingSetupHost host{};
    RecordingLines lineControl{};
    LinesBox lineBox{{.files = dataFiles,
                      .dialogs = dialogs,
                      .captions = captions,
                      .state = *this,
                      .clock = time,
                      .dataFolder = folder.Tree(),
                      .control = lineControl}};
    RecordingView view{};
    SetupBox box{{.files = files,
                  .centreFiles = dataFiles,
                  .dialogs = dialogs,
                  .captions = captions,
                  .state = *this,
                  .host = host,
                  .sections = {&lineBox},
                  .dataFolder = folder.Tree(),
                  .programFolder = folder.Tree()}};
};

TEST(SetupBox, ShowsPagesOfTheDescriptorWithWhatTheFileSays) {
    SetupWorld w;
    w.OpenAtFirstPage();
    ASSERT_EQ(w.box.Pages().size(), 4u) << "the lines, two, and the faults";
    EXPECT_EQ(w.box.Pages()[1].caption, "Sound page");
    EXPECT_EQ(w.box.Pages()[2].caption, "limits") << "a text that the language file lacks";
    EXPECT_EQ(w.Field("MaxAlarms").stored, "100");
    EXPECT_EQ(w.Field("AlarmSound").stored, "0");
    EXPECT_EQ(w.At("PortType"), w.box.Fields().size()) << "each line has its own";
    EXPECT_EQ(w.ShownKeys(), "[]AlarmSound AlarmSoundFile ");
    w.box.ShowPage(2);
    EXPECT_EQ(w.ShownKeys(), "[Own words]MaxAlarms FontName Format ");
}

TEST(SetupBox, FindsByCaptionHelpSectionAndKey) {
    SetupWorld w;
    w.OpenAtFirstPage();
    const struct {
        const char* words;
        const char* keys;
    } rows[] = {{"heard", "[Sound page]AlarmSound "},
                {"MOST alarms", "[limits]MaxAlarms "},
                {"alarmsoundf", "[Sound page]AlarmSoundFile "},
                {"own words font", "[limits]FontName "}};
    for (const auto& row : rows) {
        w.box.Search(row.words);
        EXPECT_EQ(w.ShownKeys(), row.keys);
    }
    w.box.Search("nowhere");
    EXPECT_EQ(w.box.Shown().size(), 1u);
    w.box.Search(" ");
    EXPECT_EQ(w.ShownKeys(), "[]AlarmSound AlarmSoundFile ");
}

TEST(SetupBox, WritesOnlyWhatWasChangedAndSaysWhenItCounts) {
    SetupWorld w;
    w.OpenAtFirstPage();
    w.box.Apply();
    EXPECT_EQ(w.host.calls, "");
    w.box.Type(w.At("MaxAlarms"), "200");
    w.box.Type(w.At("Format"), " [A] ");
    EXPECT_TRUE(w.box.Pages()[2].isChanged);
    EXPECT_FALSE(w.box.Pages()[1].isChanged);
    w.box.Apply();
    EXPECT_EQ(w.folder.Read(w.kMain),
              "[General]\r\nMaxAlarms=200\r\nNextAlarmId=7\r\n; a remark\r\nFormat=\" [A] \"\r\n");
    EXPECT_EQ(w.host.calls, "saved Settings\\Nordkeep.INI: General.MaxAlarms, General.Format;");
    EXPECT_EQ(w.box.Notice(), (WindowNotice{w.captions(3878, {"2"}), true}));
    EXPECT_FALSE(w.box.IsChanged()) << "blanks at the ends are read back as they were typed";
    w.box.Type(w.At("FontName"), "Sans");
    w.box.Apply();
    EXPECT_EQ(w.box.Notice().text, w.captions(3879, {"1", "1"}));
    w.box.UseDefault(w.At("MaxAlarms"));
    w.box.Apply();
    EXPECT_EQ(w.files.ReadIni("General", "MaxAlarms", ""), "5000");
}

TEST(SetupBox, AsksBeforeAFaultIsSavedThatTheFileDidNotHave) {
    SetupWorld w;
    w.folder.Write(w.kMain, "[General]\r\nMaxAlarms=many\r\n");
    w.OpenAtFirstPage();
    EXPECT_EQ(w.box.Pages()[2].faults, 1);
    w.box.ShowPage(3);
    EXPECT_EQ(w.ShownKeys(), "[]MaxAlarms ") << "the page of the faults";
    w.box.Type(w.At("FontName"), "Sans");
    w.box.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 0u) << "an old fault forbids nothing";
    w.box.Type(w.At("AlarmSound"), "9");
    w.box.Apply();
    ASSERT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_NE(w.dialogs.questions[0].find("Sound of an alarm (9)"), Text::npos);
    EXPECT_EQ(w.files.ReadIni("General", "AlarmSound", "none"), "none");
    EXPECT_EQ(w.Field("AlarmSound").typed, "9") << "a no keeps what was typed";
    w.dialogs.answers = {true};
    w.box.Apply();
    EXPECT_EQ(w.files.ReadIni("General", "AlarmSound", "none"), "9");
    w.box.Type(w.At("MaxAlarms"), "10");
    EXPECT_EQ(w.box.Pages()[2].faults, 0);
}

TEST(SetupBox, AsksBeforeItOverwritesWhatSomebodyElseChanged) {
    SetupWorld w;
    w.OpenAtFirstPage();
    w.box.Type(w.At("MaxAlarms"), "200");
    w.folder.Write(w.kMain, "[General]\r\nMaxAlarms=100\r\nNextAlarmId=8\r\n");
    w.box.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 0u) << "the program numbers its alarms in this file";
    EXPECT_EQ(w.folder.Read(w.kMain), "[General]\r\nMaxAlarms=200\r\nNextAlarmId=8\r\n");
    w.box.Type(w.At("MaxAlarms"), "300");
    w.folder.Write(w.kMain, "[General]\r\nMaxAlarms=50\r\n");
    w.box.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_EQ(w.folder.Read(w.kMain), "[General]\r\nMaxAlarms=50\r\n");
}

TEST(SetupBox, ClosesUnaskedOnlyWithoutChanges) {
    SetupWorld w;
    w.OpenAtFirstPage();
    w.box.Type(w.At("FontName"), "Sans");
    w.box.Close();
    EXPECT_TRUE(w.box.IsOpen());
    w.box.Revert();
    EXPECT_EQ(w.Field("FontName").typed, "");
    w.box.Close();
    EXPECT_FALSE(w.box.IsOpen());
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
}

TEST(SetupBox, NamesADamagedDescriptorAndUsesTheDeliveredOne) {
    SetupWorld w;
    w.folder.Write("Settings\\Nordkeep.desc", "Page;one;1\r\nKey;General\r\n");
    w.OpenAtFirstPage();
    EXPECT_EQ(w.box.Notice().text, w.captions(3883, {"2", "Key;General"}));
    EXPECT_EQ(w.box.Pages().size(), 4u);
    w.box.Close();
    w.folder.Write("Settings\\Nordkeep.desc", "Page;sound;1;hidden\r\nPage;one;\"One\"\r\n");
    w.OpenAtFirstPage();
    EXPECT_EQ(w.box.Notice().text, "");
    EXPECT_EQ(w.box.Pages()[1].caption, "limits") << "a hidden page is not shown, an empty one neither";
}

TEST(SetupBox, OfferWhatIsThere) {
    SetupWorld w;
    w.folder.Write("Nordkeep.Default_desc",
                   "Page;a;1\nGroup;2\nKey;General;Language;language;3;4;workstation;restart;\n"
                   "Key;General;AlarmSoundFile;sound;5;6;workstation;now;\n"
                   "Key;General;AlarmSoundDevice;text;5;6;workstation;now;\n");
    w.OpenAtFirstPage();
    EXPECT_EQ(w.box.ChoicesOf(w.Field("Language")).at(1).value, "046");
    w.box.Type(w.At("AlarmSoundFile"), "Bell.wav");
    w.box.Type(w.At("AlarmSoundDevice"), "hall");
    w.box.Play(w.At("AlarmSoundFile"));
    EXPECT_EQ(w.host.calls, "play Bell.wav on hall;");
    w.host.canPlay = false;
    w.box.Play(w.At("AlarmSoundFile"));
    EXPECT_EQ(w.box.Notice().text, w.captions(3887));
}

// --- On a client

/// A server's files below a folder of their own.
struct ClientSetupWorld : SetupWorld {
    ClientSetupWorld() {
        rights = {.role = Role::Client, .level = 2};
        server.Write(kMain, "[General]\r\nMaxAlarms=300\r\n");
    }
    TempFolder server{};
    LocalDataFiles serverFiles{server.Tree()};
    SetupBox client{{.files = files,
                     .centreFiles = serverFiles,
                     .dialogs = dialogs,
                     .captions = captions,
                     .state = *this,
                     .host = host,
                     .sections = {&lineBox},
                     .dataFolder = folder.Tree(),
                     .programFolder = folder.Tree()}};
};

TEST(SetupBox, OnAClientWritesTheCentresKeysAtTheServer) {
    ClientSetupWorld w;
    w.client.Open();
    w.client.ShowPage(1);
    const std::size_t most = 2;
    const std::size_t font = 3;
    ASSERT_EQ(w.client.Fields()[most].key.key, "MaxAlarms");
    EXPECT_EQ(w.client.Fields()[most].stored, "300");
    w.client.Type(most, "400");
    w.client.Type(font, "Sans");
    w.client.Apply();
    EXPECT_EQ(w.server.Read(w.kMain), "[General]\r\nMaxAlarms=400\r\n");
    EXPECT_EQ(w.files.ReadIni("General", "FontName", ""), "Sans");
    EXPECT_EQ(w.files.ReadIni("General", "MaxAlarms", ""), "100")
        << "its own file says nothing of the centre";
    EXPECT_EQ(w.client.Notice(), (WindowNotice{w.captions(3894, {"2"}), true}));
    w.rights.level = 1;
    w.client.Close();
    w.client.Open();
    w.client.ShowPage(1);
    EXPECT_TRUE(w.client.Fields()[most].isReadOnly);
    w.client.Type(most, "500");
    EXPECT_FALSE(w.client.IsChanged());
}

TEST(SetupBox, OnAClientWithoutTheServersFileShowsWhatIsInForce) {
    ClientSetupWorld w;
    RemoveFile(w.server.Resolve(w.kMain));
    w.files.UseServerText("[General]\r\nMaxAlarms=77\r\n");
    w.client.Open();
    w.client.ShowPage(1);
    EXPECT_EQ(w.client.Fields()[2].stored, "77");
    EXPECT_TRUE(w.client.Fields()[2].isReadOnly) << "nothing is written over what could not be read";
    EXPECT_FALSE(w.client.Fields()[3].isReadOnly);
}

}  // namespace
}  // namespace nordkeep
