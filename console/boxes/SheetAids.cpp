#include "console/boxes/SheetAids.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/ObjectForm.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kFirstPhrase = 5150;
constexpr int kPhrases = 6;
constexpr std::size_t kMostPhrases = 35;
constexpr std::size_t kLongestPhrase = 500;
constexpr TextView kLineEnd = "\r\n";
constexpr TextView kTick = "[x] ";
constexpr const char* kMinute = "YYYY-MM-DD HH:NN";
constexpr TextView kBoxes[] = {"[ ]", "[]", "[_]"};

/// What stands behind the box; empty without one.
TextView BehindBox(TextView line) {
    for (const TextView box : kBoxes) {
        if (line.starts_with(box)) return TrimBlanksAndTabs(line.substr(box.size()));
    }
    return {};
}

}  // namespace

std::vector<InstructionStep> StepsOf(TextView instruction) {
    std::vector<InstructionStep> steps;
    for (const TextView line : Lines(instruction)) {
        TextView text = BehindBox(TrimBlanksAndTabs(line));
        if (text.empty()) text = BehindBox(TrimBlanksAndTabs(SplitInformation(line).value));
        if (!text.empty()) steps.push_back({Text(text)});
    }
    return steps;
}

void TickInto(Text& comment, InstructionStep& step, bool isDone, OleDate now, TextView initials) {
    if (step.isOnFile || isDone == !step.ticked.empty()) return;
    if (isDone) {
        // With its day: the line is looked for again.
        step.ticked = FormatDate(now, "YYYY-MM-DD ") + RemarkStamp(now, initials);
        step.ticked.append(kTick).append(step.text).append(kLineEnd);
        if (!comment.empty() && comment.back() != '\n') comment += kLineEnd;
        comment += step.ticked;
        return;
    }
    // A line that somebody has changed is theirs.
    const std::size_t at = comment.find(step.ticked);
    if (at != Text::npos) comment.erase(at, step.ticked.size());
    step.ticked.clear();
}

void NoteDone(std::vector<InstructionStep>& steps, TextView comments, OleDate since) {
    if (steps.empty() || since.IsNever()) return;
    for (InstructionStep& step : steps) step.isOnFile = false;
    const Text first = FormatDate(since, kMinute);
    for (const TextView line : Lines(comments)) {
        const std::size_t tick = line.find(kTick);
        const TextView minute = line.substr(0, first.size());
        if (tick == TextView::npos || minute < first || !ParseDateTime(minute)) continue;
        const TextView text = TrimBlanksAndTabs(line.substr(tick + kTick.size()));
        const auto step = std::ranges::find_if(
            steps, [&](const InstructionStep& each) { return !each.isOnFile && each.text == text; });
        if (step == steps.end()) continue;
        step->isOnFile = true;
    }
}

Text RemarkStamp(OleDate now, TextView initials) {
    const TextView who = TrimBlanks(initials);
    return FormatDate(now, "HH:NN") + " " + (who.empty() ? Text() : Text(who) + " ");
}

std::vector<Text> LoadPhrases(DataFiles& files, const Captions& captions) {
    std::vector<Text> phrases;
    const Text own = files.ReadTextFile(kPhrasesFile);
    for (const TextView line : Lines(own)) {
        const TextView phrase = TrimBlanksAndTabs(line).substr(0, kLongestPhrase);
        if (!phrase.empty() && phrase.front() != ';' && phrases.size() < kMostPhrases)
            phrases.emplace_back(phrase);
    }
    for (int number = 0; own.empty() && number < kPhrases; ++number)
        phrases.push_back(captions(kFirstPhrase + number));
    return phrases;
}

}  // namespace nordkeep
