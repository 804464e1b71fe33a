#pragma once

#include "runtime/Findings.h"
#include "runtime/IniLines.h"

namespace nordkeep {

/// The section of a port's settings file that names senders, and their keys.
inline constexpr const char* kDc09Accounts = "DC09Accounts";

/// What the section says. No finding repeats a key.
void CheckDc09Accounts(const IniLines& lines, FileFindings& findings);

}  // namespace nordkeep
