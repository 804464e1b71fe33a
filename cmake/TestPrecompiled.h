#pragma once

#include "cmake/Precompiled.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
