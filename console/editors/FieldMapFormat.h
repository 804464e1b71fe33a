#pragma once

#include "console/editors/IniFormat.h"

namespace nordkeep {

/// Which element of a gateway's XML goes into which field of an alarm: sections of the port's settings file.
class FieldMapFormat final : public IniFormat {
 public:
    /// `keys`: the fields that can be mapped.
    FieldMapFormat(const Language& language, std::vector<Text> keys)
        : IniFormat(language), keys_(std::move(keys)) {}

    int Caption() const override;
    int EmptyText() const override;
    int OwnerCaption() const override;
    Text Pattern() const override { return "Settings\\Port*.ini"; }
    Text FileOf(const Text& name) const override;
    std::vector<DescribedGroup> Groups() const override;
    std::vector<Column> Columns() const override;
    Values ValuesOf(const FileItem& row) const override;
    FileItem ItemOf(const Values& values, const FileItem& before) const override;
    Values NewValues() const override;
    std::size_t KeyField() const override { return 1; }
    std::optional<std::size_t> FieldOf(int) const override { return std::nullopt; }
    /// The same key stands in several sections.
    bool HasCsv() const override { return false; }

 protected:
    bool TakesSection(TextView section) const override;
    void Check(TextView, FileFindings&) const override {}

 private:
    std::vector<Text> keys_;
};

}  // namespace nordkeep
