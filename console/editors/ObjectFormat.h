#pragma once

#include "console/editors/EditorsHost.h"
#include "console/editors/FieldList.h"
#include "console/editors/RowFormat.h"
#include "console/lists/Captions.h"
#include "platform/Clock.h"
#include "runtime/Language.h"
#include "translation/SetText.h"

namespace nordkeep {

/// The objects of a set, its .IDCode file.
class ObjectFormat final : public RowFormat {
 public:
    struct Needs {
        const Captions& captions;
        const Language& language;
        const Clock& clock;
        EditorsHost& host;
    };
    explicit ObjectFormat(const Needs& needs) : needs_(needs) {}

    int Caption() const override;
    int EmptyText() const override;
    Text Pattern() const override { return "Settings\\*.IDCode"; }
    Text FileOf(const Text& name) const override;
    std::vector<FileItem> Items(TextView content) const override;
    std::vector<DescribedGroup> Groups() const override;
    std::vector<Column> Columns() const override;
    Values ValuesOf(const FileItem& row) const override;
    FileItem ItemOf(const Values& values, const FileItem& before) const override;
    FileItem TypedItem(const Values& values, const FileItem& before) const override;
    bool Loses(const Values& values) const override;
    Text FitValue(const DescribedKey& key, Text value) const override;
    Text HintOf(const DescribedKey& key, const Text& value) const override;
    Values NewValues() const override;
    std::optional<std::size_t> ObjectNameField() const override { return kObjectName; }
    std::optional<std::size_t> FieldOf(int number) const override;
    std::unique_ptr<RowCheck> NewCheck(const Text& name, TextView content) const override;
    std::vector<DescribedChoice> ChoicesOf(const DescribedKey& key,
                                           const std::vector<FileItem>& items) const override;

 private:
    std::vector<DescribedChoice> MapChoices() const;

    Needs needs_;
};

/// The lines of a set's file as an editor has them.
std::vector<FileItem> ItemsOf(std::vector<SetLine> lines);
/// No value of a row holds what separates the values.
Text WithoutSeparators(Text value);

}  // namespace nordkeep
