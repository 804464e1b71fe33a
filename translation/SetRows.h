#pragma once

#include "platform/Text.h"

#include <array>
#include <vector>

namespace nordkeep {

/// The lines of a set's file that say something: trimmed, without empty lines and comments, and cut at a
/// length that no line written by hand or by a program reaches, so that rubbish stays affordable.
std::vector<TextView> SetRows(TextView content);

/// The first `count` fields of a row, split at ";"; missing ones are empty.
template <std::size_t count>
std::array<TextView, count> RowFields(TextView row) {
    std::array<TextView, count> fields{};
    for (TextView& field : fields) {
        const std::size_t end = row.find(';');
        field = row.substr(0, end);
        if (end == TextView::npos) break;
        row.remove_prefix(end + 1);
    }
    return fields;
}

/// True when each component of a set's name can be part of a path inside its folder.
bool IsSetName(TextView name);

}  // namespace nordkeep
