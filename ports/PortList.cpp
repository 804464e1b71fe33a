#include "ports/PortList.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextNoSlot = 1039;
constexpr int kTextPort = 1040;

}  // namespace

std::vector<Text> PortNames(const FileTree& dataFolder) {
    std::vector<Text> names;
    for (const Text& file : ListFiles(dataFolder.Resolve("Settings"))) {
        if (!MatchesMask(file, "Port*.ini")) continue;
        const Text name = file.substr(0, file.find('.'));
        const auto isSame = [&](const Text& other) { return EqualsNoCase(other, name); };
        if (std::ranges::none_of(names, isSame)) names.push_back(name);
    }
    return names;
}

void PortList::Discover(const PortParts& parts) {
    for (const Text& name : PortNames(parts.dataFolder)) {
        const Text type = parts.settings.ReadPortIni("General", "PortType", "NONE", name);
        if (EqualsNoCase(TrimBlanks(type), "NONE")) continue;
        auto port = std::make_unique<cPort>(parts, *this, name);
        const bool isUsable = port->InitializePort();
        if (ports_.size() >= kMostPorts) continue;
        if (isUsable) AssignSlot(parts, *port);
        ports_.push_back(std::move(port));
    }
}

void PortList::AssignSlot(const PortParts& parts, cPort& port) {
    const auto isSameType = [&](const auto& other) { return other->Type() == port.Type(); };
    const int index = static_cast<int>(std::ranges::count_if(ports_, isSameType)) + 1;
    if (index <= SlotLimit(*port.Type())) return port.SetPortIndex(index);
    parts.log.WriteSysLog(parts.language.GetLanguageText(kTextNoSlot) + " (" +
                              parts.language.GetLanguageText(kTextPort) + " " + port.PortName() + ")",
                          LogKind::Failure);
}

void PortList::Tick(int tickMs, const PortConditions& conditions) {
    for (const auto& port : ports_) port->Tick(tickMs, conditions);
}

void PortList::CyclicHTTPCleanup(int tickMs, const PortConditions& conditions) {
    for (const auto& port : ports_) port->CyclicHTTPCleanup(tickMs, conditions);
}

void PortList::TakeUpHeld(const PortParts& parts) {
    for (const KeptTelegram& kept : KeptTelegrams(parts.commit)) {
        const auto port =
            std::ranges::find_if(ports_, [&](const auto& each) { return each->PortName() == kept.portName; });
        if (port != ports_.end()) {
            (*port)->TakeUp(kept);
            continue;
        }
        parts.commit.NoteDone(kept.entry);
        parts.intake.HandleIncomingEvent(EventOfRest(kept).event);
    }
}

void PortList::FinishAll() {
    for (const auto& port : ports_) port->Finish();
}

void PortList::CloseAll() {
    for (const auto& port : ports_) port->ClosePort(true);
}

std::vector<PortBinding*> PortList::Bindings() const {
    std::vector<PortBinding*> bindings;
    for (const auto& port : ports_) bindings.push_back(&port->Event().binding);
    return bindings;
}

}  // namespace nordkeep
