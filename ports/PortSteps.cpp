#include "ports/PortSteps.h"

namespace nordkeep {

Text PortSteps::LabelOf(const DecodedEvent& decoded) const {
    Text label = decoded.event.ProtocolType;
    for (const int number : decoded.labelTexts) {
        if (number == 0) break;
        const Text text = parts_.language.GetLanguageText(number);
        if (!label.empty() && !text.empty()) label += ' ';
        label += text;
    }
    return label;
}

void PortSteps::TakeStep(TelegramStep step, WhenStored whenStored) {
    parts_.tally.NoteStep(step);
    if (step.isTraffic || !step.events.empty()) ++totals_.telegrams;
    totals_.events += step.events.size();
    if (step.isTraffic) parts_.tests.NoteProof();
    for (const DecoderNote& note : step.notes) parts_.log.Information(note.text, note.tail);
    if (step.events.empty() && step.signs.empty() && step.held.empty() && !whenStored) return;
    parts_.commit.Begin();
    held_.Note(step);
    for (IncomingEvent& sign : step.signs) {
        sign.PortObject = &parts_.port;
        parts_.intake.HandleSignOfLife(sign);
    }
    TakeEvents(step.events);
    parts_.commit.End([this, whenStored = std::move(whenStored)](bool isStored) {
        if (!isStored) ++totals_.refused["not-stored"];
        if (whenStored) whenStored(isStored);
    });
}

void PortSteps::TakeEvents(std::vector<DecodedEvent>& events) {
    for (DecodedEvent& decoded : events) {
        decoded.event.ProtocolType = LabelOf(decoded);
        decoded.event.PortObject = &parts_.port;
        parts_.intake.HandleIncomingEvent(decoded.event);
    }
}

void PortSteps::TakeUp(const KeptTelegram& kept, TelegramStep step) {
    step.reply.clear();
    if (step.consumed == 0) step.events = {EventOfRest(kept)};  // the format of the port is another now
    if (step.held.empty()) {
        parts_.commit.NoteDone(kept.entry);
    } else {
        held_.Keep(step.held.front().key, kept.entry);
        step.held.erase(step.held.begin());
    }
    TakeStep(std::move(step), {});
}

void PortSteps::NoteTraffic(TextView traffic, TrafficDirection direction) {
    parts_.tally.NoteTraffic(traffic, direction);
    if (direction == TrafficDirection::Sent && traffic.starts_with(bytes::NAK)) ++totals_.refused["nak"];
    if (direction == TrafficDirection::Received && isMuted_) ++totals_.refused["muted"];
    parts_.trafficLog.WriteTrafficLog(traffic, direction, parts_.log.Line().PortDescription);
}

}  // namespace nordkeep
