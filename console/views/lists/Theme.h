#pragma once

#include "console/lists/RowModel.h"

#include <QtGui/QColor>
#include <QtGui/QPalette>

namespace nordkeep {

/// The colours of all windows, by the setting of this name.
enum class ColorScheme { Desktop, Light, Dark, BlackOnWhite, WhiteOnBlack };
/// From now on, for all windows; a number that is none is the desktop's.
void ApplyColorScheme(int number);

/// Black and white alone: signs and words carry all.
bool IsHighContrast(const QPalette& palette);
/// Behind a row; invalid for the ground of the list.
QColor GroundColor(RowGround ground, const QPalette& palette);
/// For texts that matter less.
QColor MutedColor(const QPalette& palette);

}  // namespace nordkeep
