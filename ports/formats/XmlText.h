#pragma once

#include "platform/Text.h"

#include <optional>

namespace nordkeep {

/// Whether the case of element names counts.
enum class XmlNames { Exact, IgnoreCase };

/// An element as text search finds it: no attributes, no entities, no nesting.
struct XmlElement {
    std::size_t start = 0;  // of "<name>"
    TextView inner{};
    std::size_t end = 0;  // behind "</name>"
};

/// The first "<name>" and the first "</name>" behind it; none when either is missing.
std::optional<XmlElement> FindXmlElement(TextView text, TextView name, XmlNames names);
/// What such an element holds; empty when there is none.
Text GetXmlElement(TextView text, TextView name, XmlNames names);

/// The number of a type element: 0 for an empty one, -1 (none) for what 16 bits cannot hold.
int TypeNumber(TextView text);

}  // namespace nordkeep
