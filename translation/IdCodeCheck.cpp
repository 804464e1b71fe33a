#include "runtime/Fields.h"
#include "translation/IdCodeFile.h"
#include "translation/SetCheck.h"
#include "translation/SetRows.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr int kTextClientsSeeFirst = 5262;
constexpr int kTextNoSeparator = 3821;
constexpr int kTextCodeAgain = 3823;
constexpr int kTextNeverFound = 3824;
constexpr int kTextMayNotBeFound = 3825;
constexpr int kTextNoFormat = 3826;
constexpr int kTextDirectiveAgain = 3827;
constexpr int kTextSchedule = 3828;
constexpr int kTextLostOnSave = 3829;
constexpr int kTextBehindEmpty = 3830;
constexpr int kTextNoMap = 3833;
constexpr int kTextOutsideMap = 3834;
constexpr int kTextNoResetObject = 3835;
constexpr int kTextField = 3837;
constexpr int kTextTooManyFields = 3841;

constexpr TextView kCodeExample = "1234/0701234567";
constexpr char kOfCaller = '\n';  // in front of a code in the place of its caller
constexpr int kRowsOfASlice = 2000;
constexpr std::size_t kFields = 11;
constexpr std::size_t kLongestRow = 65535;
constexpr std::array<TextView, 3> kDirectives = {"FORMAT=", "PADDING=", "ZEROTRIM="};

TextView DirectiveOf(TextView row) {
    for (const TextView word : kDirectives) {
        if (EqualsNoCase(row.substr(0, word.size()), word)) return word.substr(0, word.size() - 1);
    }
    return {};
}

/// The line up to its end, which is taken off the rest with it.
TextView TakeLine(TextView& rest) {
    const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const TextView line = rest.substr(0, end);
    const bool isPair = rest.substr(end).starts_with("\r\n");
    rest.remove_prefix(std::min(end + (isPair ? 2 : 1), rest.size()));
    return line;
}

bool IsHexByte(TextView text) {
    return (text.size() == 1 || text.size() == 2) &&
           std::ranges::all_of(text, [](char c) { return HexDigit(c) >= 0; });
}

/// A set of whose telegrams the ID code is all that there is, so that a short code is found too.
bool MayBeShort(Protocol protocol) {
    return ClassOf(protocol) == ProtocolClass::SIA || ClassOf(protocol) == ProtocolClass::Texts ||
           protocol == Protocol::CLID || protocol == Protocol::MAIL;
}

}  // namespace

bool IdCodeCheck::Rows::Next(TextView& row) {
    while (!rest.empty()) {
        ++line;
        row = TrimBlanks(TrimBlanks(TakeLine(rest)).substr(0, kLongestRow));
        if (!row.empty() && row.front() != ';') return true;
    }
    return false;
}

IdCodeCheck::IdCodeCheck(TextView content, SetSurroundings around, FileFindings findings)
    : content_(content), around_(std::move(around)), findings_(std::move(findings)), rows_{content} {
    if (!CheckContent(content, findings_)) pass_ = Pass::Over;
}

bool IdCodeCheck::Continue() {
    TextView row;
    for (int i = 0; i < kRowsOfASlice && pass_ != Pass::Over; ++i) {
        rows_.Next(row) ? TakeRow(row, rows_.line) : BeginNextPass();
    }
    return pass_ != Pass::Over;
}

void IdCodeCheck::CheckAgain(TextView row, int line) {
    const TextView trimmed = TrimBlanks(row);
    if (!trimmed.empty() && trimmed.front() != ';') CheckRow(trimmed, line);
}

void IdCodeCheck::TakeRow(TextView row, int line) {
    if (pass_ == Pass::Directives) TakeDirective(row, line);
    if (pass_ == Pass::Codes) NoteCode(row, line);
    if (pass_ == Pass::Fields) CheckRow(row, line);
}

void IdCodeCheck::BeginNextPass() {
    // As many codes as there are lines of usual length.
    constexpr std::size_t kUsualRow = 48;
    if (pass_ == Pass::Directives) {
        TakeDirectives();
        CheckCount();
        codes_.reserve(content_.size() / kUsualRow);
    }
    pass_ = static_cast<Pass>(static_cast<int>(pass_) + 1);
    rows_ = {content_};
}

