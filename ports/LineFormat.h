#pragma once

#include "ports/CallerIdentity.h"
#include "ports/Protocol.h"
#include "ports/RobofonExport.h"
#include "ports/ServiceTick.h"
#include "ports/TelegramStep.h"
#include "runtime/Language.h"
#include "runtime/Settings.h"

#include <memory>

namespace nordkeep {

/// What the bytes of one line mean, and what the line does by itself as time goes. A format keeps the state
/// of its line and touches nothing else: the port acts on the steps.
class LineFormat {
 public:
    virtual ~LineFormat() = default;
    /// Looks at the front of the received text.
    virtual TelegramStep Next(TextView received, OleDate now) = 0;
    /// Called once for each tick of the port, whether the line is open or not. `reply` is to be sent.
    virtual TelegramStep Service(const ServiceTick&) { return {}; }
    /// What still waits when the program ends.
    virtual TelegramStep Finish(OleDate) { return {}; }
};

/// What formats are made from.
struct FormatParts {
    const Settings& files;
    const Language& language;
    Text portName{};
    CallerLookup findCaller{};        // none: every caller is unknown
    ExportQueues* exports = nullptr;  // takes in the queue of a port that exports; none: it stays empty
};

/// The telegram format of a port with the port's settings; none for a format that has no telegrams.
std::unique_ptr<LineFormat> MakeLineFormat(MessageFormat format, const FormatParts& parts);

}  // namespace nordkeep
