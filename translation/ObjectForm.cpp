#include "translation/ObjectForm.h"

#include "runtime/Fields.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextNoKind = 5111;
constexpr int kTextNoLine = 5112;
constexpr int kTextFieldAgain = 5113;
constexpr int kTextNoChoices = 5114;
constexpr int kTextNoCaption = 5115;
constexpr int kTextNoFields = 5116;
constexpr int kTextBadName = 5117;
constexpr int kHighestText = 99999;
constexpr std::size_t kMostFields = 200;
constexpr TextView kLineEnd = "\r\n";

struct KindWord {
    const char* word;
    FormKind kind;
};
constexpr std::array kKinds = {KindWord{"text", FormKind::Words}, KindWord{"phone", FormKind::Phone},
                               KindWord{"mail", FormKind::Mail},  KindWord{"address", FormKind::Address},
                               KindWord{"date", FormKind::Date},  KindWord{"choice", FormKind::Choice},
                               KindWord{"lines", FormKind::Lines}};

/// Takes the text up to the separator off the front; all of it when there is none.
TextView TakeField(TextView& line, char separator) {
    const std::size_t end = line.find(separator);
    const TextView field = line.substr(0, end);
    line.remove_prefix(end == TextView::npos ? line.size() : end + 1);
    return TrimBlanksAndTabs(field);
}

bool TakeCaption(TextView text, FormCaption& caption) {
    if (text.size() > 2 && text.front() == '"' && text.back() == '"') {
        caption.own = Text(text.substr(1, text.size() - 2));
        return true;
    }
    caption.number = LeadingInt32(text);
    return IsNumeric(text) && caption.number > 0 && caption.number <= kHighestText;
}

class FormReader {
 public:
    ObjectForm Read(TextView bytes) {
        for (const TextView line : Lines(bytes)) {
            ++line_;
            const TextView text = TrimBlanksAndTabs(line);
            if (!text.empty() && text.front() != ';') TakeLine(text);
        }
        if (fields_ == 0 && made_.faults.empty()) made_.faults.push_back({0, kTextNoFields, {}});
        return std::move(made_);
    }

 private:
    void Fault(int text, TextView word) { made_.faults.push_back({line_, text, Text(word)}); }

    void TakeLine(TextView line) {
        const TextView all = line;
        const TextView word = TakeField(line, ';');
        if (EqualsNoCase(word, "Group")) return TakeGroup(TrimBlanksAndTabs(line));
        if (EqualsNoCase(word, "Field")) return TakeFormField(line);
        Fault(kTextNoLine, all);
    }
    void TakeGroup(TextView caption) {
        made_.groups.emplace_back();
        if (!TakeCaption(caption, made_.groups.back().caption)) Fault(kTextNoCaption, caption);
    }
    void TakeFormField(TextView line) {
        FormField field{.name = Text(TakeField(line, ';'))};
        const TextView kind = TakeField(line, ';');
        const TextView caption = TakeField(line, ';');
        if (field.name.empty() || field.name.find('=') != Text::npos) return Fault(kTextBadName, field.name);
        if (made_.Find(field.name)) return Fault(kTextFieldAgain, field.name);
        const auto known = std::ranges::find_if(
            kKinds, [kind](const KindWord& row) { return EqualsNoCase(row.word, kind); });
        if (known == kKinds.end()) return Fault(kTextNoKind, kind);
        field.kind = known->kind;
        if (!TakeCaption(caption, field.caption)) return Fault(kTextNoCaption, caption);
        while (field.kind == FormKind::Choice && !line.empty()) {
            const TextView choice = TakeField(line, ',');
            if (!choice.empty()) field.choices.emplace_back(choice);
        }
        if (field.kind == FormKind::Choice && field.choices.empty()) return Fault(kTextNoChoices, field.name);
        if (made_.groups.empty()) made_.groups.emplace_back();
        if (++fields_ > kMostFields) return Fault(kTextNoLine, field.name);
        made_.groups.back().fields.push_back(std::move(field));
    }

    ObjectForm made_{};
    int line_ = 0;
    std::size_t fields_ = 0;
};

