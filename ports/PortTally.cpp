#include "ports/PortTally.h"

namespace nordkeep {
namespace {

OleDate DayOf(OleDate time) {
    const CivilTime civil = time.Civil();
    return OleDate::FromCivil({civil.year, civil.month, civil.day, 0, 0, 0});
}

}  // namespace

void PortTally::NoteState(PortState state) {
    if (state == figures_.state && !figures_.since.IsNever()) return;
    figures_.state = state;
    figures_.since = clock_.Now();
}

void PortTally::NoteTraffic(TextView traffic, TrafficDirection direction) {
    if (direction == TrafficDirection::Received) figures_.lastTraffic = clock_.Now();
    const bool isRefusal = direction == TrafficDirection::Sent && traffic.starts_with(bytes::NAK);
    if (isRefusal) Count(figures_.refusedToday);
}

void PortTally::NoteStep(const TelegramStep& step) {
    if (!step.events.empty()) Count(figures_.telegramsToday);
}

void PortTally::Count(int& figure) {
    if (const OleDate today = DayOf(clock_.Now()); today != day_) {
        day_ = today;
        figures_.telegramsToday = figures_.refusedToday = 0;
    }
    ++figure;
}

PortFigures PortTally::Figures() const {
    PortFigures figures = figures_;
    if (DayOf(clock_.Now()) != day_) figures.telegramsToday = figures.refusedToday = 0;
    return figures;
}

}  // namespace nordkeep
