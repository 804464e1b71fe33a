#include "tests/app/ground/RunningCopy.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace nordkeep {
namespace {

namespace fs = std::filesystem;

/// The demonstration centre, moved to ports that nobody uses.
class DemoTest : public ::testing::Test {
 protected:
    DemoTest() {
        fs::copy(fs::path(NORDKEEP_SOURCE_DIR) / "sample", copy.Data().Path(),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        for (const int port : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 16, 17}) {
            const Text file = "Settings\\Port" + std::to_string(port) + ".ini";
            Change(file, std::to_string(17600 + port), std::to_string(FreePort()));
        }
        Change("Settings\\Port13.ini", "HTTPGetInterval&=30", "HTTPGetInterval&=1");
        Change("Settings\\Nordkeep.INI", "/tmp/nordkeep-demo-modem", copy.Data().Path() + "/modem");
    }
    void Change(const Text& file, const Text& from, const Text& to) const {
        Text text = copy.Data().Read(file);
        const std::size_t place = text.find(from);
        ASSERT_NE(place, Text::npos) << file << " " << from;
        copy.Data().Write(file, text.replace(place, from.size(), to));
    }

    RunningCopy copy{};
};

TEST_F(DemoTest, EveryPortTakesItsAlarm) {
    copy.Start();
    // The ports open in the order of their names, and the last is one that would not tell what it missed.
    ASSERT_TRUE(copy.WaitForOutput("Port opened: 'Port9'"));
    const std::string program = std::string(NORDKEEP_BIN_DIR) + "/nordkeep-send";
    const std::string feed = program + " --demo " + copy.Data().Path() + " > " + copy.Data().Path() + "/fed";
    EXPECT_EQ(std::system(feed.c_str()), 0) << copy.Data().Read("fed") << copy.Output();
    EXPECT_TRUE(WaitFor([&] { return copy.EventFiles().size() == 19; })) << copy.Output();
    const std::string log = copy.Output();
    // A port of each kind has found the object, and most the type.
    for (const char* known :
         {"Robofon;1;Bageriet", "SMS;1;Pumpstation", "Contact ID;1;Lagerlokal Industrigatan;Burglary",
          "SIA;1;Villa Solglimt", "SOS Access XML V4;1;Bageriet", "SOS Access XML Mini;1;Pumpstation",
          "Aptus XML Mini;1;Bageriet", "Text;1;Bj", "Mail;1;Bageriet", "Mail;1;Pumpstation",
          "File;3;Pumpstation", "GSM;1;Verkstaden", "SIA;1;Villa Solglimt, ",
          "Virtual receiver;1;Pumpstation"}) {
        EXPECT_NE(log.find(known), std::string::npos) << known;
    }
}

}  // namespace
}  // namespace nordkeep
