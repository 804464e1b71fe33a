#pragma once

#include "console/lists/Captions.h"
#include "platform/OleDate.h"
#include "runtime/DataFiles.h"

#include <vector>

namespace nordkeep {

/// A line of an instruction with a box in front, "[ ] Ring the guard".
struct InstructionStep {
    Text text{};
    Text ticked{};          // the line that stands in the new comment for it; empty: none
    bool isOnFile = false;  // such a line has been saved, here or elsewhere

    bool IsDone() const { return isOnFile || !ticked.empty(); }
    friend bool operator==(const InstructionStep&, const InstructionStep&) = default;
};

/// The lines of an instruction that have a box, also behind the "name=" of a field.
std::vector<InstructionStep> StepsOf(TextView instruction);
/// Puts a step into a comment as done, with who does it and the minute, or takes it out again. What has been
/// saved stays.
void TickInto(Text& comment, InstructionStep& step, bool isDone, OleDate now, TextView initials);
/// Takes the steps as done whose lines stand in the saved comments and were ticked since a time: the comments
/// of an object hold those of earlier alarms, too. A line that somebody has changed ticks nothing.
void NoteDone(std::vector<InstructionStep>& steps, TextView comments, OleDate since);

/// What begins a remark: the time and who makes it, "21:14 AB ".
Text RemarkStamp(OleDate now, TextView initials);

inline constexpr const char* kPhrasesFile = "Settings\\Phrases.TXT";
/// What operators write often: the lines of the centre's file, or those that the program brings when there
/// is none. Lines that begin with ";" are remarks.
std::vector<Text> LoadPhrases(DataFiles& files, const Captions& captions);

}  // namespace nordkeep
