#pragma once

#include "platform/Text.h"

namespace nordkeep {

// Places of an object's files below the data folder. A "/" in a set's name is a folder of its own; what in a
// level of it cannot stand as a file name is replaced.

/// "Information\<set>\<ID code>.TXT"; empty for a code that has no file, such as one with ":" or "/".
Text InformationFile(TextView set, TextView idCode);
/// "Information\<set>\<ID code>\<type code>.TXT"; empty when one of the codes has no file.
Text TypeInformationFile(TextView set, TextView idCode, TextView typeCode);
/// "Comments\<set>\<ID code>.TXT"; what in the code cannot stand in a file name is replaced.
Text CommentFile(TextView set, TextView idCode);
/// "LogFiles\Objects\<object name>.LOG".
Text ObjectLogFile(TextView objectName);

}  // namespace nordkeep
