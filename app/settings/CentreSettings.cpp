#include "app/settings/CentreSettings.h"

namespace nordkeep {

CentreSettings::CentreSettings(const Settings& files)
    : CoreSettings(LoadCoreSettings(files)),
      engine(LoadEngineSettings(files)),
      outputs(LoadSettings(files, OutputSettingRows())),
      comCall(LoadSettings(files, ComCallSettingRows())),
      view(LoadSettings(files, ViewStateRows())),
      console(LoadSettings(files, ConsoleSettingRows())),
      comments(LoadSettings(files, CommentSettingRows())),
      pictures(LoadSettings(files, PictureSettingRows())),
      printer(LoadSettings(files, PrinterSettingRows())),
      alarmPages(LoadSettings(files, AlarmPageSettingRows())),
      status(LoadSettings(files, StatusSettingRows())),
      mqtt(LoadSettings(files, MqttSettingRows())) {}

}  // namespace nordkeep
