#pragma once

#include "console/setup/FieldCheck.h"

namespace nordkeep {

/// One key in a dialog.
struct SetupField {
    DescribedKey key{};
    Text caption{};
    Text help{};
    Text stored{};  // what the file says, or the default
    Text typed{};
    Text fault{};             // what is wrong with what is typed
    bool isFaultOld = false;  // the file had it before
    bool isReadOnly = false;  // the server's file is not at hand, or the right is missing
    bool IsChanged() const { return typed != stored; }
    bool IsDefault() const { return typed == key.byDefault; }
};

/// Fields under one heading; numbers of Fields().
struct SetupGroup {
    Text caption{};
    std::vector<std::size_t> fields{};
};

/// Fields as a page shows and edits them, whichever file they belong to.
class FieldForm {
 public:
    virtual ~FieldForm() = default;
    virtual const std::vector<SetupField>& Fields() const = 0;
    /// What is to be shown.
    virtual const std::vector<SetupGroup>& Shown() const = 0;
    /// Changes when other fields are to be shown, or other values than were typed.
    virtual unsigned Generation() const = 0;
    virtual void Type(std::size_t field, Text value) = 0;
    virtual void UseDefault(std::size_t field) = 0;
    /// What can be chosen.
    virtual std::vector<DescribedChoice> ChoicesOf(const SetupField& field) const = 0;
    virtual void Play(std::size_t field) = 0;
    /// The bytes of the picture that a value names; empty when there is none.
    virtual Text PictureOf(const Text&) const { return {}; }
};

/// The words of a text: the centre's own, else those of the language file, else `otherwise`.
Text WordsOf(const Wording& wording, const Captions& captions, TextView otherwise);
/// When the value of a field counts once it is saved, in a sentence.
Text AppliesText(const SetupField& field, const Captions& captions);

}  // namespace nordkeep
