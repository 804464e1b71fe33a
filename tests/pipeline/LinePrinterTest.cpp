#include "pipeline/outputs/CodePage850.h"
#include "pipeline/outputs/LinePrinter.h"
#include "platform/posix/PrinterDevice.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TempFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

namespace nordkeep {
namespace {

class LinePrinterTest : public ::testing::Test {
 protected:
    LinePrinterTest() {
        language.LoadFrom("1047=Not printed\n");
        log.SetRowListener([this](const LogRow& row) { rows.push_back(row.text); });
    }

    TempFolder folder{};
    ManualTime time{};
    Language language{};
    SysLog log{folder.Tree(), time};
    std::vector<Text> rows{};
    PrinterDevice device{};
};

TEST_F(LinePrinterTest, PrintsBehindWhatIsThereAndMakesNoFile) {
    const NativePath file = folder.Resolve("printer");
    LinePrinter printer(file, device, log, language);
    printer.SendPRN("lost", "100001");
    EXPECT_EQ(rows, std::vector<Text>{"Not printed 100001"});
    EXPECT_FALSE(folder.Exists("printer"));
    folder.Write("printer", "old\n");
    printer.SendPRN(Text("a\0b\r", 4), "100002");
    printer.SendPRN("c\r", "100003");
    EXPECT_EQ(folder.Read("printer"), Text("old\na\0b\rc\r", 10));
    EXPECT_EQ(rows.size(), 1u);
}

// A pipe stands for a printer that is slow, out of paper, and switched off.
TEST_F(LinePrinterTest, WaitsForASlowPrinterWithoutWaiting) {
    std::signal(SIGPIPE, SIG_IGN);
    const NativePath pipe = folder.Resolve("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    LinePrinter printer(pipe, device, log, language);
    printer.SendPRN("x", "off");
    EXPECT_EQ(rows, std::vector<Text>{"Not printed off"});

    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    const Text page(100'000, 'p');
    for (const char* code : {"1", "2", "3"}) printer.SendPRN(page, code);
    EXPECT_EQ(rows.size(), 2u) << "the third is too much";
    EXPECT_EQ(rows.back(), "Not printed 3");
    Text printed;
    Text buffer(65'536, '\0');
    for (int i = 0; i < 50; ++i) {
        const ssize_t got = ::read(reader, buffer.data(), buffer.size());
        if (got > 0) printed.append(buffer, 0, static_cast<std::size_t>(got));
        printer.Tick();
    }
    EXPECT_EQ(printed, page + page);
    printer.SendPRN(page, "4");
    ::close(reader);
    printer.Tick();
    EXPECT_EQ(rows.back(), "Not printed 4") << "gone in the middle of a page";
    EXPECT_EQ(rows.size(), 3u);
}

TEST(CodePage850, TranslatesForDosPrinters) {
    EXPECT_EQ(ToCodePage850("\xC5\xC4\xD6\xE5\xE4\xF6\xE9\xFC\xA7"), "\x8F\x8E\x99\x86\x84\x94\x82\x81\xF5");
    EXPECT_EQ(ToCodePage850(Text("Larm \x1B\0\r\n", 9)), Text("Larm \x1B\0\r\n", 9));
    EXPECT_EQ(ToCodePage850("\x80 \x93ok\x94 \x96"), "E \"ok\" -");
}

/// A printer that says what is the matter with it.
struct TellingPrinter final : PrinterPort {
    std::optional<std::size_t> Write(const NativePath&, TextView bytes) override {
        if (isBusy) return 0;
        printed += bytes;
        return bytes.size();
    }
    PrinterTrouble Trouble() override { return trouble; }
    void Release() override {}
    bool isBusy = false;
    PrinterTrouble trouble = PrinterTrouble::None;
    Text printed{};
};

TEST_F(LinePrinterTest, TellsWhatThePrinterTellsOnceAndLosesNothing) {
    language.LoadFrom("5231=paper\n5232=off line\n5234=again\n");
    TellingPrinter port;
    LinePrinter printer("lp", port, log, language);
    port.isBusy = true;
    printer.SendPRN("a", "1");
    EXPECT_TRUE(rows.empty()) << "busy is no trouble";
    port.trouble = PrinterTrouble::NoPaper;
    for (int i = 0; i < 5; ++i) printer.Tick();
    EXPECT_TRUE(printer.HasFailed());
    port.trouble = PrinterTrouble::OffLine;
    printer.Tick();
    port.trouble = PrinterTrouble::None;
    printer.Tick();
    EXPECT_EQ(rows, (std::vector<Text>{"paper", "off line"}));
    port.isBusy = false;
    printer.Tick();
    EXPECT_FALSE(printer.HasFailed());
    EXPECT_EQ(rows.back(), "again");
    EXPECT_EQ(port.printed, "a");
}

TEST_F(LinePrinterTest, FeedsAPageBehindSoManyAlarms) {
    TellingPrinter port;
    LinePrinter printer("lp", port, log, language, 2);
    for (const char* text : {"a", "b", "c", "d", "e"}) printer.SendPRN(text, "1");
    EXPECT_EQ(port.printed, "ab\fcd\fe");
}

TEST(PrinterDevice, ReadsTheStatusOfAParallelPrinter) {
    EXPECT_EQ(PrinterDevice::TroubleOf(0x18), PrinterTrouble::None);
    EXPECT_EQ(PrinterDevice::TroubleOf(0x38), PrinterTrouble::NoPaper);
    EXPECT_EQ(PrinterDevice::TroubleOf(0x08), PrinterTrouble::OffLine);
    EXPECT_EQ(PrinterDevice::TroubleOf(0x10), PrinterTrouble::Fault);
}

}  // namespace
}  // namespace nordkeep
