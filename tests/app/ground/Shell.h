#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace nordkeep {

/// What a command of the shell printed on either output, and how it ended.
struct Shell {
    explicit Shell(const std::string& command) {
        FILE* const pipe = ::popen(("{ " + command + "\n} 2>&1").c_str(), "r");
        std::array<char, 4096> buffer{};
        for (std::size_t got = 1; got > 0;) {
            got = std::fread(buffer.data(), 1, buffer.size(), pipe);
            output.append(buffer.data(), got);
        }
        status = WEXITSTATUS(::pclose(pipe));
    }
    std::string output{};
    int status = -1;
};

}  // namespace nordkeep
