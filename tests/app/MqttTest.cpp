#include "tests/app/NetworkCopies.h"
#include "tests/app/Shell.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace nordkeep {
namespace {

/// A real broker that forgets nothing while it is away, and somebody who writes down all that it is told.
class MqttBroker {
 public:
    explicit MqttBroker(const std::string& more = {}) {
        std::ofstream conf(folder_.Path() + "/conf");
        conf << "listener " << port_ << " 127.0.0.1\npersistence true\npersistence_location "
             << folder_.Path() << "/\nautosave_interval 1\nmax_queued_messages 0\n"
             << (more.empty() ? "allow_anonymous true\n" : more);
    }
    ~MqttBroker() {
        Stop();
        if (!reader_.empty()) Shell("kill " + reader_);
    }
    MqttBroker(const MqttBroker&) = delete;
    MqttBroker& operator=(const MqttBroker&) = delete;

    void Start() {
        pid_ = FirstLine(
            Shell("PATH=$PATH:/usr/sbin mosquitto -c " + folder_.Path() + "/conf > /dev/null 2>&1 & echo $!")
                .output);
        EXPECT_TRUE(WaitFor([&] { return Caller(port_).IsConnected(); }));
    }
    /// It keeps what it has acknowledged only when it is asked to end.
    void Stop() {
        if (!pid_.empty()) Shell("kill " + pid_);
        EXPECT_TRUE(pid_.empty() || WaitFor([&] { return Shell("kill -0 " + pid_).status != 0; }));
        pid_.clear();
    }
    /// A session that outlives the broker's absence: what comes meanwhile is brought later.
    void Subscribe() {
        const auto listen = [&](const std::string& options) {
            return "mosquitto_sub -p " + std::to_string(port_) + " -i reader -c -q 1 -t 'house/events' " +
                   options;
        };
        Shell(listen("-E"));  // from here on the broker keeps for it what comes
        reader_ = FirstLine(Shell(listen("> " + folder_.Path() + "/events 2>/dev/null & echo $!")).output);
    }
    /// What stands retained under a topic, in lines "topic payload".
    std::string Retained(const std::string& topic) const {
        return Shell("mosquitto_sub -p " + std::to_string(port_) + " -W 1 -q 1 -v -t '" + topic +
                     "' 2>/dev/null")
            .output;
    }
    /// The ids of the entries in the order in which they came.
    std::vector<long> Ids() const {
        std::ifstream lines(folder_.Path() + "/events");
        std::vector<long> ids;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("{\"id\":") && line.ends_with("}")) ids.push_back(std::stol(line.substr(6)));
        return ids;
    }
    int Port() const { return port_; }
    const std::string& Folder() const { return folder_.Path(); }

 private:
    static std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

    TempFolder folder_{};
    int port_ = FreePort();
    std::string pid_{};
    std::string reader_{};
};

class MqttTest : public NetworkTest {
 protected:
    void Configure(const MqttBroker& broker, const std::string& more = {}) const {
        server.Data().Write("Settings\\Nordkeep.INI",
                            "[General]\r\nLanguage=044\r\n[NetWork]\r\nClientAddresses=127.0.0.1\r\n" +
                                PortLine() + "[Mqtt]\r\nAddress=127.0.0.1:" + std::to_string(broker.Port()) +
                                "\r\nTopic=house\r\n" + more);
    }
    std::set<long> IdsInJournal() const {
        std::istringstream rows(
            Shell("sqlite3 -readonly " + server.Data().Path() + "/Data/Journal.db 'SELECT id FROM entries'")
                .output);
        std::set<long> ids;
        for (long id = 0; rows >> id;) ids.insert(id);
        return ids;
    }
};

TEST_F(MqttTest, BringsEveryEntryInOrderOverAbsencesAndKills) {
    MqttBroker broker;
    Configure(broker);
    broker.Start();
    broker.Subscribe();
    server.Start();
    for (int round = 0; round < 4; ++round) {
        Alarms(40);
        if (round % 2 == 0) broker.Stop();
        Alarms(40);  // an acknowledgement waits for no broker
        if (round == 1) {
            server.Kill();
            server.Start();
        }
        if (round % 2 == 0) broker.Start();
    }
    const auto isComplete = [&] {
        const auto came = broker.Ids();
        const std::set<long> seen(came.begin(), came.end());
        const std::set<long> noted = IdsInJournal();
        return noted.size() >= 320 && std::ranges::includes(seen, noted);
    };
    EXPECT_TRUE(WaitFor(isComplete)) << broker.Ids().size() << " of " << IdsInJournal().size();
    // An entry can come twice, and then with all behind it; what comes for the first time comes in order.
    long highest = 0;
    for (const long id : broker.Ids()) {
        EXPECT_LE(id, highest + 1);
        highest = std::max(highest, id);
    }
    EXPECT_TRUE(server.WaitForOutput("MQTT broker not reached: 127.0.0.1"));
    EXPECT_TRUE(server.WaitForOutput("MQTT broker reached again"));
}

TEST_F(MqttTest, KeepsOpenAlarmsAndItsOwnStateThere) {
    MqttBroker broker;
    Configure(broker);
    server.Start();  // first, so that the broker hears of what came before it
    Alarms(2);
    EXPECT_TRUE(server.WaitForOutput("MQTT broker not reached"));
    broker.Start();
    EXPECT_TRUE(server.WaitForOutput("MQTT broker reached again"));
    EXPECT_TRUE(WaitFor([&] { return std::ranges::count(broker.Retained("house/alarms/#"), '\n') == 2; }))
        << broker.Retained("house/#");
    EXPECT_EQ(broker.Retained("house/status"), "house/status online\n");
    EXPECT_EQ(server.Stop(), 0);
    EXPECT_EQ(broker.Retained("house/status"), "house/status offline\n");
    server.Start();
    EXPECT_TRUE(WaitFor([&] { return broker.Retained("house/status") == "house/status online\n"; }));
    server.Kill();
    EXPECT_TRUE(WaitFor([&] { return broker.Retained("house/status") == "house/status offline\n"; }));
}

TEST_F(MqttTest, SaysWhyTheBrokerDoesNotWantIt) {
    MqttBroker broker("allow_anonymous false\n");
    Configure(broker);
    broker.Start();
    server.Start();
    EXPECT_TRUE(server.WaitForOutput("MQTT broker not reached: 127.0.0.1:" + std::to_string(broker.Port()) +
                                     ": Connection Refused: not authorised"))
        << server.Output();
}

}  // namespace
}  // namespace nordkeep
