#pragma once

#include "console/lists/AlarmColors.h"
#include "console/lists/Captions.h"
#include "console/setup/Descriptor.h"
#include "platform/FileTree.h"

namespace nordkeep {

/// What a value is held against.
struct CheckGround {
    const Captions& captions;
    const FileTree& dataFolder;
    bool seesFiles = true;  // the files that the value names are on this machine
};

/// What is wrong with the value of a key, in a sentence; empty for nothing.
Text FaultOf(const DescribedKey& key, TextView value, const CheckGround& ground);

/// The two colours of "background;text"; none of both unless each has its six digits.
CellColors ColorsOfPair(TextView text);
/// The same as a settings file says it.
Text PairText(const CellColors& colors);
/// A colour as the number of a settings file, red in the lowest byte.
Text ColorNumber(Rgb color);

/// Luminance contrast of two colours, 1 to 21.
double Contrast(Rgb first, Rgb second);
/// "5.2", as it is told.
Text ContrastText(double contrast);
/// From here on a text can be read.
inline constexpr double kLeastContrast = 4.5;

}  // namespace nordkeep
