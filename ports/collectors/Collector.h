#pragma once

#include "platform/Clock.h"
#include "platform/EventLoop.h"
#include "platform/FileTree.h"
#include "platform/Inet.h"
#include "platform/Winsock.h"
#include "ports/formats/TelegramStep.h"
#include "ports/lines/Line.h"
#include "ports/lines/PortLog.h"
#include "runtime/TrafficLog.h"

#include <functional>
#include <memory>

namespace nordkeep {

/// Takes what a collector finds.
class StepTaker {
 public:
    using WhenStored = std::function<void(bool isStored)>;

    virtual ~StepTaker() = default;
    /// Acts on a step at once. `whenStored`, which may be empty, is told later whether all its events are
    /// stored.
    virtual void TakeStep(TelegramStep step, WhenStored whenStored) = 0;
    virtual void NoteTraffic(TextView bytes, TrafficDirection direction) = 0;
    /// What arrives is to be told as traffic and otherwise dropped.
    virtual bool IsMuted() const = 0;
    /// Nothing has proved for so long that the port works that a fault is near.
    virtual bool IsProofDue() const = 0;
};

/// Tells whether the store has everything that it was given; what it could not write it tries again by
/// itself.
class StoredEvents {
 public:
    virtual ~StoredEvents() = default;
    virtual bool AreAllStored() const = 0;
};

struct CollectorTick {
    int tickMs = 0;
    bool mayBegin = false;  // the port is to be open
};

/// What brings a port its events: a line with somebody at the other end, or a place that is looked at.
class Collector {
 public:
    virtual ~Collector() = default;
    virtual bool IsOpen() const = 0;
    /// One attempt to open, with its log line.
    virtual void Open() = 0;
    virtual void Close(bool isShuttingDown) = 0;
    virtual void Tick(const CollectorTick& tick) = 0;
    virtual FarEnd End() const { return {}; }
};

/// What collectors are made from.
struct CollectorParts {
    SocketFactory& sockets;
    InetFactory& inet;
    const Settings& settings;
    const Language& language;
    const Clock& clock;
    const FileTree& dataFolder;
    EventLoop& loop;
    const StoredEvents& stored;
    PortLog& log;
    StepTaker& taker;
};

/// The collector of a port whose type is no line; none for a format that does not come that way, or a setting
/// that names no file.
std::unique_ptr<Collector> MakeCollector(PortType type, MessageFormat format, const CollectorParts& parts);

std::unique_ptr<Collector> MakeFileCollector(MessageFormat format, const CollectorParts& parts);
std::unique_ptr<Collector> MakeHttpCollector(const CollectorParts& parts);
std::unique_ptr<Collector> MakePop3Collector(const CollectorParts& parts);
std::unique_ptr<Collector> MakeSmtpCollector(const CollectorParts& parts);

}  // namespace nordkeep
