#include "app/start/CommandLine.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

using Words = std::vector<std::string>;

TEST(CommandLine, FindsThePathHoweverItIsWritten) {
    struct Case {
        Words words;
        std::string path;
        bool isService;
    };
    for (const Case& c : {Case{{"/PATH:/home/user/in"}, "/home/user/in", false},
                          Case{{"/path:/tmp/a b", "/RunAsService"}, "/tmp/a b", true},
                          Case{{"/RunAsService", "/PATH:/tmp/I/U"}, "/tmp/I/U", true},
                          Case{{"/PATH:", " /srv/x ", "/DELAY:3"}, "/srv/x", false},
                          Case{{"/PATH:/a /b /INSTALLED"}, "/a /b /INSTALLED", false},
                          Case{{"/PATH:/a", "/runasservice"}, "/a /runasservice", false}}) {
        const CommandLine line = ParseCommandLine(c.words);
        EXPECT_EQ(line.path.value_or("-"), c.path);
        EXPECT_EQ(line.runAsService, c.isService) << c.path;
        EXPECT_FALSE(line.install || line.uninstall) << c.path;
    }
}

TEST(CommandLine, TakesSwitchesInAnyCaseAndGlued) {
    const CommandLine line = ParseCommandLine({"/TopMost/maximize", "/Delay:12x", "/i", "/Bogus", "extra"});
    EXPECT_TRUE(line.topMost && line.maximize && line.install);
    EXPECT_EQ(line.delaySeconds, 12);
    EXPECT_EQ(line.unknown, (Words{"/Bogus", "extra"}));
    EXPECT_FALSE(ParseCommandLine({"/Iota"}).install);
    EXPECT_TRUE(ParseCommandLine({}).unknown.empty());
}

TEST(CommandLine, TakesWordsWithADashAsOptionsOfTheirOwn) {
    const CommandLine check = ParseCommandLine({"/PATH:/srv/my", "data", "--Check"});
    EXPECT_TRUE(check.check);
    EXPECT_EQ(check.path.value_or("-"), "/srv/my data");
    EXPECT_FALSE(check.unknownOption.has_value());
    EXPECT_EQ(ParseCommandLine({"/PATH:/srv/a", "-", "b"}).path.value_or("-"), "/srv/a - b");
    EXPECT_EQ(ParseCommandLine({"/PATH:/srv/x", "-H"}).unknownOption.value_or(""), "-H");
    EXPECT_TRUE(ParseCommandLine({"-h"}).help && ParseCommandLine({"-V"}).version);
    EXPECT_EQ(ParseCommandLine({"--chekc", "-x"}).unknownOption.value_or(""), "--chekc");
}

}  // namespace
}  // namespace nordkeep
