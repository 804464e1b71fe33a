#pragma once

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// Tells the clients of a server about objects; does nothing on any other copy.
class ObjectReplica {
 public:
    virtual ~ObjectReplica() = default;
    /// The supervision state of an object has changed.
    virtual void SendObjectUpdate(const cTranslate& set, const cIDCode& object) = 0;
    /// The service period of an object has changed.
    virtual void SendServiceMode(const cTranslate& set, const cIDCode& object) = 0;
    /// The alive tests of an object have been started anew by an operator.
    virtual void SendAliveTestReset(const cTranslate& set, const cIDCode& object) = 0;
};

class NoObjectReplica final : public ObjectReplica {
 public:
    void SendObjectUpdate(const cTranslate&, const cIDCode&) override {}
    void SendServiceMode(const cTranslate&, const cIDCode&) override {}
    void SendAliveTestReset(const cTranslate&, const cIDCode&) override {}
};

}  // namespace nordkeep
