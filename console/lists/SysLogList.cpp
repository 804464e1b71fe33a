#include "console/lists/SysLogList.h"

#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextFirstHeading = 3200;
constexpr int kDescription = 2;

struct KindLooks {
    LogKind kind;
    Glyph glyph;
    int word;
};
constexpr KindLooks kKinds[] = {
    {LogKind::Failure, Glyph::LogFailure, 3430},
    {LogKind::Information, Glyph::LogInformation, 3431},
    {LogKind::Oddity, Glyph::LogOddity, 3432},
    {LogKind::Alarm, Glyph::LogAlarm, 3433},
};

const KindLooks* LooksOf(const LogRow* row) {
    if (!row) return nullptr;
    for (const KindLooks& looks : kKinds) {
        if (looks.kind == row->kind) return &looks;
    }
    return nullptr;
}

}  // namespace

Text SysLogList::Heading(int column) const {
    return column >= 0 && column < ColumnCount() ? captions_(kTextFirstHeading + column) : Text();
}

Text SysLogList::Cell(int row, int column) const {
    const LogRow* line = At(row);
    if (!line) return {};
    return Printable(column == 0 ? line->date : column == 1 ? line->time : column == 2 ? line->text : Text());
}

Glyph SysLogList::Icon(int row) const {
    const KindLooks* looks = LooksOf(At(row));
    return looks ? looks->glyph : Glyph::None;
}

Text SysLogList::IconWord(int row) const {
    const KindLooks* looks = LooksOf(At(row));
    return looks ? captions_(looks->word) : Text();
}

Text SysLogList::ToolTip(int row, int column) const {
    return column < 0 ? IconWord(row) : column == kDescription ? Cell(row, column) : Text();
}

}  // namespace nordkeep
