// Sony's numbered lists: the bodies by the model ID of tag B001, and the
// A-mount and E-mount lenses by the lens types the bodies record.
#pragma once

#include <cstdint>

namespace makernotes {

// The kinds of body, told apart by the name of the model: what a body
// records, and how, follows its kind.
enum class SonyBody : uint8_t {
    kUnknown,  // a model ID not listed
    kDslr,     // DSLR-...: A-mount with a mirror
    kSlt,      // SLT-...: A-mount with a fixed translucent mirror
    kIlca,     // ILCA-...: the later A-mount bodies
    kEmount,   // NEX-, ILCE-, ILME-, ZV-E...
    kCompact,  // DSC-... and the other fixed-lens cameras
};

struct SonyLens {
    uint16_t id;
    const char* name;
    bool shared = false;  // other lenses report this type too
};
constexpr bool kShared = true;

// The body's name for a model ID; null for an ID not listed.
const char* SonyModelName(uint32_t id);
SonyBody SonyBodyOf(uint32_t id);

// The lens with this type; null for a type not listed.
const SonyLens* FindAmountLens(uint32_t type);
const SonyLens* FindEmountLens(uint32_t type);

}  // namespace makernotes
