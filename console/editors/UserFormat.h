#pragma once

#include "console/editors/IniFormat.h"
#include "console/lists/Captions.h"

namespace nordkeep {

/// Who may log in at a client, the users file of a server.
class UserFormat final : public IniFormat {
 public:
    UserFormat(const Language& language, const Captions& captions)
        : IniFormat(language), captions_(captions) {}

    int Caption() const override;
    int EmptyText() const override;
    Text Pattern() const override { return FileOf({}); }
    Text FileOf(const Text& name) const override;
    std::vector<DescribedGroup> Groups() const override;
    std::vector<Column> Columns() const override;
    Values ValuesOf(const FileItem& row) const override;
    /// The password stays what it was until it has been typed twice alike.
    FileItem ItemOf(const Values& values, const FileItem& before) const override;
    Text FitValue(const DescribedKey& key, Text value) const override;
    Text FaultOf(std::size_t field, const Values& values) const override;
    bool HasCsv() const override { return false; }
    Text TextToSearch(const FileItem& row) const override;
    Values NewValues() const override;
    std::optional<std::size_t> FieldOf(int number) const override;

 protected:
    bool TakesSection(TextView section) const override { return EqualsNoCase(section, "Users"); }
    void Check(TextView content, FileFindings& findings) const override;

 private:
    const Captions& captions_;
};

}  // namespace nordkeep
