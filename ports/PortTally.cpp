#include "ports/PortTally.h"

namespace nordkeep {

void PortTally::NoteState(LineState state) {
    if (state == figures_.state && !figures_.since.IsNever()) return;
    const bool isBack = figures_.state == LineState::Failed && !figures_.since.IsNever();
    if (isBack && IsWorking(state)) Count(figures_.reconnectsToday);
    figures_.state = state;
    figures_.since = clock_.Now();
}

void PortTally::NoteCaller(const Text& caller) {
    if (!caller.empty()) figures_.caller = caller;
}

void PortTally::NoteTraffic(TextView traffic, TrafficDirection direction) {
    if (direction == TrafficDirection::Received) figures_.lastTraffic = clock_.Now();
    const bool isRefusal = direction == TrafficDirection::Sent && traffic.starts_with(bytes::NAK);
    if (isRefusal) Count(figures_.refusedToday);
}

void PortTally::NoteStep(const TelegramStep& step) {
    if (!step.events.empty()) Count(figures_.telegramsToday);
    if (step.isRefused) Count(figures_.refusedToday);
}

void PortTally::ForgetCounts(LineFigures& figures) const {
    figures.telegramsToday = figures.refusedToday = figures.reconnectsToday = 0;
}

void PortTally::Count(int& figure) {
    if (const OleDate today = clock_.Now().Midnight(); today != day_) {
        day_ = today;
        ForgetCounts(figures_);
    }
    ++figure;
}

LineFigures PortTally::Figures() const {
    LineFigures figures = figures_;
    if (clock_.Now().Midnight() != day_) ForgetCounts(figures);
    return figures;
}

}  // namespace nordkeep
