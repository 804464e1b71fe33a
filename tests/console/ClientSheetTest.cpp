#include "console/boxes/CommentBox.h"
#include "tests/console/ConsoleDoubles.h"
#include "tests/doubles/FakeDialogs.h"
#include "tests/doubles/LoopbackLink.h"
#include "tests/network/ClientWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// A client's operator, who knows of the server what the link knows.
struct LinkedState final : OperatorState {
    explicit LinkedState(const ServerLink& serverLink) : link(serverLink) {}
    OperatorRights Rights() const override { return {Role::Client, 1, link.IsConnectionLost()}; }
    bool IsQuestionUp() const override { return false; }
    bool IsRequestPending() const override { return link.IsRequestPending(); }
    bool IsFlood() const override { return false; }
    const ServerLink& link;
};

/// A sheet on a client, with the files and alarms of its server.
struct ClientSheet {
    ClientSheet(ManualTime& time, SocketFactory& sockets) : client(time, sockets) {}

    ClientWorld client;
    FakeDialogs dialogs{};
    Captions captions{client.language};
    CommentSettings settings{};
    struct : PrintOutput {
        void Print(const PrintDocument&) override {}
        void Preview(const PrintDocument&) override {}
    } printer{};
    PrinterSettings printerSettings{};
    LinkedState state{client.link};
    RecordingCentre centre{};
    RecordingWindows windows{};
    ObjectForms forms{{.files = client.remote, .programFolder = client.folder.Tree(), .captions = captions}};
    CommentBox sheet{{.store = client.store,
                      .handling = client.core.handling,
                      .translations = client.translations,
                      .files = client.remote,
                      .dialogs = dialogs,
                      .language = client.language,
                      .captions = captions,
                      .settings = settings,
                      .printer = printer,
                      .printerSettings = printerSettings,
                      .state = state,
                      .centre = centre,
                      .windows = windows,
                      .forms = forms,
                      .clock = client.time}};
};

struct TwoClients {
    TwoClients() {
        EXPECT_TRUE(server.slots.Listen());
        server.Raise("alarm").m_IdCode = "1";
        cAlarm& raised = *server.store.Events().Find(server.store.Events().Next(0));
        raised.m_TranslationFile = "Town/A";
        raised.m_AlarmId = 7;
        key = raised.m_FilePointer;
        for (ClientSheet* each : {&first, &second}) {
            EXPECT_EQ(each->client.Start().failure, "");
            EXPECT_TRUE(each->sheet.OpenAlarm(key, OpenedBy::Operator));
        }
    }
    Text Comments() const { return server.folder.Read("Comments\\Town\\A\\1.TXT"); }

    ManualTime time{};
    LoopbackLink sockets{time};
    ServerWorld server{time, sockets};
    ClientSheet first{time, sockets};
    ClientSheet second{time, sockets};
    std::int32_t key = 0;
};

TEST(ClientSheet, SavesOnTheServerAndSecondClientIsAsked) {
    TwoClients w;
    w.first.sheet.TypeNewComments("first");
    w.first.sheet.Save();
    w.time.Advance(1000);
    EXPECT_FALSE(w.first.sheet.IsOpen());
    EXPECT_EQ(w.Comments(), "first\r\n");
    EXPECT_EQ(w.server.store.FindAlarmByKey(w.key)->m_Status, kStatusCommented);
    EXPECT_EQ(w.second.client.store.FindAlarmByKey(w.key)->m_Status, kStatusCommented);

    w.second.sheet.TypeNewComments("second");
    w.second.sheet.Save();
    EXPECT_EQ(w.second.dialogs.questions.size(), 1u);
    EXPECT_EQ(w.second.sheet.OldComments(), "first");
    w.second.sheet.Save();
    w.time.Advance(1000);
    EXPECT_EQ(w.Comments(), "first\r\nsecond\r\n");
}

TEST(ClientSheet, EndsTheAlarmForAll) {
    TwoClients w;
    w.first.sheet.TypeNewComments("done");
    w.first.dialogs.answers = {true};
    w.first.sheet.EndAlarm();
    w.time.Advance(1000);
    EXPECT_EQ(w.server.store.FindAlarmByKey(w.key)->m_Status, kStatusAcknowledged);
    EXPECT_EQ(w.Comments(), "done\r\n");
    w.second.sheet.Tick();
    EXPECT_FALSE(w.second.sheet.Controls().canEnd);
    EXPECT_FALSE(w.second.sheet.Notice().text.empty());
}

TEST(ClientSheet, KeepsTheTextWhenTheServerIsGone) {
    TwoClients w;
    w.first.sheet.TypeNewComments("precious");
    w.server.slots.Shutdown();
    w.time.Advance(1000);
    w.first.sheet.Save();
    w.first.sheet.EndAlarm();
    w.first.sheet.Tick();
    EXPECT_TRUE(w.first.sheet.IsOpen());
    EXPECT_EQ(w.first.sheet.NewComments(), "precious");
    EXPECT_EQ(w.Comments(), "");
    EXPECT_TRUE(w.first.dialogs.questions.empty());
}

}  // namespace
}  // namespace nordkeep
