#include "console/print/SpooledOutput.h"

#include "runtime/Dates.h"

#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextKept = 5226;
constexpr int kTextTaken = 5227;
constexpr int kTextNotWritten = 5228;
constexpr TextView kFolder = "Printed\\";
constexpr std::size_t kPagesInTick = 50;
// A flood that comes out on paper alarm by alarm must not fill the memory.
constexpr std::size_t kMostToMake = 10'000;
// A printer server that does not answer holds the spooler's command.
constexpr int kPatienceMs = 60'000;
// More than this wait as files only: a spooler that is slow for hours must not be swamped behind it.
constexpr std::size_t kMostToSpool = 1000;

}  // namespace

SpooledOutput::SpooledOutput(const Needs& needs, std::string spooler)
    : needs_(needs), captions_(needs.language), spooler_(std::move(spooler)) {}

void SpooledOutput::Print(const PrintDocument& document) {
    isUsed_ = true;
    if (toMake_.size() >= kMostToMake) return NoteNotWritten(document.title);
    toMake_.push_back({.document = document, .printedAt = GeneralDate(needs_.clock.Now())});
}

void SpooledOutput::Tick(int elapsedMs) {
    std::size_t pagesLeft = kPagesInTick;
    while (pagesLeft > 0 && !toMake_.empty()) pagesLeft -= MakePages(pagesLeft);
    isSpooling_ ? WatchSpooler(elapsedMs) : StartSpooler();
}

void SpooledOutput::Close() {
    while (!toMake_.empty()) MakePages(kPagesInTick);
    if (isSpooling_) child_.Stop();
    isSpooling_ = false;
    if (!toSpool_.empty()) NoteKept(toSpool_.front().file);
    toSpool_.clear();
}

std::size_t SpooledOutput::MakePages(std::size_t most) {
    Job& job = toMake_.front();
    if (!pages_) pages_ = std::make_unique<TextPages>(std::move(job.document), job.printedAt, captions_);
    const std::size_t made = pages_->Make(most);
    if (pages_->AreDone()) SaveFile();
    return made;
}

void SpooledOutput::SaveFile() {
    Job job = std::move(toMake_.front());
    toMake_.pop_front();
    MakeFolder(needs_.dataFolder.Resolve(kFolder));
    job.file = NewName(pages_->Title());
    const bool isSaved = pages_->Save(needs_.dataFolder.Resolve(job.file));
    job.document.printer = pages_->Printer();
    pages_.reset();
    if (!isSaved) return NoteNotWritten(job.file);
    isLossTold_ = false;
    if (toSpool_.size() >= kMostToSpool) return NoteKept(job.file);
    toSpool_.push_back(std::move(job));
}

Text SpooledOutput::NewName(const Text& title) const {
    const Text stem =
        Text(kFolder) + FormatDate(needs_.clock.Now(), "YYYY-MM-DD HHNNSS ") + FileSafeName(title);
    Text name = stem + ".pdf";
    for (int copy = 2; StampOf(needs_.dataFolder.Resolve(name)).Exists(); ++copy)
        name = stem + " " + std::to_string(copy) + ".pdf";
    return name;
}

void SpooledOutput::StartSpooler() {
    if (toSpool_.empty()) return;
    const Job& job = toSpool_.front();
    std::vector<std::string> words;
    if (!job.document.printer.empty()) words = {"-d", ToUtf8(job.document.printer)};
    words.push_back("--");
    words.push_back(needs_.dataFolder.Resolve(job.file));
    isSpooling_ = child_.Start(spooler_, words);
    spoolingMs_ = 0;
    if (!isSpooling_) EndSpooling(false);
}

void SpooledOutput::WatchSpooler(int elapsedMs) {
    spoolingMs_ += elapsedMs;
    if (child_.IsRunning()) {
        if (spoolingMs_ < kPatienceMs) return;
        child_.Stop();
        return EndSpooling(false);
    }
    EndSpooling(child_.HasSucceeded());
}

void SpooledOutput::EndSpooling(bool isTaken) {
    isSpooling_ = false;
    const Text file = std::move(toSpool_.front().file);
    toSpool_.pop_front();
    if (!isTaken) return NoteKept(file);
    RemoveFile(needs_.dataFolder.Resolve(file));
    if (std::exchange(hasFailed_, false))
        needs_.log.WriteSysLog(captions_.FromFile(kTextTaken), LogKind::Information);
}

void SpooledOutput::NoteNotWritten(const Text& what) {
    if (std::exchange(isLossTold_, true)) return;
    needs_.log.WriteSysLog(captions_.FromFile(kTextNotWritten) + what, LogKind::Failure);
}

void SpooledOutput::NoteKept(const Text& file) {
    if (std::exchange(hasFailed_, true)) return;
    needs_.log.WriteSysLog(captions_.FromFile(kTextKept) + file, LogKind::Failure);
}

}  // namespace nordkeep
