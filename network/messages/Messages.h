#pragma once

#include "network/messages/MessageNumbers.h"
#include "network/messages/Payload.h"

#include <optional>
#include <vector>

namespace nordkeep {

// One plain struct for each payload. Carry names its fields in the order of the wire and serves the writer
// (a const struct) and the reader alike.

/// The payload of a message.
template <class Payload>
Text PayloadOf(const Payload& payload) {
    PayloadWriter wire;
    Payload::Carry(payload, wire);
    return wire.Take();
}

/// What a payload says, with missing fields 0, empty or never.
template <class Payload>
Payload ReadPayload(TextView bytes) {
    PayloadReader wire(bytes);
    Payload payload;
    Payload::Carry(payload, wire);
    return payload;
}

/// What a payload says; none when it ends before its last field.
template <class Payload>
std::optional<Payload> ReadWholePayload(TextView bytes) {
    PayloadReader wire(bytes);
    Payload payload;
    Payload::Carry(payload, wire);
    if (wire.HasRunOut()) return std::nullopt;
    return payload;
}

/// Names an object of a translation set: message 13, and the front of 14 and 15.
struct ObjectName {
    Text fileName{};  // of the set
    Text idCode{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.ShortString(self.fileName);
        wire.ShortString(self.idCode);
    }
};

/// Message 14.
struct ServiceModeChange {
    ObjectName object{};
    int mode = 0;
    OleDate begin{};
    OleDate end{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        ObjectName::Carry(self.object, wire);
        wire.Integer(self.mode);
        wire.DateTime(self.begin);
        wire.DateTime(self.end);
    }
};

/// Message 33: why the object gets the mode of the message 14 that follows.
struct ServiceReasonGiven {
    ObjectName object{};
    Text reason{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        ObjectName::Carry(self.object, wire);
        wire.ShortString(self.reason);
    }
};

/// Message 37 to the server.
struct LineName {
    Text name{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.ShortString(self.name);
    }
};

/// Message 16 to the server; the password goes in clear.
struct LoginRequest {
    Text userName{};
    Text password{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.ShortString(self.userName);
        wire.ShortString(self.password);
    }
};

/// Message 16 to the client.
struct LoginAnswer {
    std::int32_t level = 0;
    Text fullName{};
    Text initials{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.Long(self.level);
        wire.ShortString(self.fullName);
        wire.ShortString(self.initials);
    }
};

/// Messages with one text: 10, the requests 18, 20, 21, 22 and 24, and the answer 21.
struct ShortText {
    Text text{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.ShortString(self.text);
    }
};

/// The answers 18 and 22.
struct LongText {
    Text text{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.LongString(self.text);
    }
};

/// Message 19.
struct FileToWrite {
    Text path{};
    Text text{};

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.ShortString(self.path);
        wire.LongString(self.text);
    }
};

/// The answers 20 and 23, and message 30.
struct LongNumber {
    std::int32_t value = 0;

    template <class Self, class Wire>
    static void Carry(Self& self, Wire& wire) {
        wire.Long(self.value);
    }
};

/// One line of the tree of ports: a port, a protocol of it, a translation set of that.
struct PortTreeNode {
    int level = 0;  // 0 to 2
    Text text{};
    friend bool operator==(const PortTreeNode&, const PortTreeNode&) = default;
};

/// Message 3: the nodes in tree order, each with a backslash in front for each level, without a count.
Text PortTreePayload(const std::vector<PortTreeNode>& nodes);
std::vector<PortTreeNode> ReadPortTree(TextView payload);

}  // namespace nordkeep