void IdCodeCheck::TakeDirective(TextView row, int line) {
    const TextView word = DirectiveOf(row);
    if (word.empty()) {
        if (++objects_ == around_.mostAtClients + 1) firstUntoldLine_ = line;
    } else if (directiveLines_.try_emplace(Text(word), line).second) {
        directives_.append(row).append("\n");
    }
}

void IdCodeCheck::TakeDirectives() {
    const IdCodeFile file = ReadIdCodeFile(directives_);
    format_ = file.format;
    zeroTrim_ = file.zeroTrim;
    if (objects_ == 0 || format_.m_IdCode_Format_Length > 0) return;
    const auto known = directiveLines_.find("FORMAT");
    findings_.Error(known == directiveLines_.end() ? 0 : known->second, kTextNoFormat);
}

void IdCodeCheck::CheckCount() {
    if (around_.mostAtClients == 0 || objects_ <= around_.mostAtClients) return;
    findings_.Warning(firstUntoldLine_, kTextClientsSeeFirst,
                      {std::to_string(objects_), std::to_string(around_.mostAtClients)});
}

void IdCodeCheck::NoteCode(TextView row, int line) {
    if (!DirectiveOf(row).empty()) return;
    const TextView code = TrimBlanks(RowFields<1>(row)[0]);
    codes_.try_emplace(KeyOf(code), line);
    // A reset code names an object whatever number that calls from.
    if (const std::size_t slash = code.find('/'); slash != TextView::npos)
        codes_.try_emplace(kOfCaller + KeyOf(code.substr(0, slash)), line);
}

bool IdCodeCheck::IsTrimmed() const {
    return zeroTrim_ ? *zeroTrim_ != 0 : around_.isZeroTrimmed;
}

/// The whole of the first field, upper case: code, and the caller's number behind a "/".
Text IdCodeCheck::KeyOf(TextView code) const {
    const Text upper = UpperCase(code);
    const std::size_t slash = std::min(upper.find('/'), upper.size());
    return Text(ZeroTrimCode(TextView(upper).substr(0, slash), IsTrimmed())) + upper.substr(slash);
}

void IdCodeCheck::CheckRow(TextView row, int line) {
    if (const TextView word = DirectiveOf(row); !word.empty()) {
        const auto first = directiveLines_.find(Text(word));
        if (first != directiveLines_.end() && first->second != line)
            findings_.Error(line, kTextDirectiveAgain, {word, std::to_string(first->second)});
        return;
    }
    if (row.find(';') == TextView::npos) return findings_.Error(line, kTextNoSeparator, {row});
    const auto fields = RowFields<kFields + 1>(row);
    const auto at = [&](int number) {
        findings_.AtField(number);
        return TrimBlanks(fields[static_cast<std::size_t>(number) - 1]);
    };
    CheckCode(at(1), line);
    CheckSchedule(1, at(3), line);
    CheckMap(at(4), line);
    CheckExport(at(5), at(6), line);
    CheckFlag(8, at(8), line);
    CheckFlag(9, at(9), line);
    CheckReset(at(10), line);
    CheckSchedule(2, at(11), line);
    findings_.AtField(0);
    if (!TrimBlanks(fields[kFields]).empty())
        findings_.Warning(line, kTextTooManyFields, {std::to_string(kFields)});
}

void IdCodeCheck::CheckCode(TextView code, int line) {
    const TextView idCode = code.substr(0, code.find('/'));
    if (idCode.empty()) return findings_.Error(line, kTextField, {"1", code, kCodeExample});
    const auto first = codes_.find(KeyOf(code));
    if (first != codes_.end() && first->second != line)
        findings_.Error(line, kTextCodeAgain, {code, std::to_string(first->second)});
    CheckLength(idCode, line);
    if (code.size() > idCode.size()) CheckCaller(code, line);
}

