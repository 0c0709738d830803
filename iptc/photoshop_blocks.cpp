#include "photoshop_blocks.h"

#include <algorithm>
#include <cstring>

#include "iptc_limits.h"

namespace iptc {
namespace {

constexpr char kPhotoshopHeader[] = "Photoshop 3.0";  // and its NUL: 14 bytes
constexpr size_t kHeaderBytes = sizeof kPhotoshopHeader;
constexpr uint16_t kIptcResource = 0x0404;
constexpr char kIptcResourceStart[] = {'8', 'B', 'I', 'M', 0x04, 0x04};
constexpr char kSignatures[][5] = {"8BIM", "PHUT", "AgHg", "DCSR", "MeSa"};

bool IsPhotoshopSegment(platform::File& file, const jpeg::Segment& segment) {
    return segment.marker == jpeg::kApp13 && segment.length >= 2 + kHeaderBytes &&
           jpeg::PayloadStartsWith(file, segment, kPhotoshopHeader, kHeaderBytes);
}

// The resources of segments in a row, read as the one stream they form:
// each segment's payload behind its header, one after the other.
class RunStream {
public:
    RunStream(platform::File& file, const std::vector<jpeg::Segment>& run) : file_(file, platform::ByteOrder::kBig) {
        for (const jpeg::Segment& s : run) {
            ranges_.push_back({s.payload() + kHeaderBytes, s.end(), size_});
            size_ += s.end() - (s.payload() + kHeaderBytes);
        }
    }
    uint64_t size() const { return size_; }
    // The stream offset where segment i's part ends.
    uint64_t EndOf(size_t i) const { return ranges_[i].streamStart + (ranges_[i].end - ranges_[i].begin); }

