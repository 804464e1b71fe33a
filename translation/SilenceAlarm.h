#pragma once

#include "platform/OleDate.h"

namespace nordkeep {

struct cTranslate;
struct cIDCode;

/// Raises the alarm of an object that has fallen silent; realised by the pipeline.
class SilenceAlarm {
 public:
    virtual ~SilenceAlarm() = default;
    /// `test` is 1 or 2, `now` the time of the scan.
    virtual void RaiseSilenceAlarm(cTranslate& set, cIDCode& object, int test, OleDate now) = 0;
};

}  // namespace nordkeep
