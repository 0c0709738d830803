// vvmeta: does what the viewer does with the plug-in and prints the answers.
// The same program is built natively (core linked in) and for Windows
// (Metadata.dll loaded by name); both print the same bytes for the same file.
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "../platform/platform.h"
#include "plugin_host.h"

namespace vvmeta {

const char* const kExportNames[13] = {
    "GetPlugInInfo",   "ClosePlugin",      "Get_EXIF_Window",  "GetExifInfos",   "LoadData_EXIF_W",
    "LoadTag_EXIF_W",  "Show_EXIF_Info_W", "Create_EXIF_Data_W", "LoadData_IPTC_W", "LoadTag_IPTC_W",
    "Show_IPTC_Info_W", "Load_Comment_W",  "Show_JPG_Comment_W",
};

namespace {

constexpr int kExitOk = 0, kExitUnreadable = 1, kExitUsage = 2, kExitNotAvailable = 3;
constexpr int32_t kDefaultCapacity = 262144;

const char kUsage[] =
    "usage: vvmeta COMMAND [OPTIONS] [FILE]\n"
    "\n"
    "Calls the Vantaview metadata plug-in as the viewer does and prints its answers (UTF-8).\n"
    "\n"
    "commands:\n"
    "  info                          the plug-in's version and description\n"
    "  exports                       each of the thirteen exports, found or missing\n"
    "  show FILE                     EXIF, IPTC and comment of FILE (the default: vvmeta FILE)\n"
    "  exif [--mode N] FILE          EXIF lines; N is 1 (values), 2 (tag=value) or 3 (name - value, the default)\n"
    "  tag [--capacity N] TAG FILE   one EXIF tag by number (decimal or 0x hex; 499 = GPS position);\n"
    "                                a capacity of -1 or -2 is the action code (KML / web map)\n"
    "  exifinfo [--format CODE] FILE offset and size of the EXIF data (CODE: 115 HEIF, 3 PNG, 118 CR3)\n"
    "  iptc [--mode N] FILE          IPTC lines in mode N (default 3)\n"
    "  iptctag DATASET FILE          one IPTC dataset by number\n"
    "  comment [--formats LIST] FILE the comment export (LIST default \";PNG;\")\n"
    "  readcomment [--settings INI] FILE\n"
    "                                the JPEG comment or PNG text as the comment dialog shows it\n"
    "  writeiptc --set DATASET=TEXT [--set ...] FILE\n"
    "                                sets IPTC datasets (record 2, e.g. 120 caption, 25 keywords:\n"
    "                                one --set per keyword) over the file's own and rewrites the JPEG,\n"
    "                                keeping its file times\n"
    "  createexif [FIELD TEXT ...] [--settings INI] FILE\n"
    "                                gives a JPEG without EXIF data a new EXIF block; FIELD is\n"
    "                                --description, --maker, --model, --program, --rating (0 to 5),\n"
    "                                --copyright, --title, --comment, --author, --tags, --subject or\n"
    "                                --date (YYYY:MM:DD hh:mm:ss; default now, \"\" for none);\n"
    "                                INI gives EXIF/CreatorKeepOrgDate (default 1: keep file times)\n"
    "  writecomment [--settings INI] TEXT FILES\n"
    "                                writes TEXT as the JPEG comment of FILES, one path or a list\n"
    "                                of paths each followed by \"|\"; TEXT may hold placeholders\n"
    "                                (see the README); INI supplies the comment settings\n"
    "                                (section IPTC: JPGComConversion, JPGComKeepOrgDate,\n"
    "                                JPGComClearSpaces, JPGComAppend)\n"
    "  window [--settings INI] FILE  opens the EXIF window on FILE as the viewer does and waits\n"
    "                                until it is closed (Metadata.dll only)\n"
    "  iptcsheet [--settings INI] FILES\n"
    "                                opens the IPTC property sheet on FILES (one path or a \"|\"-list)\n"
    "  editcomment [--settings INI] FILES\n"
    "                                opens the comment dialog on FILES (one path or a \"|\"-list;\n"
    "                                a PNG's text is shown read-only)\n"
    "\n"
    "options: --capacity N sets the output buffer size in characters (default 262144); --help\n"
    "exit codes: 0 done, 1 the file cannot be read or written or the plug-in cannot be loaded,\n"
    "2 bad usage, 3 readcomment, writecomment, writeiptc or createexif through Metadata.dll\n"
    "(it has no export that works without a window), or a dialog command natively\n";

// createexif's options, with the creation dialog's row each one fills.
struct FieldOption {
    const char* name;
    int row;
};
constexpr FieldOption kCreatorOptions[] = {
    {"--description", 0}, {"--maker", 1},   {"--model", 2},   {"--program", 3},
    {"--rating", 4},      {"--copyright", 5}, {"--title", 6},  {"--comment", 7},
    {"--author", 8},      {"--tags", 9},    {"--subject", 10}, {"--date", 11},
};

const FieldOption* FindFieldOption(const std::string& name) {
    for (const FieldOption& f : kCreatorOptions)
        if (name == f.name) return &f;
    return nullptr;
}

std::string Utf8(const std::u16string& s) { return platform::Utf16ToUtf8(s); }

bool ParseInt(const std::u16string& text, long long& value) {
    std::string s = Utf8(text);
    if (s.empty()) return false;
    char* end = nullptr;
    value = std::strtoll(s.c_str(), &end, 0);
    return end && *end == '\0';
}

std::u16string FromBuffer(const std::vector<char16_t>& buffer) {
    size_t n = 0;
    while (n < buffer.size() && buffer[n]) ++n;
    return std::u16string(buffer.data(), n);
}

struct Options {
    std::string command;
    std::vector<std::u16string> positional;
    long long mode = 3;
    long long capacity = kDefaultCapacity;
    long long format = 0;
    std::u16string formats = u";PNG;";
    std::u16string settings;
    std::vector<std::u16string> sets;
    std::vector<std::pair<int, std::u16string>> fields;  // createexif's
    bool help = false;
};

bool ParseOptions(const std::vector<std::u16string>& args, Options& o) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string a = Utf8(args[i]);
        auto number = [&](long long& target) {
            return i + 1 < args.size() && ParseInt(args[++i], target);
        };
        if (a == "--help" || a == "-h") o.help = true;
        else if (a == "--mode") { if (!number(o.mode)) return false; }
        else if (a == "--capacity") { if (!number(o.capacity)) return false; }
        else if (a == "--format") { if (!number(o.format)) return false; }
        else if (a == "--formats") { if (i + 1 >= args.size()) return false; o.formats = args[++i]; }
        else if (a == "--set") { if (i + 1 >= args.size()) return false; o.sets.push_back(args[++i]); }
        else if (a == "--settings") { if (i + 1 >= args.size()) return false; o.settings = args[++i]; }
        else if (const FieldOption* f = FindFieldOption(a)) {
            if (i + 1 >= args.size()) return false;
            o.fields.emplace_back(f->row, args[++i]);
        }
        else if (a.size() > 2 && a.rfind("--", 0) == 0) return false;
        else if (o.command.empty()) o.command = a;
        else o.positional.push_back(args[i]);
    }
    return true;
}

