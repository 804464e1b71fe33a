#include "platform/http/MicroHttpServer.h"

#include <arpa/inet.h>
#include <microhttpd.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace nordkeep {
namespace {

constexpr unsigned kMostCallers = 64;
constexpr unsigned kSilenceSeconds = 30;
constexpr std::size_t kMemoryOfCaller = 32 * 1024;
constexpr std::size_t kMemoryOfTlsCaller = 64 * 1024;
constexpr std::size_t kPieceSize = 16 * 1024;
/// A caller whose connection has gone unnoticed is found by what is sent to it now and then.
constexpr int kLongestPauseMs = 1000;

struct SocketAddress {
    sockaddr_storage storage{};
    bool isSix = false;
    bool isValid = false;
};

SocketAddress AddressOf(const HttpListening& listening) {
    SocketAddress address;
    auto* const four = reinterpret_cast<sockaddr_in*>(&address.storage);
    auto* const six = reinterpret_cast<sockaddr_in6*>(&address.storage);
    const auto port = htons(static_cast<std::uint16_t>(listening.port));
    if (::inet_pton(AF_INET, listening.address.c_str(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = port;
        address.isValid = true;
    } else if (::inet_pton(AF_INET6, listening.address.c_str(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = port;
        address.isSix = address.isValid = true;
    }
    return address;
}

MHD_Result NoteQuery(void* request, MHD_ValueKind, const char* name, const char* value) {
    constexpr std::size_t kMostValues = 16;
    auto& query = static_cast<HttpRequest*>(request)->query;
    if (query.size() < kMostValues) query[name] = value ? value : "";
    return MHD_YES;
}

std::string HeaderOf(MHD_Connection* connection, const char* name) {
    const char* const value = MHD_lookup_connection_value(connection, MHD_HEADER_KIND, name);
    return value ? value : "";
}

void AddHeaders(MHD_Response* response, const HttpAnswer& answer) {
    MHD_add_response_header(response, MHD_HTTP_HEADER_CONTENT_TYPE, answer.contentType.c_str());
    MHD_add_response_header(response, MHD_HTTP_HEADER_CACHE_CONTROL, "no-store");
    MHD_add_response_header(response, "X-Content-Type-Options", "nosniff");
    MHD_add_response_header(response, "Referrer-Policy", "no-referrer");
    if (answer.status == MHD_HTTP_UNAUTHORIZED)
        MHD_add_response_header(response, MHD_HTTP_HEADER_WWW_AUTHENTICATE, "Bearer");
    if (answer.status == MHD_HTTP_METHOD_NOT_ALLOWED)
        MHD_add_response_header(response, MHD_HTTP_HEADER_ALLOW, "GET, HEAD");
}

}  // namespace

/// An answer on its way whose pieces are made as the caller takes them.
struct MicroHttpServer::Sending {
    MicroHttpServer& server;
    MHD_Connection* connection;
    std::unique_ptr<HttpBody> body;
    std::string piece{};
    std::size_t sent = 0;
    bool isAtEnd = false;

    /// Bytes for the caller; 0 when it was suspended, since there is nothing to say now.
    ssize_t Take(char* buffer, std::size_t most) {
        while (sent == piece.size()) {
            if (isAtEnd) return MHD_CONTENT_READER_END_OF_STREAM;
            piece.clear();
            sent = 0;
            const HttpBody::State state = body->Next(piece);
            isAtEnd = state == HttpBody::State::End;
            if (state != HttpBody::State::Wait || !piece.empty()) continue;
            server.waiting_.insert(connection);
            MHD_suspend_connection(connection);
            return 0;
        }
        const std::size_t count = std::min(most, piece.size() - sent);
        std::memcpy(buffer, piece.data() + sent, count);
        sent += count;
        return static_cast<ssize_t>(count);
    }
};

struct MicroHttpServer::Glue {
    static MHD_Result Answer(void* server, MHD_Connection* connection, const char* url, const char* method,
                             const char*, const char*, size_t* uploaded, void** seen) {
        static char first;
        if (*seen == nullptr) {  // the headers have come; a body may follow, which nobody wants
            *seen = &first;
            return MHD_YES;
        }
        if (*uploaded > 0) {
            *uploaded = 0;
            return MHD_YES;
        }
        auto& self = *static_cast<MicroHttpServer*>(server);
        const std::string_view word(method);
        const bool isRead = word == MHD_HTTP_METHOD_GET || word == MHD_HTTP_METHOD_HEAD;
        return Send(self, connection,
                    isRead ? self.handler_->Answer(RequestOf(connection, url))
                           : HttpAnswer{.status = MHD_HTTP_METHOD_NOT_ALLOWED, .body = "GET only\n"});
    }

    static HttpRequest RequestOf(MHD_Connection* connection, const char* url) {
        HttpRequest request;
        request.path = url;
        request.authorization = HeaderOf(connection, MHD_HTTP_HEADER_AUTHORIZATION);
        request.lastEventId = HeaderOf(connection, "Last-Event-ID");
        MHD_get_connection_values(connection, MHD_GET_ARGUMENT_KIND, &NoteQuery, &request);
        return request;
    }

    static MHD_Result Send(MicroHttpServer& self, MHD_Connection* connection, HttpAnswer answer) {
        MHD_Response* response = nullptr;
        if (answer.pieces) {
            auto* const sending = new Sending{self, connection, std::move(answer.pieces)};
            response =
                MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, kPieceSize, &Take, sending, &Forget);
            if (!response) delete sending;
        } else {
            response = MHD_create_response_from_buffer(answer.body.size(), answer.body.data(),
                                                       MHD_RESPMEM_MUST_COPY);
        }
        if (!response) return MHD_NO;
        AddHeaders(response, answer);
        const MHD_Result result =
            MHD_queue_response(connection, static_cast<unsigned>(answer.status), response);
        MHD_destroy_response(response);
        return result;
    }

    static ssize_t Take(void* sending, std::uint64_t, char* buffer, size_t most) {
        return static_cast<Sending*>(sending)->Take(buffer, most);
    }

    static void Forget(void* sending) {
        auto* const gone = static_cast<Sending*>(sending);
        gone->server.waiting_.erase(gone->connection);
        delete gone;
    }

    __attribute__((format(printf, 2, 0))) static void NoteError(void* server, const char* format,
                                                                va_list arguments) {
        char line[256];
        std::vsnprintf(line, sizeof line, format, arguments);
        std::string& last = static_cast<MicroHttpServer*>(server)->lastError_;
        last = line;
        last.erase(last.find_last_not_of("\r\n ") + 1);
    }
};

MicroHttpServer::MicroHttpServer(EventLoop& loop, DescriptorWatches& watches)
    : watches_(watches), timer_(loop.NewTimer([this] { Run(); })) {}

MicroHttpServer::~MicroHttpServer() {
    Close();
}

bool MicroHttpServer::Fail(const std::string& reason) {
    if (lastError_.empty()) lastError_ = reason;
    return false;
}

bool MicroHttpServer::Open(const HttpListening& listening, HttpHandler& handler) {
    Close();
    lastError_.clear();
    const SocketAddress address = AddressOf(listening);
    if (!address.isValid) return Fail("not an address: " + listening.address);
    handler_ = &handler;
    const bool isSecure = !listening.certificate.empty();
    unsigned flags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ERROR_LOG;
    if (address.isSix) flags |= MHD_USE_IPv6;
    if (isSecure) flags |= MHD_USE_TLS;
    const MHD_OptionItem secured[] = {
        {MHD_OPTION_HTTPS_MEM_CERT, 0, const_cast<char*>(listening.certificate.c_str())},
        {MHD_OPTION_HTTPS_MEM_KEY, 0, const_cast<char*>(listening.key.c_str())},
        {MHD_OPTION_HTTPS_PRIORITIES, 0, const_cast<char*>("NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2")},
        {MHD_OPTION_END, 0, nullptr}};
    const MHD_OptionItem plain[] = {{MHD_OPTION_END, 0, nullptr}};
    errno = 0;
    daemon_ = MHD_start_daemon(
        flags, static_cast<std::uint16_t>(listening.port), nullptr, nullptr, &Glue::Answer, this,
        MHD_OPTION_EXTERNAL_LOGGER, &Glue::NoteError, this,  // first, so that it is told of the others
        MHD_OPTION_SOCK_ADDR, &address.storage, MHD_OPTION_CONNECTION_LIMIT, kMostCallers,
        MHD_OPTION_CONNECTION_TIMEOUT, kSilenceSeconds, MHD_OPTION_CONNECTION_MEMORY_LIMIT,
        isSecure ? kMemoryOfTlsCaller : kMemoryOfCaller, MHD_OPTION_LISTENING_ADDRESS_REUSE, 1U,
        MHD_OPTION_ARRAY, isSecure ? secured : plain, MHD_OPTION_END);
    if (!daemon_) return Fail(errno != 0 ? std::strerror(errno) : "cannot listen");
    const MHD_DaemonInfo* const info = MHD_get_daemon_info(daemon_, MHD_DAEMON_INFO_EPOLL_FD);
    watch_ = watches_.Watch(info->epoll_fd, DescriptorWatches::Readiness::Read, [this] { Run(); });
    PlanNextRun();
    return true;
}

void MicroHttpServer::Close() {
    timer_->Stop();
    watch_.reset();
    if (!daemon_) return;
    // The library wants nobody suspended when it stops.
    for (MHD_Connection* connection : std::exchange(waiting_, {})) MHD_resume_connection(connection);
    MHD_stop_daemon(std::exchange(daemon_, nullptr));
}

void MicroHttpServer::Run() {
    if (!daemon_ || std::exchange(isRunning_, true)) return;
    MHD_run(daemon_);
    isRunning_ = false;
    PlanNextRun();
}

void MicroHttpServer::PlanNextRun() {
    MHD_UNSIGNED_LONG_LONG pauseMs = 0;
    if (!daemon_) return;
    if (MHD_get_timeout(daemon_, &pauseMs) != MHD_YES) return timer_->Stop();
    timer_->Start(std::clamp(static_cast<int>(std::min<MHD_UNSIGNED_LONG_LONG>(pauseMs, kLongestPauseMs)), 1,
                             kLongestPauseMs));
}

void MicroHttpServer::Wake() {
    if (!daemon_ || waiting_.empty()) return;
    for (MHD_Connection* connection : std::exchange(waiting_, {})) MHD_resume_connection(connection);
    timer_->Start(1);
}

}  // namespace nordkeep
