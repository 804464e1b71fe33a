#include "tests/app/ground/Needs.h"
#include "tests/app/ground/NetworkCopies.h"
#include "tests/app/ground/PrintSpooler.h"
#include "tests/app/ground/ServiceManager.h"
#include "tests/app/ground/Shell.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace nordkeep {
namespace {

using ::testing::HasSubstr;

/// The address of the spooler that programs started from now on use.
struct SpoolerAddress {
    explicit SpoolerAddress(const std::string& address) { ::setenv("CUPS_SERVER", address.c_str(), 1); }
    ~SpoolerAddress() { ::unsetenv("CUPS_SERVER"); }
};

class PrintingTest : public NetworkTest {
 protected:
    std::vector<Text> Printed(const RunningCopy& copy) const {
        return ListFiles(copy.Data().Resolve("Printed"));
    }
    /// Adds lines to the settings that a copy has from the ground.
    static void AddSettings(const RunningCopy& copy, const std::string& general, const std::string& rest) {
        const Text before = copy.Data().Read("Settings\\Nordkeep.INI");
        const TextView head = "[General]\r\n";
        copy.Data().Write("Settings\\Nordkeep.INI", Text(head) + general + before.substr(head.size()) + rest);
    }
};

// A service has no screen, but whoever wants each alarm on paper wants it from a service, too.
TEST_F(PrintingTest, AServicePrintsPagesAndKeepsWhatNoSpoolerTakes) {
    NORDKEEP_NEEDS("cupsd", "CUPS");
    PrintSpooler spooler;
    const SpoolerAddress address(spooler.Address());
    Manager manager;
    AddSettings(server, {}, "[AlarmPagePrinter]\r\nPrioToPrint=-1\r\nStatusToPrint=0\r\nPrinter=Desk\r\n");
    server.Start();
    Alarm();
    EXPECT_TRUE(server.WaitForOutput("The print spooler does not take pages"));
    EXPECT_TRUE(manager.Hears("The print spooler is not reached since"));
    ASSERT_EQ(Printed(server).size(), 1u);
    const NativePath kept = server.Data().Resolve("Printed\\" + Printed(server)[0]);
    EXPECT_THAT(Shell("pdftotext -layout '" + kept + "' -").output, HasSubstr("Bakery"));
    Alarm();
    EXPECT_TRUE(WaitFor([&] { return Printed(server).size() == 2; }));

    ASSERT_TRUE(spooler.Start("Desk")) << spooler.Output();
    Alarm();
    ASSERT_TRUE(WaitFor([&] { return spooler.Documents().size() == 1; })) << spooler.Output();
    EXPECT_THAT(spooler.Documents()[0], HasSubstr("10000101"));
    EXPECT_TRUE(server.WaitForOutput("The print spooler takes pages again"));
    EXPECT_EQ(Printed(server).size(), 2u) << "what was printed leaves no file";
}

TEST_F(PrintingTest, APageThatWaitsAtTheStopIsMadeYet) {
    AddSettings(server, {}, "[AlarmPagePrinter]\r\nPrioToPrint=-1\r\nStatusToPrint=0\r\nPrinter=Nobody\r\n");
    server.Start();
    for (int i = 0; i < 5; ++i) Alarm();
    EXPECT_EQ(server.Stop(), 0);
    EXPECT_EQ(Printed(server).size(), 5u);
}

// The line printer, the page printer and the alarm file of a workstation are its own.
TEST_F(PrintingTest, AClientHasItsOwnOutputs) {
    PrintSpooler spooler;
    const SpoolerAddress address(spooler.Address());
    ASSERT_TRUE(spooler.Start("Desk")) << spooler.Output();
    client.Data().Write("printer", "");
    AddSettings(
        client, "PrinterPort=1\r\nContinousPrinterFormat=[TrIDCode][13][10]\r\n",
        "[PrinterPorts]\r\nLPT1=" + client.Data().Path() +
            "/printer\r\n[AlarmPagePrinter]\r\nPrioToPrint=-1\r\nStatusToPrint=0\r\nPrinter=Desk\r\n");
    server.Start();
    client.StartWithScreen();
    ASSERT_TRUE(client.WaitForOutput("is connected to server"));
    // One that comes while the client still asks for all alarms is none of the new ones.
    EXPECT_TRUE(WaitFor([&] {
        Alarm();
        return client.Data().Read("printer").starts_with("Bakery\r\n");
    }));
    ASSERT_TRUE(WaitFor([&] { return !spooler.Documents().empty(); })) << client.Output();
    EXPECT_THAT(spooler.Documents()[0], HasSubstr("Bakery"));
    const std::vector<Text> files = ListFiles(client.Data().Resolve("AlarmFiles_Client"));
    ASSERT_EQ(files.size(), 1u);
    EXPECT_THAT(client.Data().Read("AlarmFiles_Client\\" + files[0]), HasSubstr("Bakery"));
}

}  // namespace
}  // namespace nordkeep
