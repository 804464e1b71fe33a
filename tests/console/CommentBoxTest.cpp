#include "runtime/Dates.h"
#include "runtime/ObjectFiles.h"
#include "tests/console/SheetWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(CommentBox, LooksWithoutChangingAnything) {
    SheetWorld w;
    w.folder.Write("Information\\A\\B\\1.TXT", "Key under the mat\nsecond");
    w.folder.Write("Information\\A\\B\\1\\E1.TXT", "Call the guard");
    w.folder.Write(SheetWorld::kComments, "old\r\n\r\n");
    cAlarm& earlier = w.Raise("1", kStatusAcknowledged, "earlier one");
    cAlarm& alarm = w.Raise();
    ASSERT_TRUE(w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Itself));
    EXPECT_EQ(w.view.calls, "appear ");
    EXPECT_EQ(w.sheet.Texts().information, "Key under the mat\r\nsecond\r\n");
    EXPECT_EQ(w.sheet.Texts().typeCodeInfo, "Call the guard\r\n");
    EXPECT_EQ(w.sheet.OldComments(), "old");
    ASSERT_EQ(w.sheet.Texts().otherAlarms.size(), 1u);
    EXPECT_NE(w.sheet.Texts().otherAlarms.front().find("earlier one"), Text::npos);
    cAlarm& later = w.Raise("1", kStatusNew, "later one");
    later.m_SmallComment = "on my way";
    w.sheet.Tick();
    ASSERT_EQ(w.sheet.Texts().otherAlarms.size(), 2u) << "renewed while the sheet is open";
    EXPECT_NE(w.sheet.Texts().otherAlarms.front().find("later one   - on my way"), Text::npos);
    w.store->Forget(later);
    w.sheet.Tick();
    EXPECT_EQ(w.sheet.Texts().otherAlarms.size(), 1u);
    w.view.calls.clear();
    w.replica.sent.clear();
    w.sheet.Save();
    EXPECT_EQ(w.view.calls, "close ");
    EXPECT_EQ(alarm.m_Status, kStatusNew);
    EXPECT_EQ(w.replica.sent, "");
    EXPECT_EQ(w.Comments(), "old\r\n\r\n");
    EXPECT_EQ(earlier.m_Status, kStatusAcknowledged);
}

TEST(CommentBox, TenSavesAddTenLinesAndNothingElse) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    Text expected;
    for (int i = 0; i < 10; ++i) {
        const Text line = "comment " + std::to_string(i);
        ASSERT_TRUE(w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator));
        w.Type(line + (i % 2 ? "\r\n\r\n" : ""));
        w.sheet.Save();
        EXPECT_FALSE(w.sheet.IsOpen());
        expected += line + "\r\n";
    }
    EXPECT_EQ(w.Comments(), expected);
    EXPECT_TRUE(w.dialogs.questions.empty());
}

TEST(CommentBox, SavedCommentMovesTheStatusOfAnOpenAlarm) {
    const struct {
        int before;
        int after;
    } rows[] = {{0, 1}, {1, 1}, {2, 3}, {3, 3}, {4, 4}, {5, 5}};
    for (const auto& row : rows) {
        SheetWorld w;
        cAlarm& alarm = w.Raise("1", row.before);
        w.replica.sent.clear();
        w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
        w.Type("seen");
        w.sheet.TypeSmallComment("short");
        w.sheet.Save();
        EXPECT_EQ(alarm.m_Status, row.after);
        EXPECT_EQ(alarm.m_SmallComment, "short");
        EXPECT_EQ(w.replica.sent, "7:" + std::to_string(row.after) + "s ") << "one change is told once";
    }
}

TEST(CommentBox, SmallCommentAloneLeavesTheStatusAndTheFile) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.sheet.TypeSmallComment("rather too long");
    EXPECT_TRUE(w.sheet.Controls().isSmallCommentTooLong);
    EXPECT_EQ(w.sheet.SmallCommentCount(), "15 av 10 tecken");
    w.sheet.Save();
    EXPECT_EQ(alarm.m_SmallComment, "rather too long");
    EXPECT_EQ(alarm.m_Status, kStatusNew);
    EXPECT_FALSE(w.folder.Exists(SheetWorld::kComments));
}

