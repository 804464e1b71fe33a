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
    const PortFigures figures = ports.Ports()[0]->Figures();
    EXPECT_EQ(figures.state, PortState::Open);
    EXPECT_EQ(figures.telegramsToday, 1);
    EXPECT_EQ(figures.refusedToday, 1);
    EXPECT_EQ(figures.lastTraffic, time.Now());
    time.Advance(24 * 3600 * 1000);
    EXPECT_EQ(ports.Ports()[0]->Figures().telegramsToday, 0) << "another day";
    ports.Ports()[0]->Hold(true);
    Tick();
    EXPECT_EQ(ports.Ports()[0]->Figures().state, PortState::Held);
    EXPECT_FALSE(ports.Ports()[0]->IsOpen());
    ports.Ports()[0]->Hold(false);
    Tick();
    EXPECT_TRUE(ports.Ports()[0]->IsOpen());
}

}  // namespace
}  // namespace nordkeep
