#pragma once

#include "platform/Text.h"

#include <cstdint>

namespace nordkeep {

/// Who asked for a window: a sheet that comes by itself never pushes aside what an operator has open.
enum class OpenedBy { Operator, Itself };

/// The sheets, maps and pictures that lists and alarms open. Nothing here waits: a window is shown, and its
/// model lives on. Alarms are named by key and looked up when needed.
class OperatorWindows {
 public:
    virtual ~OperatorWindows() = default;
    virtual void OpenAlarmSheet(std::int32_t filePointer, OpenedBy by) = 0;
    /// An object's own sheet: the set's name (`m_FileName`) and the object's `m_IdCode`.
    virtual void OpenObjectSheet(const Text& set, const Text& idCode) = 0;
    /// The map of a reference "file/x/y"; `filePointer` 0 is a map without an alarm.
    virtual void OpenMap(const Text& reference, std::int32_t filePointer, OpenedBy by) = 0;
    virtual void ShowPicture(std::int32_t filePointer, const Text& caption, bool isFollowedBySpeech) = 0;
    /// The alarm has been ended: its picture goes.
    virtual void AlarmEnded(std::int32_t filePointer) = 0;
};

}  // namespace nordkeep
