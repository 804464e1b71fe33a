#include "translation/SetRows.h"

#include "platform/FileTree.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr std::size_t kLongestRow = 65535;

}  // namespace

std::vector<TextView> SetRows(TextView content) {
    std::vector<TextView> rows = Lines(content);
    for (TextView& row : rows) row = TrimBlanks(TrimBlanks(row).substr(0, kLongestRow));
    std::erase_if(rows, [](TextView row) { return row.empty() || row.front() == ';'; });
    return rows;
}

bool IsSetName(TextView name) {
    for (;;) {
        const std::size_t end = name.find_first_of("\\/");
        if (!IsSafeComponent(name.substr(0, end))) return false;
        if (end == TextView::npos) return true;
        name.remove_prefix(end + 1);
    }
}

}  // namespace nordkeep
