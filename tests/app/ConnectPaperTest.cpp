#include "tests/app/ground/MqttBroker.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/Postgres.h"

#include <gmock/gmock.h>

namespace nordkeep {
namespace {

using ::testing::HasSubstr;

/// The examples of the paper on connections: its indented lines that are commands or questions.
std::vector<std::string> Examples(const std::string& start) {
    std::ifstream paper(NORDKEEP_SOURCE_DIR "/docs/connect.md");
    std::vector<std::string> found;
    for (std::string line; std::getline(paper, line);)
        if (line.starts_with("    " + start)) found.push_back(line.substr(4));
    return found;
}

std::string With(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

// What people copy from the paper works as it stands there, but for the names of their machines.
TEST_F(NetworkTest, TheExamplesOfThePaperOnConnectionsWork) {
    MqttBroker broker;
    broker.Start();
    const Postgres postgres;
    const int statusPort = FreePort();
    server.Data().Write("Settings\\Nordkeep.INI",
                        "[General]\r\nLanguage=044\r\n[Status]\r\nPort=" + std::to_string(statusPort) +
                            "\r\n[Mqtt]\r\nAddress=127.0.0.1:" + std::to_string(broker.Port()) + "\r\n");
    server.Start();
    ASSERT_TRUE(server.WaitForOutput("Status service listens")) << server.Output();
    Alarms(3);

    const std::string service = "127.0.0.1:" + std::to_string(statusPort);
    for (const std::string& example : Examples("curl")) {
        const Shell run(With(example, "127.0.0.1:9180", service));
        EXPECT_EQ(run.status, 0) << example << run.output;
        const bool tellsEvents = example.find("events") != std::string::npos;
        EXPECT_THAT(run.output, HasSubstr(tellsEvents ? "Bakery" : ""));
    }
    for (const std::string& example : Examples("mosquitto_sub")) {
        const std::string here =
            With(example, "-h broker.example.com", "-p " + std::to_string(broker.Port()));
        EXPECT_THAT(Shell("timeout 30 " + here + " -C 1").output, HasSubstr("nordkeep/status online"));
    }
    int exports = 0;
    for (std::string example : Examples("nordkeep-export")) {
        example = With(example, "nordkeep-export", NORDKEEP_BIN_DIR "/nordkeep-export --once");
        example = With(example, "/var/lib/reports", server.Data().Path());
        example = With(With(example, "http://centre:9180", "http://" + service),
                       "postgresql://reports@database/centre", postgres.Url());
        const Shell run("cd '" + server.Data().Path() + "' && " + example);
        EXPECT_EQ(run.status, 0) << example << run.output;
        ++exports;
    }
    EXPECT_EQ(exports, 2);
    const std::vector<std::string> questions = Examples("SELECT");
    EXPECT_GE(questions.size(), 3u);
    for (const std::string& question : questions)
        EXPECT_EQ(postgres.Ask(With(question, "\"", "\\\"")).find("ERROR"), std::string::npos) << question;
    EXPECT_THAT(postgres.Ask(questions.at(1)), HasSubstr("100001|3"));
}

}  // namespace
}  // namespace nordkeep
