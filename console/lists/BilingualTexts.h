#pragma once

namespace nordkeep {

// Texts of the moments in which no language has been loaded yet: both languages at once, in UTF-8.
inline constexpr const char* kBilingualChooseLanguage = "Välj språk / Choose language";
inline constexpr const char* kBilingualOk = "OK";
inline constexpr const char* kBilingualCancel = "Avbryt / Cancel";
inline constexpr const char* kBilingualYes = "&Ja / Yes";
inline constexpr const char* kBilingualNo = "&Nej / No";

}  // namespace nordkeep
