#pragma once

#include "console/lists/Captions.h"
#include "platform/FileTree.h"
#include "runtime/DataFiles.h"
#include "translation/ObjectForm.h"

namespace nordkeep {

/// One line of an object's information as it is read in two columns.
struct InformationRow {
    Text caption{};  // empty for a text of its own
    Text value{};
    std::string link{};  // where the value leads; see LinkOf
    friend bool operator==(const InformationRow&, const InformationRow&) = default;
};

/// The form of the objects' information as this centre has it; on a client that of its server.
class ObjectForms {
 public:
    struct Needs {
        DataFiles& files;
        const FileTree& programFolder;
        const Captions& captions;
    };
    explicit ObjectForms(const Needs& needs) : needs_(needs) {}

    /// Reads the form anew. A centre's own that is missing or damaged gives way to the delivered one.
    const ObjectForm& Load();
    /// As it was last read.
    const ObjectForm& Known() const { return form_; }
    Text CaptionOf(const FormCaption& caption, TextView otherwise) const;

    /// The fields that say something in the order of the form, then what else the text has.
    std::vector<InformationRow> RowsOf(TextView information) const;
    /// The telephone numbers in it, with the people to whom they belong.
    std::vector<PhoneNumber> PhonesOf(TextView information) const;

 private:
    Text OwnerOf(const FormField& phone, TextView information) const;

    Needs needs_;
    ObjectForm form_{};
};

}  // namespace nordkeep
