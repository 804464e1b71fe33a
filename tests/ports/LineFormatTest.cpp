#include "ports/LineFormat.h"
#include "tests/doubles/TempFolder.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

class LineFormatTest : public ::testing::Test {
 protected:
    LineFormatTest() { language.LoadFrom("1059=unknown\r\n1060=hidden\r\n1095= lost\r\n"); }

    std::unique_ptr<LineFormat> Make(MessageFormat format, const Text& port = {}, const Text& centre = {}) {
        folder.Write("Settings\\PortX.ini", "[General]\r\nPortDescription=X\r\n" + port);
        folder.Write("Settings\\Nordkeep.INI", "[General]\r\n" + centre);
        return MakeLineFormat(
            format, {.files = files, .language = language, .portName = "PortX", .exports = &exports});
    }

    TempFolder folder{};
    Settings files{folder.Tree()};
    Language language{};
    ExportQueues exports{};
};

TEST_F(LineFormatTest, ExistsForTelegramFormatsOnly) {
    for (int number = 0; number <= 13; ++number) {
        const auto format = static_cast<MessageFormat>(number);
        // Polled receivers have telegrams too, but they come by questions and not on a line.
        const bool hasLine = IsTelegramFormat(format) && format != MessageFormat::VirtualReceiver;
        EXPECT_EQ(Make(format) != nullptr, hasLine) << number;
    }
}

TEST_F(LineFormatTest, LetsAnEventWaitForItsTextByTheCentresSettings) {
    const auto line = Make(MessageFormat::SurGardMLR2, "",
                           "WaitForMLR2SIAASCIIBlockTimeout=2\r\nSIADecodeErrorType=55\r\n");
    EXPECT_TRUE(line->Next("S011[#1|NBA01]\x14", {}).events.empty());
    EXPECT_TRUE(line->Service({.tickMs = 2000}).events.empty());
    EXPECT_EQ(line->Service({.tickMs = 1}).events.size(), 1u);
    line->Next("S011[#1|ZBA01]\x14", {});
    const TelegramStep end = line->Finish({});
    ASSERT_EQ(end.events.size(), 1u);
    EXPECT_EQ(end.events[0].event.DefaultType, 55);
    EXPECT_TRUE(line->Finish({}).events.empty());
}

TEST_F(LineFormatTest, ExportsWhatIsQueuedForAllPortsAndReportsWhatIsGivenUp) {
    const auto line =
        Make(MessageFormat::RobofonExport, "RBM600ExportRetries=0\r\nRBM600ExportTimeout=2000\r\n");
    exports.ExportTelegram("12340001", "30");
    EXPECT_EQ(line->Service({.monotonicMs = 1000, .canSend = true}).reply.size(), 26u);
    const TelegramStep step = line->Service({.monotonicMs = 3000, .canSend = true});
    ASSERT_EQ(step.notes.size(), 1u);
    EXPECT_EQ(step.notes[0].tail, "X lost (12340001)");
}

TEST_F(LineFormatTest, ReadsTheSettingsOfItsPort) {
    // A bad character code counts as the default: a tab in text messages, a blank elsewhere.
    const auto rsm =
        Make(MessageFormat::RSM02, "SMSCrLfReplaceCharacter=300\r\nParseNumericIDCodeFieldUsingSpace=0\r\n");
    const Text frame = FromHex("02 00 00 14 50 00 00 00 00 00 00 78 30 00 31 20 61 0D 0A");
    unsigned sum = 0;
    for (const char c : frame.substr(1)) sum += static_cast<unsigned char>(c);
    const Text whole = frame + static_cast<char>(sum >> 8) + static_cast<char>(sum & 255) + "\x03";
    const TelegramStep step = rsm->Next(whole, {});
    ASSERT_EQ(step.events.size(), 1u);
    EXPECT_EQ(step.events[0].event.ExtraText, "1 a\t");
    const auto t1 =
        Make(MessageFormat::GoogolT1, "GoogolTextIsAlarmCode=1\r\nTextCrLfReplaceCharacter=-1\r\n");
    EXPECT_EQ(t1->Next("\x02"
                       "A b\nc\x03",
                       {})
                  .events.at(0)
                  .event.RawAlarmCode,
              "A b c");
}

}  // namespace
}  // namespace nordkeep
