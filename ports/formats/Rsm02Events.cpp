#include "ports/formats/Rsm02Events.h"

#include "runtime/Fields.h"
#include "runtime/Protocol.h"

#include <algorithm>
#include <array>

namespace nordkeep {
namespace {

constexpr char kOwnClass = '0';
constexpr char kMultiComClass = 'n';
constexpr char kSmsClass = 'x';
constexpr TextView kNoCode = "B9999900";
constexpr std::array<TextView, 2> kSystemCodes = {"A9999994", "A9999995"};

/// Class letters with the language texts that make their label.
struct ClassRow {
    TextView letters;
    std::array<int, 2> labelTexts;
    Protocol protocol;
};

constexpr std::array<ClassRow, 32> kClasses = {
    {{"0", {}, Protocol::Nordkeep},          {"1", {2200}, Protocol::Robofon},
     {"2", {2201}, Protocol::Ademco},        {"3", {2202}, Protocol::Franklin},
     {"4", {2203}, Protocol::Franklin},      {"5", {2204}, Protocol::ContactID},
     {"6", {2205}, Protocol::LA100},         {"7", {2220}, Protocol::Antenna},
     {"8", {2207}, Protocol::L400Speak},     {"9", {2208}, Protocol::Futura},
     {"Aa", {2209}, Protocol::P100},         {"Bb", {2210}, Protocol::Ericsson},
     {"Cc", {2211}, Protocol::SIA},          {"Dd", {2212}, Protocol::L400},
     {"Ee", {2216}, Protocol::STT},          {"Ff", {2221}, Protocol::Antenna},
     {"Gg", {2222}, Protocol::Antenna},      {"Hh", {2219}, Protocol::TMA2},
     {"Ii", {2218}, Protocol::Scancom},      {"Jj", {2217}, Protocol::L400RBM},
     {"Kk", {2215}, Protocol::Electrolux},   {"Ll", {2213}, Protocol::Robofon},
     {"M", {2214}, Protocol::CLID},          {"m", {2231}, Protocol::SIA},
     {"N", {2224}, Protocol::AdemcoExpress}, {"P", {2227}, Protocol::TM2TAM2},
     {"RrSs", {2230}, Protocol::HEP100},     {"Tt", {2231}, Protocol::HEP100Raw},
     {"q", {2200, 2236}, Protocol::Robofon}, {"p", {2204, 2236}, Protocol::ContactID},
     {"o", {2211, 2236}, Protocol::SIA},     {"x", {2237}, Protocol::SMS}}};

const ClassRow* RowOf(char classCode) {
    const auto* row = std::ranges::find_if(
        kClasses, [&](const ClassRow& r) { return r.letters.find(classCode) != TextView::npos; });
    return row == kClasses.end() ? nullptr : row;
}

/// A text without the caller's number behind it.
struct TextAndCaller {
    TextView text{};
    Text caller{};
};

/// The number stands behind "[B"; behind "[A" and "[D" the caller hides it.
TextAndCaller SplitCaller(TextView text, std::size_t searchFrom, const Text& hiddenNumber) {
    std::size_t mark = text.find('[', searchFrom);
    const auto letterBehind = [&] { return UpperCase(text.substr(mark + 1, 1)); };
    while (mark != TextView::npos && letterBehind() != "A" && letterBehind() != "B" &&
           letterBehind() != "D") {
        mark = text.find('[', mark + 1);
    }
    if (mark == TextView::npos) return {text};
    return {text.substr(0, mark), letterBehind() == "B" ? Text(text.substr(mark + 2)) : hiddenNumber};
}

Text WithoutControls(TextView text) {
    Text kept;
    std::ranges::copy_if(text, std::back_inserter(kept),
                         [](char c) { return static_cast<unsigned char>(c) >= 31; });
    return kept;
}

/// A pair of carriage return and line feed becomes this character; single ones become blanks.
Text WithoutLineEnds(TextView text, char pairBecomes) {
    Text joined = ReplaceAll(text, "\r\n", Text(1, pairBecomes));
    std::ranges::replace(joined, '\r', ' ');
    std::ranges::replace(joined, '\n', ' ');
    return joined;
}

class Decoding {
 public:
    Decoding(const Rsm02Telegram& telegram, const Rsm02Line& line, OleDate now)
        : telegram_(telegram), line_(line), settings_(line.settings), now_(now) {
        TextAndCaller parts = SplitCaller(telegram.text, DocumentEnd(), settings_.hiddenNumber);
        text_ = parts.text;
        common_ = {.AlarmTime = telegram.time,
                   .Originator = std::move(parts.caller),
                   .LineCardNumber = telegram.receiverLine,
                   .MessageIsFollowedBySpeech = telegram.isFollowedBySpeech,
                   .RawAlarmCode = WithoutControls(telegram.text)};
    }

