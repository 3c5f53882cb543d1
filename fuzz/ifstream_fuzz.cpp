// Fuzzes the input file stream on arbitrary file contents: content detection, the line reader,
// the quoting tokenizer, the INI reader and the bulk reads. Besides crashes and hangs it checks:
// - the binary open types the file as the detection functions type its first 1024 bytes, and
//   reading then starts at the first byte;
// - fGetLine gives exactly the lines of a one-byte-at-a-time reader (LF, CR LF and CR end a
//   line, a last line without an end counts, an empty tail does not);
// - the tokenizer reports an error exactly when it leaves a message, one of its three; a line
//   without quotes or backslashes splits exactly at white space;
// - the INI reader's section names are "" or bracketed, and no key or value holds "=";
// - fRead and the stream copy together give back every byte.
//
// Input: byte 0 picks the file's extension; the rest is the file.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <vfc/vfc.h>

#include "vfc/files/internal/vpContentDetection.h"

namespace {

void check(bool ok) {
    if (!ok) std::abort();
}

const char* const kExtensions[] = {"", "txt", "HTML", "gif", "PNG", "jpe", "xml", "vor", "ini", "x"};

// One scratch file per extension, under a name unique to this process; removed at exit.
struct Scratch {
    std::string base;
    Scratch() {
        char name[] = "/tmp/vfc-ifstream-fuzz-XXXXXX";
        int fd = ::mkstemp(name);
        if (fd >= 0) ::close(fd);
        base = name;
    }
    ~Scratch() {
        std::remove(base.c_str());
        for (const char* e : kExtensions)
            std::remove((base + "." + e).c_str());
    }
    std::string path(const char* extension) const {
        return *extension ? base + "." + extension : base;
    }
};

std::vector<std::string> referenceLines(const std::string& data) {
    std::vector<std::string> lines;
    std::string line;
    size_t i = 0;
    while (true) {
        if (i == data.size()) {
            if (!line.empty()) lines.push_back(line);
            return lines;
        }
        char c = data[i++];
        if (c == '\n' || c == '\r') {
            if (c == '\r' && i < data.size() && data[i] == '\n') ++i;
            lines.push_back(line);
            line.clear();
        } else {
            line += c;
        }
    }
}

bool isSpace(char c) {
    return c == '\t' || c == '\n' || c == '\r' || c == ' ';
}

void checkTokens(const vString& line, const vSlistvString& tokens, bool error,
                 const vString& message) {
    check(error == !message.isNull());
    if (error) {
        std::string m(message.data(), message.length());
        bool known = m.rfind("Unexpected character ", 0) == 0 ||
                     m.find("A closing \" was not found.") != std::string::npos ||
                     m.find("Last character does not exist for escape.") != std::string::npos;
        check(known);
        return;
    }
    std::string text(line.data(), line.length());
    if (text.find_first_of("\"\\") != std::string::npos) return;
    std::vector<std::string> words;
    std::string word;
    for (char c : text) {
        if (isSpace(c)) {
            if (!word.empty()) words.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    if (!word.empty()) words.push_back(word);
    check(words.size() == tokens.fEntries());
    vSlistvStringIter it(tokens);
    for (const std::string& w : words) {
        check(it.fAdvance());
        check(it.aKey() == vString(w.data(), w.size()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    if (size == 0) return 0;
    const char* extension = kExtensions[bytes[0] % (sizeof kExtensions / sizeof *kExtensions)];
    std::string data(reinterpret_cast<const char*>(bytes) + 1, size - 1);
    static Scratch scratch;
    const std::string path = scratch.path(extension);
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(data.data(), static_cast<std::streamsize>(data.size()));
    }
    vFile file(path.c_str());

    // Detection, and the first line after it.
    const size_t head = data.size() < 1024 ? data.size() : 1024;
    vString typeName;
    vFile::FileTypeEnum expected;
    if (vpFindFileInfoHeader(data.data(), head, typeName)) {
        check(typeName.length() >= 9 && std::string(typeName.data(), 9) == "vorlandix");
        expected = vFile::sfConstCharToFileType(typeName.data());
    } else {
        expected = vpDetectContentType(data.data(), head, file.fExtension());
        check(expected >= vFile::eText && expected <= vFile::eVorlandixNDTXML &&
              (expected <= vFile::eXML || expected == vFile::eVorlandixNDTXML));
    }
    const std::vector<std::string> lines = referenceLines(data);
    vIfstream in;
    check(in.fOpenBinary(file));
    check(in.fFileInfo().fType() == expected);
    vString line;
    check(in.fGetLine(line) == !lines.empty());
    if (!lines.empty()) check(line == vString(lines[0].data(), lines[0].size()));

    // Every line, each also through the tokenizer.
    vIfstream text;
    check(text.fOpenText(file));
    size_t count = 0;
    while (text.fGetLine(line)) {
        check(count < lines.size());
        check(line == vString(lines[count].data(), lines[count].size()));
        ++count;
    }
    check(count == lines.size());
    check(!text.fGetLine(line));

    vIfstream tokens;
    check(tokens.fOpenText(file));
    vSlistvString list;
    bool error = false;
    vString message;
    for (size_t i = 0; i < lines.size(); ++i) {
        message = vString();
        check(tokens.fGetLineAndParse(list, error, message));
        checkTokens(vString(lines[i].data(), lines[i].size()), list, error, message);
    }
    check(!tokens.fGetLineAndParse(list, error, message));

    // The INI reader.
    vIfstream ini;
    check(ini.fOpenText(file));
    vHashvStringvHvSvS sections;
    ini.fParseAsINI(sections);
    check(sections.fContains(vString("")));
    vHashvStringvHvSvSIter sit(sections);
    while (sit.fAdvance()) {
        const vString& name = sit.aKey();
        check(name.isNull() || (name(0) == '[' && name.fLastCharIsEqual(']')));
        vHashvStringvStringIter kit(sit.aValue());
        while (kit.fAdvance()) {
            check(kit.aKey().index("=") == RW_NPOS);
            check(kit.aValue().index("=") == RW_NPOS);
        }
    }

    // fRead of a prefix, then the stream copy of the rest.
    vIfstream bulk;
    check(bulk.fOpenBinary(false, file));
    const unsigned prefix = bytes[0] * 37u;
    vString first;
    bool any = bulk.fRead(first, prefix);
    size_t taken = prefix < data.size() ? prefix : data.size();
    check(any == (taken > 0));
    check(first == vString(data.data(), taken));
    std::ostringstream rest;
    rest << bulk;
    check(rest.str() == data.substr(taken));
    return 0;
}
