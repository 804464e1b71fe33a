#include "ports/PortCheck.h"
#include "tests/ports/PortWorld.h"

namespace nordkeep {
namespace {

class PortCheckTest : public PortWorld {};

TEST_F(PortCheckTest, KnowsWhichPairsCanWork) {
    for (const TextView type : PortTypeWords()) {
        for (const MessageFormat format : MessageFormats()) {
            folder.Write("Settings\\Port1.ini",
                         "[General]\r\nPortSetting=a.txt\r\nPortType=" + Text(type) +
                             "\r\nMessageFormat=" + std::to_string(static_cast<int>(format)) + "\r\n");
            cPort port(parts, ports, "Port1");
            EXPECT_EQ(GoTogether(*ParsePortType(type), format), port.InitializePort())
                << type << " " << NameOf(format);
        }
    }
}

}  // namespace
}  // namespace nordkeep
