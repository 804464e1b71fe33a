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

void Decode(const SiaMessage& message, const SiaSettings& settings, OleDate now, TelegramStep& step) {
    std::vector<DecodedEvent> more = DecodeSIABlock(message, settings, now);
    step.events.insert(step.events.end(), std::make_move_iterator(more.begin()),
                       std::make_move_iterator(more.end()));
}

}  // namespace

void SiaWait::Take(const SiaMessage& message, TextView telegram, const SiaSettings& settings, OleDate now,
                   TelegramStep& step) {
    if (settings.WaitForMLR2SIAASCIIBlockTimeout <= 0) return Decode(message, settings, now, step);
    const Text account = AccountOf(message.text);
    const auto found = std::ranges::find(waiting_, account, &cMRL5SIAEvent::account);
    if (found != waiting_.end()) {
        SiaMessage first = std::move(found->message);
        step.settled.push_back(found->key);
        waiting_.erase(found);
        const std::size_t textBlock = FindTextBlock(message.text);
        if (textBlock != Text::npos) first.text += "\\" + message.text.substr(textBlock);
        Decode(first, settings, now, step);
        if (textBlock != Text::npos) return;
    }
    if (message.text.find("|A") != Text::npos) return Decode(message, settings, now, step);
    waiting_.push_back({message, account, ++lastKey_});
    step.held.push_back({lastKey_, Text(telegram), now});
    if (waiting_.size() > kMostWaiting) DecodeFirst(settings, now, step);
}

void SiaWait::DecodeFirst(const SiaSettings& settings, OleDate now, TelegramStep& step) {
    const cMRL5SIAEvent first = std::move(waiting_.front());
    waiting_.pop_front();
    step.settled.push_back(first.key);
    Decode(first.message, settings, now, step);
}

TelegramStep SiaWait::Tick(int tickMs, const SiaSettings& settings, OleDate now) {
    for (cMRL5SIAEvent& waiting : waiting_) waiting.waitedMs += tickMs;
    const std::int64_t longestMs = settings.WaitForMLR2SIAASCIIBlockTimeout * 1000LL;
    TelegramStep step;
    while (!waiting_.empty() && waiting_.front().waitedMs > longestMs) DecodeFirst(settings, now, step);
    return step;
}

TelegramStep SiaWait::Finish(const SiaSettings& settings, OleDate now) {
    TelegramStep step;
    while (!waiting_.empty()) DecodeFirst(settings, now, step);
    return step;
}

}  // namespace nordkeep
