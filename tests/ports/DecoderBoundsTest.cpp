// What decoders keep and make stays in bounds, whatever comes.

#include "ports/formats/LineFormat.h"
#include "ports/formats/RobofonExport.h"
#include "ports/formats/Rsm02.h"
#include "ports/formats/SiaData.h"
#include "ports/formats/SiaWait.h"
#include "ports/formats/XmlGateways.h"
#include "tests/ports/Decoding.h"

#include <gtest/gtest.h>

namespace nordkeep {
namespace {

TEST(DecoderBounds, FragmentsWithoutEnd) {
    // A middle fragment of 240 characters.
    Text frame = FromHex("00 00 FF 50 18 05 11 0D 2D 03 31 00 00") + Text(240, 'x');
    unsigned sum = 0;
    for (const char c : frame) sum += static_cast<unsigned char>(c);
    frame = "\x02" + frame + static_cast<char>(sum / 256) + static_cast<char>(sum % 256) + "\x03";
    Rsm02State state;
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(NextRsm02Step(frame, {{}, state, NoCallers()}, {}).reply, "\x06");
    EXPECT_EQ(state.accumulated.size(), 131072u);
}

TEST(DecoderBounds, HostileSiaMessages) {
    Text codes = "[#1|N";
    for (int i = 0; i < 5000; ++i) codes += "BA/";
    Text blocks = "[#1";
    for (int i = 0; i < 5000; ++i) blocks += "|ZZ";
    for (const Text& text : {codes, blocks, "[#1|N" + Text(1 << 20, 'B')}) {
        for (const SiaForm form : {SiaForm::Brackets, SiaForm::Lengths}) {
            const auto events = DecodeSIABlock({.text = text, .form = form}, {}, {});
            EXPECT_GE(events.size(), 1u) << "nothing is silently missed";
            EXPECT_LE(events.size(), 2 * kMostSiaEvents);
            EXPECT_LE(events.front().event.RawAlarmCode.size(), 100'000u);
        }
    }
}

TEST(DecoderBounds, WaitingSiaMessages) {
    SiaSettings settings{};
    settings.WaitForMLR2SIAASCIIBlockTimeout = 60;
    SiaWait wait;
    TelegramStep step;
    for (int account = 0; account < 1003; ++account) {
        wait.Take({.text = "[#" + std::to_string(account) + "|NBA01]"}, "t", settings, {}, step);
    }
    EXPECT_EQ(wait.Size(), 1000u);
    EXPECT_EQ(step.events.size(), 3u) << "the oldest go on without their text";
    EXPECT_EQ(step.settled, (std::vector<std::uint64_t>{1, 2, 3}));
}

TEST(DecoderBounds, ExportsOfALineThatNeverOpens) {
    RobofonExport queue({});
    for (int i = 0; i < 10'003; ++i) queue.Add(std::to_string(i), "30");
    EXPECT_EQ(queue.Size(), 10'000u);
    EXPECT_EQ(queue.Tick({}).notes.size(), 3u);
    EXPECT_EQ(queue.Tick({.canSend = true}).reply.substr(16, 8), "3       ");
}

TEST(DecoderBounds, DocumentsOfOneStep) {
    Text flood;
    for (int i = 0; i < 64 + 5; ++i) flood += "<PingRequest>x</PingRequest>";
    const Decoder decoder = [](TextView received, OleDate now) {
        return NextSosAccessV4Step(received, {}, now);
    };
    const Decoded decoded = Decode(decoder, {flood});
    EXPECT_EQ(decoded.rest, "");
    EXPECT_EQ(decoded.trafficNotes, 2);
    EXPECT_EQ(decoded.closes, 1) << "the line stays open until the last reply";
}

}  // namespace
}  // namespace nordkeep
