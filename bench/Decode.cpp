// Messages a second that each line format decodes, beside a copy of the same bytes.

#include "ports/LineFormats.h"
#include "tests/doubles/TempFolder.h"
#include "tools/Telegrams.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <vector>

namespace nordkeep {
namespace {

using Clock = std::chrono::steady_clock;
constexpr int kRounds = 7;
constexpr std::size_t kMessages = 20'000;

struct FormatRow {
    const char* name;  // as nordkeep-send has it
    MessageFormat format;
    const char* code;
    const char* text;
};

constexpr FormatRow kRows[] = {
    {"robofon", MessageFormat::Robofon, "10000103", ""},
    {"googol", MessageFormat::GoogolT1, "10000103", "Hall"},
    {"text", MessageFormat::PlainText, "10000103", "Hall"},
    {"rsm02", MessageFormat::RSM02, "10000103", ""},
    {"sosmini", MessageFormat::SOSAccessMini, "10000103", "Hall"},
    {"aptus", MessageFormat::AptusMini, "10000103", "Hall"},
    {"sosaccess", MessageFormat::SOSAccessV4, "10000103", "3"},
    {"contactid", MessageFormat::SurGardMLR2, "123418113001004", ""},
    {"sia", MessageFormat::SurGardMLR2, "1234", "Nri1/BA003"},
};

double SecondsOf(const auto& work) {
    double best = 1e9;
    for (int round = 0; round < kRounds; ++round) {
        const auto begin = Clock::now();
        work();
        best = std::min(best, std::chrono::duration<double>(Clock::now() - begin).count());
    }
    return best;
}

/// Every telegram arrives by itself, as it does on a line.
std::size_t Decode(LineFormat& format, const Text& telegram) {
    const LineClock clock{.now = OleDate::FromDays(45000), .utc = OleDate::FromDays(45000)};
    std::size_t events = 0;
    for (std::size_t i = 0; i < kMessages; ++i) {
        TextView received = telegram;
        while (!received.empty()) {
            const TelegramStep step = format.Next(received, clock);
            if (step.consumed == 0) break;
            events += step.events.size();
            received.remove_prefix(step.consumed);
        }
    }
    return events;
}

struct NoCallers final : CallerBook {
    std::optional<KnownCaller> FindCaller(TextView) const override { return std::nullopt; }
};

volatile char kept = 0;

void Measure(const FormatRow& row, const FormatParts& parts) {
    const Text telegram =
        tools::MakeTelegram({.format = row.name, .text = row.text, .classCode = '1'}, row.code);
    const auto format = MakeLineFormat(row.format, parts);
    std::size_t events = 0;
    const double decoding = SecondsOf([&] { events = Decode(*format, telegram); });
    std::vector<char> copy(telegram.size());
    const double copying = SecondsOf([&] {
        for (std::size_t i = 0; i < kMessages; ++i) {
            std::memcpy(copy.data(), telegram.data(), telegram.size());
            kept = copy[i % copy.size()];
        }
    });
    std::printf(
        "decode %-10s %9.0f messages/s   time / memcpy's time %7.0f   (%zu bytes, %zu of %zu made events)\n",
        row.name, kMessages / decoding, decoding / copying, telegram.size(), events, kMessages);
}

}  // namespace
}  // namespace nordkeep

int main() {
    using namespace nordkeep;
    const TempFolder folder;
    const Settings files(folder.Tree());
    const Language language;
    const NoCallers callers;
    ExportQueues exports;
    const FormatParts parts{
        .files = files, .language = language, .portName = "Port1", .callers = callers, .exports = exports};
    for (const FormatRow& row : kRows) Measure(row, parts);
}
