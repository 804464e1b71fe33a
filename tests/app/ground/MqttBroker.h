#pragma once

#include "tests/app/ground/RunningCopy.h"
#include "tests/app/ground/Shell.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace nordkeep {

/// A real broker that forgets nothing while it is away, and somebody who writes down all that it is told.
class MqttBroker {
 public:
    explicit MqttBroker(const std::string& more = {}) {
        std::ofstream conf(folder_.Path() + "/conf");
        conf << "listener " << port_ << " 127.0.0.1\npersistence true\npersistence_location "
             << folder_.Path() << "/\nautosave_interval 1\nmax_queued_messages 0\n"
             << (more.empty() ? "allow_anonymous true\n" : more);
    }
    ~MqttBroker() {
        Stop();
        if (!reader_.empty()) Shell("kill " + reader_);
    }
    MqttBroker(const MqttBroker&) = delete;
    MqttBroker& operator=(const MqttBroker&) = delete;

    void Start() {
        pid_ = FirstLine(
            Shell("PATH=$PATH:/usr/sbin mosquitto -c " + folder_.Path() + "/conf > /dev/null 2>&1 & echo $!")
                .output);
        EXPECT_TRUE(WaitFor([&] { return Caller(port_).IsConnected(); }));
    }
    /// It keeps what it has acknowledged only when it is asked to end.
    void Stop() {
        if (!pid_.empty()) Shell("kill " + pid_);
        EXPECT_TRUE(pid_.empty() || WaitFor([&] { return Shell("kill -0 " + pid_).status != 0; }));
        pid_.clear();
    }
    /// A session that outlives the broker's absence: what comes meanwhile is brought later.
    void Subscribe() {
        const auto listen = [&](const std::string& options) {
            return "mosquitto_sub -p " + std::to_string(port_) + " -i reader -c -q 1 -t 'house/events' " +
                   options;
        };
        Shell(listen("-E"));  // from here on the broker keeps for it what comes
        reader_ = FirstLine(Shell(listen("> " + folder_.Path() + "/events 2>/dev/null & echo $!")).output);
    }
    /// What stands retained under a topic, in lines "topic payload".
    std::string Retained(const std::string& topic) const {
        return Shell("mosquitto_sub -p " + std::to_string(port_) + " -W 1 -q 1 -v -t '" + topic +
                     "' 2>/dev/null")
            .output;
    }
    /// The ids of the entries in the order in which they came.
    std::vector<long> Ids() const {
        std::ifstream lines(folder_.Path() + "/events");
        std::vector<long> ids;
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("{\"id\":") && line.ends_with("}")) ids.push_back(std::stol(line.substr(6)));
        return ids;
    }
    int Port() const { return port_; }
    const std::string& Folder() const { return folder_.Path(); }

 private:
    static std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

    TempFolder folder_{};
    int port_ = FreePort();
    std::string pid_{};
    std::string reader_{};
};

}  // namespace nordkeep
