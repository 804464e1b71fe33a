#include "platform/curl/CurlTransfers.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace nordkeep {
namespace {

/// The library's own state, made once for the program.
void StartLibrary() {
    static const CURLcode kStarted = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(kStarted);
}

CURLM* NewMulti() {
    StartLibrary();
    return curl_multi_init();
}

}  // namespace

CurlTransfers::CurlTransfers(EventLoop& loop, DescriptorWatches& watches)
    : loop_(loop), watches_(watches), multi_(NewMulti()), timer_(loop.NewTimer([this] {
          timer_->Stop();
          Act(CURL_SOCKET_TIMEOUT, 0);
      })) {
    curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &CurlTransfers::OnSocket);
    curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
    curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &CurlTransfers::OnTimer);
    curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
}

CurlTransfers::~CurlTransfers() {
    for (const auto& [transfer, done] : running_) curl_multi_remove_handle(multi_, transfer);
    curl_multi_cleanup(multi_);
}

void CurlTransfers::Begin(CURL* transfer, Done done) {
    running_[transfer] = std::move(done);
    curl_multi_add_handle(multi_, transfer);
}

void CurlTransfers::End(CURL* transfer) {
    if (running_.erase(transfer) > 0) curl_multi_remove_handle(multi_, transfer);
}

int CurlTransfers::OnSocket(CURL*, curl_socket_t socket, int what, void* self, void*) {
    static_cast<CurlTransfers*>(self)->WatchSocket(socket, what);
    return 0;
}

int CurlTransfers::OnTimer(CURLM*, long ms, void* self) {
    Timer& timer = *static_cast<CurlTransfers*>(self)->timer_;
    if (ms < 0) {
        timer.Stop();
    } else {
        timer.Start(static_cast<int>(std::clamp<long>(ms, 1, std::numeric_limits<int>::max())));
    }
    return 0;
}

void CurlTransfers::WatchSocket(int socket, int what) {
    DropWatches(socket);
    if (what == CURL_POLL_REMOVE) return;
    Watches& watches = sockets_[socket];
    using enum DescriptorWatches::Readiness;
    if (what != CURL_POLL_OUT)
        watches.read = watches_.Watch(socket, Read, [this, socket] { Act(socket, CURL_CSELECT_IN); });
    if (what != CURL_POLL_IN)
        watches.write = watches_.Watch(socket, Write, [this, socket] { Act(socket, CURL_CSELECT_OUT); });
}

// The library changes them from inside a call that one of them has made.
void CurlTransfers::DropWatches(int socket) {
    const auto found = sockets_.find(socket);
    if (found == sockets_.end()) return;
    for (Watch* watch : {&found->second.read, &found->second.write})
        if (*watch) (*watch)->SetOn(false);
    dropped_.push_back(std::move(found->second));
    sockets_.erase(found);
    loop_.Post([this, life = std::weak_ptr<bool>(life_)] {
        if (!life.expired()) dropped_.clear();
    });
}

void CurlTransfers::Act(curl_socket_t socket, int events) {
    int running = 0;
    curl_multi_socket_action(multi_, socket, events, &running);
    TellDone();
}

void CurlTransfers::TellDone() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        CURL* const transfer = message->easy_handle;
        const CURLcode result = message->data.result;
        curl_multi_remove_handle(multi_, transfer);
        const auto found = running_.extract(transfer);
        if (found && found.mapped()) found.mapped()(result);
    }
}

}  // namespace nordkeep
