#pragma once

#include "console/setup/Descriptor.h"
#include "runtime/Findings.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace nordkeep {

/// A line of a file that an editor has open: a row that people edit, or what stands around the rows, such as
/// comments and directives, which stays as it is.
struct FileItem {
    int id = 0;  // of a row, given by the editor
    bool isRow = false;
    Text section{};  // in files that have them
    Text text{};
    Text loaded{};  // what the file had; empty for a new row
};

/// What is wrong with the rows of a file. Works in slices, since a file may have a million of them.
class RowCheck {
 public:
    virtual ~RowCheck() = default;
    /// False when the whole file has been looked at.
    virtual bool Continue() = 0;
    /// All findings, once Continue has said so.
    virtual const std::vector<Finding>& Found() const = 0;
    /// The findings in one row as it is being typed; `content` gives the file with that row in its line.
    virtual std::vector<Finding> OfRow(const FileItem& row, int line,
                                       const std::function<Text()>& content) = 0;
};

/// How the rows of one kind of file are read, written and shown. A row is values, in the order of the fields.
class RowFormat {
 public:
    using Values = std::vector<Text>;

    static constexpr int kCaptionSet = 4706;

    virtual ~RowFormat() = default;
    /// Caption of the page, and the text for a file without rows.
    virtual int Caption() const = 0;
    virtual int EmptyText() const = 0;
    /// What a file belongs to, where there are many: a translation set.
    virtual int OwnerCaption() const { return kCaptionSet; }
    /// The files that can be chosen, as a pattern of DataFiles; or one path.
    virtual Text Pattern() const = 0;
    virtual Text FileOf(const Text& name) const = 0;
    /// The lines of a file in the order in which they are written.
    virtual std::vector<FileItem> Items(TextView content) const = 0;
    /// The fields of a row under their headings.
    virtual std::vector<DescribedGroup> Groups() const = 0;
    /// The fields that are columns of the table, with their widths in px.
    struct Column {
        std::size_t field = 0;
        int width = 0;
    };
    virtual std::vector<Column> Columns() const = 0;
    virtual Values ValuesOf(const FileItem& row) const = 0;
    /// The row in the form in which it is written.
    virtual FileItem ItemOf(const Values& values, const FileItem& before) const = 0;
    /// The same before anything is left out, for the check.
    virtual FileItem TypedItem(const Values& values, const FileItem& before) const {
        return ItemOf(values, before);
    }
    /// The row as it is written loses something that was typed.
    virtual bool Loses(const Values&) const { return false; }
    /// What is typed, without what the value of a field cannot hold.
    virtual Text FitValue(const DescribedKey&, Text value) const { return value; }
    /// What is wrong with a value that the check of the file cannot know; while there is any, nothing is
    /// saved.
    virtual Text FaultOf(std::size_t, const Values&) const { return {}; }
    /// What a search looks through.
    virtual Text TextToSearch(const FileItem& row) const { return row.text; }
    /// What follows from a value, in a sentence beside its help.
    virtual Text HintOf(const DescribedKey&, const Text&) const { return {}; }
    /// What a new row begins with.
    virtual Values NewValues() const = 0;
    /// Lines that have to come to the end of the file before a row can be added, such as that of its section.
    virtual std::vector<FileItem> FrameFor(const std::vector<FileItem>&, const FileItem&) const { return {}; }
    /// Where a row that is not there yet belongs.
    virtual std::size_t PlaceFor(const std::vector<FileItem>& items, const FileItem& row) const;
    /// A row that may stay with others where it is, when its values change.
    virtual bool StaysInPlace(const FileItem& before, const FileItem& after) const {
        return before.section == after.section;
    }
    /// The rows can go to other programs and come back. Not those that hold secrets.
    virtual bool HasCsv() const { return true; }
    /// The field with the name of the object that a row is, of which more is known in a file of its own.
    virtual std::optional<std::size_t> ObjectNameField() const { return std::nullopt; }
    /// The field that names a row; other rows are found by it.
    virtual std::size_t KeyField() const { return 0; }
    /// The field, from 0, that a finding is about, by the number that its check gave; none for the row.
    virtual std::optional<std::size_t> FieldOf(int number) const = 0;
    /// `content` outlives the check.
    virtual std::unique_ptr<RowCheck> NewCheck(const Text& name, TextView content) const = 0;
    /// Choices that only the file itself knows.
    virtual std::vector<DescribedChoice> ChoicesOf(const DescribedKey& key,
                                                   const std::vector<FileItem>&) const {
        return key.choices;
    }
};

/// The content that the lines make.
Text ContentOf(const std::vector<FileItem>& items);

}  // namespace nordkeep
