#include "console/editors/ObjectFormBox.h"
#include "runtime/Dates.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

constexpr TextView kForm =
    "Group;\"Contacts\"\r\n"
    "Field;Contact;text;\"Who\"\r\n"
    "Field;Phone;phone;\"Number\"\r\n"
    "Field;Place;address;\"Where\"\r\n"
    "Field;Plan;lines;\"What to do\"\r\n";
constexpr const char* kFile = "Information\\A\\B\\1.TXT";
constexpr TextView kOld = "Key under the mat\r\nPhone=070-1234567\r\nPlan=[ ] ring\r\nPlan=[ ] wait\r\n";

struct FormWorld : SheetWorld {
    FormWorld() {
        rights.level = 2;
        folder.Write(kObjectFormFile, kForm);
        folder.Write(kFile, kOld);
        box.SetView(view);
    }
    void Open() { box.Open("A/B", "1", "Shop"); }

    RecordingEditorsHost host{};
    ObjectFormBox box{{.files = dataFiles,
                       .dialogs = dialogs,
                       .captions = captions,
                       .state = *this,
                       .host = host,
                       .forms = forms}};
};

TEST(ObjectFormBox, KeepsWhatIsNoFieldByteForByte) {
    FormWorld w;
    w.Open();
    ASSERT_EQ(w.box.Fields().size(), 4u);
    EXPECT_EQ(w.box.Fields()[3].typed, "[ ] ring\r\n[ ] wait");
    EXPECT_EQ(w.box.Other(), "Key under the mat");
    w.box.Save();
    EXPECT_EQ(w.folder.Read(kFile), kOld) << "nothing typed, nothing written";
    w.box.Type(0, "Anna\r\nBerg");
    w.box.Type(3, "[ ] ring");
    w.box.Save();
    EXPECT_TRUE(w.box.Notice().isGood);
    EXPECT_EQ(w.folder.Read(kFile),
              "Key under the mat\r\nPhone=070-1234567\r\nPlan=[ ] ring\r\nContact=Anna  Berg\r\n");
    EXPECT_EQ(w.host.calls, Text("saved ") + kFile + ";");
    EXPECT_FALSE(w.box.IsChanged());
}

TEST(ObjectFormBox, AsksBeforeItLosesOrOverwritesAnything) {
    FormWorld w;
    w.Open();
    w.box.Type(1, "ask Anna");
    EXPECT_FALSE(w.box.Fields()[1].fault.empty());
    w.dialogs.answers = {false};
    w.box.Save();
    EXPECT_EQ(w.folder.Read(kFile), kOld) << "a value that is none is asked for";
    w.box.Type(1, "08-7654321");
    w.folder.Write(kFile, "Contact=Bo\r\nOther\r\n");
    w.dialogs.answers = {false};
    w.box.Save();
    EXPECT_EQ(w.folder.Read(kFile), "Contact=Bo\r\nOther\r\n");
    w.dialogs.answers = {true};
    w.box.Save();
    EXPECT_EQ(w.folder.Read(kFile), "Contact=Bo\r\nPhone=08-7654321\r\nOther\r\n")
        << "what the other wrote stays but for the field typed here";
    w.box.Type(0, "Carl");
    w.dialogs.answers = {false};
    w.box.Close();
    EXPECT_TRUE(w.box.IsOpen());
    w.dialogs.answers = {true};
    w.box.Close();
    EXPECT_FALSE(w.box.IsOpen());
}

TEST(ObjectFormBox, DamagedFormGivesWayToTheDeliveredOne) {
    FormWorld w;
    w.folder.Write(kObjectFormFile, Text(kForm) + "Feeld;x;text;1\r\n");
    w.folder.Write("ObjectInfo.Default_desc", "Group;\"G\"\r\nField;Phone;phone;\"P\"\r\n");
    w.Open();
    ASSERT_EQ(w.box.Fields().size(), 1u);
    EXPECT_EQ(w.box.Fields()[0].typed, "070-1234567");
}

TEST(ObjectFormBox, OnlyWhoMayEditTypes) {
    FormWorld w;
    w.rights = {.role = Role::Client, .level = 1};
    w.Open();
    w.box.Type(0, "x");
    EXPECT_FALSE(w.box.IsChanged());
}

// --- The same in the sheet

