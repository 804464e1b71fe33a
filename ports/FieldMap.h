#pragma once

#include "pipeline/XmlFieldMap.h"
#include "runtime/Settings.h"

namespace nordkeep {

/// The keys that a section of a field map may have.
std::vector<TextView> FieldMapKeys();

/// The field maps of the ports' settings files.
class FieldMap final : public XmlFieldMap {
 public:
    explicit FieldMap(const Settings& files) : files_(files) {}
    void ApplyXmlFieldMap(const EventPort& port, cAlarm& alarm, TextView section, TextView document) override;

 private:
    const Settings& files_;
};

}  // namespace nordkeep
