#pragma once

#include "platform/qt/Application.h"
#include "platform/qt/QtEventLoop.h"

#include <QtCore/QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>

namespace nordkeep {

/// A test that runs on the real event loop.
class LoopTest : public testing::Test {
 protected:
    LoopTest() {
        static int argc = 1;
        static char name[] = "test_platform";
        static char* argv[] = {name, nullptr};
        static const auto application = MakeCoreApplication(argc, argv);
    }

    /// Handles events until the condition holds; false when it does not within some seconds.
    bool Until(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) return false;
            loop.SleepAndPump(1);
        }
        return true;
    }
    /// Gives what should not happen the time to happen.
    void Settle() { loop.SleepAndPump(60); }

    QtEventLoop loop{};
};

}  // namespace nordkeep
