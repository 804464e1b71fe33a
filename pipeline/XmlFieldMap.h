#pragma once

#include "platform/Text.h"

namespace nordkeep {

struct cAlarm;
struct EventPort;

/// Lets a port's settings overwrite fields of a record from the XML text of a gateway event.
class XmlFieldMap {
 public:
    virtual ~XmlFieldMap() = default;
    /// `section` names the section of the port's settings file that says which field comes from where.
    virtual void ApplyXmlFieldMap(const EventPort& port, cAlarm& alarm, TextView section,
                                  TextView document) = 0;
};

}  // namespace nordkeep
