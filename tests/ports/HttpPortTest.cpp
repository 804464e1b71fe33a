#include "ports/formats/VirtualReceiver.h"
#include "tests/ports/PortWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

const OleDate kNow = OleDate::FromCivil({2024, 3, 5, 7, 8, 9});
constexpr const char* kEvent =
    "<rocip100><EventCode>7</EventCode><site>100</site><EventText>T</EventText></rocip100>";

TEST(PollReply, TellsAnEmptyQueueFromAnError) {
    struct Case {
        const char* reply;
        const char* error;
        int eventNumber;
    };
    const Case cases[] = {
        {"ERROR:EVENT QUEUE EMPTY", "", 5},
        {"error:EventQueueEmpty\n", "", 5},
        {"ERROR: EVENT QUEUE EMPTY", " EVENT QUEUE EMPTY", 0},
        {"ERROR:BAD PASS\r\n", "BAD PASS", 0},
        {"<html>no such page</html>", "", 5},
        {"", "", 5},
    };
    for (const Case& c : cases) {
        cVirtualReceiver receiver{.m_EventNumber = 5};
        const PollReply read = ReadPollReply(c.reply, receiver, kNow);
        EXPECT_EQ(read.error, c.error) << c.reply;
        EXPECT_EQ(receiver.m_EventNumber, c.eventNumber) << c.reply;
        EXPECT_TRUE(read.step.isTraffic && read.step.events.empty() && !read.eventNumber) << c.reply;
    }
}

TEST(PollReply, HasEventsUntilItsCut) {
    cVirtualReceiver receiver{.m_FailureCount = 3};
    const PollReply read =
        ReadPollReply("OK:[42]" + Text(kEvent) + "x" + kEvent + "<rocip100><site>3", receiver, kNow);
    EXPECT_EQ(read.eventNumber, 42);
    EXPECT_TRUE(receiver.m_GotData && read.isCut);
    EXPECT_EQ(receiver.m_FailureCount, 0);
    ASSERT_EQ(read.step.events.size(), 2u);
    const IncomingEvent& event = read.step.events[1].event;
    EXPECT_EQ(event.DefaultType, 7);
    EXPECT_EQ(event.DefaultAlarmCode, "100");
    EXPECT_EQ(event.ExtraText, "T");
    EXPECT_EQ(event.TranslationNumberToUse, Protocol::VirtualReceiver);
}

TEST(PollReply, TenWithoutANumberStartTheQueueAnew) {
    cVirtualReceiver receiver{.m_EventNumber = 5};
    for (int i = 0; i < 9; ++i) ReadPollReply("OK:", receiver, kNow);
    EXPECT_EQ(receiver.m_EventNumber, 5);
    ReadPollReply("OK:", receiver, kNow);
    EXPECT_EQ(receiver.m_EventNumber, 0);
    EXPECT_EQ(receiver.m_FailureCount, 0);
}

TEST(PollUrl, EncodesWhatCannotStandInIt) {
    cVirtualReceiver receiver = ReceiverOf("A \xE5#=secret,Harbour");
    receiver.m_EventNumber = 7;
    EXPECT_EQ(PassInput(receiver), "CSIDA \xE5#Event7Passsecret");
    EXPECT_EQ(PollUrl("http://h/p", receiver, "ff"), "http://h/p?csid=CSIDA%20%E5%23&event=7&pass=ff");
    EXPECT_EQ(receiver.m_Description, "Harbour");
}

class HttpPortTest : public PortWorld {
 protected:
    HttpPortTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom(
            "1035=Port\n1036=no answer in\n1037=s\n1133=complains\n1041=Opened\n3615=Cut \n5329=status\n");
        WriteSettings({});
        ports.Discover(parts);
        ports.Tick(1000, conditions);
    }

    void WriteSettings(const Text& more) {
        folder.Write(
            "Settings\\Port1.ini",
            "[General]\r\nPortType=HTTP\r\nMessageFormat=10\r\nPortSetting=https://h/p\r\nHTTPPolls=2\r\n"
            "HTTPTimeout=2\r\n[VirtualReceivers]\r\nA=pa,Harbour\r\nB=pb,Quay\r\n" +
                more);
    }
    FakeInet& Slot() { return *inets.slots.at(0); }
    void Tick() {
        time.Advance(250);
        ports.CyclicHTTPCleanup(250, conditions);
    }
    /// Ticks until a request is out; its receiver.
    Text NextAsked() {
        for (int i = 0; i < 60 && !Slot().IsAsked(); ++i) Tick();
        return Slot().IsAsked() ? Slot().urls.back().substr(Slot().urls.back().find("CSID") + 4, 1) : "none";
    }
    void Answer(const Text& text) {
        Slot().Answer(text);
        Tick();
        Tick();
        commit.Commit();
    }
};

