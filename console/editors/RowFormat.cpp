#include "console/editors/RowFormat.h"

namespace nordkeep {
namespace {

constexpr TextView kLineEnd = "\r\n";

}  // namespace

std::size_t RowFormat::PlaceFor(const std::vector<FileItem>& items, const FileItem&) const {
    for (std::size_t place = items.size(); place > 0; --place) {
        if (items[place - 1].isRow) return place;
    }
    return items.size();
}

Text ContentOf(const std::vector<FileItem>& items) {
    std::size_t size = 0;
    for (const FileItem& item : items) size += item.text.size() + kLineEnd.size();
    Text content;
    content.reserve(size);
    for (const FileItem& item : items) content.append(item.text).append(kLineEnd);
    return content;
}

}  // namespace nordkeep
