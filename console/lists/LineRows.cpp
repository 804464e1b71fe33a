#include "console/lists/LineRows.h"

#include "runtime/Dates.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kCaptionFirstWord = 5040;
constexpr int kCaptionNever = 4564;
// The first six states were worded before the others.
constexpr int kCaptionsOfStates[] = {4544, 4545, 4546, 4547, 4548, 4549, 5050, 5051, 5052, 5053};
static_assert(std::size(kCaptionsOfStates) == static_cast<std::size_t>(kLineStateCount));

enum Column { Name, Kind, State, Since, LastTraffic, Today, Refused, Reconnects, Caller };

struct ColumnLook {
    int caption;
    int width;
};
constexpr ColumnLook kColumns[] = {{4541, 185}, {4542, 215}, {4543, 130}, {5054, 84}, {4565, 96},
                                   {4566, 58},  {4567, 64},  {5055, 78},  {5056, 110}};

}  // namespace

Text LineStateText(const Captions& captions, LineState state) {
    return captions(kCaptionsOfStates[static_cast<std::size_t>(state)]);
}

Text LineStateWord(const Captions& captions, LineState state) {
    return captions(kCaptionFirstWord + static_cast<int>(state));
}

Glyph GlyphOf(LineState state) {
    switch (state) {
        case LineState::Open:
        case LineState::Connected:
            return Glyph::LineUp;
        case LineState::WaitsForCaller:
            return Glyph::LineAwaits;
        case LineState::Failed:
        case LineState::Unusable:
            return Glyph::LineFailed;
        case LineState::Disabled:
        case LineState::Held:
        case LineState::Waiting:
            return Glyph::LineShut;
        case LineState::Muted:
            return Glyph::LineMuted;
        case LineState::Quiet:
            return Glyph::LineQuiet;
    }
    return Glyph::None;
}

void LineRows::Show(const std::vector<LineFigures>& lines) {
    const auto isSameLine = [](const LineFigures& a, const LineFigures& b) { return a.name == b.name; };
    if (!std::ranges::equal(lines_, lines, isSameLine)) return Renew([&] { lines_ = lines; });
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines_[i] == lines[i]) continue;
        lines_[i] = lines[i];
        Mark(lines[i].name);
    }
}

const LineFigures* LineRows::LineOf(TextView key) const {
    const auto found = std::ranges::find(lines_, key, &LineFigures::name);
    return found != lines_.end() ? &*found : nullptr;
}

Text LineRows::Heading(int column) const {
    return column >= 0 && column < ColumnCount() ? captions_(kColumns[column].caption) : Text();
}

int LineRows::DefaultWidth(int column) const {
    return column >= 0 && column < ColumnCount() ? kColumns[column].width : 0;
}

Text LineRows::TimeCell(OleDate time) const {
    if (time.IsNever()) return captions_(kCaptionNever);
    const bool isToday = time.Midnight() == clock_.Now().Midnight();
    return FormatDate(time, isToday ? "HH:NN:SS" : "YYYY-MM-DD HH:NN");
}

Text LineRows::SourceCell(int source, int column) const {
    const LineFigures& line = lines_[static_cast<std::size_t>(source)];
    switch (column) {
        case Name:
            return line.description;
        case Kind:
            return line.kind;
        case State:
            return LineStateText(captions_, line.state);
        case Since:
            return TimeCell(line.since);
        case LastTraffic:
            return TimeCell(line.lastTraffic);
        case Today:
            return std::to_string(line.telegramsToday);
        case Refused:
            return std::to_string(line.refusedToday);
        case Reconnects:
            return std::to_string(line.reconnectsToday);
        case Caller:
            return line.caller;
        default:
            return {};
    }
}

Glyph LineRows::Icon(int row) const {
    const int source = SourceOf(row);
    return source < 0 ? Glyph::None : GlyphOf(lines_[static_cast<std::size_t>(source)].state);
}

Text LineRows::IconWord(int row) const {
    const int source = SourceOf(row);
    return source < 0 ? Text() : LineStateText(captions_, lines_[static_cast<std::size_t>(source)].state);
}

}  // namespace nordkeep
