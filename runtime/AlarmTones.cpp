#include "runtime/AlarmTones.h"

#include "platform/Files.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <span>

namespace nordkeep {
namespace {

constexpr int kRate = 22050;  // samples a second
constexpr double kLoudness = 26000;
constexpr double kEdgeSeconds = 0.012;  // a tone that begins or ends at once clicks

/// Hz, 0 for a pause, and seconds.
struct Tone {
    double pitch;
    double length;
};
constexpr Tone kUrgent[] = {{988, 0.14}, {0, 0.05}, {1319, 0.14}, {0, 0.05}, {1661, 0.22}, {0, 0.3},
                            {988, 0.14}, {0, 0.05}, {1319, 0.14}, {0, 0.05}, {1661, 0.22}, {0, 0.5}};
constexpr Tone kMedium[] = {{784, 0.22}, {0, 0.06}, {1047, 0.3}, {0, 1.4}};
constexpr Tone kLow[] = {{587, 0.35}, {0, 2.6}};

std::span<const Tone> TonesOf(int priority) {
    if (priority <= 1) return kUrgent;
    if (priority == 2) return kMedium;
    return kLow;
}

void AppendNumber(Text& bytes, std::uint32_t value, int width) {
    for (int i = 0; i < width; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

/// With its third harmonic, which carries through a room.
void AppendTone(Text& samples, const Tone& tone) {
    const int count = static_cast<int>(tone.length * kRate);
    for (int i = 0; i < count; ++i) {
        const double at = static_cast<double>(i) / kRate;
        const double edge = std::min({at, tone.length - at, kEdgeSeconds}) / kEdgeSeconds;
        const double turn = 2 * std::numbers::pi * tone.pitch * at;
        const double wave = tone.pitch > 0 ? 0.75 * std::sin(turn) + 0.25 * std::sin(3 * turn) : 0;
        AppendNumber(samples, static_cast<std::uint32_t>(std::lround(wave * edge * kLoudness)), 2);
    }
}

}  // namespace

Text AlarmTone(int priority) {
    Text samples;
    for (const Tone& tone : TonesOf(priority)) AppendTone(samples, tone);
    const auto size = static_cast<std::uint32_t>(samples.size());
    Text file = "RIFF";
    AppendNumber(file, 36 + size, 4);
    file += "WAVEfmt ";
    AppendNumber(file, 16, 4);
    AppendNumber(file, 1, 2);  // plain samples
    AppendNumber(file, 1, 2);  // one channel
    AppendNumber(file, kRate, 4);
    AppendNumber(file, kRate * 2, 4);
    AppendNumber(file, 2, 2);
    AppendNumber(file, 16, 2);
    file += "data";
    AppendNumber(file, size, 4);
    return file + samples;
}

void WriteAlarmTones(const FileTree& dataFolder) {
    MakeFolder(dataFolder.Resolve("Sounds"));
    for (int priority = 1; priority <= 3; ++priority) {
        const NativePath file = dataFolder.Resolve("Sounds\\Alarm" + std::to_string(priority) + ".wav");
        if (!StampOf(file).Exists()) WriteFile(file, AlarmTone(priority));
    }
}

}  // namespace nordkeep
