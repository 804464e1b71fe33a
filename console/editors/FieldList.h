#pragma once

#include "console/setup/Descriptor.h"

#include <initializer_list>

namespace nordkeep {

/// A field of an editor: its name in CSV files, how it is edited, and the numbers of its caption and help.
struct ListedField {
    const char* name = "";
    ControlKind control = ControlKind::Words;
    int caption = 0;
    int help = 0;
    std::vector<DescribedChoice> choices{};
};

/// Fields under a heading; 0 for none.
DescribedGroup FieldGroup(int caption, std::initializer_list<ListedField> fields);

}  // namespace nordkeep
