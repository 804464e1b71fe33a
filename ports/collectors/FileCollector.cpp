#include "pipeline/EventPort.h"
#include "ports/collectors/Collector.h"
#include "ports/formats/CollectedFile.h"
#include "runtime/SettingTable.h"

namespace nordkeep {
namespace {

constexpr int kTextFileTrouble = 3612;
constexpr int kTextBadLine = 3613;
constexpr int kTextBadLines = 3614;
constexpr int kTextStillOpen = 3616;

constexpr std::int64_t kLargestFile = 16 << 20;
constexpr std::size_t kBadLinesToLog = 20;
constexpr std::size_t kShownOfBadLine = 200;

// Whoever writes the file may stop for so long in the middle of a line.
constexpr std::int64_t kQuietMs = 5000;
// A program that keeps one file open for so long, and drops the next, is told of.
constexpr std::int64_t kLongOpenMs = 60'000;

/// Collects a file that another program drops: gives it a name of its own, so that the other program can drop
/// the next one, takes its lines in, and deletes it when every event is safely stored. What a crash leaves
/// under that name is taken in first, whole: an event may then come twice, but none is lost. The other
/// program may still be writing: the file goes only when nothing can be added to it any more.
class FileCollector final : public Collector {
 public:
    FileCollector(const CollectorParts& parts, FileForm form)
        : parts_(parts), log_(parts.log), taker_(parts.taker), form_(form) {
        const Text& file = log_.Line().PortSetting;
        workFile_ = file.substr(0, file.find_last_of("\\/") + 1) + form_.workName;
        confirmationPrio_ =
            LoadSettings(parts.settings, EventPortRows(), log_.Name()).m_DefaultTorvexAckSMSPrio;
    }

    // Never open: each attempt to open looks for the file, so the reopen interval is the collecting one.
    bool IsOpen() const override { return false; }

    FarEnd End() const override {
        const NativePath work = WorkPath();
        FarEnd end;
        end.isVisited = isOpenLogged_;
        end.isMissed = isTroubleLogged_ || !FolderExists(work.substr(0, work.rfind('/')));
        return end;
    }

    void Open() override {
        if (!isOpenLogged_) log_.Opened(log_.Line().PortSetting);
        isOpenLogged_ = true;
        isStopped_ = false;
        isLookDue_ = true;
    }

    void Tick(const CollectorTick&) override {
        if (!isLookDue_ || isLookPlanned_) return;
        isLookPlanned_ = true;
        // The first tick comes before the stored events have been read; taking in comes behind.
        parts_.loop.Post([this] { Look(); });
    }

    void Close(bool isShuttingDown) override {
        isOpenLogged_ = false;
        isStopped_ = isShuttingDown;
    }

 private:
    enum class State { Idle, Taking, Waiting };

    void Look() {
        isLookPlanned_ = isLookDue_ = false;
        if (isStopped_) return;
        if (state_ == State::Idle) return Collect();
        if (state_ == State::Taking && !isContinuing_) return Continue();
        if (state_ == State::Waiting && waitingSteps_ == 0) Settle();
    }

    void Collect() {
        const NativePath work = WorkPath();
        if (!StampOf(work).Exists()) {
            const NativePath dropped = parts_.dataFolder.ResolveSetting(log_.Line().PortSetting);
            if (!StampOf(dropped).Exists()) return;
            if (!RenameFile(dropped, work)) return Complain(log_.Line().PortSetting);
        }
        taken_ = badLines_ = 0;
        hasFailed_ = isLongOpenLogged_ = false;
        content_.clear();
        grownAtMs_ = parts_.clock.MonotonicMs();
        Read();
    }

    /// Reads the file; its front may have been taken in already.
    void Read() {
        const FileStamp stamp = StampOf(WorkPath());
        auto content = stamp.size > kLargestFile ? std::nullopt : ReadFile(WorkPath());
        if (!content) return Complain(workFile_);
        if (content->size() != content_.size()) grownAtMs_ = parts_.clock.MonotonicMs();
        content_ = std::move(*content);
        isWhole_ = isTroubleLogged_ = false;
        state_ = State::Taking;
        Continue();
    }

    void Continue() {
        isContinuing_ = false;
        if (isStopped_) return;
        FileStep found = NextFileStep({.file = content_, .start = taken_, .isWhole = isWhole_}, form_,
                                      confirmationPrio_, parts_.clock.Now());
        taken_ = found.next;
        LogBadLines(found.badLines);
        const bool isLast = found.isLast;
        if (isLast) state_ = State::Waiting;
        ++waitingSteps_;
        taker_.TakeStep(std::move(found.step), [this](bool isStored) { OnStepStored(isStored); });
        if (isLast) return;
        isContinuing_ = true;
        parts_.loop.Post([this] { Continue(); });
    }

