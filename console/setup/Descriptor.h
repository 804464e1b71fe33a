#pragma once

#include "runtime/SettingRow.h"

#include <optional>
#include <vector>

namespace nordkeep {

/// How a key is edited.
enum class ControlKind {
    Words,
    Template,    // text with fields in brackets
    List,        // values separated by commas
    Priorities,  // "low-high", one number, or -1
    Number,
    Choice,
    Switch,
    Color,      // a number with red in the lowest byte
    ColorPair,  // "background;text", six hexadecimal digits each
    Font,
    Printer,  // a name of the system's
    File,
    Folder,
    Sound,
    Columns,  // names of fields, separated by commas
    Password,
    Language,
    // Of editors only:
    Pick,      // text, with what is there already as suggestions
    Schedule,  // of an alive test
    MapPlace,  // "file/x/y"
    Lines,     // text of several lines
    Offered    // text, with what there is in a list
};

/// When a saved value counts.
enum class AppliesWhen { Now, Reopen, Restart };

/// A text of the set-up: the number of a text of the language file, or a centre's own words.
struct Wording {
    int number = 0;
    Text own{};
};

struct DescribedChoice {
    Text value{};
    Wording caption{};
};

/// One key as the set-up shows it.
struct DescribedKey {
    Text section{};
    Text key{};
    ControlKind control = ControlKind::Words;
    int low = INT_MIN;  // of a number
    int high = INT_MAX;
    std::vector<DescribedChoice> choices{};
    Wording caption{};
    Wording help{};
    SettingScope scope = SettingScope::Workstation;
    AppliesWhen when = AppliesWhen::Restart;
    Text byDefault{};
};

struct DescribedGroup {
    Wording caption{};
    std::vector<DescribedKey> keys{};
};

struct DescribedPage {
    Text name{};
    Wording caption{};
    bool isHidden = false;
    std::vector<DescribedGroup> groups{};
};

/// Where a descriptor file is damaged, and what stands there.
struct DescriptorFault {
    int line = 0;
    Text text{};
};

/// The key of a settings file: its section, itself, and whether the file is that of a port.
struct KeyName {
    Text section{};
    Text key{};
    bool isOfPort = false;
};

/// What a descriptor file says.
struct SetupDescriptor {
    std::vector<DescribedPage> pages{};
    std::vector<KeyName> hidden{};
    std::optional<DescriptorFault> fault{};  // the first; nothing of the file is used then
};

/// Reads the bytes of a descriptor file, see docs/settings.md. A file without a page is damaged.
SetupDescriptor ParseDescriptor(TextView bytes);

/// A centre's own descriptor, with what only the delivered one describes: a newer program has keys that an
/// older file does not name. They come to the page of the same name; what the file hides stays hidden.
SetupDescriptor Complete(SetupDescriptor own, const SetupDescriptor& delivered);

/// The key that a descriptor describes; none for any other.
const DescribedKey* FindKey(const SetupDescriptor& descriptor, const KeyName& name);

}  // namespace nordkeep
