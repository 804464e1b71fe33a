#pragma once

#include "platform/posix/DurableFiles.h"
#include "ports/PortList.h"
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

    TempFolder folder{};
    ManualTime time{};
    Settings settings{folder.Tree()};
    Language language{};
    SysLog log{folder.Tree(), time};
    TrafficLog traffic{folder.Tree(), time};
    FakeSockets sockets{};
    FakeSerial serial{};
    RecordingIntake intake{};
    DurableFiles disk{};
    EventCommit commit{disk, [] {}};
    StallWatch stalls{time, time, log, language};
    PortParts parts{folder.Tree(), settings, language, log,    traffic, time,
                    time,          sockets,  serial,   intake, commit,  stalls};
    PortList ports{};
    PortConditions conditions{};
    std::vector<Text> lines{};
};

}  // namespace nordkeep