TEST(CommentBox, AsksBeforeItOverwritesWhatOthersWrote) {
    for (const bool isSameSecond : {false, true}) {
        SheetWorld w;
        cAlarm& alarm = w.Raise();
        w.folder.Write(SheetWorld::kComments, "first\r\n");
        const Text other = isSameSecond ? "fir5t\r\n" : "first\r\nother\r\n";
        w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
        w.Type("mine");
        w.folder.Write(SheetWorld::kComments, other);
        w.sheet.Save();
        EXPECT_EQ(w.dialogs.questions.size(), 1u);
        EXPECT_EQ(w.Comments(), other) << "no keeps their text";
        EXPECT_TRUE(w.sheet.IsOpen());
        EXPECT_EQ(w.sheet.NewComments(), "mine");
        EXPECT_EQ(w.sheet.OldComments() + "\r\n", other);
        EXPECT_EQ(alarm.m_Status, kStatusNew);
        w.sheet.Save();
        EXPECT_EQ(w.Comments(), other + "mine\r\n") << "the next save merges";

        w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
        w.Type("again");
        w.folder.Write(SheetWorld::kComments, "theirs\r\n");
        w.dialogs.answers = {true};
        w.sheet.Save();
        EXPECT_EQ(w.Comments(), other + "mine\r\nagain\r\n") << "yes overwrites";
    }
}

TEST(CommentBox, ClientSendsItsRequestsInOrder) {
    SheetWorld w(Role::Client);
    w.replica.writesFiles = false;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.Type("x");
    w.dataFiles.sent.clear();
    w.sheet.Save();
    // Folders, then stamp and text as they are now, the write, and what became of it.
    EXPECT_EQ(w.dataFiles.sent, "24 24 20 18 19 18 20 ");
    EXPECT_EQ(w.Comments(), "x\r\n");
}

TEST(CommentBox, KeepsWhatCouldNotBeWritten) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.Type("precious");
    w.dataFiles.isDeaf = true;
    w.sheet.Save();
    EXPECT_TRUE(w.sheet.IsOpen());
    EXPECT_EQ(w.sheet.NewComments(), "precious");
    EXPECT_FALSE(w.sheet.Notice().text.empty());
    EXPECT_EQ(alarm.m_Status, kStatusNew);
    w.dataFiles.isDeaf = false;
    w.sheet.Save();
    EXPECT_EQ(w.Comments(), "precious\r\n");
}

// The history that was there would be lost: nobody has seen it.
TEST(CommentBox, NeverWritesOverWhatItCouldNotRead) {
    for (const bool isLocal : {true, false}) {
        SheetWorld w(isLocal ? Role::StandAlone : Role::Client);
        w.folder.Write(SheetWorld::kComments, "history\r\n");
        cAlarm& alarm = w.Raise();
        bool& cannotRead = isLocal ? w.dataFiles.isBlind : w.dataFiles.isSilent;
        cannotRead = true;
        w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
        w.Type("mine");
        if (isLocal) {
            w.sheet.Save();
            EXPECT_EQ(w.sheet.Notice().text, w.captions(3786));
        }
        EXPECT_EQ(w.Comments(), "history\r\n");
        EXPECT_EQ(w.sheet.NewComments(), "mine");
        cannotRead = false;
        w.dialogs.answers = {true};
        w.sheet.Save();
        EXPECT_EQ(w.Comments(), "history\r\nmine\r\n");
        EXPECT_EQ(alarm.m_Status, kStatusCommented);
    }
}

