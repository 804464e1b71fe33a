#include "console/boxes/SheetAids.h"

#include "runtime/Dates.h"
#include "runtime/Fields.h"
#include "translation/ObjectForm.h"

namespace nordkeep {
namespace {

constexpr int kFirstPhrase = 5150;
constexpr int kPhrases = 6;
constexpr std::size_t kMostPhrases = 35;
constexpr std::size_t kLongestPhrase = 500;
constexpr TextView kLineEnd = "\r\n";
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

void TickInto(Text& comment, InstructionStep& step, bool isDone, TextView stamp) {
    if (isDone == !step.ticked.empty()) return;
    if (isDone) {
        step.ticked = Text(stamp).append("[x] ").append(step.text).append(kLineEnd);
        if (!comment.empty() && comment.back() != '\n') comment += kLineEnd;
        comment += step.ticked;
        return;
    }
    // A line that somebody has changed is theirs.
    const std::size_t at = comment.find(step.ticked);
    if (at != Text::npos) comment.erase(at, step.ticked.size());
    step.ticked.clear();
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
