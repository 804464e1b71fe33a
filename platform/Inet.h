#pragma once

#include "platform/FileTree.h"
#include "platform/Text.h"

#include <memory>

namespace nordkeep {

/// How far the last request has come, with the numbers that the logic compares.
enum class InetState {
    None = 0,      // nothing to tell yet
    Error = 11,    // no answer, also after Cancel
    Complete = 12  // an answer of the far end, whatever its status code
};

enum class InetProtocol { Http = 4, Https = 5 };

/// One slot for requests to web servers, one at a time. It uses no proxy, and of a secure server it takes a
/// valid certificate only.
class Inet {
 public:
    virtual ~Inet() = default;
    /// Of addresses that name none.
    virtual void SetProtocol(InetProtocol protocol) = 0;
    /// PEM certificates that are trusted besides the system's; empty: none.
    virtual void SetAuthorityFile(const NativePath& file) = 0;
    /// Starts to get a page; the address is encoded already. What ran before is cancelled.
    virtual void Execute(const Text& url) = 0;
    virtual bool StillExecuting() const = 0;
    virtual InetState LastState() const = 0;
    /// Why the last request had no answer, in the system's words; empty while it has not failed.
    virtual Text LastError() const = 0;
    /// Of the answer; 0 without one.
    virtual int StatusCode() const = 0;
    /// Takes at most so many bytes of the answer. What is longer than 4096 was cut there.
    virtual Text GetChunk(std::size_t most) = 0;
    virtual void Cancel() = 0;
};

class InetFactory {
 public:
    virtual ~InetFactory() = default;
    virtual std::unique_ptr<Inet> NewInet() = 0;
    /// The MD5 digest as 32 hexadecimal digits in lower case. It proves a password to a service that asks for
    /// it in this way and is good for nothing else.
    virtual Text Md5(TextView bytes) const = 0;
};

}  // namespace nordkeep
