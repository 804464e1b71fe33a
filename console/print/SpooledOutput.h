#pragma once

#include "console/print/TextPages.h"
#include "platform/ChildProcess.h"
#include "platform/Clock.h"
#include "platform/FileTree.h"
#include "runtime/SysLog.h"

#include <deque>
#include <memory>
#include <optional>

namespace nordkeep {

/// Paper for a copy without a screen. Each document becomes a PDF file in the folder Printed, is given to the
/// system's spooler, and stays there when the spooler does not take it: told once for each outage. Work is
/// done in small pieces by Tick.
class SpooledOutput final : public PrintOutput {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Clock& clock;
        SysLog& log;
        const Language& language;
    };
    explicit SpooledOutput(const Needs& needs, std::string spooler = "lp");

    void Print(const PrintDocument& document) override;
    /// There is nobody to look at it.
    void Preview(const PrintDocument&) override {}
    void Tick(int elapsedMs);
    /// True as long as the spooler takes no pages.
    bool HasFailed() const { return hasFailed_; }
    /// As it is called where its failure is told.
    Text Name() const { return captions_.FromFile(5252); }
    /// Documents that have not been handed over; none in a copy that has printed nothing yet.
    std::optional<std::size_t> WaitingCount() const {
        return isUsed_ ? std::optional(toMake_.size() + toSpool_.size()) : std::nullopt;
    }
    /// The program ends: what has not been made yet is made now, and stays in the folder.
    void Close();

 private:
    struct Job {
        PrintDocument document{};
        Text printedAt{};
        Text file{};  // relative to the data folder
    };

    /// How many were made, at least one.
    std::size_t MakePages(std::size_t most);
    void SaveFile();
    Text NewName(const Text& title) const;
    void StartSpooler();
    void WatchSpooler(int elapsedMs);
    void EndSpooling(bool isTaken);
    void NoteNotWritten(const Text& what);
    void NoteKept(const Text& file);

    Needs needs_;
    Captions captions_;
    std::string spooler_;
    std::deque<Job> toMake_{};
    std::unique_ptr<TextPages> pages_{};  // of the first one
    std::deque<Job> toSpool_{};
    ChildProcess child_{};
    bool isSpooling_ = false;
    int spoolingMs_ = 0;
    bool isUsed_ = false;
    bool hasFailed_ = false;
    bool isLossTold_ = false;
};

}  // namespace nordkeep
