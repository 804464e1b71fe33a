#pragma once

#include <string_view>

namespace nordkeep {

/// The page for people: one document in UTF-8 that needs nothing from elsewhere.
extern const std::string_view kStatusPage;

}  // namespace nordkeep
