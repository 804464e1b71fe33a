#include "app/SettingsInForce.h"

#include "app/KnownSettings.h"

namespace nordkeep {

SettingsList ListSettings(const Settings& files, Text path) {
    SettingsList list(files, std::move(path));
    for (const KnownSetting& known : KnownSettings().All()) {
        if (known.scope != SettingScope::Port && !known.isFamily) list.Add(known);
    }
    return list;
}

}  // namespace nordkeep
