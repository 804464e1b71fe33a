#pragma once

#include "ports/formats/SiaDecoding.h"

namespace nordkeep {

/// One block of a SIA message: its function code and its data.
struct SiaBlock {
    char type = 0;
    Text data{};
    bool hasBackslashBehind = false;  // the receiver joins blocks of the length form with "\"
};

/// The blocks of a message. What stands between blocks is dropped, and the check bytes of the length form are
/// not looked at: some senders leave the last one away.
std::vector<SiaBlock> SplitSiaBlocks(TextView text, SiaForm form);

}  // namespace nordkeep
