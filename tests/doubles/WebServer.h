#pragma once

#include "tests/doubles/TempFolder.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace nordkeep {

/// The web service of tests/data/web_server.py, as a process of its own.
class WebServer {
 public:
    /// With a certificate and its key it is a secure one.
    explicit WebServer(const std::string& certificate = {}, const std::string& key = {}) {
        const std::string portFile = folder_.Path() + "/port";
        pid_ = ::fork();
        if (pid_ == 0) {
            ::execlp("python3", "python3", NORDKEEP_SOURCE_DIR "/tests/data/web_server.py", portFile.c_str(),
                     certificate.empty() ? nullptr : certificate.c_str(), key.c_str(), nullptr);
            ::_exit(127);
        }
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!folder_.Exists("port") && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    ~WebServer() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;

    std::string Url(const std::string& path) const {
        return "http://127.0.0.1:" + folder_.Read("port") + path;
    }

 private:
    TempFolder folder_{};
    int pid_ = -1;
};

}  // namespace nordkeep
