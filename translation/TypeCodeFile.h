#pragma once

#include "platform/Text.h"
#include "translation/Translate.h"

#include <vector>

namespace nordkeep {

/// The rows of a .TypeCode file ("type;priority;name;reset type"), equal codes included.
std::vector<cTypeCode> ReadTypeCodeFile(TextView content);

/// Place of a set's file below the data folder.
Text TypeCodeFileName(TextView set);

}  // namespace nordkeep
