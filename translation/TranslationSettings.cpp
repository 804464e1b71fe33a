#include "translation/TranslationSettings.h"

#include <array>

namespace nordkeep {
namespace {

using Row = SettingRow<TranslationSettings>;
constexpr SettingScope kCentre = SettingScope::Centre;
constexpr int kLowest = -32768;
constexpr int kHighest = 32767;

constexpr std::array kRows = {
    Row{"General", "ZeroTrimObjectId", "0", kCentre, &TranslationSettings::zeroTrimObjectId},
    Row{"General", "MatchCLIDIfExisting", "0", kCentre, &TranslationSettings::matchClidIfExisting},
    Row{"General", "UnAssociatedResetEventsTimeout", "0", kCentre,
        &TranslationSettings::unAssociatedResetEventsTimeout},
    Row{"General", "AliveTestBehaviour", "0", kCentre, &TranslationSettings::aliveTestBehaviour},
    Row{"General", "AliveTestType", "0", kCentre, &TranslationSettings::aliveTestType, kLowest, kHighest},
    Row{"General", "AliveTestTypeReset", "0", kCentre, &TranslationSettings::aliveTestTypeReset, kLowest,
        kHighest},
    Row{"General", "AliveTest2Behaviour", "0", kCentre, &TranslationSettings::aliveTest2Behaviour},
    Row{"General", "AliveTest2Type", "0", kCentre, &TranslationSettings::aliveTest2Type, kLowest, kHighest},
    Row{"General", "AliveTest2TypeReset", "0", kCentre, &TranslationSettings::aliveTest2TypeReset, kLowest,
        kHighest},
    Row{"General", "AliveTest2ResetTimerPrio", "9999", kCentre,
        &TranslationSettings::aliveTest2ResetTimerPrio},
    Row{"General", "ResetAliveTestTimers", "", kCentre, &TranslationSettings::resetAliveTestTimers},
    Row{"General", "ResetAliveTest2Timers", "", kCentre, &TranslationSettings::resetAliveTest2Timers},
    Row{"General", "AliveTestDebug", "0", kCentre, &TranslationSettings::aliveTestDebug},
    Row{"General", "ViewAliveTestStatusInTree", "", kCentre, &TranslationSettings::viewAliveTestStatusInTree},
    Row{"General", "AutoReloadTranslations", "0", kCentre, &TranslationSettings::autoReloadTranslations},
    Row{"General", "AutoExchangeServiceInfo", "0", kCentre, &TranslationSettings::autoExchangeServiceInfo},
    Row{"General", "ServiceIntervals", "30,60", kCentre, &TranslationSettings::serviceIntervals},
};

}  // namespace

std::span<const SettingRow<TranslationSettings>> TranslationSettingRows() {
    return kRows;
}

}  // namespace nordkeep
