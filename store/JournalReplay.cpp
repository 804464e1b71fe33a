#include "store/JournalReplay.h"

#include "runtime/Json.h"
#include "store/Archive.h"
#include "store/EventFile.h"
#include "store/RecordJson.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextPlayed = 3772;
constexpr int kTextCannotPlay = 3773;

/// The whole lines at the end of a content, and where they begin to be whole: a power cut can tear the last.
TextView WholeLines(TextView content) {
    const std::size_t end = content.rfind('\n');
    return content.substr(0, end == TextView::npos ? 0 : end + 1);
}

}  // namespace

void JournalReplay::Take(const JournalRow& row) {
    const bool isRemoved = row.kind == NameOf(JournalKind::Removed);
    states_[FromUtf8(row.event)] = {.isRemoved = isRemoved, .data = row.data};
    if (!isRemoved) return;
    const auto members = ReadJsonObject(row.data);
    if (members && members->Has("archive")) archived_.push_back(members->String("archive"));
}

bool JournalReplay::Run() {
    constexpr std::array kinds = {JournalKind::Event, JournalKind::Changed, JournalKind::Removed};
    const std::int64_t upTo = journal_.LastId();
    const bool isRead =
        journal_.Read(journal_.FilesSafeUpTo(), kinds, [this](const JournalRow& row) { Take(row); });
    MakeFolder(parts_.dataFolder.Resolve("Data\\Events"));
    // Of a journal that breaks off nobody knows whether a file is older or newer than it: what is whole
    // stays.
    const bool isDone = WriteFiles(isRead) && CompleteArchive() && Synchronise() && isRead;
    parts_.LogCount(kTextPlayed, written_, LogKind::Oddity);
    if (isDone) {
        journal_.NoteFilesSafe(upTo);
        return true;
    }
    const Text& reason = isRead ? disk_.LastError() : journal_.LastError();
    parts_.log.WriteSysLog(parts_.language.GetLanguageText(kTextCannotPlay) + reason, LogKind::Failure);
    return false;
}

bool JournalReplay::Synchronise() {
    if (states_.empty()) return true;
    // What was removed or renamed before the crash, too.
    for (const TextView folder : {"Data\\Events", "Data"}) disk_.AddFolder(parts_.dataFolder.Resolve(folder));
    return disk_.Synchronise(SIZE_MAX);
}

bool JournalReplay::WriteFiles(bool mayChange) {
    bool isDone = true;
    for (const auto& [pointer, state] : states_) isDone = WriteOne(pointer, state, mayChange) && isDone;
    return isDone;
}

bool JournalReplay::WriteOne(const Text& pointer, const LastState& state, bool mayChange) {
    const NativePath path = parts_.dataFolder.Resolve("Data\\Events\\" + pointer + ".eve");
    if (state.isRemoved) return !mayChange || disk_.Remove(path);
    const std::optional<cAlarm> alarm = ReadRecordJson(state.data);
    if (!alarm) return false;
    const Text bytes = EventBytes(*alarm, 0, settings_.SmallCommentSize);
    const FileContent present = LoadFile(path);
    if (present.state == FileContent::State::Unreadable) return false;
    cAlarm known;
    const bool isWhole = ReadFromDisk(present.bytes, 1, known).has_value() && !IsBlankFile(present.bytes);
    // What stands behind the record is left from a longer one.
    const bool isSame = present.bytes.starts_with(bytes);
    if (!isSame && isWhole && !mayChange) return true;
    if (!isSame) ++written_;
    // Also what is the same: the run that wrote it may have ended before it was on the medium.
    return disk_.Write(path, bytes, DurableWrites::Opening::Existing);
}

// The lines of the last entries are near the end of the file. What is torn there is one of them and goes.
bool JournalReplay::CompleteArchive() {
    if (archived_.empty()) return true;
    const NativePath path = Archive(parts_.dataFolder).Path();
    const FileContent present = LoadFile(path);
    if (present.state == FileContent::State::Unreadable) return false;
    const TextView whole = WholeLines(present.bytes);
    Text missing;
    for (const Text& line : archived_) {
        if (whole.find(line) == TextView::npos) missing += line;
    }
    if (whole.size() != present.bytes.size()) return ReplaceFile(path, Text(whole) + missing);
    return disk_.Append(path, missing);
}

}  // namespace nordkeep
