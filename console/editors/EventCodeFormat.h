#pragma once

#include "console/editors/IniFormat.h"

namespace nordkeep {

/// What the codes of SIA and Contact ID mean in a set, its .DataCode file.
class EventCodeFormat final : public IniFormat {
 public:
    using IniFormat::IniFormat;

    int Caption() const override;
    int EmptyText() const override;
    /// A set that has no such file yet can be given one.
    Text Pattern() const override { return "Settings\\*.IDCode"; }
    Text FileOf(const Text& name) const override;
    std::vector<DescribedGroup> Groups() const override;
    std::vector<Column> Columns() const override;
    Values ValuesOf(const FileItem& row) const override;
    FileItem ItemOf(const Values& values, const FileItem& before) const override;
    Text FitValue(const DescribedKey& key, Text value) const override;
    Values NewValues() const override;
    std::size_t KeyField() const override { return 1; }
    std::optional<std::size_t> FieldOf(int number) const override;

 protected:
    bool TakesSection(TextView section) const override;
    void Check(TextView content, FileFindings& findings) const override;
};

}  // namespace nordkeep
