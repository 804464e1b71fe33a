#pragma once

#include "platform/Text.h"
#include "runtime/SharedSettings.h"

#include <span>

namespace nordkeep {

/// The value of AliveTestBehaviour and AliveTest2Behaviour that silences a failed test until it is restored;
/// with any other value each expiry raises an alarm.
inline constexpr int kOneAlarmForEachFailure = 1;

/// The settings of translation and supervision. Read once at start; types are 16-bit numbers.
struct TranslationSettings : ParkingSettings, TestPrioSettings {
    bool ZeroTrimObjectId = false;
    bool MatchCLIDIfExisting = false;
    int AliveTestBehaviour = 0;
    int AliveTestType = 0;
    int AliveTest2Behaviour = 0;
    int AliveTest2Type = 0;
    int AliveTest2TypeReset = 0;
    bool ResetAliveTestTimers = false;
    bool ResetAliveTest2Timers = false;
    bool AliveTestDebug = false;
    bool ViewAliveTestStatusInTree = false;
    int AutoReloadTranslations = 0;  // seconds; below 1 is off, 1 to 4 count as 5
    bool AutoExchangeServiceInfo = false;
    Text ServiceIntervals{"30,60"};  // minutes, separated by commas

    int BehaviourOf(int test) const { return test == 1 ? AliveTestBehaviour : AliveTest2Behaviour; }
    int TypeOf(int test) const { return test == 1 ? AliveTestType : AliveTest2Type; }
};

std::span<const SettingRow<TranslationSettings>> TranslationSettingRows();

}  // namespace nordkeep