TEST(CommentBoxForm, ShowsFieldsInOrderAndAllOtherLines) {
    FormWorld w;
    w.settings.ViewDynamicFormInAlarmComment = true;
    w.folder.Write(kFile, Text(kOld) + "Place=Shop street 1\r\n");
    w.sheet.OpenAlarm(w.Raise().m_FilePointer, OpenedBy::Operator);
    const auto& form = w.sheet.Texts().form;
    ASSERT_EQ(form.size(), 4u);
    EXPECT_EQ(form[0].caption, "Number");
    EXPECT_EQ(form[0].link, "tel:0701234567");
    EXPECT_EQ(form[1].link, "geo:0,0?q=Shop%20street%201");
    EXPECT_EQ(form[2].value, "[ ] ring\r\n[ ] wait");
    EXPECT_EQ(form[3].caption, "");
    EXPECT_EQ(form[3].value, "Key under the mat");
    ASSERT_EQ(w.sheet.Texts().phones.size(), 1u);
    EXPECT_EQ(w.sheet.Texts().phones[0].number, "070-1234567");
    EXPECT_EQ(w.sheet.Texts().phones[0].who, "Number");
}

TEST(CommentBoxAids, TicksGoIntoTheCommentAndOutAgain) {
    FormWorld w;
    w.folder.Write("Information\\A\\B\\1\\E1.TXT", "Smoke:\r\n[ ] Call the brigade\r\n[] Call Anna");
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    ASSERT_EQ(w.sheet.Steps().size(), 4u) << "of the instruction, then of the object";
    w.Type("seen");
    w.sheet.TickStep(0, true);
    const Text stamp = FormatDate(w.time.Now(), "YYYY-MM-DD ") + w.sheet.Stamp();
    EXPECT_EQ(w.sheet.NewComments(), "seen\r\n" + stamp + "[x] Call the brigade\r\n");
    w.sheet.TickStep(1, true);
    w.sheet.TickStep(0, false);
    w.sheet.TickStep(1, true);
    EXPECT_EQ(w.sheet.NewComments(), "seen\r\n" + stamp + "[x] Call Anna\r\n");
    w.sheet.Save();
    EXPECT_EQ(w.Comments(), "seen\r\n" + stamp + "[x] Call Anna\r\n");
    EXPECT_EQ(alarm.m_Status, kStatusCommented);
    w.rights = {.role = Role::Client, .level = 0};
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.sheet.TickStep(0, true);
    EXPECT_EQ(w.sheet.NewComments(), "") << "who may not type ticks nothing";
}

TEST(CommentBoxAids, TicksOfThisAlarmAreThereAgainWhenTheSheetIsOpened) {
    FormWorld w;
    w.folder.Write("Information\\A\\B\\1\\E1.TXT", "[ ] Call the brigade\r\n[ ] Call Anna\r\n[ ] Lock up");
    cAlarm& alarm = w.Raise();
    alarm.m_ArrivedTime = w.time.Now();
    const auto done = [&w](const cAlarm& of) {
        w.sheet.OpenAlarm(of.m_FilePointer, OpenedBy::Operator);
        Text marks;
        for (const InstructionStep& step : w.sheet.Steps()) marks += step.IsDone() ? 'x' : '-';
        return marks.substr(0, 3);
    };
    done(alarm);
    w.sheet.TickStep(0, true);
    w.sheet.TickStep(1, true);
    w.sheet.Save();
    EXPECT_EQ(done(alarm), "xx-");
    w.sheet.TickStep(0, false);
    EXPECT_TRUE(w.sheet.Steps()[0].IsDone()) << "what has been saved stays";
    EXPECT_EQ(w.sheet.NewComments(), "");
    w.sheet.Close();
    // Somebody has written over one of the lines, and broken another.
    Text comments = w.Comments();
    comments.replace(comments.find("Call Anna"), 9, "Called Anna");
    w.folder.Write("Comments\\A\\B\\1.TXT", comments + "[x] Lock up\r\n99-99 [x] Lock up\r\n[x] ");
    EXPECT_EQ(done(alarm), "x--");
    w.sheet.Close();
    w.time.Advance(120'000);
    cAlarm& next = w.Raise();
    next.m_ArrivedTime = w.time.Now();
    EXPECT_EQ(done(next), "---") << "what was done for an alarm before counts for that one";
}

TEST(CommentBoxAids, PhrasesAreTheCentresOwnOrTheDelivered) {
    FormWorld w;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    EXPECT_EQ(w.sheet.Texts().phrases.size(), 6u);
    w.folder.Write(kPhrasesFile, "; remark\r\nGuard sent.\r\n\r\nNobody answers.\r\n");
    w.sheet.Close();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    EXPECT_EQ(w.sheet.Texts().phrases, (std::vector<Text>{"Guard sent.", "Nobody answers."}));
}

}  // namespace
}  // namespace nordkeep
