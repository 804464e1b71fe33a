#pragma once

#include "console/lists/Captions.h"
#include "console/print/PrintDocument.h"
#include "platform/Clock.h"
#include "store/EventStore.h"
#include "translation/Translations.h"

namespace nordkeep {

/// What one shift tells the next: open alarms, objects in service, and supervision that has failed.
class ShiftList {
 public:
    struct Needs {
        const EventStore& store;
        const Translations& translations;
        const Captions& captions;
        const Clock& clock;
        const PrinterSettings& printerSettings;
    };
    explicit ShiftList(const Needs& needs) : needs_(needs) {}

    struct Part {
        Text heading{};
        std::vector<Text> lines{};
    };
    /// The three parts as they are at this moment.
    std::vector<Part> Parts() const;
    /// Parts on paper.
    PrintDocument DocumentOf(const std::vector<Part>& parts) const;
    PrintDocument Document() const { return DocumentOf(Parts()); }

 private:
    Part OpenAlarms() const;
    template <class Picks>
    Part Objects(int heading, Picks picks) const;

    Needs needs_;
};

}  // namespace nordkeep
