#pragma once

#include "runtime/IniCheck.h"

namespace nordkeep {

/// Checks the content of the users file of a server.
void CheckUsers(TextView content, FileFindings& findings);

}  // namespace nordkeep
