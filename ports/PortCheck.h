#pragma once

#include "platform/MachineFacts.h"
#include "runtime/IniCheck.h"
#include "runtime/Protocol.h"

#include <map>

namespace nordkeep {

/// What a check of the ports has to know beside their files.
struct PortSurroundings {
    const SettingCatalogue& known;
    const IniLines& main;           // the main settings file
    std::vector<Text> addresses{};  // of this machine's interfaces
    /// Of a file that a setting names: absolute, or below the data folder.
    std::function<FileRights(TextView path)> rightsOf{};
    /// Whether the set has its .IDCode file.
    std::function<bool(TextView set)> isSetThere{};
    /// Whether a line of this kind reads a key; without it all do.
    std::function<bool(PortType type, MessageFormat format, TextView section, TextView key)> readsKey{};
};

/// The protocols under which ports name a translation set, by its name in upper case.
using SetUses = std::map<Text, std::vector<Protocol>>;

/// Checks the ports' settings files, one behind the other in the order in which the program takes them.
class PortCheck {
 public:
    explicit PortCheck(const PortSurroundings& around);

    /// One file. Its content may go behind this.
    void Check(const Text& portName, TextView content, FileFindings& findings);
    const SetUses& Sets() const { return sets_; }

 private:
    /// Something that only one port can have.
    struct Claim {
        Text what{};     // "TCP 17601", "COM1"
        Text address{};  // empty: all
        Text owner{};
    };
    /// The port in hand.
    struct Port {
        const Text& name;
        const IniLines& lines;
        FileFindings& findings;
        PortType type{};
        MessageFormat format{};

        TextView Value(TextView key, TextView byDefault = {}) const;
        int Line(TextView key) const { return lines.LineOf("General", key); }
    };

    void ClaimMain(TextView section, TextView key, TextView byDefault, TextView what);
    bool CheckKind(Port& port);
    bool CheckPlace(const Port& port);
    void CheckReadKeys(const Port& port);
    void CheckLine(const Port& port);
    void CheckNetwork(const Port& port);
    void CheckNumber(const Port& port, int most);
    void CheckAddress(const Port& port);
    void CheckSerial(const Port& port);
    void CheckFile(const Port& port);
    void CheckMail(const Port& port);
    void CheckPolling(const Port& port);
    void CheckDisable(const Port& port);
    void CheckSets(const Port& port);
    void CheckSetList(const Port& port, const IniLines::Entry& entry, Protocol protocol);
    void CheckFieldMaps(const Port& port);
    void Take(const Port& port, TextView key, Claim claim);

    const PortSurroundings& around_;
    std::vector<Claim> claims_{};
    std::map<PortType, int> slots_{};
    std::size_t ports_ = 0;
    SetUses sets_{};
};

/// What the section SerialPorts of the main settings says.
void CheckSerialDevices(const IniLines& main, const std::function<FileRights(TextView path)>& rightsOf,
                        FileFindings& findings);
/// A device that is there, or one that is not the system's: a program may make it when it runs.
bool MayBeADevice(TextView path, const std::function<FileRights(TextView path)>& rightsOf);

}  // namespace nordkeep
