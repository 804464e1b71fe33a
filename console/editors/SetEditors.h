#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// Opens the editors of sets from elsewhere in the window.
class SetEditors {
 public:
    virtual ~SetEditors() = default;
    /// The objects of a set, and of them one in front; none of them for an empty code.
    virtual void EditObjects(const Text& set, const Text& idCode) = 0;
    virtual void EditTypes(const Text& set) = 0;
    /// The information of an object, as a form or as a text. `name` is the object's, for a title.
    virtual void EditInformation(const Text& set, const Text& idCode, const Text& name) = 0;
};

}  // namespace nordkeep
