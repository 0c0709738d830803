// Value texts that several makers word alike, defined once: a maker's
// enumeration names one of these instead of a list of its own.
#pragma once

#include "makernote_directory.h"

namespace makernotes {

inline constexpr ValueText kOffOnTexts[] = {{0, "Off"}, {1, "On"}};
inline constexpr ValueText kNoYesTexts[] = {{0, "No"}, {1, "Yes"}};
inline constexpr ValueText kAutoManualTexts[] = {{0, "Auto"}, {1, "Manual"}};

// The Minolta and Sony A-mount teleconverters, as both makers' notes number them.
inline constexpr ValueText kTeleconverterTexts[] = {
    {0x00, "None"},
    {0x04, "Minolta/Sony AF 1.4x APO (D) (0x04)"}, {0x05, "Minolta/Sony AF 2x APO (D) (0x05)"},
    {0x48, "Minolta/Sony AF 2x APO (D)"},           {0x50, "Minolta AF 2x APO II"},
    {0x60, "Minolta AF 2x APO"},                    {0x88, "Minolta/Sony AF 1.4x APO (D)"},
    {0x90, "Minolta AF 1.4x APO II"},               {0xa0, "Minolta AF 1.4x APO"},
};

}  // namespace makernotes
