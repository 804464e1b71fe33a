#pragma once

#include "platform/posix/DurableFiles.h"
#include "ports/PortList.h"
#include "tests/doubles/FakeInet.h"
#include "tests/doubles/FakeMSComm.h"
#include "tests/doubles/FakeWinsock.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/RecordingIntake.h"
#include "tests/doubles/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace nordkeep {

/// Everything that ports stand on, played: time, lines, the intake, and the log as a list of texts.
class PortWorld : public ::testing::Test {
 protected:
    PortWorld() {
        log.SetRowListener([this](const LogRow& row) { lines.push_back(row.text); });
    }

    std::size_t LinesWith(const Text& part) const {
        return static_cast<std::size_t>(
            std::ranges::count_if(lines, [&](const Text& line) { return line.find(part) != Text::npos; }));
    }

    PortParts PartsWith(EventCommit& itsCommit) {
        return {.dataFolder = folder.Tree(),
                .settings = settings,
                .language = language,
                .log = log,
                .trafficLog = traffic,
                .clock = time,
                .loop = time,
                .sockets = sockets,
                .serial = serial,
                .inet = inets,
                .intake = intake,
                .commit = itsCommit,
                .stored = stored,
                .stalls = stalls,
                .exports = exports,
                .wait = wait};
    }

    struct PlayedStore final : StoredEvents {
        bool AreAllStored() const override { return areAllStored; }
        bool areAllStored = true;
    };

    TempFolder folder{};
    ManualTime time{};
    Settings settings{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    TrafficLog traffic{folder.Tree(), time};
    FakeSockets sockets{};
    FakeSerial serial{};
    FakeInets inets{};
    RecordingIntake intake{};
    DurableFiles disk{};
    EventCommit commit{disk, [] {}};
    StallWatch stalls{time, time, log, language};
    PlayedStore stored{};
    ExportQueues exports{};
    CommWait wait{time, time};
    PortParts parts = PartsWith(commit);
    PortList ports{};
    PortConditions conditions{};
    std::vector<Text> lines{};
};

}  // namespace nordkeep
