#pragma once

#include "console/editors/RowFormat.h"
#include "runtime/Language.h"

namespace nordkeep {

/// The event types of a set, its .TypeCode file.
class TypeFormat final : public RowFormat {
 public:
    explicit TypeFormat(const Language& language) : language_(language) {}

    int Caption() const override;
    int EmptyText() const override;
    /// A set that has no types yet can be given some.
    Text Pattern() const override { return "Settings\\*.IDCode"; }
    Text FileOf(const Text& name) const override;
    std::vector<FileItem> Items(TextView content) const override;
    std::vector<DescribedGroup> Groups() const override;
    std::vector<Column> Columns() const override;
    Values ValuesOf(const FileItem& row) const override;
    FileItem ItemOf(const Values& values, const FileItem& before) const override;
    Text FitValue(const DescribedKey& key, Text value) const override;
    Values NewValues() const override;
    std::optional<std::size_t> FieldOf(int number) const override;
    std::unique_ptr<RowCheck> NewCheck(const Text& name, TextView content) const override;
    std::vector<DescribedChoice> ChoicesOf(const DescribedKey& key,
                                           const std::vector<FileItem>& items) const override;

 private:
    const Language& language_;
};

}  // namespace nordkeep