void IdCodeCheck::CheckLength(TextView code, int line) {
    const auto cut = static_cast<std::size_t>(std::max(format_.m_IdCode_Format_Length, 0));
    const TextView compared = ZeroTrimCode(code, IsTrimmed());
    if (cut == 0 || code.size() == cut) return;
    const Text has = std::to_string(code.size());
    const Text wanted = std::to_string(cut);
    const bool isHelped = IsTrimmed() || format_.m_Padding_Count > 0;
    const int behind = format_.m_IdCode_Format_StartPos + static_cast<int>(code.size());
    const bool goesOn =
        (format_.m_TypeCode_Format_Length > 0 && format_.m_TypeCode_Format_StartPos >= behind) ||
        (format_.m_Prio_Format_Length > 0 && format_.m_Prio_Format_StartPos >= behind);
    if (compared.size() > cut || (!isHelped && (code.size() > cut || goesOn)))
        return findings_.Error(line, kTextNeverFound, {code, has, wanted});
    if (!goesOn && std::ranges::any_of(around_.protocols, MayBeShort)) return;
    findings_.Warning(line, kTextMayNotBeFound, {code, has, wanted});
}

void IdCodeCheck::CheckCaller(TextView field, int line) {
    TextView caller = field.substr(field.find('/') + 1);
    if (caller.starts_with('+')) caller.remove_prefix(1);
    if (!IsNumeric(caller)) findings_.Warning(line, kTextField, {"1", field, kCodeExample});
}

void IdCodeCheck::CheckSchedule(int test, TextView schedule, int line) {
    const Text number = std::to_string(test);
    switch (FlawOf(schedule)) {
        case ScheduleFlaw::None:
            break;
        case ScheduleFlaw::Unreadable:
            findings_.Error(line, kTextSchedule, {number, schedule});
            break;
        case ScheduleFlaw::BehindEmpty:
            findings_.Error(line, kTextBehindEmpty);
            break;
        case ScheduleFlaw::LostOnSave:
            findings_.Warning(line, kTextLostOnSave, {number, schedule});
            break;
    }
}

void IdCodeCheck::CheckMap(TextView reference, int line) {
    if (reference.empty() || !around_.mapSize) return;
    const Text file(TrimBlanks(GetField(reference, 0, "/")));
    const Text x(TrimBlanksAndTabs(GetField(reference, 1, "/")));
    const Text y(TrimBlanksAndTabs(GetField(reference, 2, "/")));
    if (file.empty() || (!x.empty() && !IsNumeric(x)) || (!y.empty() && !IsNumeric(y)) ||
        x.empty() != y.empty())
        return findings_.Error(line, kTextField, {"4", reference, "Plan.png/120/455"});
    const std::optional<PictureSize> size = around_.mapSize(file);
    if (!size) return findings_.Error(line, kTextNoMap, {file});
    if (x.empty() || size->width < 1) return;
    if (LeadingNumber(x) < size->width && LeadingNumber(y) < size->height) return;
    const Text extent = std::to_string(size->width) + " x " + std::to_string(size->height);
    findings_.Error(line, kTextOutsideMap, {x + "/" + y, file, extent});
}

void IdCodeCheck::CheckExport(TextView code, TextView protocol, int line) {
    if (!protocol.empty() && !IsHexByte(protocol)) findings_.Error(line, kTextField, {"6", protocol, "30"});
    // Nothing is sent without the protocol, and with it alone nothing that says who.
    if (!code.empty() && protocol.empty()) findings_.Warning(line, kTextField, {"6", protocol, "30"});
    if (code.empty() && !protocol.empty()) findings_.Warning(line, kTextField, {"5", code, "10000199"});
}

void IdCodeCheck::CheckFlag(int field, TextView value, int line) {
    if (value.empty() || value == "0" || value == "1") return;
    findings_.Warning(line, kTextField, {std::to_string(field), value, "1"});
}

void IdCodeCheck::CheckReset(TextView code, int line) {
    if (code.empty()) return;
    if (codes_.contains(KeyOf(code)) || codes_.contains(kOfCaller + KeyOf(code))) return;
    findings_.Warning(line, kTextNoResetObject, {code});
}

}  // namespace nordkeep
