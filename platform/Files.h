#pragma once

#include "platform/OleDate.h"
#include "platform/Text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nordkeep {

/// A path of the real file system, in UTF-8, as FileTree::Resolve gives it.
using NativePath = std::string;

/// Tells one state of a file from another; all zero for a file that is not there.
struct FileStamp {
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedNs = 0;  // since 1970, UTC
    bool Exists() const { return inode != 0; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// Stamp of a regular file; not there for anything else.
FileStamp StampOf(const NativePath& path);
/// Local modification time; never (0) for a file that is not there.
OleDate FileTime(const NativePath& path);
bool FolderExists(const NativePath& path);

/// All bytes of a regular file; none when it cannot be read. Never blocks on a pipe or device.
std::optional<Text> ReadFile(const NativePath& path);

/// What became of reading a file. That there is none and that it cannot be read are two things: what could
/// not be read is never to be written over.
struct FileContent {
    enum class State { Read, Missing, Unreadable };
    State state = State::Missing;
    Text bytes{};
    Text reason{};  // of Unreadable, in the system's words
};
FileContent LoadFile(const NativePath& path);
/// Makes or empties the file and writes the bytes. False when anything failed.
bool WriteFile(const NativePath& path, TextView bytes);
/// Writes a temporary file beside it and renames it over the file, so that a reader, a crash and a power cut
/// see either the old or the new content; on the medium when it returns. The mode of an existing file stays.
/// False when anything failed, and for an existing file that this program may not read and write.
bool ReplaceFile(const NativePath& path, TextView bytes);
/// The same; a file that is made here is nobody's but its owner's, since it keeps passwords.
bool ReplacePrivateFile(const NativePath& path, TextView bytes);
/// Appends with one write, making the file when missing. An existing read-only mark is cleared for the write
/// and set again behind it.
bool AppendToFile(const NativePath& path, TextView bytes);

bool RemoveFile(const NativePath& path);
/// Whether some program has the file open for writing; none when the system does not tell, as for a file of
/// another user or on another machine.
std::optional<bool> IsOpenForWriting(const NativePath& path);
/// Fails when the target exists.
bool RenameFile(const NativePath& from, const NativePath& to);
bool CopyFile(const NativePath& from, const NativePath& to);
/// The same, and the copy has the rights of the original from its first moment on.
bool CopyFileWithRights(const NativePath& from, const NativePath& to);
/// Makes one folder level; true also when it is there already.
bool MakeFolder(const NativePath& path);
bool RemoveFolder(const NativePath& path);
/// Names of the plain files in a folder, in Windows-1252, sorted by their upper-cased form.
/// A name that has no form in Windows-1252 is left out.
std::vector<Text> ListFiles(const NativePath& folder);
/// As ListFiles for the names of all entries, whatever they are.
std::vector<Text> ListEntries(const NativePath& folder);
/// Real path with all links resolved; none when it does not exist.
std::optional<NativePath> CanonicalPath(const NativePath& path);

// For names that an outsider has chosen: a symbolic link in the last place counts as not there, and so does
// what is no regular file. The folder is to be canonical.

/// All bytes; none also when there are more than `most`.
std::optional<Text> ReadFileUnlinked(const NativePath& path, std::size_t most);
/// As ReplaceFile.
bool ReplaceFileUnlinked(const NativePath& path, TextView bytes);
/// As FileTime.
OleDate FileTimeUnlinked(const NativePath& path);

/// True when `name` fits `mask`; "?" is one character, "*" any run, the rest without regard to case.
bool MatchesMask(TextView name, TextView mask);

}  // namespace nordkeep
