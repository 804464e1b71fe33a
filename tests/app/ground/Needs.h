#pragma once

#include "tests/app/ground/Shell.h"

#include <gtest/gtest.h>

/// Skips the test at once where a server or tool that it talks with is not installed. ./test installs them
/// all, and takes a test that was skipped for one that failed.
#define NORDKEEP_NEEDS(program, name)                                                                    \
    if (::nordkeep::Shell("PATH=$PATH:/usr/sbin:/usr/lib/rabbitmq/bin command -v " program).status != 0) \
    GTEST_SKIP() << "skipped: no " name