TEST(CommentBox, LosingTheServerInTheMiddleWritesNothingAndAsksNothing) {
    SheetWorld w(Role::Client);
    cAlarm& alarm = w.Raise();
    w.folder.Write(SheetWorld::kComments, "old\r\n");
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.Type("precious");
    w.dataFiles.onAccess = [&] { w.rights.isConnectionLost = true; };
    w.sheet.Save();
    EXPECT_TRUE(w.dialogs.questions.empty());
    EXPECT_EQ(w.sheet.NewComments(), "precious");
    EXPECT_EQ(w.Comments(), "old\r\n");
    EXPECT_TRUE(w.sheet.IsOpen());
}

TEST(CommentBox, EndsTheAlarmBeforeItSaves) {
    SheetWorld w;
    cAlarm& alarm = w.Raise("1", kStatusNewWaiting);
    w.replica.sent.clear();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.Type("done");
    w.sheet.TypeSmallComment("s");
    w.sheet.EndAlarm();
    EXPECT_EQ(alarm.m_Status, kStatusNewWaiting) << "no to the question changes nothing";
    EXPECT_TRUE(w.sheet.IsOpen());
    w.dialogs.answers = {true};
    w.sheet.EndAlarm();
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
    EXPECT_EQ(alarm.m_AckedTime, w.time.Now());
    EXPECT_EQ(alarm.m_SmallComment, "s");
    EXPECT_EQ(w.replica.sent, "7:5s ");
    EXPECT_EQ(w.desk.ended, std::vector<std::int32_t>{alarm.m_FilePointer});
    EXPECT_EQ(w.Comments(), "done\r\n");
    EXPECT_FALSE(w.sheet.IsOpen());
}

TEST(CommentBox, RefusedTextLeavesTheAlarmEndedAndTheSheetOpen) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    w.Type("mine");
    w.folder.Write(SheetWorld::kComments, "other\r\n");
    w.dialogs.answers = {true, false};
    w.sheet.EndAlarm();
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
    EXPECT_EQ(w.sheet.NewComments(), "mine");
    EXPECT_FALSE(w.sheet.Controls().canEnd);
    w.sheet.Save();
    EXPECT_EQ(w.Comments(), "other\r\nmine\r\n");
    EXPECT_EQ(alarm.m_Status, kStatusAcknowledged);
}

/// Does something while the question is up.
class MeddlingDialogs final : public FakeDialogs {
 public:
    using Dialogs::AskYesNo;
    bool AskYesNo(const Text& question, Answer byDefault) override {
        if (meddle) meddle();
        return FakeDialogs::AskYesNo(question, byDefault);
    }
    std::function<void()> meddle{};
};

TEST(CommentBox, AlarmThatGoesWhileTheQuestionIsUpIsLeftAlone) {
    for (const bool isRemoved : {false, true}) {
        SheetWorld w;
        MeddlingDialogs dialogs;
        CommentBox sheet({.store = *w.store,
                          .handling = w.handling,
                          .translations = w.translations,
                          .files = w.dataFiles,
                          .dialogs = dialogs,
                          .language = w.language,
                          .captions = w.captions,
                          .settings = w.settings,
                          .printer = w.printer,
                          .printerSettings = w.printerSettings,
                          .state = w,
                          .centre = w.centre,
                          .windows = w.opened,
                          .forms = w.forms,
                          .clock = w.time});
        cAlarm& alarm = w.Raise();
        const std::int32_t key = alarm.m_FilePointer;
        sheet.OpenAlarm(key, OpenedBy::Operator);
        sheet.TypeNewComments("kept");
        dialogs.answers = {true};
        dialogs.meddle = [&] {
            sheet.Close();
            EXPECT_FALSE(sheet.OpenAlarm(key, OpenedBy::Operator)) << "one operation at a time";
            if (isRemoved) return w.store->RemoveAlarm(alarm);
            alarm.m_Status = kStatusAcknowledged;
            w.store->Update(alarm);
        };
        sheet.EndAlarm();
        EXPECT_TRUE(w.desk.ended.empty());
        EXPECT_TRUE(sheet.IsOpen());
        EXPECT_FALSE(sheet.Notice().text.empty());
        sheet.Save();
        EXPECT_EQ(w.Comments(), "kept\r\n") << "the comment is the object's and is saved all the same";
    }
}

