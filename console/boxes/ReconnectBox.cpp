#include "console/boxes/ReconnectBox.h"

namespace nordkeep {
namespace {

constexpr int kFlashMs = 500;
constexpr int kTextNoContact = 1139;
constexpr int kTextConnecting = 1140;
constexpr int kCaptionNextTry = 3759;

}  // namespace

ReconnectBox::ReconnectBox(const Needs& needs)
    : needs_(needs), flash_(needs.loop.NewTimer([this] {
          isFlashed_ = state_ == LinkState::Lost && !isFlashed_;
          view_->Refresh();
      })) {}

void ReconnectBox::ShowLinkState(LinkState state) {
    if (state == LinkState::Lost) lostSinceMs_ = needs_.clock.MonotonicMs();
    state_ = state;
    const bool isToBeOpen = state == LinkState::Lost || state == LinkState::Connecting;
    if (isToBeOpen == isOpen_) {
        if (isOpen_) view_->Refresh();
        return;
    }
    isOpen_ = isToBeOpen;
    isFlashed_ = false;
    if (isOpen_) {
        flash_->Start(kFlashMs);
        view_->Show(OpenedBy::Itself);
    } else {
        flash_->Stop();
        view_->Close();
    }
}

Text ReconnectBox::Label() const {
    return needs_.language.GetLanguageText(state_ == LinkState::Connecting ? kTextConnecting
                                                                           : kTextNoContact);
}

Text ReconnectBox::Countdown() const {
    if (state_ != LinkState::Lost) return {};
    const std::int64_t left = lostSinceMs_ + needs_.reconnectIntervalMs - needs_.clock.MonotonicMs();
    return needs_.captions(kCaptionNextTry, {std::to_string(left < 0 ? 0 : (left + 999) / 1000)});
}

void ReconnectBox::Reconnect() {
    if (isOpen_ && IsReconnectEnabled()) needs_.server.Reconnect();
}

void ReconnectBox::Shutdown() {
    if (isOpen_) needs_.server.GiveUp();
}

}  // namespace nordkeep