class Runner {
public:
    explicit Runner(const PluginApi& api) : api_(api) {}

    int Info() {
        char version[64] = {}, description[256] = {};
        api_.GetPlugInInfo(version, description);
        WriteOut(std::string(version) + "\n" + description + "\n");
        return kExitOk;
    }

    int Exports() {
        std::vector<bool> found = FindExports();
        int missing = 0;
        std::string out;
        for (size_t i = 0; i < found.size(); ++i) {
            out += std::string(kExportNames[i]) + (found[i] ? " found\n" : " missing\n");
            missing += found[i] ? 0 : 1;
        }
        out += std::to_string(found.size() - missing) + " of 13 exports found in " + PluginOrigin() + "\n";
        WriteOut(out);
        return kExitOk;
    }

    int Exif(const std::u16string& file, long long mode, long long capacity) {
        std::vector<char16_t> out(Capacity(capacity) + 1);
        int32_t rows = api_.LoadData_EXIF_W(file.c_str(), out.data(), static_cast<int32_t>(capacity), static_cast<int32_t>(mode));
        WriteOut(Utf8(FromBuffer(out)));
        (void)rows;
        return kExitOk;
    }

    int Tag(const std::u16string& file, long long tag, long long capacity) {
        std::vector<char16_t> out(Capacity(capacity) + 1);
        int32_t r = api_.LoadTag_EXIF_W(file.c_str(), static_cast<int32_t>(tag), out.data(), static_cast<int32_t>(capacity));
        if (capacity >= 1) WriteOut(Utf8(FromBuffer(out)) + "\n");
        else WriteOut("result " + std::to_string(r) + "\n");
        return kExitOk;
    }