    // n bytes from stream offset `at`, across segment boundaries; false when
    // the stream or the file ends first.
    bool Read(uint64_t at, uint8_t* out, size_t n) const {
        for (const Range& r : ranges_) {
            const uint64_t length = r.end - r.begin;
            if (n == 0) break;
            if (at >= r.streamStart + length) continue;
            const uint64_t inside = at - r.streamStart;
            const size_t take = static_cast<size_t>(std::min<uint64_t>(n, length - inside));
            if (!file_.ChildAt(r.begin + inside, take).Bytes(out, take)) return false;
            out += take;
            n -= take;
            at += take;
        }
        return n == 0;
    }

private:
    struct Range {
        uint64_t begin, end;   // in the file
        uint64_t streamStart;  // in the stream
    };
    platform::Cursor file_;
    std::vector<Range> ranges_;
    uint64_t size_ = 0;
};

struct Resource {
    uint64_t start, end;  // in the stream, padding included
    uint16_t id;
};

// Reads resource headers from the start of the stream; `parsedTo` is where
// the reading stopped: the stream's size, or the first place that did not
// read as a resource.
std::vector<Resource> ReadResources(const RunStream& stream, uint64_t& parsedTo) {
    std::vector<Resource> resources;
    uint64_t at = 0;
    while (at < stream.size() && resources.size() < kPhotoshopResourceLimit) {
        uint8_t head[7];  // signature, id, the name's length byte
        if (!stream.Read(at, head, sizeof head)) break;
        const bool known = std::any_of(std::begin(kSignatures), std::end(kSignatures),
                                       [&](const char* s) { return std::memcmp(head, s, 4) == 0; });
        if (!known) break;
        const uint64_t name = (1u + head[6] + 1u) & ~1u;  // length byte and characters, made even
        uint8_t size[4];
        if (!stream.Read(at + 6 + name, size, sizeof size)) break;
        const uint64_t data = uint64_t{size[0]} << 24 | size[1] << 16 | size[2] << 8 | size[3];
        const uint64_t end = at + 6 + name + 4 + data + (data & 1);
        resources.push_back({at, end, static_cast<uint16_t>(head[4] << 8 | head[5])});
        at = end;
    }
    parsedTo = std::min(at, stream.size());
    return resources;
}

bool ScanForIptc(platform::File& file, const PhotoshopBlock& block) {
    const std::vector<uint8_t> bytes = ReadPhotoshopBlock(file, block, 0);
    return std::search(bytes.begin(), bytes.end(), std::begin(kIptcResourceStart), std::end(kIptcResourceStart)) !=
           bytes.end();
}

// Splits a run of segments, one right behind the other, into blocks.
void SplitRun(platform::File& file, const std::vector<jpeg::Segment>& run, std::vector<PhotoshopBlock>& blocks) {
    const RunStream stream(file, run);
    uint64_t parsedTo = 0;
    const std::vector<Resource> resources = ReadResources(stream, parsedTo);
    // A segment boundary inside a resource joins the segments on both sides;
    // behind the place the resources stopped reading, nothing is joined.
    auto joined = [&](uint64_t boundary) {
        return boundary < parsedTo && std::any_of(resources.begin(), resources.end(), [&](const Resource& r) {
                   return r.start < boundary && boundary < r.end;
               });
    };
    uint64_t blockStart = 0;
    for (size_t i = 0; i < run.size(); ++i) {
        if (i == 0 || !joined(stream.EndOf(i - 1))) {
            blocks.emplace_back();
            blocks.back().joinedLength = run[i].length;
            blockStart = i == 0 ? 0 : stream.EndOf(i - 1);
        } else {
            blocks.back().joinedLength += run[i].length - 2 - static_cast<uint32_t>(kHeaderBytes);
        }
        PhotoshopBlock& block = blocks.back();
        block.segments.push_back(run[i]);
        const bool last = i + 1 == run.size() || !joined(stream.EndOf(i));
        if (!last) continue;
        const uint64_t blockEnd = stream.EndOf(i);
        block.holdsIptc = std::any_of(resources.begin(), resources.end(), [&](const Resource& r) {
            return r.id == kIptcResource && r.start >= blockStart && r.start < blockEnd;
        });
        // Where the resources did not read, the datasets are looked for as
        // the IPTC reader looks for them: by their resource's first bytes.
        if (!block.holdsIptc && parsedTo < blockEnd) block.holdsIptc = ScanForIptc(file, block);
    }
}

}  // namespace

std::vector<PhotoshopBlock> FindPhotoshopBlocks(platform::File& file) {
    std::vector<PhotoshopBlock> blocks;
    jpeg::MarkerWalk walk(file, 2, jpeg::WalkRules{});
    std::vector<jpeg::Segment> run;
    jpeg::Segment segment;
    size_t seen = 0;
    while (seen < kPhotoshopSegmentLimit && walk.Next(segment)) {
        if (!IsPhotoshopSegment(file, segment)) continue;
        ++seen;
        // Only a segment right behind the one before continues its resources.
        if (!run.empty() && run.back().end() != segment.offset) {
            SplitRun(file, run, blocks);
            run.clear();
        }
        run.push_back(segment);
    }
    if (!run.empty()) SplitRun(file, run, blocks);
    return blocks;
}

const PhotoshopBlock* ChooseIptcBlock(const std::vector<PhotoshopBlock>& blocks) {
    for (const PhotoshopBlock& block : blocks)
        if (block.holdsIptc) return &block;
    return blocks.empty() ? nullptr : &blocks.front();
}

std::vector<uint8_t> ReadPhotoshopBlock(platform::File& file, const PhotoshopBlock& block, size_t slack) {
    std::vector<uint8_t> bytes(size_t{block.joinedLength} + slack, 0);
    const platform::Cursor whole(file, platform::ByteOrder::kBig);
    size_t at = 0;
    for (size_t i = 0; i < block.segments.size(); ++i) {
        const jpeg::Segment& s = block.segments[i];
        // The first segment from its length field on, the others behind their header.
        const uint64_t from = i == 0 ? s.offset + 2 : s.payload() + kHeaderBytes;
        const size_t n = static_cast<size_t>(s.end() - from);
        whole.ChildAt(from, n).Some(bytes.data() + at, n);  // a short read leaves zeros
        at += n;
    }
    return bytes;
}

}  // namespace iptc
