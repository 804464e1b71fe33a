#pragma once

#include "platform/Clock.h"
#include "ports/formats/TelegramStep.h"
#include "runtime/CentreState.h"
#include "runtime/TrafficLog.h"

namespace nordkeep {

/// Counts what a port receives, anew each day, and how it does.
class PortTally {
 public:
    /// Name and kind of the line go into its figures.
    PortTally(const Clock& clock, LineFigures line) : clock_(clock), figures_(std::move(line)) {}

    void NoteState(LineState state);
    /// Who is at the other end now; empty when nobody is, or cannot be told.
    void NoteCaller(const Text& caller);
    void NoteTraffic(TextView traffic, TrafficDirection direction);
    void NoteStep(const TelegramStep& step);
    LineFigures Figures() const;

 private:
    void Count(int& figure);
    void ForgetCounts(LineFigures& figures) const;

    const Clock& clock_;
    LineFigures figures_;
    OleDate day_{};  // of the counts
};

}  // namespace nordkeep
