#pragma once

#include "platform/DescriptorWatch.h"
#include "platform/EventLoop.h"

#include <curl/curl.h>

#include <map>
#include <memory>
#include <vector>

namespace nordkeep {

/// All transfers of the library, driven by the loop: its sockets are watched, its one timer is kept.
class CurlTransfers {
 public:
    CurlTransfers(EventLoop& loop, DescriptorWatches& watches);
    ~CurlTransfers();
    CurlTransfers(const CurlTransfers&) = delete;
    CurlTransfers& operator=(const CurlTransfers&) = delete;

    using Done = std::function<void(CURLcode result)>;
    /// Begins a transfer; `done` comes from the loop, never from here.
    void Begin(CURL* transfer, Done done);
    /// Ends one before it is done, or not at all.
    void End(CURL* transfer);

 private:
    using Watch = std::unique_ptr<DescriptorWatch>;
    struct Watches {
        Watch read{};
        Watch write{};
    };

    static int OnSocket(CURL* transfer, curl_socket_t socket, int what, void* self, void* socketsOwn);
    static int OnTimer(CURLM* multi, long ms, void* self);
    void WatchSocket(int socket, int what);
    void DropWatches(int socket);
    void Act(curl_socket_t socket, int events);
    void TellDone();

    EventLoop& loop_;
    DescriptorWatches& watches_;
    CURLM* multi_;
    std::unique_ptr<Timer> timer_;
    std::map<int, Watches> sockets_{};
    std::vector<Watches> dropped_{};  // one of them may be the caller
    std::map<CURL*, Done> running_{};
    std::shared_ptr<bool> life_ = std::make_shared<bool>(true);
};

}  // namespace nordkeep
