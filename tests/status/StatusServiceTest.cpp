#include "platform/sqlite/SqliteJournal.h"
#include "runtime/Json.h"
#include "status/StatusService.h"
#include "store/RecordJson.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

/// A web service without a network: hands requests to whoever answers them.
class FakeServer final : public HttpServer {
 public:
    bool Open(const HttpListening& wanted, HttpHandler& answers) override {
        ++opened;
        listening = wanted;
        handler = isTaken ? nullptr : &answers;
        return !isTaken;
    }
    void Close() override { handler = nullptr; }
    bool IsOpen() const override { return handler != nullptr; }
    void Wake() override { ++woken; }
    std::string LastError() const override { return "address in use"; }

    HttpListening listening{};
    HttpHandler* handler = nullptr;
    bool isTaken = false;
    int opened = 0;
    int woken = 0;
};

struct FakeSource final : StatusSource {
    StatusFacts Facts() const override { return facts; }
    StatusFacts facts{};
};

std::vector<std::string> LinesIn(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        if (end > at) lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

class StatusServiceTest : public testing::Test {
 protected:
    StatusServiceTest() {
        folder.MakeFolders("Data");
        folder.MakeFolders("LogFiles");
        EXPECT_TRUE(journal.Open());
        language.LoadFrom("3851=Listens: \n3852=Exposed: \n3853=Taken: \n3854=No file: \n");
        log.SetRowListener([this](const LogRow& row) { logged.push_back(row.text); });
        settings.Port = 9180;
    }

    HttpAnswer Get(std::string path, std::map<std::string, std::string> query = {}, std::string token = {},
                   std::string lastId = {}) {
        return server.handler->Answer({.path = std::move(path),
                                       .query = std::move(query),
                                       .authorization = std::move(token),
                                       .lastEventId = std::move(lastId)});
    }
    /// All that comes before it would wait.
    static std::string Read(HttpBody& body) {
        std::string all;
        for (;;) {
            std::string piece;
            const HttpBody::State state = body.Next(piece);
            EXPECT_LT(piece.size(), 64'000u) << "held in memory for a slow reader";
            all += piece;
            if (state != HttpBody::State::More) return all;
        }
    }
    void Note(int count) {
        for (int i = 0; i < count; ++i) {
            cAlarm alarm;
            alarm.m_FilePointer = static_cast<std::int32_t>(journal.LastId() + 1);
            alarm.m_IdCode = "100";
            alarm.m_TranslatedIDCode = "Bageriet p\xE5 Storgatan";
            alarm.m_AlarmCodeToStore = "Smoke \"hall\"";
            journal.Note(EntryOf(JournalKind::Event, alarm));
        }
        ASSERT_TRUE(journal.Commit());
    }

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> logged{};
    SqliteJournal database{};
    Journal journal{database, folder.Tree(), time};
    EventList events{};
    CommitTimes times{.clock = time};
    StatusSettings settings{};
    FakeServer server{};
    FakeSource source{};
    StatusService service{{.server = server,
                           .settings = settings,
                           .dataFolder = folder.Tree(),
                           .clock = time,
                           .language = language,
                           .log = log,
                           .source = source,
                           .events = events,
                           .times = times,
                           .journal = &journal}};
};

TEST_F(StatusServiceTest, ListensToOthersOnlyWithATokenAndACertificate) {
    settings.Port = 0;
    service.Open();
    EXPECT_EQ(server.opened, 0);
    settings.Port = 9180;
    for (const char* const open : {"0.0.0.0", "10.1.2.3", "::"}) {
        settings.Address = open;
        service.Open();
    }
    settings.Token = "secret";
    service.Open();
    settings.TlsCertificate = "cert.pem";
    service.Open();
    EXPECT_EQ(server.opened, 0);
    EXPECT_EQ(logged,
              (std::vector<Text>{"Exposed: 0.0.0.0:9180", "Exposed: 10.1.2.3:9180", "Exposed: :::9180"}));

    settings.TlsKey = "key.pem";
    service.Open();
    EXPECT_EQ(logged.back(), "No file: cert.pem");
    folder.Write("cert.pem", "a certificate");
    folder.Write("key.pem", "a key");
    service.Open();
    EXPECT_EQ(server.opened, 1);
    EXPECT_EQ(server.listening.certificate + server.listening.key, "a certificatea key");
    EXPECT_EQ(logged.back(), "Listens: :::9180");
}

TEST_F(StatusServiceTest, TriesAgainAndSaysItOnceWhileItsPlaceIsTaken) {
    server.isTaken = true;
    service.Open();
    for (int i = 0; i < 200; ++i) service.Tick(250);
    EXPECT_EQ(server.opened, 6);
    server.isTaken = false;
    for (int i = 0; i < 40; ++i) service.Tick(250);
    EXPECT_EQ(logged,
              (std::vector<Text>{"Taken: 127.0.0.1:9180: address in use", "Listens: 127.0.0.1:9180"}));
}

TEST_F(StatusServiceTest, AsksEverybodyForTheTokenAndEachPathForSense) {
    settings.Token = "s3cret";
    service.Open();
    for (const std::string path : {"/", "/healthz", "/readyz", "/metrics", "/v1/events", "/v1/events/stream",
                                   "/v1/alarms", "/v1/ports", "/v1/summary", "/nothing"}) {
        for (const char* const wrong : {"", "Bearer wrong!", "Bearer ", "s3cret", "Bearer s3crets3cret"})
            EXPECT_EQ(Get(path, {}, wrong).status, 401) << path << wrong;
        EXPECT_EQ(Get(path, {}, "Bearer s3cret").status, path == "/nothing" ? 404 : 200);
    }
    EXPECT_NE(Get("/").body.find("<!doctype html>"), std::string::npos) << "it asks for the token";
    settings.Token.clear();
    for (const auto& [name, value] :
         {std::pair{"after", "x"}, {"after", "-1"}, {"limit", "0"}, {"limit", "1e3"}}) {
        EXPECT_EQ(Get("/v1/events", {{name, value}}).status, 400) << name << value;
    }
    EXPECT_EQ(Get("/v1/events/stream", {{"after", "1;"}}).status, 400);
}

TEST_F(StatusServiceTest, SaysWhyItIsNotReady) {
    service.Open();
    EXPECT_EQ(Get("/readyz").status, 200);
    source.facts.notReady = {"no port is open", "the journal cannot be written"};
    EXPECT_EQ(Get("/readyz").status, 503);
    EXPECT_EQ(Get("/readyz").body, "no port is open\nthe journal cannot be written\n");
    EXPECT_EQ(Get("/healthz").status, 200);
}

TEST_F(StatusServiceTest, GivesEntriesInPagesThatGoOnWhereTheLastOneEnded) {
    service.Open();
    Note(150);
    std::int64_t after = 0;
    for (const std::size_t expected : {100u, 50u, 0u}) {
        const HttpAnswer answer = Get("/v1/events", {{"after", std::to_string(after)}, {"limit", "100"}});
        const auto lines = LinesIn(Read(*answer.pieces));
        EXPECT_EQ(lines.size(), expected);
        for (const std::string& line : lines) {
            const auto entry = ReadJsonObject(line);
            ASSERT_TRUE(entry) << line;
            EXPECT_EQ(entry->Integer("id"), ++after);
        }
    }
    EXPECT_EQ(after, 150);
    const HttpAnswer one = Get("/v1/events", {{"limit", "1"}});
    const std::string line = Read(*one.pieces);
    EXPECT_NE(line.find("\"objectName\":\"Bageriet p\u00E5 Storgatan\""), std::string::npos) << line;
    EXPECT_NE(line.find("\"text\":\"Smoke \\\"hall\\\"\""), std::string::npos) << line;
    EXPECT_NE(line.find("\"status\":0,\"statusName\":\"new\""), std::string::npos) << line;
}

TEST_F(StatusServiceTest, StreamsWhatComesAndGoesOnBehindTheLastIdThatWasRead) {
    service.Open();
    Note(45);
    const HttpAnswer answer = Get("/v1/events/stream", {{"after", "2"}}, {}, "40");
    EXPECT_EQ(answer.contentType, "text/event-stream; charset=utf-8");
    const std::string first = Read(*answer.pieces);
    EXPECT_EQ(first.find("id: 41\ndata: {"), std::string("retry: 3000\n\n").size()) << first;
    EXPECT_NE(first.find("id: 45\n"), std::string::npos);

    std::string piece;
    EXPECT_EQ(answer.pieces->Next(piece), HttpBody::State::Wait);
    EXPECT_EQ(piece, "");
    service.Tick(250);
    const int woken = server.woken;
    service.Tick(250);
    EXPECT_EQ(server.woken, woken) << "nothing is new";
    Note(1);
    service.Tick(250);
    EXPECT_EQ(server.woken, woken + 1);
    EXPECT_EQ(Read(*answer.pieces).substr(0, 7), "id: 46\n");
    time.Advance(16'000);
    EXPECT_EQ(Read(*answer.pieces), ": nothing new\n\n");

    const HttpAnswer fromNow = Get("/v1/events/stream");
    EXPECT_EQ(Read(*fromNow.pieces), "retry: 3000\n\n");
}

TEST_F(StatusServiceTest, ListsOpenAlarmsWithTheirNewestEntry) {
    service.Open();
    for (int i = 1; i <= 50; ++i) {
        auto alarm = std::make_unique<cAlarm>();
        alarm->m_FilePointer = i;
        alarm->m_Status = i == 7 ? kStatusAcknowledged : kStatusNew;
        journal.Note(EntryOf(JournalKind::Event, *alarm));
        if (i == 8) journal.Note(EntryOf(JournalKind::Changed, *alarm));
        events.Append(std::move(alarm), false);
    }
    ASSERT_TRUE(journal.Commit());
    const HttpAnswer answer = Get("/v1/alarms");
    const auto lines = LinesIn(Read(*answer.pieces));
    ASSERT_EQ(lines.size(), 49u);
    const auto eighth = ReadJsonObject(lines[6]);
    EXPECT_EQ(eighth->String("event"), "A0000008");
    EXPECT_EQ(eighth->Integer("id"), 9);
    EXPECT_EQ(eighth->String("time").size(), Text("2026-11-21T20:15:30.123Z").size());
}

TEST_F(StatusServiceTest, MeasuresWithoutLabelsThatBreakTheText) {
    service.Open();
    source.facts.lines.resize(2);
    LineStatus& line = source.facts.lines.front();
    line.name = "Port1";
    line.isOpen = true;
    line.telegrams = 7;
    line.refused["nak"] = 2;
    source.facts.lines.back().name = "odd\"\\name";
    source.facts.outputs = {{.name = "torvex", .isUp = true, .waiting = 3}};
    times.acknowledgements.Observe(70);
    times.acknowledgements.Observe(9'000'000);
    for (const int status : {static_cast<int>(kStatusNew), static_cast<int>(kStatusNew), 77, 78}) {
        auto alarm = std::make_unique<cAlarm>();
        alarm->m_Status = status;
        events.Append(std::move(alarm), false);
    }
    const std::string text = Get("/metrics").body;
    for (const char* const expected :
         {"nordkeep_telegrams_total{port=\"Port1\"} 7\n",
          "nordkeep_refused_total{port=\"Port1\",reason=\"nak\"} 2\n",
          "nordkeep_port_open{port=\"odd\\\"\\\\name\"} 0\n", "nordkeep_alarms{state=\"new\"} 2\n",
          "nordkeep_alarms{state=\"unknown\"} 2\n", "nordkeep_output_waiting{output=\"torvex\"} 3\n",
          "nordkeep_ack_seconds_bucket{le=\"5e-05\"} 0\n", "nordkeep_ack_seconds_bucket{le=\"0.0001\"} 1\n",
          "nordkeep_ack_seconds_bucket{le=\"+Inf\"} 2\n", "nordkeep_ack_seconds_count 2\n"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << text;
    }
}

}  // namespace
}  // namespace nordkeep
