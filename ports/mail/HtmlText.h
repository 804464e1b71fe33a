#pragma once

#include "platform/Text.h"

namespace nordkeep {

/// What a reader sees of a page, as plain text in UTF-8: without tags, scripts and styles, a line for each
/// block, no blanks at the ends of lines and no empty lines in front.
std::string TextOfHtml(std::string_view utf8);

}  // namespace nordkeep
