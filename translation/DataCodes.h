#pragma once

#include "runtime/Settings.h"
#include "translation/Translate.h"

#include <optional>

namespace nordkeep {

/// The section of a set's data code file that explains a code.
enum class DataCodeSection { Event, Environmental };

/// What a data code file says of a code.
struct DataCode {
    Text name{};
    Text resetOrClass{};  // upper case: type code that resets it, or the class letter of a Contact ID code
    Text prio{};          // without blanks around; empty leaves the priority alone
};

/// A code that the file does not have stands for itself, as its name. None when there is nothing at all: an
/// empty code, or a key with an empty value.
std::optional<DataCode> FindDataCode(const Settings& settings, const cTranslate& set, DataCodeSection section,
                                     TextView code);

/// The readable form of a list of SIA modifiers ("items,separated by commas", up to the first empty one): the
/// two letters in front of each are translated.
Text ReadableModifiers(const Settings& settings, const cTranslate& set, TextView modifiers);

/// The text of an SIA object's zone, by type code and else in general; the address itself when it has none.
Text ZoneText(const Settings& settings, TextView idCode, TextView typeCode, TextView address);

}  // namespace nordkeep
