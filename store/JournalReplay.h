#pragma once

#include "store/EventFolder.h"
#include "store/StoreParts.h"
#include "store/StoreSettings.h"

#include <map>

namespace nordkeep {

/// What a start does behind a crash or a power cut: the entries that had not reached the event files for sure
/// are played onto them. A file that is missing, torn or older is written again; a removed one goes, and its
/// line in the archive is there.
class JournalReplay {
 public:
    JournalReplay(const StoreParts& parts, const StoreSettings& settings, Journal& journal,
                  DurableWrites& disk)
        : parts_(parts), settings_(settings), journal_(journal), disk_(disk) {}

    /// To be called in front of LoadEvents. False, with a line in the log, when something could not be
    /// played; it is tried again at the next start.
    bool Run();

 private:
    struct LastState {
        bool isRemoved = false;
        std::string data{};
    };

    void Take(const JournalRow& row);
    bool WriteFiles(bool mayChange);
    bool WriteOne(const Text& pointer, const LastState& state, bool mayChange);
    bool CompleteArchive();
    bool Synchronise();

    const StoreParts& parts_;
    const StoreSettings& settings_;
    Journal& journal_;
    DurableWrites& disk_;
    std::map<Text, LastState> states_{};
    std::vector<Text> archived_{};
    std::size_t written_ = 0;
};

}  // namespace nordkeep
