#pragma once

#include "console/editors/RowFormat.h"
#include "runtime/Language.h"

namespace nordkeep {

/// Rows that are keys of a settings file, in one or several of its sections; all else of the file stays.
class IniFormat : public RowFormat {
 public:
    explicit IniFormat(const Language& language) : language_(language) {}

    std::vector<FileItem> Items(TextView content) const override;
    std::vector<FileItem> FrameFor(const std::vector<FileItem>& items, const FileItem& row) const override;
    std::size_t PlaceFor(const std::vector<FileItem>& items, const FileItem& row) const override;
    std::unique_ptr<RowCheck> NewCheck(const Text& name, TextView content) const override;

 protected:
    virtual bool TakesSection(TextView section) const = 0;
    virtual void Check(TextView content, FileFindings& findings) const = 0;

 private:
    const Language& language_;
};

/// The parts of a line "key=value", by the rules of settings files.
struct IniPair {
    Text key{};
    Text value{};
};
IniPair PairOf(TextView line);
Text LineOfPair(const IniPair& pair);
/// What can stand as a key.
Text FitKey(Text key);

}  // namespace nordkeep
