#include "ports/formats/SiaDecoding.h"

#include "ports/formats/SiaBlocks.h"
#include "ports/formats/SiaData.h"
#include "ports/formats/TextCleaning.h"
#include "runtime/Protocol.h"

#include <array>

namespace nordkeep {
namespace {

constexpr int kTextSia = 2211;
constexpr TextView kBlockTypes = "0123456789CENOP@?#&AXLVvI";
constexpr const char* kInvalidBlockType = "Invalid SIA block type!";
constexpr std::size_t kAccountWidth = 6;
// Panels send some hundred bytes; every event of a message carries all of it.
constexpr std::size_t kLongestMessage = 16384;

const std::array kRows = {
    kSiaErrorRow<SiaSettings>,
    SettingRow<SiaSettings>{"General", "SIAAsciiBlockAsSeparateEvent", SettingScope::Centre,
                            &SiaSettings::SIAAsciiBlockAsSeparateEvent},
    SettingRow<SiaSettings>{"General", "WaitForMLR2SIAASCIIBlockTimeout", SettingScope::Centre,
                            &SiaSettings::WaitForMLR2SIAASCIIBlockTimeout},
};

Text Account(const Text& data) {
    const std::size_t missing = data.size() < kAccountWidth ? kAccountWidth - data.size() : 0;
    return Text(missing, '0') + data;
}

Text Joined(const std::vector<Text>& items) {
    Text joined;
    for (const Text& item : items) joined += (joined.empty() ? "" : ",") + item;
    return joined;
}

/// The decoding of one message.
class Decoding {
 public:
    Decoding(const SiaMessage& message, const SiaSettings& settings, OleDate now)
        : message_(message), settings_(settings), now_(now) {}

    std::vector<DecodedEvent> Run() {
        if (message_.text.size() > kLongestMessage) {
            raw_ = message_.text.substr(0, kLongestMessage);
            AddDecodeError({}, kInvalidSiaFormat);
            return std::move(decoded_);
        }
        for (const SiaBlock& block : SplitSiaBlocks(message_.text, message_.form)) {
            if (events_.size() + decoded_.size() >= kMostSiaEvents) {
                AddDecodeError({}, kInvalidSiaFormat);
                break;
            }
            AddRaw(block);
            TakeBlock(block);
        }
        for (const cSIAEvent& event : events_) AddEvent(event);
        return std::move(decoded_);
    }

 private:
    void AddRaw(const SiaBlock& block) {
        if (block.type == 'A' && !events_.empty()) raw_ += "::";
        raw_ += "[" + std::to_string(block.data.size()) + "]" + block.type + block.data;
        if (block.hasBackslashBehind) raw_ += '\\';
    }

    void TakeBlock(const SiaBlock& block) {
        if (block.type == 0 || kBlockTypes.find(block.type) == TextView::npos) {
            AddDecodeError(block.type == 0 ? Text() : Text(1, block.type), kInvalidBlockType);
        } else if (block.type == '#') {
            account_ = Account(block.data);
        } else if (block.type == 'A') {
            TakeText(Dos8ToLatin1(block.data));
        } else {
            const cSIAEvent start{.m_AccountId = account_, .m_BlockType = block.type};
            for (cSIAEvent& event : ParseSiaData(start, block.data, message_.form)) {
                events_.push_back(std::move(event));
            }
        }
    }

    /// An event of its own, or more text for the event in front of it.
    void TakeText(Text text) {
        if (settings_.SIAAsciiBlockAsSeparateEvent) {
            events_.push_back({.m_AccountId = account_, .m_BlockType = 'A', .m_Text = std::move(text)});
            return;
        }
        if (events_.empty() || events_.back().m_AccountId != account_) return;
        Text& merged = events_.back().m_Text;
        if (!merged.empty()) merged += ' ';
        merged += text;
    }

    /// What every event of the message has in common.
    IncomingEvent Common() const {
        return {.Originator = message_.sender,
                .TranslationNumberToUse = Protocol::SIA,
                .LineCardNumber = message_.receiverLine,
                .MessageIsFollowedBySpeech = message_.isFollowedBySpeech,
                .RawAlarmCode = raw_,
                .URL = message_.link};
    }

    void AddDecodeError(const Text& blockType, const char* error) {
        IncomingEvent& event = decoded_.emplace_back(DecodedEvent{.event = Common()}).event;
        event.AlarmTime = now_;
        event.ProtocolType = kOwnProtocol;
        event.DefaultType = settings_.SIADecodeErrorType;
        event.SIABlockType = blockType;
        event.SIASuffixText = error;
    }

    void AddEvent(const cSIAEvent& sia) {
        DecodedEvent& decoded = decoded_.emplace_back(DecodedEvent{.event = Common()});
        decoded.labelTexts = {kTextSia};
        IncomingEvent& event = decoded.event;
        event.AlarmTime = message_.eventTime;
        event.DefaultAlarmCode = sia.code;
        event.ExtraText = sia.m_Text;
        event.ObjectID = sia.m_AccountId;
        event.SIAModifier = Joined(sia.modifiers);
        event.SIABlockType = Text(1, sia.m_BlockType);
        event.SIAPrefixText = sia.zone;
        event.SIASuffixText = sia.error;
    }

    const SiaMessage& message_;
    const SiaSettings& settings_;
    OleDate now_;
    Text raw_{};
    Text account_{};
    std::vector<cSIAEvent> events_{};
    std::vector<DecodedEvent> decoded_{};
};

}  // namespace

std::span<const SettingRow<SiaSettings>> SiaSettingRows() {
    return kRows;
}

std::vector<DecodedEvent> DecodeSIABlock(const SiaMessage& message, const SiaSettings& settings,
                                         OleDate now) {
    return Decoding(message, settings, now).Run();
}

}  // namespace nordkeep
