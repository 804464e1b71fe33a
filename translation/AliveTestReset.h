#pragma once

#include "translation/AliveTestTimers.h"
#include "translation/ObjectReplica.h"
#include "translation/ObjectViews.h"

namespace nordkeep {

/// An operator starts both alive tests of an object anew, here or at a client: the failed states go, the
/// screen and the clients are told.
class AliveTestReset {
 public:
    struct Needs {
        const AliveTestTimers& timers;
        ObjectViews& views;
        ObjectReplica& replica;
    };
    explicit AliveTestReset(const Needs& needs) : needs_(needs) {}

    void Reset(cTranslate& set, cIDCode& object, OleDate now) const;

 private:
    Needs needs_;
};

}  // namespace nordkeep
