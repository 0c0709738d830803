// Names the Olympus maker note gives only as codes: the camera type codes
// of the main and equipment directories, and the lens and extender types of
// the equipment directory.
#pragma once

#include <cstdint>

namespace makernotes {

// The model a camera type code ("D4040") stands for; null when unknown.
const char* OlympusCameraName(const char* code);

// The lens whose type bytes make (byte 0), model (byte 2) and sub-model
// (byte 3) are given; null when unknown.
const char* OlympusLensName(uint8_t make, uint8_t model, uint8_t subModel);

// The extender of the given make (byte 0) and model (byte 2); null when
// unknown.
const char* OlympusExtenderName(uint8_t make, uint8_t model);

}  // namespace makernotes
