#include "translation/TranslationSettings.h"

#include <array>

namespace nordkeep {
namespace {

using Row = SettingRow<TranslationSettings>;
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kLowest = -32768;
constexpr int kHighest = 32767;

constexpr std::array kRows = {
    Row{"General", "ZeroTrimObjectId", kCentre, &TranslationSettings::ZeroTrimObjectId},
    Row{"General", "MatchCLIDIfExisting", kCentre, &TranslationSettings::MatchCLIDIfExisting},
    kParkingRow<TranslationSettings>,
    Row{"General", "AliveTestBehaviour", kCentre, &TranslationSettings::AliveTestBehaviour},
    Row{"General", "AliveTestType", kCentre, &TranslationSettings::AliveTestType, kLowest, kHighest},
    Row{"General", "AliveTest2Behaviour", kCentre, &TranslationSettings::AliveTest2Behaviour},
    Row{"General", "AliveTest2Type", kCentre, &TranslationSettings::AliveTest2Type, kLowest, kHighest},
    Row{"General", "AliveTest2TypeReset", kCentre, &TranslationSettings::AliveTest2TypeReset, kLowest,
        kHighest},
    kTestPrioRow<TranslationSettings>,
    Row{"General", "ResetAliveTestTimers", kCentre, &TranslationSettings::ResetAliveTestTimers},
    Row{"General", "ResetAliveTest2Timers", kCentre, &TranslationSettings::ResetAliveTest2Timers},
    Row{"General", "AliveTestDebug", kCentre, &TranslationSettings::AliveTestDebug},
    Row{"General", "ViewAliveTestStatusInTree", kCentre, &TranslationSettings::ViewAliveTestStatusInTree},
    Row{"General", "AutoReloadTranslations", kCentre, &TranslationSettings::AutoReloadTranslations},
    Row{"General", "AutoExchangeServiceInfo", kCentre, &TranslationSettings::AutoExchangeServiceInfo},
    Row{"General", "ServiceIntervals", kCentre, &TranslationSettings::ServiceIntervals},
};

}  // namespace

std::span<const SettingRow<TranslationSettings>> TranslationSettingRows() {
    return kRows;
}

}  // namespace nordkeep
