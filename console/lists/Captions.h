#pragma once

#include "runtime/Language.h"

#include <initializer_list>
#include <span>

namespace nordkeep {

/// A caption that the program brings itself, for a language file that does not have it.
struct BuiltInCaption {
    int number = 0;
    const char* utf8 = "";  // Swedish
};

/// All captions of the console, by ascending number (3000 and up).
std::span<const BuiltInCaption> BuiltInCaptions();

/// The captions of menus, buttons, headings and words on the screen. Every one can be replaced by the
/// language file; a row that is missing or empty there leaves the built-in text.
class Captions {
 public:
    explicit Captions(const Language& language) : language_(language) {}

    /// The caption of a number of the table; an empty text for a number that is not in it.
    Text operator()(int number) const;
    /// The caption with %1, %2 ... replaced by the values. A value is taken as it is: a % in it stays.
    Text operator()(int number, std::initializer_list<TextView> values) const;
    /// A text that only the language file has, such as a column's heading.
    Text FromFile(int number) const { return language_.GetLanguageText(number); }
    bool IsInFile(int number) const { return language_.Has(number); }

 private:
    const Language& language_;
};

}  // namespace nordkeep
