#include "console/editors/RowsTable.h"

#include "console/setup/FieldForm.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {

bool HoldsAllWords(TextView text, TextView words) {
    return std::ranges::all_of(Split(words, ' '), [text](const Text& word) {
        return word.empty() || FindNoCase(text, word) != TextView::npos;
    });
}

RowsTable::RowsTable(const RowFormat& format, const Captions& captions, const std::vector<FileItem>& items)
    : format_(format), items_(items), columns_(format.Columns()), captions_(captions) {
    for (const DescribedGroup& group : format.Groups())
        keys_.insert(keys_.end(), group.keys.begin(), group.keys.end());
}

Text RowsTable::Heading(int column) const {
    const auto place = static_cast<std::size_t>(column);
    if (column < 0 || place >= columns_.size()) return {};
    const DescribedKey& key = keys_[columns_[place].field];
    return WordsOf(key.caption, captions_, key.key);
}

void RowsTable::MarkFaults(std::set<int> ids) {
    faulty_ = std::move(ids);
    MarkAllRows();
}

Glyph RowsTable::Icon(int row) const {
    const int source = SourceOf(row);
    const bool isFaulty = source >= 0 && faulty_.contains(ItemAt(source).id);
    return isFaulty ? Glyph::LogFailure : Glyph::None;
}

int RowsTable::DefaultWidth(int column) const {
    const auto place = static_cast<std::size_t>(column);
    return column >= 0 && place < columns_.size() ? columns_[place].width : 0;
}

Text RowsTable::SourceCell(int source, int column) const {
    const std::size_t field = columns_[static_cast<std::size_t>(column)].field;
    Text value = std::move(format_.ValuesOf(ItemAt(source))[field]);
    for (const DescribedChoice& choice : keys_[field].choices) {
        if (choice.value == value) return WordsOf(choice.caption, captions_, value);
    }
    return value;
}

void RowsTable::Find(TextView words) {
    shown_.clear();
    for (std::size_t place = 0; place < items_.size(); ++place) {
        if (items_[place].isRow && HoldsAllWords(format_.TextToSearch(items_[place]), words))
            shown_.push_back(place);
    }
}

}  // namespace nordkeep
