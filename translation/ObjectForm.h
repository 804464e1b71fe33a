#pragma once

#include "runtime/Findings.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// What a field of an object's form holds.
enum class FormKind { Words, Phone, Mail, Address, Date, Choice, Lines };

/// The number of a text of the language file, or a centre's own words.
struct FormCaption {
    int number = 0;
    Text own{};
};

/// One field of the form, kept in an information file as lines "name=value".
struct FormField {
    Text name{};
    FormKind kind = FormKind::Words;
    FormCaption caption{};
    std::vector<Text> choices{};
};

struct FormGroup {
    FormCaption caption{};
    std::vector<FormField> fields{};
};

/// A line of a form's file that says nothing, by the number of the sentence about it.
struct FormFault {
    int line = 0;
    int text = 0;
    Text word{};
};

/// The form of the objects' information, "Settings\ObjectInfo.desc": see docs/translation-files.md.
struct ObjectForm {
    std::vector<FormGroup> groups{};
    std::vector<FormFault> faults{};

    const FormField* Find(TextView name) const;
};

inline constexpr const char* kObjectFormFile = "Settings\\ObjectInfo.desc";

ObjectForm ParseObjectForm(TextView bytes);
/// What is wrong with a form's file.
void CheckObjectForm(TextView bytes, FileFindings& findings);

/// A line of an information file: "name=value", or any other text, which has no name.
struct InformationLine {
    TextView name{};
    TextView value{};  // of a line without a name: all of it
};
InformationLine SplitInformation(TextView line);

/// The value of a field in an information file: that of each of its lines, with CR LF between them.
Text FormValue(TextView content, TextView name);
/// The lines of an information file that belong to no field of the form, with CR LF between them.
Text OtherInformation(TextView content, const ObjectForm& form);
/// The file with another value of a field; all other lines stay as they are. A field that it did not have
/// comes behind those that stand in front of it in the form, or to the end.
Text WithFormValue(TextView content, const ObjectForm& form, TextView name, TextView value);

/// What is wrong with the value of a field, as the number of a sentence; 0 for nothing.
int FaultOfFormValue(const FormField& field, TextView value);

/// Where a value leads, as an address that a desktop opens ("tel:", "geo:", "mailto:"); empty for none.
std::string LinkOf(FormKind kind, TextView value);
/// A telephone number that stands in a text, and the words in front of it on its line.
struct PhoneNumber {
    Text who{};
    Text number{};
};
std::vector<PhoneNumber> PhoneNumbersIn(TextView text);

}  // namespace nordkeep
