#include "vfc/files/internal/vpContentDetection.h"

#include <algorithm>
#include <cstring>

#include "vfc/text/vTemplates.h"

namespace {

// The header that the signatures look at, and also the bytes the final NUL test looks at:
// a text file that only turns binary after its first 50 bytes stays text.
constexpr size_t kHeaderBytes = 50;
// White space is removed from this many leading bytes before looking for ":263\".
constexpr size_t kInfoPrefixBytes = 10;
// The header's closing "\]" stands after the second quote, one line end away.
constexpr size_t kAfterSecondQuote = 3;

const char kInfoMark[] = ":263\\";
const char kSuitePrefix[] = "vorlandix";

// Whether h has name at position at (h must hold at least at + strlen(name) bytes).
bool hasAt(const char* h, size_t n, size_t at, const char* name) {
    size_t len = std::strlen(name);
    return n >= at + len && std::memcmp(h + at, name, len) == 0;
}

char foldAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Whether h starts with name (lower case), ASCII letters compared without case.
bool startsFolded(const char* h, size_t n, const char* name) {
    size_t len = std::strlen(name);
    if (n < len) return false;
    for (size_t i = 0; i < len; ++i)
        if (foldAscii(h[i]) != name[i]) return false;
    return true;
}

bool contains(const vRegExp& re, const char* h, size_t n) {
    size_t extent = 0;
    return re.index(h, n, &extent, 0) != RW_NPOS;
}

// The text of bytes[0, n) with every run of white space removed.
vString withoutWhiteSpace(const char* bytes, size_t n) {
    vString s(bytes, n);
    s.fReplaceAll(vWSTemplate(), vString());
    return s;
}

vFile::FileTypeEnum bySignature(const char* h, size_t n) {
    // The first five look at character 1: these formats start with "<" and then their name.
    // MIFFile before the book names and BookFile before Book keep short names from capturing
    // the longer ones.
    if (hasAt(h, n, 1, "MIFFile")) return vFile::eMIF;
    if (hasAt(h, n, 1, "BookFile")) return vFile::eMakerBook;
    if (hasAt(h, n, 1, "Book")) return vFile::eMIFBook;
    if (hasAt(h, n, 0, "GIF")) return vFile::eGIF;
    if (hasAt(h, n, 1, "MakerFile")) return vFile::eMaker;
    if (hasAt(h, n, 1, "BOOKFILE")) return vFile::eMakerBook;
    if (hasAt(h, n, 0, "%!PS-")) return vFile::ePostScript;
    if (startsFolded(h, n, "<html>")) return vFile::eHTML;
    if (startsFolded(h, n, "<!doctype ")) return vFile::eHTML;
    if (contains(aNDTAsXMLFileTemplate(), h, n)) return vFile::eVorlandixNDTXML;
    if (contains(aXMLFileTemplate(), h, n)) return vFile::eXML;
    return vFile::eNone;
}

vFile::FileTypeEnum byExtension(const vString& extension) {
    vString ext(extension);
    ext.fToLower();
    if (ext.contains("htm")) return vFile::eHTML;
    if (ext == "txt") return vFile::eText;
    if (ext == "gif") return vFile::eGIF;
    if (ext == "png") return vFile::ePNG;
    if (ext == "jpg" || ext == "jpeg" || ext == "jpe") return vFile::eJPEG;
    if (ext == "xml") return vFile::eXML;
    return vFile::eNone;
}

}  // namespace

bool vpLocateQuotes(const char* buf, int len, int& first, int& second) {
    first = -1;
    second = -1;
    for (int i = 0; i < len; ++i) {
        if (buf[i] != '"') continue;
        if (first < 0) {
            first = i;
        } else {
            second = i;
            return true;
        }
    }
    return false;
}

bool vpFindFileInfoHeader(const char* bytes, size_t n, vString& typeName) {
    vString prefix = withoutWhiteSpace(bytes, std::min(n, kInfoPrefixBytes));
    if (!hasAt(prefix.data(), prefix.length(), 0, kInfoMark)) return false;
    int first = -1;
    int second = -1;
    int len = static_cast<int>(std::min<size_t>(n, 0x7fffffff));
    if (!vpLocateQuotes(bytes, len, first, second)) return false;
    // The header up to its closing "\]", with the line ends between its items removed; the
    // two quotes found are the only ones in it, so a match holds exactly that quoted name.
    size_t end = std::min(n, static_cast<size_t>(second) + 1 + kAfterSecondQuote);
    vString header = withoutWhiteSpace(bytes, end);
    size_t extent = 0;
    if (aVorlandixFileInfoTemplate().index(header, &extent, 0) == RW_NPOS) return false;
    const char* name = bytes + first + 1;
    size_t nameLength = static_cast<size_t>(second - first - 1);
    // Other persistent files (a plain string saved first, say) are typed like any other file.
    if (!hasAt(name, nameLength, 0, kSuitePrefix)) return false;
    typeName = vString(name, nameLength);
    return true;
}

vFile::FileTypeEnum vpDetectContentType(const char* bytes, size_t n, const vString& extension) {
    size_t h = std::min(n, kHeaderBytes);
    vFile::FileTypeEnum type = bySignature(bytes, h);
    if (type == vFile::eNone) type = byExtension(extension);
    if (type != vFile::eNone) return type;
    // Bytes above 127 are text: only a NUL makes a file binary.
    return std::memchr(bytes, '\0', h) ? vFile::eBinary : vFile::eText;
}
