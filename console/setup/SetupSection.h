#pragma once

#include "console/lists/WindowView.h"
#include "console/setup/Descriptor.h"

namespace nordkeep {

/// A page of the set-up that is more than fields of the main settings file: lines, objects, users.
class SetupSection {
 public:
    virtual ~SetupSection() = default;
    virtual Text Caption() const = 0;
    /// False where this copy has nothing to set up there.
    virtual bool IsThere() const { return true; }
    /// The window opens: everything is read anew. `descriptor` describes the keys of settings files.
    virtual void Load(const SetupDescriptor& descriptor) = 0;
    /// The page comes to the front.
    virtual void Enter() {}
    /// How many faults what is in front has.
    virtual int Faults() const = 0;
    virtual bool IsChanged() const = 0;
    virtual bool MayApply() const = 0;
    virtual void Apply() = 0;
    virtual void Revert() = 0;
    /// True when nothing is lost, or a person says so.
    virtual bool MayLeave() = 0;
    virtual const WindowNotice& Notice() const = 0;
};

}  // namespace nordkeep
