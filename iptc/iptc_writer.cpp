#include "iptc_writer.h"

#include <cstring>
#include <new>

#include "iptc_limits.h"
#include "platform/platform.h"
#include "jpeg/file_rewrite.h"
#include "photoshop_blocks.h"
#include "platform/text.h"

namespace iptc {
namespace {

constexpr char16_t kDefaultError[] = u"Can' write IPTC data.";
constexpr char16_t kTooLargeError[] =
    u"Can't write IPTC data!\n\nThe IPTC data is too large for a JPEG segment (more than 65535 bytes).";

const vv::RewriteMessages& Messages() {
    static const vv::RewriteMessages messages = vv::DataWriterMessages(u"IPTC");
    return messages;
}

// Fields written as one dataset each, in this order, after the record-1
// datasets; then Supplemental Category (one per line), Priority, Keywords
// (one per line), Copyright, Contact.
constexpr int kLeadingFields[] = {
    kCaption, kCaptionWriter, kHeadline, kSpecialInstructions, kByline, kBylineTitle,
    kCredit, kSource, kObjectName, kReferenceNumber, kCreatedDate, kCity,
    kSubLocation, kProvinceState, kCountryCode, kCountry, kTransmissionReference, kCategory,
};
// Multi-line fields that stay one dataset: a line break is stored as a lone CR.
constexpr int kLoneCrFields[] = {kCaption, kHeadline, kSpecialInstructions};

constexpr uint8_t kPhotoshopHeader[] = "Photoshop 3.0";  // with its NUL: 14 bytes
constexpr size_t kSegmentOverhead = 28;  // length field, header, "8BIM", id, name, size

using vv::WithPath;

// Each CR is kept and the character after it (the LF of CR LF) dropped.
std::u16string LoneCr(std::u16string_view text) {
    std::u16string out;
    for (size_t i = 0; i < text.size(); ++i) {
        out += text[i];
        if (text[i] == u'\r') ++i;
    }
    return out;
}

// One dataset per line: the text is cut at each CR, the character after it
// dropped; empty lines give no dataset.
void AppendLines(std::vector<uint8_t>& buffer, int dataset, uint32_t& length, std::u16string_view text) {
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r') continue;
        AppendIptcDataset(buffer, dataset, length, text.substr(start, i - start));
        ++i;
        start = i + 1;
    }
    if (start < text.size()) AppendIptcDataset(buffer, dataset, length, text.substr(start));
}


}  // namespace

void AppendIptcDataset(std::vector<uint8_t>& buffer, int dataset, uint32_t& length, std::u16string_view text) {
    std::string utf8 = platform::Utf16ToUtf8(text);
    utf8.resize(platform::Utf8CutLength(utf8, kWrittenTextBytes));  // never half a character
    if (utf8.empty()) return;
    buffer.push_back(0x1C);
    buffer.push_back(0x02);
    buffer.push_back(static_cast<uint8_t>(dataset));
    platform::PutU16Be(buffer, static_cast<uint32_t>(utf8.size()));
    buffer.insert(buffer.end(), utf8.begin(), utf8.end());
    length += 5 + static_cast<uint32_t>(utf8.size());
}

std::vector<uint8_t> BuildIptcBlock(const IptcData& data, uint32_t& length,
                                    const std::vector<IptcOccurrence>& earlier) {
    std::vector<uint8_t> block = {0, 0};
    uint32_t iim = 0;
    // Record 1: the character set (ESC % G, UTF-8), then the model version 4.
    static constexpr uint8_t kRecordOne[] = {0x1C, 0x01, 90, 0x00, 0x03, 0x1B, 0x25, 0x47,
                                             0x1C, 0x01, 0, 0x00, 0x02, 0x00, 0x04};
    block.insert(block.end(), std::begin(kRecordOne), std::end(kRecordOne));
    iim += sizeof kRecordOne;

    // One field's dataset, behind the earlier occurrences it keeps.
    auto single = [&](int dataset) {
        bool loneCr = false;
        for (int f : kLoneCrFields) loneCr |= f == dataset;
        auto append = [&](std::u16string_view text) {
            if (loneCr) AppendIptcDataset(block, dataset, iim, LoneCr(text));
            else AppendIptcDataset(block, dataset, iim, text);
        };
        for (const IptcOccurrence& occurrence : earlier)
            if (occurrence.dataset == dataset) append(occurrence.text);
        append(FieldView(IptcField(data, dataset)));
    };
    auto text = [&](int dataset) { return FieldView(IptcField(data, dataset)); };
    for (int dataset : kLeadingFields) single(dataset);
    AppendLines(block, kSupplementalCategory, iim, text(kSupplementalCategory));
    single(kPriority);
    AppendLines(block, kKeywords, iim, text(kKeywords));
    single(kCopyright);
    single(kContact);

    block[0] = static_cast<uint8_t>(iim >> 8);
    block[1] = static_cast<uint8_t>(iim);
    block.push_back(0);
    length = iim + 2;
    return block;
}

