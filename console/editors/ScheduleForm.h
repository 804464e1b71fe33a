#pragma once

#include "platform/Text.h"

#include <vector>

namespace nordkeep {

/// The schedule of an alive test as a person fills it in.
struct ScheduleForm {
    enum class Kind { Never, Minutes, Times };
    /// A deadline, and where the object must not call too early the begin of its window.
    struct Window {
        Text begin{};
        Text end{};
        friend bool operator==(const Window&, const Window&) = default;
    };

    Kind kind = Kind::Never;
    Text minutes{};  // as it stands, also when it is no number
    std::vector<Window> times{};
    friend bool operator==(const ScheduleForm&, const ScheduleForm&) = default;
};

ScheduleForm FormOfSchedule(TextView schedule);
/// The schedule as its file has it. Windows without an end are left out. One that begins with 00 is put
/// behind another, since a schedule that begins so is left out when it is saved; their order means nothing.
Text ScheduleOf(const ScheduleForm& form);

}  // namespace nordkeep
