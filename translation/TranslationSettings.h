#pragma once

#include "platform/Text.h"
#include "runtime/SettingTable.h"

#include <span>

namespace nordkeep {

/// The value of AliveTestBehaviour and AliveTest2Behaviour that silences a failed test until it is restored;
/// with any other value each expiry raises an alarm.
inline constexpr int kOneAlarmForEachFailure = 1;

/// The settings of translation and supervision. Read once at start; types are 16-bit numbers.
struct TranslationSettings {
    bool zeroTrimObjectId = false;
    bool matchClidIfExisting = false;
    int unAssociatedResetEventsTimeout = 0;  // seconds; below 1 resets are not parked
    int aliveTestBehaviour = 0;
    int aliveTestType = 0;
    int aliveTestTypeReset = 0;  // steers nothing; known so that a settings file may hold it
    int aliveTest2Behaviour = 0;
    int aliveTest2Type = 0;
    int aliveTest2TypeReset = 0;
    int aliveTest2ResetTimerPrio = 9999;  // priority of the events that feed test 2; 9999 for none
    bool resetAliveTestTimers = false;
    bool resetAliveTest2Timers = false;
    bool aliveTestDebug = false;
    bool viewAliveTestStatusInTree = false;
    int autoReloadTranslations = 0;  // seconds; below 1 is off, 1 to 4 count as 5
    bool autoExchangeServiceInfo = false;
    Text serviceIntervals{};  // minutes, separated by commas

    int AliveTestBehaviour(int test) const { return test == 1 ? aliveTestBehaviour : aliveTest2Behaviour; }
    int AliveTestType(int test) const { return test == 1 ? aliveTestType : aliveTest2Type; }
};

std::span<const SettingRow<TranslationSettings>> TranslationSettingRows();

}  // namespace nordkeep
