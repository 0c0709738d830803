#include "fixture/fixture.h"
#include "seeds.h"

static const fuzzseeds::Register kSeeds("xmp", [] {
    const std::string packet =
        "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta xmlns:x='adobe:ns:meta/'>"
        "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description rdf:about=''"
        " xmlns:dc='http://purl.org/dc/elements/1.1/' photoshop:City='X'><!-- c -->"
        "<dc:subject><rdf:Bag><rdf:li>a</rdf:li><rdf:li>b&amp;c</rdf:li></rdf:Bag></dc:subject>"
        "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T</rdf:li></rdf:Alt></dc:title>"
        "<photoshop:DateCreated>2023-07-14T10:22:05</photoshop:DateCreated>"
        "</rdf:Description></rdf:RDF></x:xmpmeta>   <?xpacket end='w'?>";
    auto segment = [](const std::string& p) {
        const fixture::Bytes b = fixture::JpegBuilder().App1Xmp(p).Build();
        return fixture::Bytes(b.begin() + 2, b.end());
    };
    std::string utf16;
    for (char c : packet) utf16 += std::string{'\0', c};
    // Other containers hand over the bare packet, the older ones in its "x:xapmeta" form.
    std::string older = packet;
    for (size_t at = older.find("xmpmeta"); at != std::string::npos; at = older.find("xmpmeta", at)) older.replace(at, 7, "xapmeta");
    return std::vector<fixture::Bytes>{segment(packet), segment(utf16), fixture::ToBytes(packet),
                                       segment("<x:xmpmeta><a></b></x:xmpmeta>"), fixture::ToBytes(older)};
});
