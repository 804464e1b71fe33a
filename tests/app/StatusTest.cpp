#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/Shell.h"

#include <algorithm>
#include <fstream>

namespace nordkeep {
namespace {

/// A server whose status service is asked by the programs that people use for it.
class StatusTest : public NetworkTest {
 protected:
    StatusTest() { Configure(""); }
    void Configure(const std::string& lines) const {
        server.Data().Write("Settings\\Nordkeep.INI",
                            "[General]\r\nLanguage=044\r\n[Status]\r\nPort=" + std::to_string(statusPort) +
                                "\r\n" + lines + "[NetWork]\r\nClientAddresses=127.0.0.1\r\n" + PortLine());
    }
    std::string Url(const std::string& path, const std::string& scheme = "http") const {
        return " '" + scheme + "://127.0.0.1:" + std::to_string(statusPort) + path + "'";
    }
    /// The answer, with its status in the last line.
    Shell Get(const std::string& path, const std::string& options = {}) const {
        return Shell("curl -sS --max-time 20 -w '\\n%{http_code}' " + options + Url(path));
    }
    static std::ptrdiff_t LineCount(const std::string& text) { return std::ranges::count(text, '\n'); }

    int statusPort = FreePort();
};

TEST_F(StatusTest, TellsMonitoringWhatItCollects) {
    NORDKEEP_NEEDS("promtool", "Prometheus");
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens on 127.0.0.1:" + std::to_string(statusPort)));
    Alarms(5);
    {
        const Caller wrong(alarmPort);
        wrong.Send("rubbish\r\n");
    }
    EXPECT_EQ(Get("/healthz").output, "ok\n\n200");
    EXPECT_EQ(Get("/readyz").output, "ready\n\n200");
    EXPECT_TRUE(Get("/nothing").output.ends_with("404"));
    EXPECT_TRUE(Get("/healthz", "-d x=1").output.ends_with("405"));

    const Shell checked("curl -sS" + Url("/metrics") + " | promtool check metrics");
    EXPECT_EQ(checked.output, "") << "what the monitoring's own tool says of the text";
    EXPECT_EQ(checked.status, 0);
    const std::string metrics = Get("/metrics").output;
    for (const char* const line :
         {"nordkeep_telegrams_total{port=\"Port1\"} 5\n", "nordkeep_events_total{port=\"Port1\"} 5\n",
          "nordkeep_port_open{port=\"Port1\"} 1\n", "nordkeep_alarms{state=\"new\"} 5\n",
          "nordkeep_ack_seconds_count 5\n", "nordkeep_clients 0\n", "nordkeep_store_errors_total 0\n"}) {
        EXPECT_NE(metrics.find(line), std::string::npos) << line << metrics;
    }
    const std::string ports = Get("/v1/ports").output;
    EXPECT_NE(ports.find("\"port\":\"Port1\""), std::string::npos) << ports;
    EXPECT_EQ(server.Stop(), 0);
}

TEST_F(StatusTest, IsNotReadyWithoutALine) {
    server.Data().Write("Settings\\Port1.ini", "[General]\r\nPortType=NONE\r\n");
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens"));
    EXPECT_EQ(Get("/readyz").output, "no port is open\n\n503");
    EXPECT_EQ(Get("/healthz").output, "ok\n\n200");
}

TEST_F(StatusTest, GivesEveryEntryOnceOverPagesStreamsAndAKill) {
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens"));
    Alarms(30);
    EXPECT_EQ(LineCount(Shell("curl -sS" + Url("/v1/alarms")).output), 30);
    const std::string lines = Shell("curl -sS" + Url("/v1/events?after=0&limit=10")).output;
    EXPECT_EQ(LineCount(lines), 10);
    EXPECT_NE(lines.find("\"objectName\":\"Bakery\""), std::string::npos) << lines;

    // A reader of the stream sees what comes while it reads, each in less than a second or two.
    const std::string file = server.Data().Path() + "/stream.txt";
    const Shell started("curl -sSN --max-time 60" + Url("/v1/events/stream?after=10") + " > " + file +
                        " 2>/dev/null & echo $!");
    const auto ids = [&] { return Shell("grep '^id: ' " + file + " | cut -c5-").output; };
    const auto noted = [&](int after) {
        return Shell("sqlite3 -readonly " + server.Data().Path() +
                     "/Data/Journal.db 'SELECT id FROM entries WHERE id > " + std::to_string(after) +
                     " ORDER BY id'")
            .output;
    };
    EXPECT_TRUE(WaitFor([&] { return ids() == noted(10); })) << ids();
    Alarms(7);
    EXPECT_TRUE(WaitFor([&] { return ids() == noted(10); })) << ids();
    server.Kill();
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens"));
    EXPECT_EQ(Shell("curl -sS -H 'Last-Event-ID: 35' --max-time 3 -N" + Url("/v1/events/stream") +
                    " 2>/dev/null | grep '^id: ' | cut -c5-")
                  .output,
              noted(35));
    Shell("kill " + started.output);
}

// A reader that takes nothing keeps nothing waiting and holds no memory.
TEST_F(StatusTest, GoesOnWhileReadersTakeNothingAndCallersSayNothing) {
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens"));
    std::vector<std::unique_ptr<Caller>> callers;
    for (int i = 0; i < 100; ++i) callers.push_back(std::make_unique<Caller>(statusPort));
    for (std::size_t i = 0; i < 30; ++i)
        callers[i]->Send("GET /v1/events?limit=100000 HTTP/1.1\r\nHost: x\r\n\r\n");
    for (std::size_t i = 30; i < 40; ++i) callers[i]->Send(Text(100'000, 'x'));
    Alarms(300);
    const auto memory = [&] {
        return std::stol(
            Shell("awk '/VmRSS/ {print $2}' /proc/" + std::to_string(server.Pid()) + "/status").output);
    };
    const long before = memory();
    for (int i = 0; i < 20; ++i) Alarms(100);
        // The sanitizer keeps what was freed for a while.
#ifdef __SANITIZE_ADDRESS__
    constexpr long kMost = 600'000;
#else
    constexpr long kMost = 60'000;
#endif
    EXPECT_LT(memory() - before, kMost) << "KiB";
    callers.clear();
    EXPECT_TRUE(WaitFor([&] { return Get("/healthz").output == "ok\n\n200"; }));
}

TEST_F(StatusTest, LetsOthersInOnlyWithATokenOverTls) {
    Configure("Address=0.0.0.0\r\nToken=night\r\n");
    server.Start();
    EXPECT_TRUE(server.WaitForOutput("Status service stays shut"));
    server.Stop();
    const std::string folder = server.Data().Path();
    ASSERT_EQ(Shell("openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 "
                    "-subj /CN=localhost -keyout " +
                    folder + "/key.pem -out " + folder + "/cert.pem")
                  .status,
              0);
    Configure("Address=0.0.0.0\r\nToken=night\r\nTlsCertificate=cert.pem\r\nTlsKey=key.pem\r\n");
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens"));
    const std::string url = Url("/readyz", "https");
    EXPECT_EQ(Shell("curl -skS -w '%{http_code}' -o /dev/null" + url).output, "401");
    EXPECT_EQ(Shell("curl -skS -H 'Authorization: Bearer night'" + url).output, "ready\n");
    EXPECT_NE(Shell("curl -sS --max-time 5" + Url("/readyz")).status, 0) << "plain";
}

}  // namespace
}  // namespace nordkeep
