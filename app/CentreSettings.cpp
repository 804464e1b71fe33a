#include "app/CentreSettings.h"

namespace nordkeep {

CentreSettings::CentreSettings(const Settings& files)
    : engine(LoadEngineSettings(files)),
      store(LoadSettings(files, StoreSettingRows())),
      translation(LoadSettings(files, TranslationSettingRows())),
      intake(LoadSettings(files, IntakeSettingRows())),
      resets(LoadResetSettings(files)),
      dispatch(LoadSettings(files, DispatchSettingRows())),
      desk(LoadSettings(files, DeskSettingRows())),
      torvex(LoadSettings(files, TorvexSettingRows())),
      outputs(LoadSettings(files, OutputSettingRows())),
      comCall(LoadSettings(files, ComCallSettingRows())),
      view(LoadSettings(files, ViewStateRows())),
      console(LoadSettings(files, ConsoleSettingRows())),
      comments(LoadSettings(files, CommentSettingRows())),
      pictures(LoadSettings(files, PictureSettingRows())),
      printer(LoadSettings(files, PrinterSettingRows())),
      alarmPages(LoadSettings(files, AlarmPageSettingRows())) {}

}  // namespace nordkeep
