#include "tests/ports/PortWorld.h"
#include "tools/Modem.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

using tools::Modem;

/// A modem at the end of a played line. It answers after a while, in one piece or cut in two.
class ModemOnLine {
 public:
    /// `sent` is what the port has sent; `arrive` brings bytes to it.
    ModemOnLine(ManualTime& time, Text& sent, std::function<void(const Text&)> arrive)
        : time_(time), sent_(sent), arrive_(std::move(arrive)) {
        timer_ = time.NewTimer([this] { Look(); });
        timer_->Start(5);
    }
    void Say(const Text& text) {
        const std::size_t size = std::min(cut, text.size());
        time_.After(delayMs, [this, piece = text.substr(0, size)] { Arrive(piece); });
        time_.After(delayMs + 30, [this, piece = text.substr(size)] { Arrive(piece); });
    }
    /// How often a command has come.
    std::size_t Count(const Text& command) const {
        return static_cast<std::size_t>(std::ranges::count(modem.commands, command));
    }

    Modem modem{};
    int delayMs = 20;
    std::size_t cut = 0;

 private:
    void Look() {
        const Text bytes = std::exchange(sent_, {});
        const Text answer = modem.Take(bytes);
        if (!answer.empty()) Say(answer);
    }
    void Arrive(const Text& piece) const {
        if (!piece.empty()) arrive_(piece);
    }

    ManualTime& time_;
    Text& sent_;
    std::function<void(const Text&)> arrive_;
    std::unique_ptr<Timer> timer_{};
};

class GsmPortTest : public PortWorld {
 protected:
    GsmPortTest() {
        folder.MakeFolders("LogFiles");
        language.LoadFrom("1038=GSM\n1041=Opened\n1043=Too long\n");
    }

    void AddPort(const Text& name, const Text& more) {
        folder.Write("Settings\\" + name + ".ini",
                     "[General]\r\nMessageFormat=3\r\nPauseBetweenEachPoll=10\r\nEmptyLocationsToPoll=2\r\n" +
                         more + "\r\nPortType=RS232\r\n");
    }
    void Start(const Text& more = "InitInterval=-1") {
        AddPort("Port1", more);
        Begin();
    }
    void Begin() {
        ports.Discover(parts);
        for (FakeMSComm* line : serial.made) {
            modems.push_back(std::make_unique<ModemOnLine>(time, line->sent, [line](const Text& piece) {
                if (line->isOpen) line->Arrive(piece);
            }));
        }
        ticker->Start(1000);
    }
    ModemOnLine& First() { return *modems.at(0); }
    Modem& Sim() { return First().modem; }
    std::vector<Text> Texts() const {
        std::vector<Text> texts;
        for (const IncomingEvent& event : intake.events) {
            texts.push_back(event.DefaultAlarmCode + "|" + event.ExtraText);
        }
        return texts;
    }

    std::vector<std::unique_ptr<ModemOnLine>> modems{};
    std::unique_ptr<Timer> ticker = time.NewTimer([this] { ports.Tick(1000, conditions); });
    EventCommit commit{disk, [this] { time.Post([this] { commit.Commit(); }); }};
    PortParts parts = PartsWith(commit);
};

