#include "ports/formats/SiaWait.h"

#include "runtime/Fields.h"

#include <algorithm>

namespace nordkeep {
namespace {

// A flood of accounts must not fill the memory; the oldest are decoded without their text then.
constexpr std::size_t kMostWaiting = 1000;

Text AccountOf(TextView text) {
    return GetField(GetField(text, 0, "|"), 1, "[");
}

/// Where the text of a message begins that brings nothing but text; npos for any other message.
std::size_t FindTextBlock(TextView text) {
    const std::size_t bar = text.find('|');
    const bool isText = bar != TextView::npos && text.substr(bar + 1).starts_with('A');
    return isText ? bar + 1 : TextView::npos;
}

void Append(std::vector<DecodedEvent>& events, std::vector<DecodedEvent> more) {
    events.insert(events.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

}  // namespace

std::vector<DecodedEvent> SiaWait::Take(const SiaMessage& message, const SiaSettings& settings, OleDate now) {
    if (settings.WaitForMLR2SIAASCIIBlockTimeout <= 0) return DecodeSIABlock(message, settings, now);
    const Text account = AccountOf(message.text);
    std::vector<DecodedEvent> events;
    const auto found = std::ranges::find(waiting_, account, &cMRL5SIAEvent::account);
    if (found != waiting_.end()) {
        SiaMessage first = std::move(found->message);
        waiting_.erase(found);
        const std::size_t textBlock = FindTextBlock(message.text);
        if (textBlock != Text::npos) first.text += "\\" + message.text.substr(textBlock);
        Append(events, DecodeSIABlock(first, settings, now));
        if (textBlock != Text::npos) return events;
    }
    if (message.text.find("|A") != Text::npos) {
        Append(events, DecodeSIABlock(message, settings, now));
        return events;
    }
    waiting_.push_back({message, account});
    if (waiting_.size() > kMostWaiting) Append(events, DecodeFirst(settings, now));
    return events;
}

std::vector<DecodedEvent> SiaWait::DecodeFirst(const SiaSettings& settings, OleDate now) {
    const SiaMessage message = std::move(waiting_.front().message);
    waiting_.pop_front();
    return DecodeSIABlock(message, settings, now);
}

std::vector<DecodedEvent> SiaWait::Tick(int tickMs, const SiaSettings& settings, OleDate now) {
    for (cMRL5SIAEvent& waiting : waiting_) waiting.waitedMs += tickMs;
    const std::int64_t longestMs = settings.WaitForMLR2SIAASCIIBlockTimeout * 1000LL;
    std::vector<DecodedEvent> events;
    while (!waiting_.empty() && waiting_.front().waitedMs > longestMs) {
        Append(events, DecodeFirst(settings, now));
    }
    return events;
}

std::vector<DecodedEvent> SiaWait::Finish(const SiaSettings& settings, OleDate now) {
    std::vector<DecodedEvent> events;
    while (!waiting_.empty()) Append(events, DecodeFirst(settings, now));
    return events;
}

}  // namespace nordkeep
