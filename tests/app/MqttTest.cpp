#include "tests/app/ground/MqttBroker.h"
#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace nordkeep {
namespace {

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
    NORDKEEP_NEEDS("mosquitto", "Mosquitto");
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
    NORDKEEP_NEEDS("mosquitto", "Mosquitto");
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
    NORDKEEP_NEEDS("mosquitto", "Mosquitto");
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
