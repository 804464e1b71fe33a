#pragma once

#include "console/lists/OperatorState.h"
#include "network/messages/Messages.h"
#include "runtime/CentreState.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// What the main window tells about this copy.
struct CopyFacts {
    Text fullName{};  // of a client's user
    Text server{};    // of a client
    int clients = 0;  // of a server
    bool isSounding = false;
    bool hasGoogolPort = false;
    bool isSimulation = false;
};

/// The operator's place as the main window has to know it; asked again on every tick.
class CopyState : public OperatorState {
 public:
    virtual CopyFacts Facts() const = 0;
    /// What is wrong with this copy, and on a client also with its server.
    virtual std::vector<ConditionFact> Conditions() const = 0;
    /// The nodes of the tree, on a copy with ports of its own; a client gets them from its server.
    virtual std::optional<std::vector<PortTreeNode>> OwnTree() const = 0;
};

/// The sound of this copy.
class SoundSwitch {
 public:
    virtual ~SoundSwitch() = default;
    virtual void SilenceSound() = 0;
    /// Rings until somebody silences it, where this copy sounds at all.
    virtual void RingSound() = 0;
};

/// The end of the program.
class ProgramEnd {
 public:
    virtual ~ProgramEnd() = default;
    virtual void EndProgram() = 0;
    /// Other programs learn from the exit status that it was not wanted.
    virtual void EndOnFailure() = 0;
};

}  // namespace nordkeep
