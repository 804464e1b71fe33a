#pragma once

#include "ports/ExportQueues.h"
#include "ports/formats/CallerIdentity.h"
#include "ports/formats/LineFormat.h"
#include "runtime/Language.h"
#include "runtime/Protocol.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// What formats are made from.
struct FormatParts {
    const Settings& files;
    const Language& language;
    Text portName{};
    const CallerBook& callers;
    ExportQueues& exports;  // takes in the queue of a port that exports
};

/// The telegram format of a port with the port's settings; none for a format that has no telegrams.
std::unique_ptr<LineFormat> MakeLineFormat(MessageFormat format, const FormatParts& parts);

}  // namespace nordkeep