TEST_F(GsmPortTest, InitialisesInOrderAndAgainAfterAFailureAndAReopening) {
    Start("PIN=1234\r\nInitString=AT+CNMI=2,1\r\nSMSCNumber=+4670\r\nPollInterval=0\r\nInitInterval=60");
    const std::vector<std::string> all = {"AT+CPIN=\"1234\"", "AT+CNMI=2,1",        "AT+CSCA=\"+4670\"",
                                          "AT+CMGF=1",        "AT+CSCS=\"8859-1\"", "AT+CSMP=17,169,0,240"};
    time.Advance(10'000);
    EXPECT_EQ(Sim().commands, all);
    Sim().refused = "AT+CPIN";
    time.Advance(120'000);
    EXPECT_EQ(First().Count("AT+CPIN=\"1234\""), 3u)
        << "not more often than the interval, locked cards are dear";
    EXPECT_EQ(First().Count("AT+CMGF=1"), 1u);
    Sim().refused.clear();
    serial.At(0).Vanish("gone");
    serial.At(0).failure.clear();
    time.Advance(10'000);
    EXPECT_EQ(First().Count("AT+CMGF=1"), 2u);
}

TEST_F(GsmPortTest, ReadsAndDeletesTheMessagesOfTheCard) {
    for (const bool echoes : {true, false}) {
        for (const char* empty : {"+CMS ERROR: 321", "OK", "ERROR"}) {
            ports = PortList();
            modems.clear();
            serial.made.clear();
            intake.events.clear();
            Start("InitInterval=-1\r\nPollInterval=60");
            Sim().echoes = echoes;
            Sim().emptyAnswer = empty;
            Sim().messages = {
                {1, {"+4670", "1001 A"}}, {3, {"070", "all OK\r\nsecond line"}}, {6, {"1", "far"}}};
            time.Advance(20'000);
            EXPECT_EQ(Texts(), (std::vector<Text>{"1001|A", "|all OK\tsecond line"})) << echoes << empty;
            EXPECT_EQ(Sim().messages.size(), 1u) << "two empty locations end a poll";
            EXPECT_EQ(First().Count("AT+CMGR=4"), 1u);
            EXPECT_EQ(First().Count("AT+CMGR=6"), 0u);
        }
    }
}

TEST_F(GsmPortTest, WorksBehindATcpLine) {
    for (const char* type : {"TCPC", "TCPS"}) {
        ports = PortList();
        sockets.made.clear();
        intake.events.clear();
        Start("PortType=" + Text(type) +
              "\r\nPortSetting=h\r\nPortNumber=7000\r\nInitInterval=60\r\nPollInterval=60");
        time.Advance(2000);
        const bool calls = Text(type) == "TCPC";
        FakeWinsock& line = sockets.Last();
        if (calls) {
            line.Establish();
        } else {
            sockets.At(0).CallIn();
        }
        ModemOnLine modem(time, line.sent, [&line](const Text& piece) { line.Arrive(piece); });
        modem.modem.messages = {{1, {"070", "A"}}};
        time.Advance(10'000);
        EXPECT_EQ(Texts(), (std::vector<Text>{"|A"})) << type;
        EXPECT_EQ(modem.Count("AT+CMGF=1"), 1u) << type;
        EXPECT_TRUE(modem.modem.messages.empty()) << type;
    }
}

TEST_F(GsmPortTest, KeepsInTheCardWhatIsNotStored) {
    intake.during = [this] { commit.NoteFailure(); };
    Start("InitInterval=-1\r\nPollInterval=5");
    Sim().messages = {{1, {"070", "A"}}};
    time.Advance(4000);
    EXPECT_EQ(Texts().size(), 1u);
    EXPECT_EQ(Sim().messages.size(), 1u);
    intake.during = {};
    time.Advance(10'000);
    EXPECT_EQ(Texts().size(), 2u);
    EXPECT_TRUE(Sim().messages.empty());
}

TEST_F(GsmPortTest, IsWokenByTheModem) {
    Start("InitInterval=-1\r\nPollInterval=0");
    time.Advance(5000);
    EXPECT_TRUE(Sim().commands.empty());
    Sim().messages = {{9, {"070", "last"}}};
    First().Say(Sim().Deliver({"070", "first"}));
    time.Advance(5000);
    EXPECT_EQ(Texts(), (std::vector<Text>{"|first", "|last"})) << "empty locations do not end it";
    Sim().commands.clear();
    Sim().messages = {{8, {"070", "late"}}};
    First().Say("+CMTI: \"SM\",8\r\n");
    time.Advance(1500);
    Sim().messages[10] = {"070", "later"};
    First().Say("+CMTI: \"SM\",10\r\n");
    time.Advance(10'000);
    EXPECT_EQ(Texts().size(), 4u);
}

TEST_F(GsmPortTest, ReportsCallsEachQuarterOfAMinute) {
    Start("InitInterval=-1\r\nPollInterval=0");
    time.Advance(2000);
    for (int i = 0; i < 7; ++i) {
        serial.At(0).Arrive(Modem::Ring("0701"));
        time.Advance(5000);
    }
    serial.At(0).Arrive(Modem::Ring("", 128));
    time.Advance(1000);
    EXPECT_EQ(Texts(), (std::vector<Text>{"0046701|", "0046701|", "0046701|", "|"}));
}

TEST_F(GsmPortTest, HoldsHoweverTheAnswersAreCut) {
    Start("InitInterval=-1\r\nPollInterval=0");
    time.Advance(2000);
    for (std::size_t cut = 0; cut < 90; ++cut) {
        intake.events.clear();
        First().cut = cut;
        Sim().messages = {{1, {"070", "A OK"}}};
        First().Say(Sim().Deliver({"070", "B"}) + Modem::Ring("07" + std::to_string(cut)));
        time.Advance(20'000);
        EXPECT_EQ(intake.events.size(), 3u) << cut;
        EXPECT_TRUE(Sim().messages.empty()) << cut;
    }
}

TEST_F(GsmPortTest, DeletesNoOtherMessageThanItHasRead) {
    Start("InitInterval=-1\r\nPollInterval=5\r\nCommandTimeout=1");
    Sim().messages = {{1, {"070", "A"}}, {2, {"070", "B"}}, {3, {"070", "C"}}};
    const auto check = [&] {
        for (int i = 1; i <= 3; ++i) {
            const Text text = std::string(1, static_cast<char>('A' + i - 1));
            const bool isTaken = std::ranges::count(Texts(), "|" + text) > 0;
            EXPECT_TRUE(isTaken || Sim().messages.contains(i)) << text << " is lost at " << First().delayMs;
        }
    };
    for (const int delay : {1500, 400, 3000, 990, 1200, 20}) {
        First().delayMs = delay;
        for (int i = 0; i < 60; ++i) {
            time.Advance(1000);
            check();
        }
    }
    EXPECT_TRUE(Sim().messages.empty());
}

TEST_F(GsmPortTest, WaitsWhileEverythingElseGoesOn) {
    folder.Write("Settings\\Port2.ini",
                 "[General]\r\nPortType=TCPS\r\nPortNumber=7000\r\nMessageFormat=0\r\n");
    Start(
        "InitInterval=-1\r\nPollInterval=5\r\nTestTelegramInterval=30\r\nTestTelegramAlarmCode=dead\r\n"
        "TestTelegramRestoreCode=back");
    Sim().isSilent = true;
    time.Advance(3000);
    EXPECT_EQ(Sim().commands.back(), "AT");
    sockets.At(0).CallIn();
    FakeWinsock& caller = sockets.At(1);
    caller.Arrive(
        "\x02  P2405171345\x29"
        "012340001\x03"
        "\x49");
    time.Advance(100);
    EXPECT_EQ(caller.sent, "\x06") << "while the modem keeps the command waiting";
    time.Advance(60'000);
    EXPECT_EQ(std::ranges::count(Texts(), "dead|"), 1);
    Sim().isSilent = false;
    time.Advance(30'000);
    EXPECT_EQ(Texts().back(), "back|");
    Sim().commands.clear();
    Sim().isSilent = true;
    time.Advance(6000);
    EXPECT_GE(Sim().commands.size(), 1u);
    const std::int64_t before = time.MonotonicMs();
    ticker->Stop();
    conditions.isShuttingDown = true;
    ports.CloseAll();
    time.Advance(1);
    EXPECT_LE(time.MonotonicMs() - before, 50);
}

TEST_F(GsmPortTest, EndsItsWaitWithTheProgram) {
    Start("InitInterval=-1\r\nPollInterval=5");
    Sim().isSilent = true;
    bool isBack = false;
    time.After(2000, [&] {
        ports.CloseAll();
        ticker->Stop();
    });
    time.After(1500, [&] {
        ports.Tick(1000, conditions);
        isBack = true;
    });
    time.Advance(2100);
    EXPECT_TRUE(isBack);
    EXPECT_EQ(First().Count("AT+CMGR=1"), 0u);
}

TEST_F(GsmPortTest, ServesTwoModemsAtOnce) {
    AddPort("Port2", "InitInterval=-1\r\nPollInterval=2");
    Start("InitInterval=-1\r\nPollInterval=2");
    for (int i = 1; i <= 9; ++i) {
        modems[0]->modem.messages[i] = {"070", "a" + std::to_string(i)};
        modems[1]->modem.messages[i] = {"070", "b" + std::to_string(i)};
    }
    modems[0]->delayMs = 400;
    modems[1]->delayMs = 150;
    time.Advance(180'000);
    std::vector<Text> texts = Texts();
    std::ranges::sort(texts);
    EXPECT_EQ(std::ranges::adjacent_find(texts), texts.end());
    EXPECT_EQ(texts.size(), 18u);
}

TEST_F(GsmPortTest, TellsEndlessNoiseOnceAndSaysNothingInTheFirstTick) {
    Start("PollInterval=0\r\nInitInterval=60");
    ticker->Stop();
    ports.Tick(0, conditions);
    time.Advance(5000);
    EXPECT_TRUE(Sim().commands.empty());
    for (int i = 0; i < 40; ++i) serial.At(0).Arrive(Text(1000, 'x'));
    time.Advance(10);
    EXPECT_EQ(LinesWith("Too long Port1"), 1u);
    serial.At(0).Arrive("\n+CLIP: \"1\",128\n");
    EXPECT_EQ(Texts().size(), 1u);
}

}  // namespace
}  // namespace nordkeep
