// Value texts that several makers word alike, defined once: a maker's
// enumeration names one of these instead of a list of its own.
#pragma once

#include "makernote_directory.h"

namespace makernotes {

inline constexpr ValueText kOffOnTexts[] = {{0, "Off"}, {1, "On"}};
inline constexpr ValueText kNoYesTexts[] = {{0, "No"}, {1, "Yes"}};
inline constexpr ValueText kAutoManualTexts[] = {{0, "Auto"}, {1, "Manual"}};

}  // namespace makernotes