    int ExifInfo(const std::u16string& file, long long format) {
        uint32_t size = 0, o2 = 0, o3 = 0, o4 = 0, o5 = 0;
        uint64_t offset = api_.GetExifInfos(file.c_str(), &size, &o2, &o3, &o4, &o5, static_cast<int32_t>(format));
        char line[200];
        std::snprintf(line, sizeof line, "offset %" PRIu64 " size %" PRIu32 " out2 %" PRIu32 " out3 %" PRIu32
                      " out4 %" PRIu32 " out5 %" PRIu32 "\n", offset, size, o2, o3, o4, o5);
        WriteOut(line);
        return kExitOk;
    }

    int Iptc(const std::u16string& file, long long mode, long long capacity) {
        std::vector<char16_t> out(Capacity(capacity) + 1);
        api_.LoadData_IPTC_W(file.c_str(), out.data(), static_cast<int32_t>(capacity), static_cast<int32_t>(mode));
        WriteOut(Utf8(FromBuffer(out)));
        return kExitOk;
    }

    int IptcTag(const std::u16string& file, long long dataset, long long capacity) {
        std::vector<char16_t> out(Capacity(capacity) + 1);
        api_.LoadTag_IPTC_W(file.c_str(), static_cast<int32_t>(dataset), out.data(), static_cast<int32_t>(capacity));
        WriteOut(Utf8(FromBuffer(out)) + "\n");
        return kExitOk;
    }

    int Comment(const std::u16string& file, const std::u16string& formats, long long capacity) {
        std::vector<char16_t> out(Capacity(capacity) + 1);
        api_.Load_Comment_W(file.c_str(), out.data(), static_cast<int32_t>(capacity), 0, formats.c_str());
        std::string text = Utf8(FromBuffer(out));
        WriteOut(text.empty() ? "" : text + "\n");
        return kExitOk;
    }

    int ReadComment(const std::u16string& file, const std::u16string& settings) {
        if (!api_.ReadComment) return NotAvailable();
        std::u16string text;
        if (!api_.ReadComment(file, settings, text)) return kExitUnreadable;
        WriteOut(text.empty() ? "" : Utf8(text) + "\n");
        return kExitOk;
    }

    int WriteIptc(const std::u16string& file, const std::vector<std::u16string>& sets) {
        if (!api_.WriteIptc) return NotAvailable();
        std::vector<std::pair<int, std::u16string>> fields;
        for (const std::u16string& set : sets) {
            const size_t eq = set.find(u'=');
            long long dataset = 0;
            if (eq == std::u16string::npos || !ParseInt(set.substr(0, eq), dataset) || dataset < 0 || dataset > 255) {
                WriteErr("vvmeta: --set wants DATASET=TEXT, not " + Utf8(set) + "\n");
                return kExitUsage;
            }
            fields.emplace_back(static_cast<int>(dataset), set.substr(eq + 1));
        }
        std::string error;
        if (api_.WriteIptc(file, fields, error)) return kExitOk;
        WriteErr("vvmeta: " + error + "\n");
        return kExitUnreadable;
    }

    int CreateExif(const std::u16string& file, const std::u16string& settings,
                   const std::vector<std::pair<int, std::u16string>>& fields) {
        if (!api_.CreateExif) return NotAvailable();
        std::string error;
        if (api_.CreateExif(file, settings, fields, error)) return kExitOk;
        WriteErr("vvmeta: " + error + "\n");
        return kExitUnreadable;
    }

    int WriteComment(const std::u16string& files, const std::u16string& text, const std::u16string& settings) {
        if (!api_.WriteComment) return NotAvailable();
        std::string errors;
        const int failed = api_.WriteComment(files, text, settings, errors);
        WriteErr(errors);
        return failed ? kExitUnreadable : kExitOk;
    }

    int Show(const std::u16string& file, long long capacity) {
        WriteOut("== EXIF ==\n");
        Exif(file, 3, capacity);
        WriteOut("== IPTC ==\n");
        Iptc(file, 3, capacity);
        WriteOut("== Comment ==\n");
        Comment(file, u";PNG;", capacity);
        return kExitOk;
    }

