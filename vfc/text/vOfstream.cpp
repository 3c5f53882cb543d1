#include "vfc/text/vOfstream.h"

#include "vfc/os/os.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/persist/vPostream.h"
#include "vfc/rw/RWFactory.h"

RW_DEFINE_COLLECTABLE(vOfstream, vClassID::vOfstream)

namespace {

// Largest piece handed to the stream at a time; the failure state is checked between pieces.
constexpr unsigned kChunk = 4096;
// Storage of the file buffer.
constexpr std::size_t kBufferSize = 64 * 1024;

// Whether a binary open of a file with this extension starts the file with the persistence
// header: the extension must occur, ignoring case, in the persistent-object type name. The empty
// extension occurs in every string, so it is excluded explicitly; "xml" never qualifies.
bool wantsHeader(const vString& extension) {
    if (extension.isNull() || extension.fIsEqualIgnoreCase("xml")) return false;
    const RWCString typeName(vFile::sfFileTypeToConstChar(vFile::eVorlandix));
    return typeName.index(extension, 0, RWCString::ignoreCase) != RW_NPOS;
}

}  // namespace

vOfstream::vOfstream() = default;

vOfstream::vOfstream(const vOfstream& other)
    : std::basic_ios<char>(),
      std::basic_ofstream<char>(),
      RWCollectable(other),
      aBinary(other.aBinary),
      aFileInfo(other.aFileInfo) {}

vOfstream::~vOfstream() {
    // Closed here, while the buffer that still holds unwritten bytes exists.
    if (is_open()) close();
}

RWCollectable* vOfstream::newSpecies() const {
    return new vOfstream;
}

RWCollectable* vOfstream::copy() const {
    return new vOfstream(*this);
}

bool vOfstream::open(const vFile& file, std::ios_base::openmode mode, bool binary) {
    if (is_open()) close();
    aBinary = binary;
    aFileInfo = file;
    clear();
    if (!aBuffer) aBuffer.reset(new char[kBufferSize]);
    // Only effective while no file is open; the buffer then serves every later open too.
    rdbuf()->pubsetbuf(aBuffer.get(), static_cast<std::streamsize>(kBufferSize));
    {
        // The path is converted with the user's code page; the locale is restored at once.
        vfc::os::UserLocaleScope userLocale;
        std::basic_ofstream<char>::open(aFileInfo.fDOSPath().data(), mode | std::ios_base::out);
    }
    return !refresh();
}

bool vOfstream::fOpenText(const vFile& file) {
    return open(file, std::ios_base::trunc, false);
}

bool vOfstream::fOpenTextAppend(const vFile& file) {
    return open(file, std::ios_base::app, false);
}

bool vOfstream::fOpenBinary(const vFile& file) {
    if (!open(file, std::ios_base::trunc | std::ios_base::binary, true)) return false;
    if (wantsHeader(aFileInfo.fExtension())) {
        vPostream header(rdbuf());
        recursiveSaveOn(header);
        if (!header.good()) setstate(std::ios_base::badbit);
    }
    return !refresh();
}

bool vOfstream::fOpenBinaryAppend(const vFile& file) {
    return open(file, std::ios_base::app | std::ios_base::binary, true);
}

bool vOfstream::fWrite(const char* data, unsigned n) {
    refresh();
    if (!data) return !aFailed;
    while (!aFailed && n > 0) {
        const unsigned chunk = n < kChunk ? n : kChunk;
        write(data, static_cast<std::streamsize>(chunk));
        data += chunk;
        n -= chunk;
        refresh();
    }
    return !aFailed;
}

bool vOfstream::fWriteLine(const char* data, unsigned n) {
    if (!fWrite(data, n)) return false;
    const vString& eol = vString::EOL();
    return fWrite(eol.data(), static_cast<unsigned>(eol.length()));
}

bool vOfstream::fClose() {
    if (!refresh()) {
        flush();
        refresh();
    }
    if (is_open()) {
        close();
        if (!aFailed) refresh();
    }
    return !aFailed;
}