TEST(CommentBox, TellsWhenSomebodyElseEndsTheAlarm) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    alarm.m_SmallComment = "news     ";
    w.sheet.Tick();
    EXPECT_EQ(w.sheet.SmallComment(), "news");
    w.isRequestPending = true;
    alarm.m_Status = kStatusAcknowledged;
    w.sheet.Tick();
    EXPECT_TRUE(w.sheet.Notice().text.empty()) << "while events are fetched nothing is known";
    w.isRequestPending = false;
    w.sheet.Tick();
    EXPECT_EQ(w.sheet.Notice().text, w.captions(5802));
    EXPECT_FALSE(w.sheet.Controls().canEnd);
}

TEST(CommentBox, ObjectSheetWritesTheCommentFileOnly) {
    SheetWorld w;
    cAlarm& alarm = w.Raise();
    ASSERT_TRUE(w.sheet.OpenObject("A/B", "1"));
    const SheetControls controls = w.sheet.Controls();
    EXPECT_FALSE(controls.canEnd || controls.canSend || controls.hasSmallComment);
    w.Type("about the object");
    w.sheet.Save();
    EXPECT_EQ(w.Comments(), "about the object\r\n");
    EXPECT_EQ(alarm.m_Status, kStatusNew);
}

TEST(CommentBox, RightsNarrowWhatCanBeDone) {
    const struct {
        Role role;
        int level;
        bool isLost;
        bool canType;
        bool canEnd;
    } rows[] = {{Role::Server, 0, false, true, true},
                {Role::Client, 0, false, false, false},
                {Role::Client, 1, false, true, true},
                {Role::Client, 1, true, true, false}};
    for (const auto& row : rows) {
        SheetWorld w(row.role);
        cAlarm& alarm = w.Raise();
        w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Itself);
        w.rights = {row.role, row.level, row.isLost};
        EXPECT_EQ(w.sheet.Controls().canType, row.canType);
        EXPECT_EQ(w.sheet.Controls().canEnd, row.canEnd);
        w.dialogs.answers = {true};
        w.sheet.EndAlarm();
        EXPECT_EQ(alarm.m_Status == kStatusAcknowledged, row.canEnd);
    }
}

TEST(CommentBox, SendsTheAlarmToTheChosenReceiver) {
    SheetWorld w;
    w.folder.Write("Settings\\TorvexReceivers.INI", "[Receivers]\r\n0701=Anna=A\r\nb=Bo\r\n");
    cAlarm& alarm = w.Raise();
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    ASSERT_EQ(w.sheet.Texts().receivers.size(), 2u);
    EXPECT_EQ(w.sheet.Texts().receivers[0].value, "Anna=A");
    w.sheet.Send(0);
    const Text when =
        FormatDate(alarm.m_TimeStamp, "YYYY-MM-DD") + " " + FormatDate(alarm.m_TimeStamp, "HH:NN:SS");
    EXPECT_EQ(w.centre.dispatched, "3||||||0701|Shop " + when + "\n");
    w.centre.isDispatcherThere = false;
    w.sheet.Send(1);
    EXPECT_EQ(w.sheet.Notice().text, w.captions(3702));
    w.sheet.Send(2);
    EXPECT_EQ(w.centre.dispatched.find("3||||||b|"), w.centre.dispatched.rfind("3||||||"))
        << "no third receiver";
    w.settings.ManualTransmission = "0";
    w.sheet.OpenAlarm(alarm.m_FilePointer, OpenedBy::Operator);
    EXPECT_FALSE(w.sheet.Controls().hasReceivers);
}

TEST(CommentBox, HostileNamesStayInTheirFolders) {
    for (const char* set : {"..", "../..", "a\\..\\..", ""}) {
        for (const char* id : {"..", "a/b", "..\\x", ""}) {
            const Text path = CommentFile(set, id);
            EXPECT_EQ(path.find("\\..\\"), Text::npos) << path;
            EXPECT_TRUE(path.starts_with("Comments\\")) << path;
        }
    }
}

}  // namespace
}  // namespace nordkeep
