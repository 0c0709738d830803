// UTF-8 <-> UTF-16, shared by both platforms so that the DLL and the native
// host produce the same bytes. Malformed sequences become U+FFFD.
#include "platform.h"

namespace platform {

namespace {
constexpr char16_t kReplacement = 0xFFFD;

void AppendCodePoint(std::u16string& out, uint32_t cp) {
    if (cp < 0x10000) {
        out.push_back(static_cast<char16_t>(cp));
    } else {
        cp -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    }
}
}  // namespace

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string out;
    AppendUtf8AsUtf16(out, text);
    return out;
}

void AppendUtf8AsUtf16(std::u16string& out, std::string_view text) {
    out.reserve(out.size() + text.size());
    size_t i = 0;
    const size_t n = text.size();
    while (i < n) {
        // A run of ASCII goes over in one step, widened in place (appending
        // the narrow range would build a temporary string of it first).
        size_t ascii = i;
        while (ascii < n && static_cast<unsigned char>(text[ascii]) < 0x80) ++ascii;
        if (ascii > i) {
            const size_t at = out.size();
            out.resize(at + (ascii - i));
            char16_t* to = &out[at];
            for (size_t k = i; k < ascii; ++k) *to++ = static_cast<char16_t>(static_cast<unsigned char>(text[k]));
        }
        i = ascii;
        if (i == n) break;
        const auto b0 = static_cast<unsigned char>(text[i]);
        size_t len;
        uint32_t cp, min;
        if (b0 >= 0xC2 && b0 <= 0xDF) { len = 2; cp = b0 & 0x1F; min = 0x80; }
        else if (b0 >= 0xE0 && b0 <= 0xEF) { len = 3; cp = b0 & 0x0F; min = 0x800; }
        else if (b0 >= 0xF0 && b0 <= 0xF4) { len = 4; cp = b0 & 0x07; min = 0x10000; }
        else { out.push_back(kReplacement); ++i; continue; }
        size_t k = 1;
        for (; k < len && i + k < n; ++k) {
            const auto b = static_cast<unsigned char>(text[i + k]);
            if ((b & 0xC0) != 0x80) break;
            cp = (cp << 6) | (b & 0x3F);
        }
        if (k < len || cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            out.push_back(kReplacement);
            i += (k == 0 ? 1 : k);
            continue;
        }
        AppendCodePoint(out, cp);
        i += len;
    }
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        uint32_t cp = text[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size() &&
            text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = kReplacement;  // lone surrogate
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

namespace {
ShellOpenHook& Hook() {
    static ShellOpenHook hook;
    return hook;
}
}  // namespace

bool ShellOpenNative(std::u16string_view target);  // per platform

void SetShellOpenHook(ShellOpenHook hook) { Hook() = std::move(hook); }

bool ShellOpen(std::u16string_view target) {
    if (Hook()) return Hook()(target);
    return ShellOpenNative(target);
}

}  // namespace platform
