#include "ports/PortList.h"

#include <algorithm>

namespace nordkeep {
namespace {

constexpr int kTextNoSlot = 1039;
constexpr int kTextPort = 1040;
constexpr int kTextRenewed = 3789;

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

PortList::OwnedPort PortList::Make(const PortParts& parts, const Text& name) {
    const Text type = parts.settings.ReadPortIni("General", "PortType", "NONE", name);
    if (EqualsNoCase(TrimBlanks(type), "NONE")) return {};
    auto port = std::make_unique<cPort>(parts, *this, name);
    const bool isUsable = port->InitializePort();
    if (isUsable && ports_.size() < kMostPorts) AssignSlot(parts, *port);
    return port;
}

void PortList::Discover(const PortParts& parts) {
    for (const Text& name : PortNames(parts.dataFolder)) {
        OwnedPort port = Make(parts, name);
        if (port && ports_.size() < kMostPorts) ports_.push_back(std::move(port));
    }
}

void PortList::AssignSlot(const PortParts& parts, cPort& port) {
    const auto isTaken = [&](int index) {
        return std::ranges::any_of(ports_, [&](const auto& other) {
            return other && other->Type() == port.Type() && other->PortIndex() == index;
        });
    };
    for (int index = 1; index <= SlotLimit(*port.Type()); ++index) {
        if (!isTaken(index)) return port.SetPortIndex(index);
    }
    parts.log.WriteSysLog(parts.language.GetLanguageText(kTextNoSlot) + " (" +
                              parts.language.GetLanguageText(kTextPort) + " " + port.PortName() + ")",
                          LogKind::Failure);
}

// Replies that wait for their event to be stored go first: behind the close nobody would hear them.
void PortList::Retire(const PortParts& parts, OwnedPort port) {
    parts.log.WriteSysLog(parts.language.GetLanguageText(kTextRenewed) + port->PortName(),
                          LogKind::Information);
    port->Finish();
    parts.commit.Commit();
    port->ClosePort(false);
    port->SetPortIndex(0);
    retired_.push_back(std::move(port));
}

bool PortList::RenewKnown(const PortParts& parts) {
    bool hasChanged = false;
    for (OwnedPort& port : ports_) {
        if (!port->HasOtherSettingsNow()) continue;
        const Text name = port->PortName();
        Retire(parts, std::move(port));
        port = Make(parts, name);
        hasChanged = true;
    }
    std::erase(ports_, nullptr);
    return hasChanged;
}

bool PortList::TakeInNew(const PortParts& parts) {
    bool hasChanged = false;
    for (const Text& name : PortNames(parts.dataFolder)) {
        const auto isThis = [&](const auto& port) { return EqualsNoCase(port->PortName(), name); };
        if (ports_.size() >= kMostPorts || std::ranges::any_of(ports_, isThis)) continue;
        OwnedPort port = Make(parts, name);
        if (!port) continue;
        parts.log.WriteSysLog(parts.language.GetLanguageText(kTextRenewed) + name, LogKind::Information);
        ports_.push_back(std::move(port));
        hasChanged = true;
    }
    return hasChanged;
}

std::optional<bool> PortList::Renew(const PortParts& parts) {
    if (ticking_ > 0) return std::nullopt;
    // A disk that has gone takes no line with it.
    if (!FolderExists(parts.dataFolder.Resolve("Settings"))) return false;
    const bool hasChanged = RenewKnown(parts);
    return TakeInNew(parts) || hasChanged;
}

void PortList::Tick(int tickMs, const PortConditions& conditions) {
    ++ticking_;
    for (const auto& port : ports_) port->Tick(tickMs, conditions);
    --ticking_;
}

void PortList::CyclicHTTPCleanup(int tickMs, const PortConditions& conditions) {
    ++ticking_;
    for (const auto& port : ports_) port->CyclicHTTPCleanup(tickMs, conditions);
    --ticking_;
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