    int OpenDialog(const std::string& dialog, const std::u16string& files, const std::u16string& settings) {
        if (!api_.OpenDialog) return NotAvailable();
        const int answer = api_.OpenDialog(dialog, files, settings);
        WriteOut(std::to_string(answer) + "\n");
        return kExitOk;
    }

private:
    int NotAvailable() {
        WriteErr(std::string("vvmeta: not available through ") + PluginOrigin() + " (no export for it)\n");
        return kExitNotAvailable;
    }
    static size_t Capacity(long long capacity) { return capacity > 0 ? static_cast<size_t>(capacity) : 1; }
    const PluginApi& api_;
};

int Run(const std::vector<std::u16string>& args) {
    Options o;
    if (!ParseOptions(args, o)) {
        WriteErr(std::string("vvmeta: bad arguments\n") + kUsage);
        return kExitUsage;
    }
    if (o.help) { WriteOut(kUsage); return kExitOk; }
    if (o.command.empty()) { WriteErr(kUsage); return kExitUsage; }

    static const char* const kFileCommands[] = {"show",    "exif",    "tag",         "exifinfo",    "iptc",
                                                "iptctag", "comment", "readcomment", "writecomment", "writeiptc",
                                                "createexif", "window",  "iptcsheet",   "editcomment"};
    bool known = o.command == "info" || o.command == "exports";
    for (const char* c : kFileCommands) known = known || o.command == c;
    if (!known) {  // "vvmeta FILE" is "vvmeta show FILE"
        o.positional.insert(o.positional.begin(), platform::Utf8ToUtf16(o.command));
        o.command = "show";
    }
    const size_t wanted = (o.command == "info" || o.command == "exports") ? 0
                        : (o.command == "tag" || o.command == "iptctag" || o.command == "writecomment") ? 2 : 1;
    if (o.positional.size() != wanted || (!o.fields.empty() && o.command != "createexif") || o.capacity > (1 << 24) || o.capacity < -2) {
        WriteErr(std::string("vvmeta: bad arguments\n") + kUsage);
        return kExitUsage;
    }
    long long number = 0;
    if (wanted == 2 && o.command != "writecomment" && !ParseInt(o.positional[0], number)) {
        WriteErr("vvmeta: not a number: " + Utf8(o.positional[0]) + "\n");
        return kExitUsage;
    }

    PluginApi api;
    std::string error;
    if (!LoadPlugin(api, error)) {
        WriteErr("vvmeta: " + error + "\n");
        return kExitUnreadable;
    }
    Runner run(api);
    if (o.command == "info") return run.Info();
    if (o.command == "exports") return run.Exports();

    const std::u16string& file = o.positional.back();
    if (o.command == "window" || o.command == "iptcsheet" || o.command == "editcomment")
        return run.OpenDialog(o.command, file, o.settings);
    if (o.command == "writecomment") return run.WriteComment(file, o.positional[0], o.settings);
    if (!platform::OpenFile(file, platform::FileMode::kRead)) {
        WriteErr("vvmeta: cannot read " + Utf8(file) + "\n");
        return kExitUnreadable;
    }
    if (o.command == "writeiptc") {
        if (o.sets.empty()) { WriteErr(std::string("vvmeta: bad arguments\n") + kUsage); return kExitUsage; }
        return run.WriteIptc(file, o.sets);
    }
    if (o.command == "createexif") return run.CreateExif(file, o.settings, o.fields);
    if (o.command == "show") return run.Show(file, o.capacity);
    if (o.command == "exif") return run.Exif(file, o.mode, o.capacity);
    if (o.command == "tag") return run.Tag(file, number, o.capacity);
    if (o.command == "exifinfo") return run.ExifInfo(file, o.format);
    if (o.command == "iptc") return run.Iptc(file, o.mode, o.capacity);
    if (o.command == "iptctag") return run.IptcTag(file, number, o.capacity);
    if (o.command == "readcomment") return run.ReadComment(file, o.settings);
    return run.Comment(file, o.formats, o.capacity);
}

}  // namespace
}  // namespace vvmeta

int main(int argc, char** argv) { return vvmeta::Run(vvmeta::Arguments(argc, argv)); }
