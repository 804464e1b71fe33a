#pragma once

#include "translation/IdCodeFile.h"
#include "translation/LastEvents.h"
#include "translation/Translations.h"

namespace nordkeep {

/// Reads the files of one set into it. Objects that stay in the file stay the same records, with their state;
/// those that left it keep their mark.
class SetLoader {
 public:
    SetLoader(const Translations::Needs& needs, cTranslate& set)
        : needs_(needs), set_(set), now_(needs.clock.Now()) {}

    void Load(bool loadLastEvents);

 private:
    bool LoadObjects();
    void TakeRows(const std::vector<IdCodeRow>& rows);
    void TakeRow(const IdCodeRow& row, cIDCode& object) const;
    void TakeSchedule(cIDCode& object, int test, Text& schedule, TextView newSchedule) const;
    void LoadTypes();
    void LoadLastEvents();
    void TakeLastEvents(const LastEventsLine& line, cIDCode& object);
    void StartTests(cIDCode& object) const;
    void StartTest(cIDCode& object, int test, bool isWanted) const;

    const Translations::Needs& needs_;
    cTranslate& set_;
    OleDate now_;
};

}  // namespace nordkeep
