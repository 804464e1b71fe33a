#include "ports/TestTelegrams.h"

#include "pipeline/IncomingEvent.h"

#include <array>

namespace nordkeep {
namespace {

constexpr const char* kGeneral = "General";
constexpr std::int64_t kAheadOfFaultMs = 10'000;

using Row = SettingRow<SupervisionSettings>;
const std::array kRows = {
    Row{kGeneral, "TestTelegramInterval", SettingScope::Port, &SupervisionSettings::TestTelegramInterval},
    Row{kGeneral, "TestTelegramAlarmCode", SettingScope::Centre, &SupervisionSettings::TestTelegramAlarmCode},
    Row{kGeneral, "TestTelegramRestoreCode", SettingScope::Centre,
        &SupervisionSettings::TestTelegramRestoreCode},
};

}  // namespace

std::span<const SettingRow<SupervisionSettings>> SupervisionSettingRows() {
    return kRows;
}

SupervisionSettings LoadSupervisionSettings(const Settings& files, const Text& portName,
                                            MessageFormat format) {
    SupervisionSettings settings = LoadSettings(files, SupervisionSettingRows(), portName);
    // A modem is asked at longer intervals than these, so a shorter limit would report every pause.
    constexpr int kShortestOfModem = 20;
    const bool isModem = format == MessageFormat::GSM;
    if (isModem && settings.TestTelegramInterval >= 1 && settings.TestTelegramInterval < kShortestOfModem) {
        settings.TestTelegramInterval = kShortestOfModem;
    }
    const auto own = [&](const char* key, const Text& ofCentre) {
        return files.ReadPortIni(kGeneral, key, ofCentre, portName);
    };
    settings.TestTelegramAlarmCode = own("TestTelegramAlarmCode", settings.TestTelegramAlarmCode);
    settings.TestTelegramRestoreCode = own("TestTelegramRestoreCode", settings.TestTelegramRestoreCode);
    return settings;
}

TestTelegrams::TestTelegrams(SupervisionSettings settings, EventIntake& intake, const Clock& clock,
                             const EventPort& port)
    : settings_(std::move(settings)),
      intake_(intake),
      clock_(clock),
      port_(port),
      lastProofMs_(clock.MonotonicMs()) {}

void TestTelegrams::NoteProof() {
    lastProofMs_ = clock_.MonotonicMs();
    if (!isMissing_) return;
    isMissing_ = false;
    Raise(settings_.TestTelegramRestoreCode);
}

void TestTelegrams::Supervise() {
    if (!IsWatching() || SilentMs() <= AllowedMs()) return;
    isMissing_ = true;
    Raise(settings_.TestTelegramAlarmCode);
}

bool TestTelegrams::IsProofDue() const {
    return IsWatching() && SilentMs() > AllowedMs() - kAheadOfFaultMs;
}

void TestTelegrams::Raise(const Text& code) {
    intake_.HandleIncomingEvent({.AlarmTime = clock_.Now(),
                                 .ProtocolType = kOwnProtocol,
                                 .DefaultAlarmCode = code,
                                 .PortObject = &port_});
}

}  // namespace nordkeep