TEST_F(HttpPortTest, AsksEachReceiverAndTheOneWithEventsAgain) {
    EXPECT_EQ(NextAsked(), "A");
    EXPECT_EQ(Slot().protocol, InetProtocol::Https);
    EXPECT_EQ(Slot().urls.back(), "https://h/p?csid=CSIDA&event=0&pass=(CSIDAEvent0Passpa)");
    Answer("OK:[9]" + Text(kEvent));
    ASSERT_EQ(intake.events.size(), 1u);
    EXPECT_EQ(NextAsked(), "A");
    EXPECT_NE(Slot().urls.back().find("&event=9&"), Text::npos);
    Answer("OK:[10]" + Text(kEvent));
    EXPECT_EQ(NextAsked(), "B") << "two polls in a row are the limit";
    WriteSettings("C=pc,Late\r\n");
    Answer("ERROR:EVENTQUEUEEMPTY");
    const std::int64_t roundEnd = time.MonotonicMs();
    EXPECT_EQ(NextAsked(), "A");
    EXPECT_GE(time.MonotonicMs() - roundEnd, 4000) << "the interval runs between rounds";
    Answer("");
    EXPECT_EQ(NextAsked(), "B");
    Answer("");
    EXPECT_EQ(NextAsked(), "C") << "a round takes the receivers of its time";
}

TEST_F(HttpPortTest, ConfirmsNothingThatIsNotStored) {
    NextAsked();
    Slot().Answer("OK:[9]" + Text(kEvent));
    for (int i = 0; i < 20; ++i) Tick();
    EXPECT_EQ(Slot().urls.size(), 1u) << "no request before the event is safe";
    commit.NoteFailure();
    commit.Commit();
    intake.during = [this] { commit.NoteFailure(); };
    NextAsked();
    Answer("OK:[10]" + Text(kEvent));
    EXPECT_EQ(NextAsked(), "B") << "not again in this round";
    Answer("");
    EXPECT_EQ(NextAsked(), "A");
    EXPECT_NE(Slot().urls.back().find("&event=9&"), Text::npos);
}

TEST_F(HttpPortTest, GoesOnAfterATimeOutAndAnError) {
    EXPECT_EQ(NextAsked(), "A");
    for (int i = 0; i < 12; ++i) Tick();
    EXPECT_EQ(LinesWith("Port Port1 no answer in 2 s (CSID=A) Harbour"), 1u);
    EXPECT_EQ(Slot().cancels, 1);
    EXPECT_EQ(NextAsked(), "B");
    Answer("ERROR:BAD PASS\n");
    EXPECT_EQ(LinesWith("Port Port1 complains (CSID=B) Quay -> BAD PASS"), 1u);
    EXPECT_EQ(NextAsked(), "A");
}

TEST_F(HttpPortTest, TellsTheReasonOfAFailureOnceASeries) {
    for (int round = 0; round < 2; ++round) {
        NextAsked();
        Slot().Fail("Connection refused");
        Tick();
        Tick();
        NextAsked();
        Slot().statusCode = 503;
        Answer("<html>out of order</html>");
        Slot().statusCode = 200;
    }
    EXPECT_EQ(LinesWith("Port Port1 Connection refused (CSID=A) Harbour"), 1u);
    EXPECT_EQ(LinesWith("Port Port1 status 503 (CSID=B) Quay"), 1u);
}

TEST_F(HttpPortTest, RestsWhileThePortIsClosedAndDropsWhatAMutedPortGets) {
    NextAsked();
    folder.Write("Settings\\Port1.ini", "[General]\r\nPortDisable=2030-01-01 00:00:00\r\n");
    ports.Tick(1000, conditions);
    EXPECT_FALSE(Slot().IsAsked());
    EXPECT_EQ(NextAsked(), "none");
    WriteSettings({});
    conditions.mutedPort = "Port1";
    ports.Tick(1000, conditions);
    EXPECT_EQ(NextAsked(), "A");
    Answer("OK:[9]" + Text(kEvent));
    EXPECT_TRUE(intake.events.empty());
}

}  // namespace
}  // namespace nordkeep
