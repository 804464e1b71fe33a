#pragma once

#include "runtime/IniCheck.h"

namespace nordkeep {

/// Addresses of the systems that alarms are passed on to, and ranges and lists of priorities and statuses.
void CheckForwarders(const IniLines& main, FileFindings& findings);

}  // namespace nordkeep