    void OnStepStored(bool isStored) {
        --waitingSteps_;
        if (!isStored) hasFailed_ = true;
        if (state_ == State::Waiting && waitingSteps_ == 0) Settle();
    }

    /// All lines are taken in and no answer is outstanding.
    void Settle() {
        if (hasFailed_) {
            // The store keeps such events and writes them again by itself; the file goes when it has.
            if (!parts_.stored.AreAllStored()) return;
            hasFailed_ = false;
            ++waitingSteps_;
            return taker_.TakeStep({}, [this](bool isStored) { OnStepStored(isStored); });
        }
        const FileStamp stamp = StampOf(WorkPath());
        if (stamp.Exists()) {
            const auto size = static_cast<std::size_t>(stamp.size);
            if (size < content_.size()) taken_ = 0;  // emptied and begun again
            if (size != content_.size()) return Read();
            if (taken_ < size) return TakeOpenLine();
            if (MayStillGrow()) return LogLongOpen();
            if (!RemoveFile(WorkPath())) return Complain(workFile_);
        }
        Finish();
    }

    bool IsQuietFor(std::int64_t ms) const { return parts_.clock.MonotonicMs() - grownAtMs_ >= ms; }

    /// The last line has no end: it is half a line as long as somebody may still be writing it.
    void TakeOpenLine() {
        if (!IsQuietFor(kQuietMs)) return;
        isWhole_ = true;
        Continue();
    }

    bool MayStillGrow() const { return IsOpenForWriting(WorkPath()).value_or(!IsQuietFor(kQuietMs)); }

    void LogLongOpen() {
        if (isLongOpenLogged_ || !IsQuietFor(kLongOpenMs)) return;
        if (!StampOf(parts_.dataFolder.ResolveSetting(log_.Line().PortSetting)).Exists()) return;
        isLongOpenLogged_ = true;
        log_.Failure(kTextStillOpen, log_.NameAndDescription() + " (" + workFile_ + ")");
    }

    void Finish() {
        if (badLines_ > kBadLinesToLog) {
            log_.Failure(kTextBadLines, log_.NameAndDescription() + " (" + std::to_string(badLines_) + ")");
        }
        content_.clear();
        state_ = State::Idle;
        isTroubleLogged_ = false;
    }

    void LogBadLines(const std::vector<Text>& lines) {
        for (const Text& line : lines) {
            if (++badLines_ > kBadLinesToLog) continue;
            log_.Failure(kTextBadLine,
                         log_.NameAndDescription() + " (" + line.substr(0, kShownOfBadLine) + ")");
        }
    }

    /// One line for each series of failures.
    void Complain(const Text& file) {
        if (isTroubleLogged_) return;
        isTroubleLogged_ = true;
        log_.Failure(kTextFileTrouble, log_.NameAndDescription() + " (" + file + ")");
    }

    NativePath WorkPath() const { return parts_.dataFolder.ResolveSetting(workFile_); }

    CollectorParts parts_;
    PortLog& log_;
    StepTaker& taker_;
    FileForm form_;
    Text workFile_{};
    int confirmationPrio_ = 0;

    State state_ = State::Idle;
    Text content_{};
    std::size_t taken_ = 0;
    std::int64_t grownAtMs_ = 0;
    std::size_t badLines_ = 0;
    int waitingSteps_ = 0;  // handed to the port and not known to be stored
    bool hasFailed_ = false;
    bool isWhole_ = false;  // nobody has added to the file for so long that its last line counts
    bool isLongOpenLogged_ = false;
    bool isContinuing_ = false;
    bool isLookDue_ = false;
    bool isLookPlanned_ = false;
    bool isStopped_ = false;
    bool isOpenLogged_ = false;
    bool isTroubleLogged_ = false;
};

bool NamesAFile(const Text& setting) {
    return setting.find('.', setting.find_last_of("\\/") + 1) != Text::npos;
}

}  // namespace

std::unique_ptr<Collector> MakeFileCollector(MessageFormat format, const CollectorParts& parts) {
    const auto form = FileFormOf(format);
    if (!form || !NamesAFile(parts.log.Line().PortSetting)) return nullptr;
    return std::make_unique<FileCollector>(parts, *form);
}

}  // namespace nordkeep
