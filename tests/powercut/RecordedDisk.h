#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace nordkeep {

/// What a power cut leaves of writes that nobody had synchronised.
enum class Leftover {
    Nothing,    // the disk has only what it was made to keep
    NamesOnly,  // new names without the bytes behind them
    Anything,   // some of the names, some of the writes
    All,        // as after the end of the program alone
};

/// Writes down what the program does to the files below one folder, from its making to its end, call by call:
/// the program under test and the libraries it uses run on the real system and know nothing of it. Afterwards
/// it tells what the disk would hold had the power gone at any of these calls.
///
/// A write counts from the synchronisation of its file on, a name from that of its folder on. There is one
/// recording at a time.
class RecordedDisk {
 public:
    explicit RecordedDisk(std::string folder);
    ~RecordedDisk();
    RecordedDisk(const RecordedDisk&) = delete;
    RecordedDisk& operator=(const RecordedDisk&) = delete;

    /// Ends the recording.
    void Stop();
    /// How many calls have been recorded; a cut is a number from 0 to this.
    std::size_t CallCount() const { return calls_.size(); }

    /// Brings the contents of the disk as a cut leaves them into an empty folder. Cuts are asked for in
    /// rising order.
    void Restore(std::size_t cut, Leftover leftover, std::uint32_t seed, const std::string& into);

    // For the functions that stand in for the system's.
    void NoteOpen(int descriptor, const std::string& path, bool isEmptied);
    void NoteClose(int descriptor) { open_.erase(descriptor); }
    void NoteWrite(int descriptor, std::int64_t offset, const char* bytes, std::size_t count);
    void NoteTruncate(int descriptor, std::int64_t size);
    void NoteSync(int descriptor);
    void NoteRename(const std::string& from, const std::string& to);
    void NoteUnlink(const std::string& path);
    void NoteFolder(const std::string& path);
    bool Holds(const std::string& path) const { return path.starts_with(folder_ + "/"); }
    static RecordedDisk* Current();

 private:
    enum class Kind { Name, Unname, Move, Write, Truncate, SyncFile, SyncFolder };
    struct Call {
        Kind kind{};
        int file = 0;
        std::string path{};
        std::string to{};
        std::int64_t offset = 0;
        std::string bytes{};
    };
    struct Content {
        std::string safe{};
        std::vector<const Call*> pending{};
    };
    struct Open {
        int file = 0;
        std::string path{};
    };
    using Names = std::map<std::string, int>;
    static constexpr int kFolder = -1;  // what such a name stands for, in place of a file

    void ReadFolder(const std::string& folder);
    int FileOf(const std::string& path);
    void Replay(const Call& call);
    void SyncNames(const std::string& folder);
    void RestoreFile(int file, Leftover leftover, std::mt19937& random, const std::string& into);
    static void ApplyName(Names& names, const Call& call);
    static void ApplyWrite(std::string& content, const Call& call, std::size_t count);

    std::string folder_;
    std::vector<std::string> subfolders_{};
    Names present_{};  // as the program sees it now
    std::map<int, Open> open_{};
    std::vector<Call> calls_{};
    int lastFile_ = 0;

    // What the disk holds at the cut that was asked for last.
    std::size_t replayed_ = 0;
    Names safeNames_{};
    std::vector<const Call*> pendingNames_{};
    std::map<int, Content> contents_{};
};

}  // namespace nordkeep
