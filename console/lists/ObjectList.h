#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"
#include "platform/Clock.h"
#include "translation/Translations.h"

namespace nordkeep {

/// How an object is to the eye of an operator.
enum class ObjectState { Plain, InUse, ServicePlanned, InService, Failed };
ObjectState StateOf(const cIDCode& object, OleDate now);
/// "In use", "Log only until ...".
Text ServiceWord(const Captions& captions, const cIDCode& object);

/// The objects of the chosen set. Rows hold ID codes, never objects, since a reload removes these.
class ObjectList final : public TableRows {
 public:
    struct Needs {
        const Translations& translations;
        const Captions& captions;
        const Clock& clock;
        bool knowsCallers = true;  // a client is not told which objects need their caller
    };
    explicit ObjectList(const Needs& needs) : needs_(needs) {}

    /// Shows the objects of a set; an empty name shows none.
    void ShowSet(const Text& set);
    const Text& Set() const { return set_; }
    /// An object's state has changed.
    void NoteObject(TextView set, TextView idCode);
    void NoteAll() { MarkAllRows(); }
    /// The object of a row's key; none when it has gone.
    cIDCode* ObjectOfRow(TextView key) const;

    int ColumnCount() const override { return 11; }
    Text Heading(int column) const override;
    Glyph Icon(int row) const override;
    Text IconWord(int row) const override;
    Text ToolTip(int row, int column) const override;
    int DefaultWidth(int column) const override { return column == 0 ? 230 : 150; }

 protected:
    int SourceCount() const override { return static_cast<int>(codes_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override { return codes_[static_cast<std::size_t>(source)].key; }
    Text SourceSortKey(int source, int column) const override;

 private:
    struct Code {
        Text idCode{};
        Text key{};  // the ID code; of a second object with the same code its place too
    };

    cIDCode* ObjectAt(int source) const;
    Text CellOf(const cIDCode& object, int column) const;

    Needs needs_;
    Text set_{};
    std::vector<Code> codes_{};
};

}  // namespace nordkeep
