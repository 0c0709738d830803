#include "canon_tables.h"

#include <cstddef>

namespace makernotes {
namespace {

struct Named {
    uint32_t id;
    const char* name;
};

template <size_t N>
const char* Lookup(const Named (&rows)[N], uint32_t id) {
    for (const Named& r : rows)
        if (r.id == id) return r.name;
    return nullptr;
}

// EOS bodies. The older IDs carry the top bit; the newest models count on
// from small numbers.
constexpr Named kModels[] = {
    {0x80000001, "EOS-1D"},
    {0x80000167, "EOS-1DS"},
    {0x80000168, "EOS 10D"},
    {0x80000169, "EOS-1D Mark III"},
    {0x80000170, "EOS Digital Rebel / 300D / Kiss Digital"},
    {0x80000174, "EOS-1D Mark II"},
    {0x80000175, "EOS 20D"},
    {0x80000176, "EOS Digital Rebel XSi / 450D / Kiss X2"},
    {0x80000188, "EOS-1Ds Mark II"},
    {0x80000189, "EOS Digital Rebel XT / 350D / Kiss Digital N"},
    {0x80000190, "EOS 40D"},
    {0x80000213, "EOS 5D"},
    {0x80000215, "EOS-1Ds Mark III"},
    {0x80000218, "EOS 5D Mark II"},
    {0x80000232, "EOS-1D Mark II N"},
    {0x80000234, "EOS 30D"},
    {0x80000236, "EOS Digital Rebel XTi / 400D / Kiss Digital X"},
    {0x80000250, "EOS 7D"},
    {0x80000252, "EOS Rebel T1i / 500D / Kiss X3"},
    {0x80000254, "EOS Rebel XS / 1000D / Kiss F"},
    {0x80000261, "EOS 50D"},
    {0x80000269, "EOS-1D X"},
    {0x80000270, "EOS Rebel T2i / 550D / Kiss X4"},
    {0x80000281, "EOS-1D Mark IV"},
    {0x80000285, "EOS 5D Mark III"},
    {0x80000286, "EOS Rebel T3i / 600D / Kiss X5"},
    {0x80000287, "EOS 60D"},
    {0x80000288, "EOS Rebel T3 / 1100D / Kiss X50"},
    {0x80000289, "EOS 7D Mark II"},
    {0x80000301, "EOS Rebel T4i / 650D / Kiss X6i"},
    {0x80000302, "EOS 6D"},
    {0x80000325, "EOS 70D"},
    {0x80000326, "EOS Rebel T5i / 700D / Kiss X7i"},
    {0x80000328, "EOS-1D X Mark II"},
    {0x80000331, "EOS M"},
    {0x80000346, "EOS Rebel SL1 / 100D / Kiss X7"},
    {0x80000349, "EOS 5D Mark IV"},
    {0x80000350, "EOS 80D"},
    {0x80000382, "EOS 5DS"},
    {0x80000401, "EOS 5DS R"},
    {0x80000406, "EOS 6D Mark II"},
    {0x80000408, "EOS 77D / 9000D"},
    {0x80000421, "EOS R5"},
    {0x80000424, "EOS R"},
    {0x80000428, "EOS-1D X Mark III"},
    {0x80000433, "EOS RP"},
    {0x80000437, "EOS 90D"},
    {0x80000453, "EOS R6"},
    {0x80000464, "EOS R7"},
    {0x412, "EOS M50 / Kiss M"},
};

// Canon's own EF, EF-S and EF-M lenses whose type number names one lens only.
constexpr Named kLenses[] = {
    {1, "Canon EF 50mm f/1.8"},
    {11, "Canon EF 35mm f/2"},
    {13, "Canon EF 15mm f/2.8 Fisheye"},
    {29, "Canon EF 50mm f/1.8 II"},
    {39, "Canon EF 75-300mm f/4-5.6"},
    {40, "Canon EF 28-80mm f/3.5-5.6"},
    {48, "Canon EF-S 18-55mm f/3.5-5.6 IS"},
    {49, "Canon EF-S 55-250mm f/4-5.6 IS"},
    {50, "Canon EF-S 18-200mm f/3.5-5.6 IS"},
    {51, "Canon EF-S 18-135mm f/3.5-5.6 IS"},
    {52, "Canon EF-S 18-55mm f/3.5-5.6 IS II"},
    {53, "Canon EF-S 18-55mm f/3.5-5.6 III"},
    {54, "Canon EF-S 55-250mm f/4-5.6 IS II"},
    {142, "Canon EF 300mm f/2.8L IS USM"},
    {149, "Canon EF 100mm f/2 USM"},
    {165, "Canon EF 70-200mm f/2.8L USM"},
    {176, "Canon EF 24-85mm f/3.5-4.5 USM"},
    {177, "Canon EF 300mm f/4L IS USM"},
    {178, "Canon EF 28-135mm f/3.5-5.6 IS"},
    {179, "Canon EF 24mm f/1.4L USM"},
    {186, "Canon EF 70-200mm f/4L USM"},
    {190, "Canon EF 100mm f/2.8 Macro USM"},
    {214, "Canon EF-S 18-55mm f/3.5-5.6 USM"},
    {224, "Canon EF 70-200mm f/2.8L IS USM"},
    {229, "Canon EF 16-35mm f/2.8L USM"},
    {230, "Canon EF 24-70mm f/2.8L USM"},
    {232, "Canon EF 70-300mm f/4.5-5.6 DO IS USM"},
    {233, "Canon EF 28-300mm f/3.5-5.6L IS USM"},
    {235, "Canon EF-S 10-22mm f/3.5-4.5 USM"},
    {236, "Canon EF-S 60mm f/2.8 Macro USM"},
    {237, "Canon EF 24-105mm f/4L IS USM"},
    {238, "Canon EF 70-300mm f/4-5.6 IS USM"},
    {241, "Canon EF 50mm f/1.2L USM"},
    {242, "Canon EF 70-200mm f/4L IS USM"},
    {246, "Canon EF 16-35mm f/2.8L II USM"},
    {247, "Canon EF 14mm f/2.8L II USM"},
    {488, "Canon EF-S 15-85mm f/3.5-5.6 IS USM"},
    {489, "Canon EF 70-300mm f/4-5.6L IS USM"},
    {490, "Canon EF 8-15mm f/4L Fisheye USM"},
    {503, "Canon EF 24mm f/2.8 IS USM"},
    {504, "Canon EF 24-70mm f/4L IS USM"},
    {505, "Canon EF 35mm f/2 IS USM"},
    {507, "Canon EF 16-35mm f/4L IS USM"},
    {751, "Canon EF 16-35mm f/2.8L III USM"},
    {752, "Canon EF 24-105mm f/4L IS II USM"},
    {753, "Canon EF 85mm f/1.4L IS USM"},
    {754, "Canon EF 70-200mm f/4L IS II USM"},
    {4142, "Canon EF-S 18-135mm f/3.5-5.6 IS STM"},
    {4144, "Canon EF 40mm f/2.8 STM"},
    {4145, "Canon EF-M 22mm f/2 STM"},
    {4146, "Canon EF-S 18-55mm f/3.5-5.6 IS STM"},
    {4147, "Canon EF-M 11-22mm f/4-5.6 IS STM"},
    {4148, "Canon EF-S 55-250mm f/4-5.6 IS STM"},
    {4149, "Canon EF-M 55-200mm f/4.5-6.3 IS STM"},
    {4150, "Canon EF-S 10-18mm f/4.5-5.6 IS STM"},
    {4152, "Canon EF 24-105mm f/3.5-5.6 IS STM"},
    {4153, "Canon EF-M 15-45mm f/3.5-6.3 IS STM"},
    {4154, "Canon EF-S 24mm f/2.8 STM"},
    {4155, "Canon EF-M 28mm f/3.5 Macro IS STM"},
    {4156, "Canon EF 50mm f/1.8 STM"},
    {4157, "Canon EF-M 18-150mm f/3.5-6.3 IS STM"},
    {4158, "Canon EF-S 18-55mm f/4-5.6 IS STM"},
    {4159, "Canon EF-M 32mm f/1.4 STM"},
    {4160, "Canon EF-S 35mm f/2.8 Macro IS STM"},
    {36910, "Canon EF 70-300mm f/4-5.6 IS II USM"},
    {36912, "Canon EF-S 18-135mm f/3.5-5.6 IS USM"},
    {65535, "n/a"},
};

template <size_t N>
constexpr bool IdsUnique(const Named (&rows)[N]) {
    for (size_t i = 0; i < N; ++i)
        for (size_t j = i + 1; j < N; ++j)
            if (rows[i].id == rows[j].id) return false;
    return true;
}
static_assert(IdsUnique(kModels) && IdsUnique(kLenses), "each ID once");

}  // namespace

const char* CanonModelName(uint32_t modelId) { return Lookup(kModels, modelId); }

const char* CanonLensName(uint16_t lensType) { return Lookup(kLenses, lensType); }

}  // namespace makernotes
