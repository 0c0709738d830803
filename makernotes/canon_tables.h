// Canon's numbered lists: the camera bodies by the model ID the note records,
// and the lenses by the lens type of the camera settings.
#pragma once

#include <cstdint>

namespace makernotes {

// The body's name for a model ID; null for an ID not listed.
const char* CanonModelName(uint32_t modelId);

// The lens's name for a lens type; null for a type not listed.
const char* CanonLensName(uint16_t lensType);

}  // namespace makernotes
