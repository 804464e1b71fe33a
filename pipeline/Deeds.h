#pragma once

#include "runtime/Language.h"
#include "runtime/SysLog.h"
#include "store/Alarm.h"
#include "store/EventCommit.h"
#include "translation/ServiceNotes.h"
#include "translation/Translations.h"

namespace nordkeep {

/// Who did what: every deed of an operator, here or at a client, is an entry of the journal and a line of the
/// log.
class Deeds final : public ServiceNotes {
 public:
    Deeds(EventCommit& commit, const Language& language, SysLog& log)
        : commit_(commit), language_(language), log_(log) {}

    /// What the alarm was before stands in the entry.
    void NoteAlarm(JournalKind kind, const Doer& by, const cAlarm& before, const cAlarm& alarm);
    /// Anything else that is done, such as a login or a file that was edited.
    void Note(JournalKind kind, const Doer& by, const Text& object, const Text& text, std::string data = {});
    void NoteService(const cTranslate& set, const cIDCode& object, int modeBefore, const Doer& by,
                     const Text& reason) override;

    /// A shift was signed over: what was said about it, and the list as it was.
    void NoteHandover(const Doer& by, const Text& note, const Text& list);

    /// One line for each deed, for several in a row one with their count.
    void Log(JournalKind kind, const Doer& by, const Text& subject);

    /// Behind a crash: the service modes that were set since the last clean stop are set again.
    void TakeUpServiceModes(Translations& translations);
    /// At the start, behind that: the modes that objects have now, which came from files that are to go.
    void NoteServiceModes(const Translations& translations);

 private:
    EventCommit& commit_;
    const Language& language_;
    SysLog& log_;
};

}  // namespace nordkeep
