#pragma once

#include "platform/MSComm.h"

#include <utility>
#include <vector>

namespace nordkeep {

/// A serial line slot without a line. The test plays the device at its end.
class FakeMSComm : public MSComm {
 public:
    // What the test sees.
    Text sent{};                // everything handed to Output
    std::vector<Text> sends{};  // the same, one for each call
    Text device{};
    Text settings{};
    int handshaking = 0;
    std::vector<bool> controlLines{};  // each raising and lowering

    // What the test sets.
    bool isOpen = false;
    bool hasControlLines = true;
    Text failure{};  // not empty: opening and Output fail with this text

    // What the test makes happen.
    void Arrive(TextView bytes) {
        arrived_.append(bytes);
        Tell(CommEvent::Receive);
    }
    /// The device is pulled out.
    void Vanish(const Text& text) {
        isOpen = false;
        failure = text;
        Tell(CommEvent::Error);
    }

    void SetOnComm(std::function<void(CommEvent)> onComm) override { onComm_ = std::move(onComm); }
    void SetDevice(const Text& path) override { device = path; }
    void SetSettings(const Text& text) override { settings = text; }
    void SetHandshaking(int number) override { handshaking = number; }
    bool SetPortOpen(bool open) override {
        arrived_.clear();
        isOpen = open && failure.empty();
        return isOpen == open;
    }
    bool PortOpen() const override { return isOpen; }
    std::size_t InBufferCount() const override { return arrived_.size(); }
    Text Input() override { return std::exchange(arrived_, {}); }
    bool Output(TextView bytes) override {
        if (!isOpen || !failure.empty()) return false;
        sent.append(bytes);
        sends.emplace_back(bytes);
        return true;
    }
    bool SetControlLines(bool raised) override {
        if (!isOpen || !hasControlLines) return false;
        controlLines.push_back(raised);
        return true;
    }
    Text LastError() const override { return failure; }

 private:
    void Tell(CommEvent event) {
        const auto handler = onComm_;
        if (handler) handler(event);
    }

    std::function<void(CommEvent)> onComm_{};
    Text arrived_{};
};

/// Hands out fake lines and knows them in the order of their making; they belong to who asked for them.
class FakeSerial : public SerialFactory {
 public:
    std::unique_ptr<MSComm> NewLine() override {
        auto line = std::make_unique<FakeMSComm>();
        made.push_back(line.get());
        return line;
    }
    FakeMSComm& At(std::size_t number) { return *made.at(number); }
    FakeMSComm& Last() { return *made.back(); }

    std::vector<FakeMSComm*> made{};
};

}  // namespace nordkeep
