#include "console/editors/ObjectFormat.h"
#include "console/editors/RowsBox.h"
#include "console/editors/TypeFormat.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

#include <fstream>

namespace nordkeep {
namespace {

constexpr const char* kTown =
    "; by hand\r\nFORMAT=1,6,0,0,7,2\r\n100001/0701234567;Bakery;1440;Plan.png/1/2;;;Baker Ltd;1;0;;\r\n"
    "; in between\r\n 100002 ; Pump ;60\r\njunk\r\n; the end\r\n";

struct RowsWorld : ConsoleWorld {
    explicit RowsWorld(const Text& content = kTown, Role role = Role::StandAlone) : ConsoleWorld(role) {
        std::ifstream file(NORDKEEP_SOURCE_DIR "/languages/NK_Lang.044", std::ios::binary);
        language.LoadFrom(Text{std::istreambuf_iterator<char>(file), {}});
        folder.Write("Settings\\Town.IDCode", content);
        folder.Write("Settings\\Village.IDCode", "");
        objects.SetView(view);
        objects.Load({});
        objects.Enter();
    }
    RowsBox::Needs Needs() {
        return {.files = dataFiles, .dialogs = dialogs, .captions = captions, .state = *this, .host = host};
    }
    void Choose(int row) { objects.Select(objects.Table().KeyOf(row)); }
    void Type(ObjectValue field, const Text& value) { objects.Type(field, value); }
    const Text& Fault(ObjectValue field) { return objects.Fields()[field].fault; }
    Text File(const Text& name = "Town.IDCode") { return folder.Read("Settings\\" + name); }
    RecordingView view{};
    RecordingEditorsHost host{};
    ObjectFormat objectFormat{{captions, language, time, host}};
    RowsBox objects{Needs(), objectFormat};
    TypeFormat typeFormat{language};
    RowsBox types{Needs(), typeFormat};
};

TEST(RowsBox, ShowsTheRowsOfASetAndFindsThem) {
    RowsWorld w;
    EXPECT_EQ(w.objects.Files(), (std::vector<Text>{"Town", "Village"}));
    ASSERT_EQ(w.objects.Table().RowCount(), 3);
    EXPECT_EQ(w.objects.Table().Cell(0, 1), "Bakery");
    EXPECT_EQ(w.objects.Fields()[kObjectCaller].typed, "0701234567");
    EXPECT_FALSE(w.objects.IsChanged());
    EXPECT_FALSE(w.objects.MayApply());
    w.objects.Search("pump 60");
    ASSERT_EQ(w.objects.Table().RowCount(), 1);
    EXPECT_EQ(w.objects.Table().Cell(0, 0), "100002");
    w.objects.Search("");
    w.objects.ShowRow("Town", "100002");
    EXPECT_EQ(w.objects.Fields()[kObjectIdCode].typed, "100002");
}

TEST(RowsBox, WritesOnlyTheRowThatWasTouched) {
    RowsWorld w;
    w.Type(kObjectName, "Bakery; on the corner");
    EXPECT_EQ(w.objects.Fields()[kObjectName].typed, "Bakery, on the corner") << "a ; would end the field";
    w.objects.Apply();
    EXPECT_EQ(w.File(),
              "; by hand\r\nFORMAT=1,6,0,0,7,2\r\n"
              "100001/0701234567;Bakery, on the corner;1440;Plan.png/1/2;;;Baker Ltd;1;0;;;\r\n"
              " 100002 ; Pump ;60\r\njunk\r\n; in between\r\n; the end\r\n");
    EXPECT_EQ(w.host.calls, "keep Settings\\Town.IDCode;saved Settings\\Town.IDCode;");
    EXPECT_TRUE(w.objects.Notice().isGood);
    EXPECT_FALSE(w.objects.IsChanged());
}

TEST(RowsBox, TakesBackStepByStepToWhatTheFileHas) {
    RowsWorld w;
    w.Type(kObjectName, "B");
    w.Type(kObjectName, "Ba");
    w.Choose(1);
    w.objects.Remove({w.objects.Current()});
    w.objects.Add();
    w.Type(kObjectIdCode, "100003");
    w.Choose(0);
    w.objects.Copy();
    ASSERT_EQ(w.objects.Table().RowCount(), 4);
    EXPECT_EQ(w.objects.Table().Cell(3, 1), "Ba");
    for (int step = 0; step < 4; ++step) w.objects.Undo();
    EXPECT_EQ(w.objects.Table().RowCount(), 3);
    EXPECT_TRUE(w.objects.IsChanged()) << "the name";
    w.objects.Undo();
    EXPECT_FALSE(w.objects.IsChanged());
    EXPECT_FALSE(w.objects.MayUndo());
    EXPECT_EQ(w.objects.Fields()[kObjectName].typed, "Bakery");
    w.Type(kObjectName, "x");
    w.Type(kObjectName, "Bakery");
    EXPECT_FALSE(w.objects.IsChanged()) << "typed back";
}

TEST(RowsBox, TellsFaultsBesideTheFieldWhileOneTypes) {
    RowsWorld w;
    EXPECT_EQ(w.Fault(kObjectIdCode), "");
    w.Type(kObjectIdCode, "100002");
    EXPECT_EQ(w.Fault(kObjectIdCode), "") << "told apart by the number that calls";
    w.Type(kObjectCaller, "");
    EXPECT_NE(w.Fault(kObjectIdCode), "") << "stands there already";
    w.Type(kObjectIdCode, "12");
    EXPECT_NE(w.Fault(kObjectIdCode), "") << "FORMAT cuts out six";
    w.Type(kObjectIdCode, "100001");
    EXPECT_EQ(w.Fault(kObjectIdCode), "");
    w.Type(kObjectSchedule2, "abc");
    EXPECT_NE(w.Fault(kObjectSchedule2), "");
    w.Type(kObjectResetIdCode, "999999");
    EXPECT_NE(w.Fault(kObjectResetIdCode), "");
    w.Choose(2);
    EXPECT_NE(w.objects.RowFault(), "") << "a row without a separator";
}

TEST(RowsBox, LeadsToTheTextsOfAnObjectForSingleTypes) {
    RowsWorld w;
    w.Choose(1);
    const std::vector<CodeText> texts = w.objects.CodeTexts();
    ASSERT_EQ(texts.size(), 2u);
    w.objects.EditCodeText(texts[1].code);
    w.objects.EditCodeText("..\\..\\Users");
    EXPECT_EQ(w.host.calls, "types Town/100002;text Information\\Town\\100002\\03.TXT;");
    EXPECT_TRUE(w.types.CodeTexts().empty());
}

TEST(RowsBox, AsksBeforeASaveAddsAFault) {
    RowsWorld w;
    w.Type(kObjectCustomer, "Other");
    w.objects.Apply();
    EXPECT_TRUE(w.dialogs.questions.empty()) << "the junk row was there before";
    w.Type(kObjectCaller, "");
    w.Type(kObjectIdCode, "100002");
    w.objects.Apply();
    ASSERT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_TRUE(w.objects.IsChanged());
    w.objects.Revert();
    w.dialogs.questions.clear();
    w.Type(kObjectSchedule, "00:30:00");
    EXPECT_NE(w.Fault(kObjectSchedule), "");
    w.dialogs.answers = {true};
    w.objects.Apply();
    ASSERT_EQ(w.dialogs.questions.size(), 1u) << "what is left out is asked for";
    EXPECT_NE(w.File().find("100001/0701234567;Bakery;;Plan"), Text::npos);
}

TEST(RowsBox, GoesWithItsSetWhenThatGetsAnotherName) {
    RowsWorld w;
    w.Type(kObjectName, "Bakers");
    ASSERT_TRUE(
        RenameFile(w.folder.Resolve("Settings\\Town.IDCode"), w.folder.Resolve("Settings\\City.IDCode")));
    w.objects.FollowRename("Town", "City");
    EXPECT_TRUE(w.objects.IsChanged()) << "what was typed stays";
    EXPECT_EQ(w.objects.Fields()[kObjectName].typed, "Bakers");
    w.objects.Apply();
    EXPECT_TRUE(w.dialogs.questions.empty()) << "nobody else has written it";
    EXPECT_NE(w.File("City.IDCode").find(";Bakers;"), Text::npos);
    EXPECT_FALSE(w.folder.Exists("Settings\\Town.IDCode"));
}

TEST(RowsBox, AsksBeforeItWritesOverSomebodyElse) {
    RowsWorld w;
    w.Type(kObjectName, "Mine");
    w.folder.Write("Settings\\Town.IDCode", "100001;Theirs;;;;;;;;;\r\n");
    w.objects.Apply();
    EXPECT_EQ(w.dialogs.questions.size(), 1u);
    EXPECT_EQ(w.File(), "100001;Theirs;;;;;;;;;\r\n");
    EXPECT_EQ(w.host.calls, "");
    w.objects.ChooseFile(1);
    EXPECT_EQ(w.objects.CurrentFile(), 0u) << "nothing typed is lost by looking at another set";
    w.objects.Revert();
    EXPECT_EQ(w.objects.Table().Cell(0, 1), "Theirs");
}

TEST(RowsBox, MakesTheFirstRowsOfAFile) {
    RowsWorld w;
    w.objects.ChooseFile(1);
    EXPECT_EQ(w.objects.Table().RowCount(), 0);
    EXPECT_TRUE(w.objects.Current().empty());
    w.objects.Add();
    w.Type(kObjectIdCode, "1a");
    w.Type(kObjectCaller, "0701");
    w.Type(kObjectMatchToAccept, "0");
    w.dialogs.answers = {true};  // without FORMAT nothing is found
    w.objects.Apply();
    EXPECT_EQ(w.File("Village.IDCode"), "1A/0701;;;;;;;0;0;;;\r\n");
    w.types.Load({});
    w.types.Enter();
    w.types.Add();
    w.types.Type(kTypeCode, "99");
    w.types.Type(kTypePriority, "2");
    w.types.Type(kTypeName, "Silent");
    w.types.Apply();
    EXPECT_EQ(w.File("Town.TypeCode"), "99;2;Silent;;\r\n");
}

TEST(RowsBox, WithoutTheRightItOnlyShows) {
    RowsWorld w(kTown, Role::Client);
    EXPECT_FALSE(w.objects.MayEdit());
    EXPECT_TRUE(w.objects.Fields()[kObjectName].isReadOnly);
    w.objects.Add();
    w.objects.Remove({w.objects.Current()});
    w.Type(kObjectName, "x");
    EXPECT_FALSE(w.objects.IsChanged());
    w.rights.level = 2;
    w.objects.Revert();
    w.Type(kObjectName, "x");
    w.objects.Apply();
    EXPECT_NE(w.File().find(";x;"), Text::npos);
}

TEST(RowsBox, AMillionRowsAreCheckedInSlices) {
    Text content = "FORMAT=1,6,0,0,7,2\r\n";
    for (int number = 0; number < 60000; ++number)
        content += std::to_string(200000 + number) + ";Object;60;;;;;;;;\r\n";
    RowsWorld w(content + "200000;again;;;;;;;;;\r\n");
    EXPECT_EQ(w.objects.Faults(), 0) << "not all at once";
    for (int tick = 0; tick < 100 && w.objects.Faults() == 0; ++tick) w.objects.Tick();
    EXPECT_EQ(w.objects.Faults(), 1);
}

}  // namespace
}  // namespace nordkeep
