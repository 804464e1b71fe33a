#pragma once

#include "platform/FileTree.h"
#include "platform/Files.h"

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>

namespace nordkeep {

/// A folder of its own below the system's folder for temporary files, removed with all its content.
class TempFolder {
 public:
    TempFolder() : path_(Make()), tree_(path_) {}
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const NativePath& Path() const { return path_; }
    const FileTree& Tree() const { return tree_; }

    /// Real path of a backslash path below the folder.
    NativePath Resolve(TextView path) const { return tree_.Resolve(path); }
    bool Exists(TextView path) const { return StampOf(Resolve(path)).Exists(); }
    /// All bytes of a file; empty when there is none.
    Text Read(TextView path) const { return ReadFile(Resolve(path)).value_or(Text()); }
    /// Writes a file and makes the folders above it.
    void Write(TextView path, TextView bytes) const {
        const std::size_t leaf = path.find_last_of("\\/");
        if (leaf != TextView::npos) MakeFolders(path.substr(0, leaf));
        if (!WriteFile(Resolve(path), bytes)) throw std::runtime_error("cannot write " + Text(path));
    }
    void MakeFolders(TextView path) const { std::filesystem::create_directories(Resolve(path)); }

 private:
    static NativePath Make() {
        std::string name = (std::filesystem::temp_directory_path() / "nordkeep-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
        return name;
    }

    NativePath path_;
    FileTree tree_;
};

}  // namespace nordkeep
