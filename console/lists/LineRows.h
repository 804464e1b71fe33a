#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TableRows.h"
#include "platform/Clock.h"
#include "runtime/CentreState.h"

namespace nordkeep {

/// How a line does, in words, and in one word where there is little room.
Text LineStateText(const Captions& captions, LineState state);
Text LineStateWord(const Captions& captions, LineState state);
Glyph GlyphOf(LineState state);

/// The lines of this copy, or of a client's server, and how they do. Rows are named by their settings files.
class LineRows final : public TableRows {
 public:
    LineRows(const Captions& captions, const Clock& clock) : captions_(captions), clock_(clock) {}

    /// Rows stay where they are; only what has changed is painted again.
    void Show(const std::vector<LineFigures>& lines);
    /// The line of a row's key; none when it has gone.
    const LineFigures* LineOf(TextView key) const;

    int ColumnCount() const override { return 9; }
    Text Heading(int column) const override;
    Glyph Icon(int row) const override;
    Text IconWord(int row) const override;
    int DefaultWidth(int column) const override;

 protected:
    int SourceCount() const override { return static_cast<int>(lines_.size()); }
    Text SourceCell(int source, int column) const override;
    Text SourceKey(int source) const override { return lines_[static_cast<std::size_t>(source)].name; }

 private:
    Text TimeCell(OleDate time) const;

    const Captions& captions_;
    const Clock& clock_;
    std::vector<LineFigures> lines_{};
};

}  // namespace nordkeep
