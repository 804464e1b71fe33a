#pragma once

#include "platform/Text.h"

namespace nordkeep {

// Places of an object's files below the data folder. A "/" in a set's name is a folder of its own; what in a
// name cannot stand as a file name is replaced.

/// "Information\<set>\<ID code>.TXT".
Text InformationFile(TextView set, TextView idCode);
/// "Information\<set>\<ID code>\<type code>.TXT".
Text TypeInformationFile(TextView set, TextView idCode, TextView typeCode);
/// "Comments\<set>\<ID code>.TXT".
Text CommentFile(TextView set, TextView idCode);
/// "LogFiles\Objects\<object name>.LOG".
Text ObjectLogFile(TextView objectName);

}  // namespace nordkeep
