#include "app/SettingsInForce.h"

#include "app/CentreSettings.h"
#include "network/NetworkSettings.h"

namespace nordkeep {

SettingsList ListSettings(const Settings& files, Text path) {
    SettingsList list(files, std::move(path));
    list.Add(NetworkSettingRows());
    list.Add(EngineSettingRows());
    list.Add(StoreSettingRows());
    list.Add(TranslationSettingRows());
    list.Add(IntakeSettingRows());
    list.Add(DispatchSettingRows());
    list.Add(DeskSettingRows());
    list.Add(TorvexSettingRows());
    list.Add(OutputSettingRows());
    list.Add(ComCallSettingRows());
    list.Add(ViewStateRows());
    list.Add(ConsoleSettingRows());
    list.Add(CommentSettingRows());
    list.Add(PictureSettingRows());
    list.Add(PrinterSettingRows());
    list.Add(AlarmPageSettingRows());
    return list;
}

}  // namespace nordkeep
