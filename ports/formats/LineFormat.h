#pragma once

#include "ports/collectors/CommWait.h"
#include "ports/formats/CallerIdentity.h"
#include "ports/formats/RobofonExport.h"
#include "ports/formats/ServiceTick.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/Language.h"
#include "runtime/Protocol.h"
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
    /// The last duty of a tick: a format that talks with what is at the other end does so here. It may wait;
    /// everything else goes on meanwhile, and its own line goes on receiving.
    virtual void Converse(const ServiceTick&) {}
    /// What has been received so far belongs to a line that is gone.
    virtual void BeginStream() {}
    /// The far end has a clock that can be set from here; a request is served as soon as the line can send.
    virtual bool HasClock() const { return false; }
    virtual void RequestClock() {}
    /// What still waits when the program ends.
    virtual TelegramStep Finish(OleDate) { return {}; }
};

/// What a format needs that talks with what is at the other end.
struct Conversation {
    std::shared_ptr<CommWait> wait{};  // none: nothing is ever said
    std::function<void(TextView bytes)> send{};
    std::function<bool()> canSend{};
    /// Acts on a step at once, while the talk goes on; told whether its events are stored.
    std::function<void(TelegramStep step, std::function<void(bool isStored)> whenStored)> act{};
};

/// What formats are made from.
struct FormatParts {
    const Settings& files;
    const Language& language;
    Text portName{};
    CallerLookup findCaller{};  // none: every caller is unknown
    Conversation conversation{};
    ExportQueues* exports = nullptr;  // takes in the queue of a port that exports; none: it stays empty
};

/// The telegram format of a port with the port's settings; none for a format that has no telegrams.
std::unique_ptr<LineFormat> MakeLineFormat(MessageFormat format, const FormatParts& parts);

}  // namespace nordkeep
