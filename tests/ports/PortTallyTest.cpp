#include "tests/doubles/RobofonTelegram.h"
#include "tests/ports/PortWorld.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class PortTally : public PortWorld {
 protected:
    PortTally() {
        Write("Port1", "PortType=TCPS\r\nPortNumber=4001\r\n");
        ports.Discover(parts);
        Tick();
    }
    void Write(const Text& name, const Text& settingLines) {
        folder.Write("Settings\\" + name + ".ini", "[General]\r\n" + settingLines);
    }
    void Tick() {
        time.Advance(1000);
        ports.Tick(1000, conditions);
    }
};

TEST_F(PortTally, TellsHowAPortDoes) {
    sockets.At(0).CallIn();
    sockets.At(1).Arrive(RobofonTelegram("12340001"));
    commit.Commit();
    Text bad = RobofonTelegram("12340001");
    bad[5] = static_cast<char>(bad[5] + 1);
    sockets.At(1).Arrive(bad);
    const LineFigures figures = ports.Ports()[0]->Figures();
    EXPECT_EQ(figures.state, LineState::WaitsForCaller) << "as the last tick has seen it";
    EXPECT_EQ(figures.kind, "TCPS 4001, Robofon (RBM600)");
    EXPECT_EQ(figures.telegramsToday, 1);
    EXPECT_EQ(figures.refusedToday, 1);
    EXPECT_EQ(figures.lastTraffic, time.Now());
    Tick();
    EXPECT_EQ(ports.Ports()[0]->Figures().state, LineState::Connected);
    EXPECT_EQ(ports.Ports()[0]->Figures().caller, "127.0.0.1");
    conditions.mutedPort = "Port1";
    Tick();
    EXPECT_EQ(ports.Ports()[0]->Figures().state, LineState::Muted);
    conditions.mutedPort.clear();
    time.Advance(24 * 3600 * 1000);
    EXPECT_EQ(ports.Ports()[0]->Figures().telegramsToday, 0) << "another day";
    ports.Ports()[0]->Hold(true);
    Tick();
    EXPECT_EQ(ports.Ports()[0]->Figures().state, LineState::Held);
    EXPECT_FALSE(ports.Ports()[0]->IsOpen());
    ports.Ports()[0]->Hold(false);
    Tick();
    EXPECT_TRUE(ports.Ports()[0]->IsOpen());
}

// "Connected" is what the other end says; a line that is only tried has failed.
TEST_F(PortTally, CountsHowOftenALineHasComeBack) {
    Write("Port2", "PortType=TCPC\r\nPortNumber=4002\r\nPortSetting=host\r\nReopenInterval=1\r\n");
    ports.Renew(parts);
    Tick();
    const auto figures = [this] { return ports.Ports().back()->Figures(); };
    EXPECT_EQ(figures().state, LineState::Failed);
    const OleDate since = figures().since;
    sockets.made.back()->Establish();
    Tick();
    EXPECT_EQ(figures().state, LineState::Connected);
    EXPECT_GT(figures().since.Milliseconds(), since.Milliseconds());
    EXPECT_EQ(figures().reconnectsToday, 1);
    sockets.made.back()->CloseByPeer();
    Tick();
    EXPECT_EQ(figures().state, LineState::Failed);
    sockets.made.back()->Establish();
    Tick();
    EXPECT_EQ(figures().reconnectsToday, 2);
}

}  // namespace
}  // namespace nordkeep
