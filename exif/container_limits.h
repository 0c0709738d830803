// Every bound the container locators put on a walk, each with its reason.
// A locator that reaches one of them gives up and reports "not found".
#pragma once

#include <cstddef>
#include <cstdint>

namespace exif {

// The dispatch recognises a container by its first kilobyte.
constexpr size_t kContainerHeadBytes = 1024;
// Scan positions 0 .. 1012: "Exif", its two padding bytes and a TIFF
// byte-order mark (or a JPEG XL offset word before it) end inside the kilobyte.
constexpr size_t kContainerScanPositions = 1013;
// Top-level boxes of an ISO media file or JPEG XL container: the metadata sits
// among the first few, and mdat-sized boxes are stepped over in one seek.
constexpr uint32_t kMaxTopLevelBoxes = 50;
// Children of "meta" or of the Canon "uuid" box: real files have about a dozen.
constexpr uint32_t kMaxChildBoxes = 32;
// Items looked at in "iinf" and "iloc": a photo has a few hundred tiles at
// most, and a hostile count must not make us read millions of entries.
constexpr uint32_t kMaxHeifItems = 1024;
// Bytes after an HEIF Exif item's offset word searched for the TIFF header
// when that word does not point at one ("Exif\0\0" and some slack).
constexpr size_t kHeifTiffSearchBytes = 32;
// PNG and RIFF chunks walked: an animated WebP has one chunk per frame before
// its EXIF chunk, so this is generous; it only caps a file of tiny chunks.
constexpr uint32_t kMaxChunks = 1u << 20;
// Image resources of a Photoshop document walked: a document has a few dozen.
constexpr uint32_t kMaxPsdResources = 4096;
// Entries of one BigTIFF directory taken over into its classic rendering:
// the walker passes over a directory of more than 256 anyway.
constexpr uint32_t kMaxBigTiffEntries = 512;
// Values of one LONG8 entry rendered as LONGs (strip offsets and counts): a
// row lists 64 numbers at most.
constexpr uint32_t kMaxBigTiffLongs = 1024;

}  // namespace exif
