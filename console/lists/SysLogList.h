#pragma once

#include "console/lists/Captions.h"
#include "console/lists/TailRows.h"
#include "runtime/SysLog.h"

namespace nordkeep {

/// The end of the system log on the screen. It takes rows from the start of the program on.
class SysLogList final : public TailRows<LogRow> {
 public:
    explicit SysLogList(const Captions& captions) : captions_(captions) {}
    void AddLine(const LogRow& line) { Add(line); }

    int ColumnCount() const override { return 3; }
    Text Heading(int column) const override;
    Text Cell(int row, int column) const override;
    Glyph Icon(int row) const override;
    Text IconWord(int row) const override;
    Text ToolTip(int row, int column) const override;
    int DefaultWidth(int column) const override { return column == 0 ? 80 : column == 1 ? 75 : 300; }

 private:
    const Captions& captions_;
};

}  // namespace nordkeep
