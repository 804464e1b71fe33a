#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>

namespace nordkeep {

/// What a caller of a web service asks; all texts as they came, percent signs taken out.
struct HttpRequest {
    std::string path{};
    std::map<std::string, std::string> query{};
    std::string authorization{};  // of that header; empty without
    std::string lastEventId{};    // of that header; empty without

    /// Empty for one that is not there.
    std::string Query(const std::string& name) const {
        const auto found = query.find(name);
        return found == query.end() ? std::string() : found->second;
    }
};

/// An answer that is made while it is sent, piece by piece, so that a slow reader holds no memory.
class HttpBody {
 public:
    virtual ~HttpBody() = default;
    enum class State { More, Wait, End };
    /// Adds the next piece, of some kilobytes at most, to `piece`. Wait: there is nothing now, and the server
    /// is to ask again when it is woken; a piece may come with any of the three.
    virtual State Next(std::string& piece) = 0;
};

struct HttpAnswer {
    int status = 200;
    std::string contentType = "text/plain; charset=utf-8";
    std::string body{};
    std::unique_ptr<HttpBody> pieces{};  // in place of `body`
};

/// Answers requests on the loop; nothing of it may wait.
class HttpHandler {
 public:
    virtual ~HttpHandler() = default;
    virtual HttpAnswer Answer(const HttpRequest& request) = 0;
};

struct HttpListening {
    std::string address = "127.0.0.1";  // IPv4 or IPv6
    int port = 0;
    // PEM texts; both empty for a plain service.
    std::string certificate{};
    std::string key{};
};

/// A small web service inside the one loop. It takes GET and HEAD, and a bounded number of callers.
class HttpServer {
 public:
    virtual ~HttpServer() = default;
    /// False, with LastError, when it cannot listen; closes first.
    virtual bool Open(const HttpListening& listening, HttpHandler& handler) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /// Bodies that wait are asked again.
    virtual void Wake() = 0;
    virtual std::string LastError() const = 0;
};

}  // namespace nordkeep
