#include "console/lists/ObjectForms.h"

#include "platform/Files.h"
#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr const char* kDelivered = "ObjectInfo.Default_desc";

}  // namespace

const ObjectForm& ObjectForms::Load() {
    form_ = ParseObjectForm(needs_.files.ReadTextFile(kObjectFormFile));
    if (!form_.faults.empty())
        form_ = ParseObjectForm(ReadFile(needs_.programFolder.Resolve(kDelivered)).value_or(Text()));
    return form_;
}

Text ObjectForms::CaptionOf(const FormCaption& caption, TextView otherwise) const {
    if (!caption.own.empty()) return caption.own;
    if (caption.number == 0) return Text(otherwise);
    const Text text = needs_.captions(caption.number);
    return text.empty() ? Text(otherwise) : text;
}

std::vector<InformationRow> ObjectForms::RowsOf(TextView information) const {
    std::vector<InformationRow> rows;
    for (const FormGroup& group : form_.groups) {
        for (const FormField& field : group.fields) {
            const Text value = FormValue(information, field.name);
            if (value.empty()) continue;
            rows.push_back({CaptionOf(field.caption, field.name), value, LinkOf(field.kind, value)});
        }
    }
    const Text other = OtherInformation(information, form_);
    for (const TextView line : Lines(other)) {
        const InformationLine split = SplitInformation(line);
        if (TrimBlanksAndTabs(line).empty()) continue;
        rows.push_back({Text(split.name), Text(TrimBlanksAndTabs(split.value))});
    }
    return rows;
}

// The number of a field that is called as another one with something behind ("Contact1Phone") is that one's.
Text ObjectForms::OwnerOf(const FormField& phone, TextView information) const {
    for (const FormGroup& group : form_.groups) {
        for (const FormField& field : group.fields) {
            const bool isOwner = field.kind == FormKind::Words && field.name.size() < phone.name.size() &&
                                 EqualsNoCase(TextView(phone.name).substr(0, field.name.size()), field.name);
            if (Text owner = isOwner ? FormValue(information, field.name) : Text(); !owner.empty())
                return owner;
        }
    }
    return CaptionOf(phone.caption, phone.name);
}

std::vector<PhoneNumber> ObjectForms::PhonesOf(TextView information) const {
    std::vector<PhoneNumber> phones;
    for (const FormGroup& group : form_.groups) {
        for (const FormField& field : group.fields) {
            const Text value = field.kind == FormKind::Phone ? FormValue(information, field.name) : Text();
            if (!LinkOf(field.kind, value).empty()) phones.push_back({OwnerOf(field, information), value});
        }
    }
    const auto isKnown = [&phones](const PhoneNumber& found) {
        return std::ranges::any_of(
            phones, [&found](const PhoneNumber& phone) { return phone.number == found.number; });
    };
    for (PhoneNumber& found : PhoneNumbersIn(information)) {
        if (!isKnown(found)) phones.push_back(std::move(found));
    }
    return phones;
}

}  // namespace nordkeep