std::vector<IptcOccurrence> KeptOccurrences(const uint8_t* oldBlock, size_t length, const IptcData& data) {
    const std::vector<IptcOccurrence> all = ListIptcDatasets(oldBlock, length, true);
    std::vector<IptcOccurrence> kept;
    for (size_t i = 0; i < all.size(); ++i) {
        const int dataset = all[i].dataset;
        // The one field of a caption gathers every occurrence; keywords and
        // supplemental categories are written a dataset per line.
        if (dataset == kCaption || dataset == kKeywords || dataset == kSupplementalCategory) continue;
        const char16_t* field = IptcField(data, dataset);
        if (!field || dataset == kRecordVersion) continue;
        size_t last = i;
        for (size_t j = i + 1; j < all.size(); ++j)
            if (all[j].dataset == dataset) last = j;
        // Kept when it is not the last and the last still stands in the field.
        if (last != i && FieldView(field) == all[last].text) kept.push_back(all[i]);
    }
    return kept;
}

namespace {

std::vector<uint8_t> App13Segment(const std::vector<uint8_t>& block, uint32_t iim) {
    const bool pad = (iim + kSegmentOverhead) % 2 != 0;
    const uint32_t segmentLength = iim + static_cast<uint32_t>(kSegmentOverhead) + (pad ? 1 : 0);
    std::vector<uint8_t> segment = {0xFF, 0xED};
    platform::PutU16Be(segment, segmentLength);
    segment.insert(segment.end(), std::begin(kPhotoshopHeader), std::end(kPhotoshopHeader));
    segment.insert(segment.end(), {'8', 'B', 'I', 'M', 0x04, 0x04, 0x00, 0x00});
    platform::PutU16Be(segment, 0);
    platform::PutU16Be(segment, iim);
    segment.insert(segment.end(), block.begin() + 2, block.begin() + 2 + iim + (pad ? 1 : 0));
    return segment;
}

bool FitsASegment(uint32_t iim) { return iim <= kMaxSegmentLength - kSegmentOverhead - 1; }

// The new segment, the segments to drop and where the new one goes, as the
// file stands when it is rewritten; false when it no longer has the block
// that was read.
bool PlanReplacement(platform::File& file, uint32_t app13Offset, uint32_t app13Length, const IptcData& data,
                     std::vector<uint8_t>& segment, std::vector<jpeg::Segment>& remove, uint64_t& insertAt) {
    const std::vector<PhotoshopBlock> blocks = FindPhotoshopBlocks(file);
    const PhotoshopBlock* chosen = ChooseIptcBlock(blocks);
    if (!chosen && app13Length != 0) return false;
    if (chosen && (chosen->segments.front().offset != app13Offset || chosen->joinedLength != app13Length))
        return false;
    std::vector<IptcOccurrence> earlier;
    if (chosen && chosen->holdsIptc) {
        const std::vector<uint8_t> old = ReadPhotoshopBlock(file, *chosen, kSegmentSlack);
        earlier = KeptOccurrences(old.data(), chosen->joinedLength, data);
    }
    uint32_t blockLength = 0;
    std::vector<uint8_t> block = BuildIptcBlock(data, blockLength, earlier);
    if (!FitsASegment(blockLength - 2)) block = BuildIptcBlock(data, blockLength);  // the record alone fits
    segment = App13Segment(block, blockLength - 2);
    if (!chosen) return true;
    insertAt = app13Offset;
    for (const PhotoshopBlock& b : blocks)
        if (&b == chosen || b.holdsIptc) remove.insert(remove.end(), b.segments.begin(), b.segments.end());
    return true;
}

}  // namespace

int WriteIptcToJpeg(std::u16string_view fileName, uint32_t app13Offset, uint32_t app13Length,
                    const IptcData& data, std::u16string& errorText) {
    errorText = kDefaultError;
    if (vv::RefusedUnread(fileName, Messages(), errorText)) return 0;
    try {
        uint32_t blockLength = 0;
        BuildIptcBlock(data, blockLength);
        if (blockLength < 3 && app13Length == 0) return 1;
        if (!FitsASegment(blockLength - 2)) {
            errorText = kTooLargeError;
            return 0;
        }
        const vv::SegmentPlan plan = [&](platform::File& file, std::vector<uint8_t>& segment,
                                         std::vector<jpeg::Segment>& remove, uint64_t& insertAt) {
            return PlanReplacement(file, app13Offset, app13Length, data, segment, remove, insertAt);
        };
        return vv::ReplaceJpegSegments(fileName, plan, data.keepOrgDate != 0, Messages(), errorText);
    } catch (const std::bad_alloc&) {
        errorText = Messages().memory;
        return 0;
    }
}

}  // namespace iptc
