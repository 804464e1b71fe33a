#include "console/window/AlarmCommands.h"

#include "console/lists/Captions.h"
#include "console/lists/SharedCaptions.h"
#include "runtime/Fields.h"

namespace nordkeep {
namespace {

constexpr int kTextEndAll = 1021;
constexpr int kTextArchiveSelected = 1055;

std::vector<std::int32_t> FilePointersOf(std::span<const Text> rowKeys) {
    std::vector<std::int32_t> filePointers;
    for (const Text& key : rowKeys) filePointers.push_back(LeadingInt32(key));
    return filePointers;
}

}  // namespace

bool AlarmCommands::Asks(int text, Answer byDefault, const Text& behind) const {
    return needs_.dialogs.AskYesNo(needs_.language.GetLanguageText(text) + behind, byDefault) &&
           needs_.state.Rights().MayChange();
}

void AlarmCommands::AckAll(bool isFiltered) {
    const std::size_t count = needs_.store.Events().Unacknowledged().size();
    const Text line = Captions(needs_.language)(kCaptionUnacked, {std::to_string(count)});
    if (Asks(kTextEndAll, Answer::No, isFiltered ? "\r\n" + line : Text())) needs_.handling.EndAll();
}

void AlarmCommands::CloseSelected(std::span<const Text> rowKeys) {
    if (Asks(kTextEndSelected, Answer::Yes)) needs_.handling.EndSeveral(FilePointersOf(rowKeys));
}

void AlarmCommands::ArchiveSelected(std::span<const Text> rowKeys) {
    if (Asks(kTextArchiveSelected, Answer::No)) needs_.handling.Archive(FilePointersOf(rowKeys));
}

}  // namespace nordkeep
