#include "ports/PortList.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace nordkeep {
namespace {

constexpr int kTextNoSlot = 1039;
constexpr int kTextPort = 1040;
constexpr int kTextRenewed = 3789;
constexpr int kTextNotExported = 3850;
constexpr std::size_t kMostAccounts = 500;

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
    port->InitializePort();
    return port;
}

void PortList::Discover(const PortParts& parts) {
    for (const Text& name : PortNames(parts.dataFolder)) {
        OwnedPort port = Make(parts, name);
        if (!port || ports_.size() >= kMostPorts) continue;
        AssignSlot(parts, *port);
        ports_.push_back(std::move(port));
    }
}

void PortList::AssignSlot(const PortParts& parts, cPort& port) {
    if (!port.Type()) return;
    const auto isTaken = [&](int index) {
        return std::ranges::any_of(ports_, [&](const auto& other) {
            return other->Type() == port.Type() && other->PortIndex() == index;
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
void PortList::EndPort(const PortParts& parts, cPort& port) {
    parts.log.WriteSysLog(parts.language.GetLanguageText(kTextRenewed) + port.PortName(),
                          LogKind::Information);
    port.Finish();
    parts.commit.Commit();
    port.ClosePort(false);
    port.SetPortIndex(0);
    parts.exports.Retire(port.PortName());
}

PortList::OwnedPort PortList::MakeAnew(const PortParts& parts, const cPort& port) {
    OwnedPort renewed = Make(parts, port.PortName());
    if (const std::size_t lost = parts.exports.DropRetired()) {
        parts.log.WriteSysLog(parts.language.GetLanguageText(kTextNotExported) + std::to_string(lost) + " (" +
                                  port.PortName() + ")",
                              LogKind::Failure);
    }
    return renewed;
}

bool PortList::RenewKnown(const PortParts& parts) {
    bool hasChanged = false;
    // What ends a port, or makes one, may ask for all of them: no place is ever empty.
    for (std::size_t i = 0; i < ports_.size();) {
        if (!ports_[i]->HasOtherSettingsNow()) {
            ++i;
            continue;
        }
        hasChanged = true;
        EndPort(parts, *ports_[i]);
        OwnedPort renewed = MakeAnew(parts, *ports_[i]);
        if (renewed) AssignSlot(parts, *renewed);
        retired_.push_back(std::exchange(ports_[i], std::move(renewed)));
        if (ports_[i]) {
            ++i;
        } else {
            ports_.erase(ports_.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
    return hasChanged;
}

bool PortList::TakeInNew(const PortParts& parts) {
    bool hasChanged = false;
    for (const Text& name : PortNames(parts.dataFolder)) {
        const auto isThis = [&](const auto& port) { return EqualsNoCase(port->PortName(), name); };
        if (ports_.size() >= kMostPorts || std::ranges::any_of(ports_, isThis)) continue;
        OwnedPort port = Make(parts, name);
        if (!port) continue;
        AssignSlot(parts, *port);
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
    ++ticking_;
    const bool hasChanged = RenewKnown(parts);
    const bool isAnyNew = TakeInNew(parts);
    --ticking_;
    return hasChanged || isAnyNew;
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

std::vector<LineAccount> PortList::AccountsOf(const Text& name) const {
    const auto port =
        std::ranges::find_if(ports_, [&](const OwnedPort& own) { return own->Figures().name == name; });
    if (port == ports_.end()) return {};
    std::vector<LineAccount> accounts = (*port)->Accounts();
    std::ranges::stable_sort(accounts, std::ranges::greater(), &LineAccount::isSilent);
    if (accounts.size() > kMostAccounts) accounts.resize(kMostAccounts);
    return accounts;
}

std::vector<PortBinding*> PortList::Bindings() const {
    std::vector<PortBinding*> bindings;
    for (const auto& port : ports_) bindings.push_back(&port->Event().binding);
    return bindings;
}

}  // namespace nordkeep
