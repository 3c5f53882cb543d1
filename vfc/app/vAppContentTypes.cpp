// The content-type tables of vApp: content type to its extensions and extension to its type,
// loaded from and saved to a line-oriented file of "type=<type>\texts=<ext>,<ext>..." lines.
#include "vfc/app/vApp.h"

#include <memory>

#include "vfc/text/vIfstream.h"
#include "vfc/text/vOfstream.h"
#include "vfc/text/vRegExp.h"

namespace {

// The four patterns of the file format, built on first use and shared.
const vRegExp& typeKeyPattern() {
    static const vRegExp re(vString("^type="));
    return re;
}

const vRegExp& typeValuePattern() {
    static const vRegExp re(vString("[^ \t]+"));
    return re;
}

const vRegExp& extsKeyPattern() {
    static const vRegExp re(vString("exts="));
    return re;
}

const vRegExp& extensionPattern() {
    static const vRegExp re(vString("[^,]+"));
    return re;
}

bool isTrailingSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

}  // namespace

bool vApp::fLoadContentTypesAndExtensions(const vFile& file) {
    aContentTypes.fClearAndDestroy();
    aExtensions.fClearAndDestroy();

    vIfstream in;
    if (!in.fOpenBinary(false, file)) return false;

    bool loaded = false;
    vString line;
    while (in.fGetLine(line)) {
        // White space at the line's end (a stray carriage return included) would otherwise
        // become part of the last extension.
        size_t end = line.length();
        while (end > 0 && isTrailingSpace(line(end - 1)))
            --end;
        if (end < line.length()) line.remove(end);

        size_t length = 0;
        if (line.index(typeKeyPattern(), &length, 0) == RW_NPOS) continue;
        size_t pos = length;

        const size_t typeAt = line.index(typeValuePattern(), &length, pos);
        // A "type=" line that names no type gives nothing to file under.
        if (typeAt == RW_NPOS) continue;
        const vString type(line.data() + typeAt, length);
        pos = typeAt + length;

        std::unique_ptr<vSlistvString> extensions(new vSlistvString);
        const size_t extsAt = line.index(extsKeyPattern(), &length, pos);
        if (extsAt != RW_NPOS) {
            pos = extsAt + length;
            size_t at;
            while ((at = line.index(extensionPattern(), &length, pos)) != RW_NPOS) {
                pos = at + length;
                const vString extension(line.data() + at, length);
                aExtensions.fInsert(extension, type);
                extensions->fInsertReference(new vString(extension));
            }
        }

        std::unique_ptr<vString> key(new vString(type));
        if (aContentTypes.fInsertReference(key.get(), extensions.get())) {
            key.release();
            extensions.release();
        }
        loaded = true;
    }
    return loaded;
}

bool vApp::fSaveContentTypesAndExtensions(const vFile& file) {
    vOfstream out;
    if (!out.fOpenText(file)) return false;

    vHashvStringvSlvStringIter types(aContentTypes);
    while (types.fAdvance()) {
        vString line("type=");
        line.append(types.aKey());
        line.append("\texts=");
        // Written in pairs: each turn writes one extension, then "," and the next one when
        // there is one, so a, b, c becomes "a,bc".
        vSlistvStringIter ext(types.aValue());
        bool more = ext.fAdvance();
        while (more) {
            line.append(ext.aKey());
            more = ext.fAdvance();
            if (more) {
                line.append(",");
                line.append(ext.aKey());
                more = ext.fAdvance();
            }
        }
        out.fWriteLine(line);
    }
    out.fClose();
    return true;
}

void vApp::fInsertContentTypeAndExtensionList(const vString& type,
                                              const vSlistvString& extensions) {
    aContentTypes.fInsert(type, extensions);
}

void vApp::fDeleteContentType(const vString& type) {
    aContentTypes.fDelete(type);
}

void vApp::fInsertExtensionAndContentType(const vString& extension, const vString& type) {
    aExtensions.fInsert(extension, type);
}

void vApp::fDeleteExtension(const vString& extension) {
    aExtensions.fDelete(extension);
}
