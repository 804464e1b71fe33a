#pragma once

#include "platform/sqlite/SqliteJournal.h"
#include "store/Journal.h"
#include "tests/doubles/ManualTime.h"
#include "tests/doubles/TestCore.h"

#include <optional>

namespace nordkeep {

/// One run of the core of a centre on a data folder.
struct CoreRun {
    CoreRun(const NativePath& root, ManualTime& time_)
        : tree(root), files(tree), time(time_), log(tree, time), journal(journalFile, tree, time) {
        language.LoadFrom("1050=x\n");
        MakeFolder(tree.Resolve("Data"));
        MakeFolder(tree.Resolve("Data\\Events"));
        settings = LoadCoreSettings(files);
        journal.Open();
        core.emplace(CoreGround{.dataFolder = tree,
                                .files = files,
                                .language = language,
                                .log = log,
                                .clock = time,
                                .loop = time,
                                .sockets = sockets,
                                .settings = settings,
                                .journal = &journal});
        port.PortName = port.binding.portName = "Port1";
        core->translations.ReloadAllTranslations(true, std::vector<PortBinding*>{&port.binding});
        core->BringBack();
        core->commit.Commit();
    }

    cAlarm* Find(const Text& text) {
        const EventList& events = core->store.Events();
        for (EventSequence at = events.Next(0); at != 0; at = events.Next(at))
            if (events.Find(at)->m_AlarmCode == text) return events.Find(at);
        return nullptr;
    }
    cTranslate& Set() { return *core->translations.Sets().at(0); }
    cIDCode& Object(std::size_t i) { return *Set().m_IdCodes.at(i); }
    void StopCleanly() {
        core->parked.DispatchAll();
        core->translations.SaveLastEvents();
        core->StopCleanly();
    }

    FileTree tree;
    Settings files;
    ManualTime& time;
    SysLog log;
    Language language{};
    FakeSockets sockets{};
    SqliteJournal journalFile{64 << 10};  // the log outgrows its room within a run
    Journal journal;
    CoreSettings settings{};
    EventPort port{};
    std::optional<TestCore> core{};
};

}  // namespace nordkeep
