#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"
#include "runtime/DataFiles.h"
#include "translation/Translations.h"

namespace nordkeep {

/// A list whose cells are texts that it holds.
class TextTable : public TableRows {
 public:
    TextTable(const Captions& captions, int firstHeading, int columns)
        : captions_(captions), firstHeading_(firstHeading), columns_(columns) {}

    int ColumnCount() const override { return columns_; }
    Text Heading(int column) const override;

 protected:
    using Line = std::vector<Text>;
    void Show(std::vector<Line> lines);
    int SourceCount() const override { return static_cast<int>(lines_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override { return std::to_string(source); }

 private:
    const Captions& captions_;
    int firstHeading_;
    int columns_;
    std::vector<Line> lines_{};
};

/// The type codes of the chosen set.
class TypeList final : public TextTable {
 public:
    TypeList(const Translations& translations, const Captions& captions);
    void ShowSet(const Text& set);
    int DefaultWidth(int column) const override { return column == 2 ? 320 : column == 3 ? 160 : 90; }

 private:
    const Translations& translations_;
};

/// The event types of the chosen set, from its .DataCode file.
class DataCodeList final : public TextTable {
 public:
    explicit DataCodeList(const Captions& captions);
    /// `file` is the text of the file.
    void ShowFile(TextView file);
    int DefaultWidth(int column) const override { return column == 2 ? 320 : column == 3 ? 160 : 110; }
};

/// The data code file of a set, below the data folder.
Text DataCodeFileOf(const Text& set);
/// A code of such a file, and its name.
struct DataCodeEntry {
    Text code{};
    Text name{};
};
/// The codes of the section Event, in file order.
std::vector<DataCodeEntry> EventCodesOf(TextView file);

}  // namespace nordkeep