    std::vector<DecodedEvent> Run() const {
        if (telegram_.classCode == kMultiComClass) {
            return DecodeMultiCom({telegram_.text, Text(text_), common_, now_}, settings_.multiCom,
                                  settings_.sia);
        }
        const ClassRow* row = RowOf(telegram_.classCode);
        if (row == nullptr) return {};
        const bool hasBlocks = row->protocol == Protocol::SIA && !text_.empty() && text_ != kNoCode;
        if (hasBlocks) return SiaEvents();
        return {telegram_.classCode == kSmsClass ? SmsEvent(*row) : OrdinaryEvent(*row)};
    }

 private:
    /// Where the caller's number is looked for: a document may hold brackets of its own.
    std::size_t DocumentEnd() const {
        if (telegram_.classCode != kMultiComClass) return 0;
        const bool ignoresCase = settings_.multiCom.XmlNamesIgnoreCase;
        const auto document = FindXmlElement(telegram_.text, "AlarmRequest",
                                             ignoresCase ? XmlNames::IgnoreCase : XmlNames::Exact);
        return document ? document->end : 0;
    }

    DecodedEvent NewEvent(const ClassRow& row) const {
        DecodedEvent decoded{.event = common_, .labelTexts = row.labelTexts};
        if (telegram_.classCode == kOwnClass) decoded.event.ProtocolType = kOwnProtocol;
        decoded.event.TranslationNumberToUse = row.protocol;
        return decoded;
    }

    DecodedEvent OrdinaryEvent(const ClassRow& row) const {
        DecodedEvent decoded = NewEvent(row);
        Text& code = decoded.event.DefaultAlarmCode;
        code = CleanText(text_, settings_.cleaning);
        if (code == kNoCode) code.clear();
        if (std::ranges::count(kSystemCodes, code) > 0) {
            decoded.event.ExtraText = settings_.PortDescription + " (" + telegram_.receiverLine + ")";
        }
        const Text& caller = common_.Originator;
        const bool isCall = code.empty() && !caller.empty() && caller != settings_.hiddenNumber;
        if (isCall && row.protocol != Protocol::SIA) MakeCall(decoded, settings_.calls, line_.callers);
        return decoded;
    }

    DecodedEvent SmsEvent(const ClassRow& row) const {
        DecodedEvent decoded = NewEvent(row);
        const char pairBecomes = CharacterOf(settings_.SMSCrLfReplaceCharacter, '\t');
        const Text text = CleanText(WithoutLineEnds(text_, pairBecomes), settings_.cleaning);
        const std::size_t blank = text.find(' ');
        const bool hasCode = settings_.ParseNumericIDCodeFieldUsingSpace && blank != Text::npos &&
                             IsNumeric(TextView(text).substr(0, blank));
        if (hasCode) decoded.event.DefaultAlarmCode = text.substr(0, blank);
        decoded.event.ExtraText = text.substr(hasCode ? blank + 1 : 0);
        return decoded;
    }

    std::vector<DecodedEvent> SiaEvents() const {
        return DecodeSIABlock({.text = Text(text_),
                               .form = SiaForm::Lengths,
                               .eventTime = telegram_.time,
                               .sender = common_.Originator,
                               .receiverLine = telegram_.receiverLine,
                               .isFollowedBySpeech = telegram_.isFollowedBySpeech},
                              settings_.sia, now_);
    }

    const Rsm02Telegram& telegram_;
    const Rsm02Line& line_;
    const Rsm02Settings& settings_;
    OleDate now_;
    TextView text_{};  // without the caller's number
    IncomingEvent common_{};
};

}  // namespace

std::vector<DecodedEvent> DecodeRsm02Text(const Rsm02Telegram& telegram, const Rsm02Line& line, OleDate now) {
    return Decoding(telegram, line, now).Run();
}

}  // namespace nordkeep
