#pragma once

#include "platform/Inet.h"

#include <utility>
#include <vector>

namespace nordkeep {

/// A web slot without a network: the test answers.
class FakeInet : public Inet {
 public:
    // What the test sees.
    std::vector<Text> urls{};
    int cancels = 0;
    InetProtocol protocol = InetProtocol::Http;

    bool IsAsked() const { return isExecuting_; }
    void Answer(const Text& text) { End(InetState::Complete, text); }
    void Fail(const Text& reason = {}) {
        End(InetState::Error, {});
        lastError_ = reason;
    }
    int statusCode = 200;
    NativePath authorityFile{};

    void SetProtocol(InetProtocol value) override { protocol = value; }
    void SetAuthorityFile(const NativePath& file) override { authorityFile = file; }
    Text LastError() const override { return lastError_; }
    int StatusCode() const override { return statusCode; }
    void Execute(const Text& url) override {
        lastError_.clear();
        urls.push_back(url);
        state_ = InetState::None;
        isExecuting_ = true;
    }
    bool StillExecuting() const override { return isExecuting_; }
    InetState LastState() const override { return state_; }
    Text GetChunk(std::size_t most) override { return std::exchange(answer_, {}).substr(0, most); }
    void Cancel() override {
        ++cancels;
        End(InetState::Error, {});
    }

 private:
    void End(InetState state, const Text& answer) {
        isExecuting_ = false;
        state_ = state;
        answer_ = answer;
    }

    InetState state_ = InetState::None;
    bool isExecuting_ = false;
    Text answer_{};
    Text lastError_{};
};

class FakeInets : public InetFactory {
 public:
    std::unique_ptr<Inet> NewInet() override {
        auto slot = std::make_unique<FakeInet>();
        slots.push_back(slot.get());
        return slot;
    }
    /// Shows what was digested.
    Text Md5(TextView bytes) const override { return "(" + Text(bytes) + ")"; }

    std::vector<FakeInet*> slots{};
};

}  // namespace nordkeep
