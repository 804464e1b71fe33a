#include "store/EventFile.h"
#include "tests/app/ground/RunningCopy.h"
#include "tests/doubles/WebServer.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(VirtualReceiver, BringsEachEventOfAWebServiceOnce) {
    const WebServer server;
    RunningCopy copy;
    copy.WriteMainSettings("ContinousDebugToFile=1");
    copy.AddPort(
        "Port1",
        "PortType=HTTP\r\nMessageFormat=10\r\nHTTPGetInterval&=1\r\nPortSetting=" + server.Url("/poll"),
        "VirtualReceiver=Town\r\n[VirtualReceivers]\r\n77=secret,Harbour\r\n78=wrong,Quay");
    copy.Data().Write("Settings\\Town.IDCode", "FORMAT=1,6,0,0,7,2\r\n100001;Harbour;;;;;Quay\r\n");
    copy.Start();
    // The second complaint about the other receiver comes when the first one's event is confirmed.
    const auto complaints = [&] {
        std::size_t count = 0;
        for (const Text& name : ListFiles(copy.Data().Resolve("LogFiles"))) {
            const Text text = copy.Data().Read("LogFiles\\" + name);
            if (!name.ends_with(".DBG")) continue;
            for (std::size_t at = text.find("BAD PASS"); at != Text::npos; at = text.find("BAD PASS", at + 1))
                ++count;
        }
        return count;
    };
    EXPECT_TRUE(WaitFor([&] { return complaints() >= 2; })) << copy.Output();
    const std::string told = "Port Port1 reports an error: (CSID=78) Quay -> BAD PASS";
    EXPECT_TRUE(copy.WaitForOutput(told));
    EXPECT_EQ(copy.Output().find(told), copy.Output().rfind(told)) << "once for the series";
    ASSERT_EQ(copy.EventFiles().size(), 1u) << copy.Output();
    cAlarm alarm;
    ASSERT_TRUE(ReadFromDisk(copy.Data().Read(copy.EventFiles().front()), 1, alarm));
    EXPECT_EQ(alarm.m_TranslatedIDCode, "Harbour");
    EXPECT_EQ(alarm.m_ProtocolType, "Virtual receiver");
    EXPECT_EQ(copy.Stop(), 0);
}

}  // namespace
}  // namespace nordkeep
