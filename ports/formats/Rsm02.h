#pragma once

#include "ports/formats/CallerIdentity.h"
#include "ports/formats/MultiCom.h"
#include "ports/formats/SiaDecoding.h"
#include "ports/formats/TextCleaning.h"

namespace nordkeep {

struct Rsm02Settings : TelegramTimeSettings, LineEndSettings, NumericCodeSettings {
    TextCleaning cleaning{};
    CallSettings calls{};
    SiaSettings sia{};
    MultiComSettings multiCom{};
    Text PortName{};
    Text PortDescription{};
    Text hiddenNumber{};  // stands for a caller who hides the number
};

std::span<const SettingRow<Rsm02Settings>> Rsm02SettingRows();

/// What a line remembers between frames.
struct Rsm02State {
    Text accumulated{};  // the fragments of a long text so far
    bool hasSession = false;
};

struct Rsm02Line {
    const Rsm02Settings& settings;
    Rsm02State& state;
    const CallerBook& callers;
};

/// Decodes the front of what a line of format "RSM-02" has received: frames from STX to ETX with their
/// length, ENQ as request for the time, BEL as line test.
TelegramStep NextRsm02Step(TextView received, const Rsm02Line& line, OleDate now);

}  // namespace nordkeep
