#pragma once

#include "platform/FileTree.h"

namespace nordkeep {

/// A sound file of our own making, for alarms of priority 1, 2, and 3 and lower: the more urgent, the more
/// tones and the higher. It ends with the pause that a repetition needs.
Text AlarmTone(int priority);

/// Sounds\\Alarm1.wav to Alarm3.wav, for a new installation; a file that is there stays.
void WriteAlarmTones(const FileTree& dataFolder);

}  // namespace nordkeep
