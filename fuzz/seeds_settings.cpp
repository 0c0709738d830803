#include "seeds.h"

static const fuzzseeds::Register kSeeds("settings", [] {
    return std::vector<fixture::Bytes>{
        fixture::ToBytes("[EXIF]\r\nHideTags=271,272\r\nSatellite=1\r\n[Viewing]\r\nDarkMode=1\r\n"),
        fixture::ToBytes("\xEF\xBB\xBF[IPTC]\nCity = \"Z\xC3\xBCrich\"\n[WinPosition]\nEXIF=1 2 3 4"),
        fixture::ToBytes("[broken\nkey\n=value\n[]\n"),
    };
});
