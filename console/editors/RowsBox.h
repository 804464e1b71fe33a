#pragma once

#include "console/editors/EditorsHost.h"
#include "console/editors/RowSteps.h"
#include "console/editors/RowsTable.h"
#include "console/lists/OperatorState.h"
#include "console/lists/SharedText.h"
#include "console/setup/FieldForm.h"
#include "console/setup/SetupSection.h"
#include "platform/Dialogs.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace nordkeep {

/// What is known of a row beside its file.
class RowFacts {
 public:
    virtual ~RowFacts() = default;
    /// Lines for a person; empty when there is nothing to say.
    virtual Text FactsOf(const Text& file, const RowFormat::Values& row) = 0;
    /// What would happen with a telegram of this set, by what has been taken in. Nothing is stored.
    virtual Text Try(const Text& set, const Text& telegram) = 0;
};

/// The editor of a file that consists of rows: a table of all of them, and the fields of one in front. Works
/// on the files of this copy, or on a client on those of its server. What is typed is written when it is
/// applied; rows that nobody has touched are written as they were.
class RowsBox : public FieldForm, public SetupSection {
 public:
    struct Needs {
        DataFiles& files;
        Dialogs& dialogs;
        const Captions& captions;
        const OperatorState& state;
        EditorsHost& host;
        RowFacts* facts = nullptr;
        bool isOnServerOnly = false;  // a client may not see the file
    };
    RowsBox(const Needs& needs, const RowFormat& format);

    void SetView(WindowView& view) { view_ = &view; }

    /// The files that can be chosen, by their names; one without a name is the only one.
    const std::vector<Text>& Files() const { return names_; }
    std::optional<std::size_t> CurrentFile() const { return file_; }
    /// Asks first when the present one has not been applied.
    void ChooseFile(std::size_t number);
    /// Shows a file, and of its rows the one with this key.
    void ShowRow(const Text& name, const Text& key);
    /// The files have become others.
    void RenewFiles();
    /// A file has another name. What has been typed and not applied stays, and goes to where it is now.
    void FollowRename(const Text& from, const Text& to);

    RowsTable& Table() { return table_; }
    void Search(const Text& words);
    const Text& SearchedFor() const { return words_; }
    /// The key of the row in front in the table; empty without one.
    Text Current() const { return row_ ? std::to_string(items_[*row_].id) : Text(); }
    void Select(const Text& key);
    void Add();
    void Copy();
    /// Removes rows by their keys in the table.
    void Remove(const std::vector<Text>& keys);
    bool MayUndo() const { return steps_.CanUndo() && MayEdit(); }
    void Undo();
    /// The file can be written here.
    bool MayEdit() const;
    bool HasFile() const { return file_.has_value(); }
    /// Opens the file as a text.
    void EditAsText();
    bool HasInformation() const { return format_.ObjectNameField().has_value(); }
    /// Opens what is known of the object in front.
    void EditInformation();
    /// What is to be done about the object in front for single types and event codes.
    std::vector<CodeText> CodeTexts();
    /// Opens one of them by its code.
    void EditCodeText(const Text& code);
    /// Works on the check of the file; true when what it knows has changed.
    bool Tick();

    /// What is wrong with the row in front and belongs to none of its fields.
    const Text& RowFault() const { return rowFault_; }
    /// What is known of the row beside the file.
    const Text& Facts() const { return factsText_; }
    int EmptyText() const { return format_.EmptyText(); }
    int OwnerCaption() const { return format_.OwnerCaption(); }
    bool HasFacts() const { return needs_.facts != nullptr; }
    /// What would happen with a telegram.
    Text Try(const Text& telegram) const;
    bool HasCsv() const { return format_.HasCsv(); }
    bool HasManyFiles() const { return format_.Pattern().find('*') != Text::npos; }