/// The lines of a value; none for an empty one.
std::vector<TextView> LinesOfValue(TextView value) {
    return value.empty() ? std::vector<TextView>() : Lines(value);
}

/// Where a field that the lines do not have belongs among them.
std::size_t PlaceFor(const std::vector<Text>& lines, const ObjectForm& form, TextView name) {
    std::vector<TextView> before;
    for (const FormGroup& group : form.groups) {
        for (const FormField& field : group.fields) {
            if (EqualsNoCase(field.name, name)) {
                for (std::size_t place = lines.size(); place > 0; --place) {
                    const TextView here = SplitInformation(lines[place - 1]).name;
                    if (std::ranges::any_of(before, [here](TextView one) { return EqualsNoCase(one, here); }))
                        return place;
                }
                return lines.size();
            }
            before.push_back(field.name);
        }
    }
    return lines.size();
}

}  // namespace

const FormField* ObjectForm::Find(TextView name) const {
    for (const FormGroup& group : groups) {
        for (const FormField& field : group.fields) {
            if (EqualsNoCase(field.name, name)) return &field;
        }
    }
    return nullptr;
}

ObjectForm ParseObjectForm(TextView bytes) {
    return FormReader().Read(bytes);
}

void CheckObjectForm(TextView bytes, FileFindings& findings) {
    std::vector<TextView> kinds;
    for (const KindWord& row : kKinds) kinds.push_back(row.word);
    for (const FormFault& fault : ParseObjectForm(bytes).faults) {
        findings.Error(fault.line, fault.text, {fault.word});
        if (fault.text != kTextNoKind) continue;
        const TextView nearest = NearestWord(fault.word, kinds);
        if (!nearest.empty()) findings.All().SuggestForLast(nearest);
    }
}

// --- Information files

InformationLine SplitInformation(TextView line) {
    const std::size_t equals = line.find('=');
    const TextView name = TrimBlanksAndTabs(line.substr(0, equals == TextView::npos ? 0 : equals));
    if (name.empty()) return {.value = line};
    return {name, line.substr(equals + 1)};
}

Text FormValue(TextView content, TextView name) {
    Text value;
    bool isFirst = true;
    for (const TextView line : Lines(content)) {
        const InformationLine split = SplitInformation(line);
        if (split.name.empty() || !EqualsNoCase(split.name, name)) continue;
        if (!isFirst) value += kLineEnd;
        value += TrimBlanksAndTabs(split.value);
        isFirst = false;
    }
    return value;
}

Text OtherInformation(TextView content, const ObjectForm& form) {
    Text other;
    for (const TextView line : Lines(content)) {
        const TextView name = SplitInformation(line).name;
        if (!name.empty() && form.Find(name)) continue;
        if (!other.empty()) other += kLineEnd;
        other += line;
    }
    return other;
}

Text WithFormValue(TextView content, const ObjectForm& form, TextView name, TextView value) {
    std::vector<Text> lines;
    std::vector<TextView> wanted = LinesOfValue(value);
    std::size_t taken = 0;
    std::size_t place = 0;  // behind the last line of the field
    for (const TextView line : Lines(content)) {
        const InformationLine split = SplitInformation(line);
        if (split.name.empty() || !EqualsNoCase(split.name, name)) {
            lines.emplace_back(line);
            continue;
        }
        if (taken == wanted.size()) continue;
        const TextView next = wanted[taken++];
        const std::size_t front = line.size() - split.value.size();
        const bool isSame = TrimBlanksAndTabs(split.value) == TrimBlanksAndTabs(next);
        lines.push_back(isSame ? Text(line) : Text(line.substr(0, front)).append(next));
        place = lines.size();
    }
    if (place == 0) place = PlaceFor(lines, form, name);
    for (; taken < wanted.size(); ++taken, ++place) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place),
                     Text(name).append("=").append(wanted[taken]));
    }
    Text made;
    for (std::size_t number = 0; number < lines.size(); ++number)
        made.append(number == 0 ? TextView() : kLineEnd).append(lines[number]);
    return made;
}

}  // namespace nordkeep
