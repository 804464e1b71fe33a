#include "pipeline/Core.h"

namespace nordkeep {

CoreSettings LoadCoreSettings(const Settings& files) {
    return {.store = LoadSettings(files, StoreSettingRows()),
            .translation = LoadSettings(files, TranslationSettingRows()),
            .intake = LoadSettings(files, IntakeSettingRows()),
            .resets = LoadResetSettings(files),
            .dispatch = LoadSettings(files, DispatchSettingRows()),
            .desk = LoadSettings(files, DeskSettingRows()),
            .torvex = LoadSettings(files, TorvexSettingRows())};
}

Core::Core(const CoreParts& parts, const CoreSettings& settings)
    : commit(parts.disk, parts.requestCommit, parts.journal),
      lookup(MakeLookupRules(settings.translation, parts.language)),
      timers(settings.translation, parts.pace, parts.log),
      store({.dataFolder = parts.dataFolder,
             .files = parts.files,
             .language = parts.language,
             .clock = parts.clock,
             .log = parts.log,
             .commit = commit,
             .replica = parts.alarmReplica,
             .views = parts.alarmViews,
             .storageAlarm = *this,
             .role = parts.role,
             .randomSeed = parts.randomSeed},
            settings.store),
      translations({.dataFolder = parts.dataFolder,
                    .files = parts.files,
                    .language = parts.language,
                    .clock = parts.clock,
                    .log = parts.log,
                    .views = parts.objectViews,
                    .settings = settings.translation,
                    .timers = timers}),
      deeds(commit, parts.language, parts.log),
      servicePeriods({.dataFolder = parts.dataFolder,
                      .views = parts.objectViews,
                      .replica = parts.objectReplica,
                      .settings = settings.translation,
                      .notes = deeds}),
      handling({.store = store, .clock = parts.clock, .desk = parts.desk, .deeds = deeds}),
      resets(store, handling, parts.clock, settings.resets),
      dispatcher({.dataFolder = parts.dataFolder,
                  .language = parts.language,
                  .clock = parts.clock,
                  .log = parts.log,
                  .text = store.Texts(),
                  .settings = settings.dispatch,
                  .deskSettings = settings.desk,
                  .torvexSettings = settings.torvex,
                  .store = store,
                  .resets = resets,
                  .torvex = parts.torvex,
                  .desk = parts.desk,
                  .outputs = parts.outputs}),
      parked(commit, resets, dispatcher, settings.resets),
      intake({.dataFolder = parts.dataFolder,
              .files = parts.files,
              .language = parts.language,
              .clock = parts.clock,
              .settings = settings.intake,
              .translationSettings = settings.translation,
              .lookup = lookup,
              .timers = timers,
              .translations = translations,
              .views = parts.objectViews,
              .replica = parts.objectReplica,
              .store = store,
              .resets = resets,
              .parked = parked,
              .dispatcher = dispatcher,
              .fieldMap = parts.fieldMap}),
      aliveScan({.translations = translations,
                 .periods = servicePeriods,
                 .alarm = intake,
                 .telegramExport = parts.telegramExport,
                 .views = parts.objectViews,
                 .replica = parts.objectReplica,
                 .clock = parts.clock,
                 .settings = settings.translation,
                 .timers = timers}),
      reloadWatch(translations, servicePeriods, settings.translation),
      clock_(parts.clock),
      dataFolder_(parts.dataFolder),
      disk_(parts.disk) {}

void Core::BringBack() {
    store.PlayJournal();
    store.LoadEvents();
    parked.TakeUp();
    deeds.TakeUpServiceModes(translations);
    deeds.NoteServiceModes(translations);
    commit.Commit();
    // They serve one start only, but until the journal has the modes in them nothing else has.
    const Journal* journal = commit.EntryJournal();
    if (!journal || !journal->HasStaged()) translations.DeleteLastEvents();
}

void Core::StopCleanly() {
    commit.Commit();
    // The alarm number is written in place at each event, and synchronised here only: behind a clean stop it
    // is the file that counts, since a person may have changed it.
    const NativePath settings = dataFolder_.Resolve("Settings\\Nordkeep.INI");
    if (StampOf(settings).Exists()) disk_.Append(settings, {});
    commit.SynchroniseAll();
    if (Journal* journal = commit.EntryJournal()) journal->NoteCleanStop();
}

void Core::RaiseStorageAlarm(const Text& text) {
    intake.HandleIncomingEvent({.AlarmTime = clock_.Now(), .ProtocolType = kOwnProtocol, .ExtraText = text});
}

}  // namespace nordkeep
