#pragma once

#include "console/editors/RowFormat.h"

namespace nordkeep {

/// One row, or line around the rows, that comes, goes or becomes another, at its place among the lines.
struct ItemChange {
    std::size_t place = 0;
    std::optional<FileItem> before{};
    std::optional<FileItem> after{};
};

/// What a person has done in one go.
using RowStep = std::vector<ItemChange>;

void ApplyStep(std::vector<FileItem>& items, const RowStep& step);
void TakeBack(std::vector<FileItem>& items, const RowStep& step);

/// The steps since a file was opened, so that they can be taken back.
class RowSteps {
 public:
    void Clear();
    /// What is typed into one row, one character after the other, is one step.
    void Note(RowStep step, int typedRow);
    bool CanUndo() const { return !steps_.empty(); }
    RowStep TakeLast();
    /// The lines are those that were last loaded or saved.
    bool IsChanged() const { return saved_ != static_cast<int>(steps_.size()); }
    void NoteSaved();

 private:
    std::vector<RowStep> steps_{};
    int typedRow_ = 0;  // of the last step; 0 for none
    int saved_ = 0;     // so many steps are in the file; -1: the file is none of these states
};

}  // namespace nordkeep
