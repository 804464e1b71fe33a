#pragma once

#include "runtime/DataFiles.h"
#include "translation/Translations.h"

#include <vector>

namespace nordkeep {

/// An instruction for one type or event code of an object, as a person chooses it.
struct CodeText {
    Text code{};
    Text caption{};  // with " *" behind when the file exists
};

/// As runtime/ObjectFiles.h has it; empty also without a set.
Text CodeInfoFile(const Text& set, const Text& idCode, const Text& code);
/// One for each type of a set, without marks.
std::vector<CodeText> TypeTextsOf(const cTranslate& set);
/// One for each event code of a set, without marks. On a client the server is asked.
std::vector<CodeText> EventTextsOf(DataFiles& files, const Text& set);
/// The captions with marks for the instructions of an object that exist. One look at the folder.
std::vector<CodeText> MarkedItems(DataFiles& files, const Text& set, const Text& idCode,
                                  std::vector<CodeText> items);

}  // namespace nordkeep
