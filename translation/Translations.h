#pragma once

#include "platform/Clock.h"
#include "platform/FileTree.h"
#include "runtime/Language.h"
#include "runtime/Settings.h"
#include "runtime/SysLog.h"
#include "translation/AliveTestTimers.h"
#include "translation/ObjectViews.h"
#include "translation/PortBinding.h"
#include "translation/Translate.h"
#include "translation/TranslationSettings.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace nordkeep {

/// All translation sets of this copy, shared by its ports: loaded from their files, reloaded in place with
/// the state of supervision kept, and saved at a clean stop. On a client it is the mirror of the server's
/// sets, which the network fills.
///
/// A reload may remove sets and objects: nobody keeps a pointer to one across anything that runs other
/// handlers.
class Translations {
 public:
    struct Needs {
        const FileTree& dataFolder;
        const Settings& files;
        const Language& language;
        const Clock& clock;
        SysLog& log;
        ObjectViews& views;
        const TranslationSettings& settings;
        const AliveTestTimers& timers;
    };
    explicit Translations(const Needs& needs) : needs_(needs) {}

    /// The sets in the order in which ports first named them; without the null translation.
    const std::vector<std::unique_ptr<cTranslate>>& Sets() const { return sets_; }
    /// The set of this name, whatever its case; none when there is none.
    cTranslate* Find(TextView name) const;
    /// The empty set that serves events without a port.
    cTranslate& NullTranslation() { return null_; }
    /// Changes whenever sets or objects have been added, removed or moved.
    std::uint64_t Generation() const { return generation_; }

    /// The set of this name, loaded when it is new or marked for reload. None for a name that cannot be a
    /// file.
    cTranslate* FindOrReloadTranslation(TextView name, bool loadLastEvents);
    /// Renews all lists of a port from its settings.
    void ReLoadPortTranslations(PortBinding& port, bool loadLastEvents);
    /// Reads all sets of all ports again; objects that left their file, and sets that no port names, go. The
    /// saved last events are read when wanted and deleted in any case.
    void ReloadAllTranslations(bool loadLastEvents, std::span<PortBinding* const> ports);

    /// The set behind `current` in the port's list for this number: the first when `current` is none, none at
    /// the end. Without a port it is the null translation and then none.
    cTranslate* GetNextTranslation(const PortBinding* port, Protocol protocol, const cTranslate* current);

    /// True when the .IDCode or .TypeCode file of a loaded set has another time than when it was read.
    bool HaveFilesChanged() const;

    /// Writes the state of supervision of all sets, at a clean stop; not for a client. False when any is
    /// lost.
    bool SaveLastEvents() const;

    /// What was written so serves one load.
    void DeleteLastEvents() const;

    /// For the mirror of a client: takes over a set, or removes all.
    cTranslate& Add(std::unique_ptr<cTranslate> set);
    void Clear();

 private:
    void MarkAll();
    void RemoveMarked();

    Needs needs_;
    cTranslate null_{};
    std::vector<std::unique_ptr<cTranslate>> sets_{};
    std::uint64_t generation_ = 0;
};

}  // namespace nordkeep
