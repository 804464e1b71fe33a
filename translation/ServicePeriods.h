#pragma once

#include "platform/FileTree.h"
#include "translation/ObjectReplica.h"
#include "translation/ObjectViews.h"
#include "translation/ServiceNotes.h"
#include "translation/Translate.h"
#include "translation/TranslationSettings.h"

#include <memory>
#include <optional>
#include <vector>

namespace nordkeep {

/// How an object is served: in use, or its events are only logged.
enum class ServiceMode : int { InUse = 0, LogUntilEnd = 1, LogInPeriod = 2, LogOnly = 3 };

/// A service mode with its times; a time that the mode does not use is never.
struct ServicePeriod {
    int mode = 0;
    OleDate begin{};
    OleDate end{};
    Text reason{};  // that somebody gave, for the journal
};

/// What the commands of an operator mean.
ServicePeriod InUse();
ServicePeriod LogOnly();
ServicePeriod LogUntil(OleDate now, OleDate end);
ServicePeriod LogBetween(OleDate begin, OleDate end);
/// The fixed length `item` (from 1) of the setting ServiceIntervals, in minutes; 0 where there is none.
int MinutesOfInterval(const TranslationSettings& settings, int item);
/// For so long, from now on.
ServicePeriod LogForInterval(const TranslationSettings& settings, int item, OleDate now);

/// Stores a period, clears the failed states of both alive tests, and keeps the set's index right. False,
/// with nothing changed, for an unknown mode. Every change of a service mode goes through here; a client's
/// mirror uses it alone.
bool StoreServicePeriod(cTranslate& set, cIDCode& object, const ServicePeriod& period);

/// Sets and ends service periods, tells the screen, the clients and the other system that shares them by
/// files.
class ServicePeriods {
 public:
    struct Needs {
        const FileTree& dataFolder;
        ObjectViews& views;
        ObjectReplica& replica;
        const TranslationSettings& settings;
        ServiceNotes& notes;
    };
    explicit ServicePeriods(const Needs& needs) : needs_(needs) {}

    /// A command of an operator, here or at a client. False, with nothing done, for an unknown mode.
    bool Set(cTranslate& set, cIDCode& object, const ServicePeriod& period, const Doer& by = {});
    /// Puts the object back in use when its period is over. True when it was.
    bool EndWhenOver(cTranslate& set, cIDCode& object, OleDate now);
    /// Takes in what the other system has left for this set.
    void TakeIn(cTranslate& set);

 private:
    bool Change(cTranslate& set, cIDCode& object, const ServicePeriod& period, const Doer& by);
    void WriteOut(const cTranslate& set, const cIDCode& object) const;

    Needs needs_;
};

}  // namespace nordkeep