    /// All rows as CSV in UTF-8, with a line of the fields' names.
    std::string Export() const;
    /// What an import would do.
    struct ImportPlan {
        std::size_t added = 0;
        std::size_t changed = 0;
        std::size_t same = 0;
        std::size_t notInFile = 0;    // rows that the import does not name; they stay
        std::vector<Text> unknown{};  // columns that are no field
        Text fault{};                 // why nothing can be imported
        std::vector<Text> preview{};  // the first changes, for a person
        RowStep step{};
    };
    ImportPlan PlanImport(std::string_view utf8) const;
    /// Does what the plan of the same text says, as one step that can be taken back.
    void Import(std::string_view utf8);
    /// Writes the rows to a file of this machine, and tells how that went.
    void ExportTo(const NativePath& path);
    /// None, and told, when the file cannot be read.
    std::optional<std::string> TextToImport(const NativePath& path);
    /// What a plan means, for a person.
    Text SummaryOf(const ImportPlan& plan) const;

    // --- SetupSection
    Text Caption() const override { return needs_.captions(format_.Caption()); }
    bool IsThere() const override;
    void Load(const SetupDescriptor& descriptor) override;
    void Enter() override;
    int Faults() const override { return static_cast<int>(findings_.size()); }
    bool IsChanged() const override { return steps_.IsChanged(); }
    bool MayApply() const override { return !isBusy_ && MayEdit() && IsChanged(); }
    void Apply() override;
    void Revert() override;
    bool MayLeave() override;
    const WindowNotice& Notice() const override { return notice_; }

    // --- FieldForm
    const std::vector<SetupField>& Fields() const override { return fields_; }
    const std::vector<SetupGroup>& Shown() const override { return shown_; }
    unsigned Generation() const override { return generation_; }
    void Type(std::size_t field, Text value) override;
    void UseDefault(std::size_t) override {}
    std::vector<DescribedChoice> ChoicesOf(const SetupField& field) const override;
    void Play(std::size_t) override {}
    Text PictureOf(const Text& reference) const override { return needs_.host.MapOf(reference); }

 private:
    class Importer;

    void ListFiles();
    void Open();
    void MakeFields();
    void TakeRow(std::optional<std::size_t> row);
    void CheckRow();
    void BeginCheck();
    void AddRow(const RowFormat::Values& values);
    FileItem ItemOfTyped(const FileItem& before) const;
    void MoveRow(const FileItem& after);
    RowStep Inserted(const std::vector<FileItem>& items, const FileItem& row) const;
    void Do(RowStep step, int rowInFront);
    void ShowRows(const std::function<void()>& change, int rowInFront);
    std::optional<std::size_t> PlaceOf(int id) const;
    RowFormat::Values Typed() const;
    int LineOf(std::size_t place) const { return static_cast<int>(place) + 1; }
    bool MaySaveFaults(const Text& content);
    std::vector<Finding> FindingsNow(const Text& content);
    bool MayOverwrite();
    void Write(const Text& content);
    void Say(int caption, std::initializer_list<TextView> values, bool isGood);
    const Text& Name() const { return names_[*file_]; }

    Needs needs_;
    const RowFormat& format_;
    NoWindowView noView_{};
    WindowView* view_ = &noView_;
    SharedText text_;
    std::vector<Text> names_{};
    std::optional<std::size_t> file_{};
    std::vector<FileItem> items_{};
    RowSteps steps_{};
    RowsTable table_;
    Text words_{};
    std::optional<std::size_t> row_{};  // place in items_
    std::vector<SetupField> fields_{};
    std::vector<SetupGroup> shown_{};
    Text rowFault_{};
    Text factsText_{};
    std::set<int> losing_{};  // rows that lose something of what was typed
    Text checked_{};          // what the check works on
    std::unique_ptr<RowCheck> check_{};
    bool isChecking_ = false;
    bool isRead_ = false;  // the file in front
    std::vector<Finding> findings_{};
    std::vector<Finding> findingsOfFile_{};  // as it was loaded
    bool isFileChecked_ = false;
    std::set<int> typedSinceCheck_{};  // rows that have changed in their places since the check began
    bool isKeyTyped_ = false;          // one of them got another key, which other rows may name
    WindowNotice notice_{};
    unsigned generation_ = 0;
    int lastId_ = 0;
    bool isBusy_ = false;
};

}  // namespace nordkeep
