#pragma once

#include "platform/Text.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {

struct cAlarm;
struct EventPort;

/// The gateways whose settings map XML elements to fields, with the front of their section names; a section
/// serves before or behind the translation.
struct FieldMapRow {
    Protocol protocol;
    const char* section;
};
inline constexpr std::array<FieldMapRow, 3> kFieldMaps = {{{Protocol::SOSXMLv4, "SOSAccessV4"},
                                                           {Protocol::VirtualReceiver, "VirtualReceiver"},
                                                           {Protocol::MultiComXML, "MulticomXML"}}};
inline constexpr const char* kBeforeTranslation = "_BeforeTranslation";
inline constexpr const char* kAfterTranslation = "_AfterTranslation";

/// Lets a port's settings overwrite fields of a record from the XML text of a gateway event.
class XmlFieldMap {
 public:
    virtual ~XmlFieldMap() = default;
    /// `section` names the section of the port's settings file that says which field comes from where.
    virtual void ApplyXmlFieldMap(const EventPort& port, cAlarm& alarm, TextView section,
                                  TextView document) = 0;
};

}  // namespace nordkeep
