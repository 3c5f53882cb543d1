#include "vfc/files/vFile.h"

#include <cstring>
#include <ostream>

#include "vfc/os/os.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vFile, vClassID::vFile)

namespace {

// Indexed by FileTypeEnum; the names are part of the stored format.
constexpr const char* kTypeNames[] = {
    "",
    "",
    "directory",
    "text/plain",
    "binary",
    "application/vnd.mif",
    "application/vnd.mifbook",
    "application/vnd.framemaker",
    "application/vnd.framemakerbook",
    "text/html",
    "image/gif",
    "image/png",
    "image/jpeg",
    "text/postscript",
    "text/xml",
    "vorlandix",
    "vorlandix-v-app-94",
    "vorlandix-ndt-fileset-95",
    "vorlandix-ndt-fileset-97",
    "vorlandix-ndt-fileset-40",
    "vorlandix-ndt-70",
    "vorlandix-ndt-80",
    "vorlandix-nse-index-94",
    "vorlandix-ndt-xml",
};
constexpr int kFirstNamed = vFile::eDirectory;
constexpr int kLastNamed = vFile::eVorlandixNDTXML;
static_assert(sizeof kTypeNames / sizeof kTypeNames[0] == kLastNamed + 1, "one name per type");

}  // namespace

vFile::~vFile() = default;

void vFile::fSetPath(const vString& path) {
    aPath = path;
    aType = eNone;
}

bool vFile::QueryStat() const {
    return vfc::os::PathExists(aPath.data());
}

bool vFile::fIsDirectory() const {
    return vfc::os::IsDirectory(aPath.data());
}

vFile::KindEnum vFile::fKind() const {
    using vfc::os::NodeKind;
    switch (vfc::os::KindOfPath(aPath.data())) {
        case NodeKind::eMissing: return KindEnum::eMissing;
        case NodeKind::eRegular: return KindEnum::eRegular;
        case NodeKind::eDirectory: return KindEnum::eDirectory;
        case NodeKind::eFifo: return KindEnum::eFifo;
        case NodeKind::eSocket: return KindEnum::eSocket;
        case NodeKind::eCharDevice: return KindEnum::eCharDevice;
        case NodeKind::eBlockDevice: return KindEnum::eBlockDevice;
        case NodeKind::eOther: break;
    }
    return KindEnum::eOther;
}

const char* vFile::sfKindToConstChar(KindEnum kind) {
    switch (kind) {
        case KindEnum::eDirectory: return "inode/directory";
        case KindEnum::eFifo: return "inode/fifo";
        case KindEnum::eSocket: return "inode/socket";
        case KindEnum::eCharDevice: return "inode/chardevice";
        case KindEnum::eBlockDevice: return "inode/blockdevice";
        default: return "";
    }
}

vString vFile::fExtension() const {
    const char* begin = aPath.data();
    size_t n = aPath.length();
    for (size_t i = n; i > 0; --i) {
        char c = begin[i - 1];
        if (vfc::os::IsPathSeparator(c)) break;
        if (c == '.') return vString(begin + i, n - i);
    }
    return vString();
}

vString vFile::fDOSPath() const {
    if (!vfc::os::kWindows) return aPath;
    vString native = aPath;
    for (size_t i = 0; i < native.length(); ++i)
        if (native(i) == '/') native(i) = vfc::os::kNativeSeparator;
    return native;
}

const char* vFile::sfFileTypeToConstChar(FileTypeEnum type) {
    int t = static_cast<int>(type);
    return t >= kFirstNamed && t <= kLastNamed ? kTypeNames[t] : "";
}

vFile::FileTypeEnum vFile::sfConstCharToFileType(const char* name) {
    if (!name || !*name) return eNone;
    for (int t = kFirstNamed; t <= kLastNamed; ++t)
        if (std::strcmp(name, kTypeNames[t]) == 0) return static_cast<FileTypeEnum>(t);
    return eUnknown;
}

RWCollectable* vFile::newSpecies() const {
    return new vFile;
}

RWCollectable* vFile::copy() const {
    return new vFile(*this);
}

int vFile::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    int c = aPath.fCompareTo(static_cast<const vFile*>(other)->aPath);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

bool vFile::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && fIsEqual(*static_cast<const vFile*>(other));
}

void vFile::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    vString path;
    vString typeName;
    path.restoreFrom(s);
    typeName.restoreFrom(s);
    if (!s.good()) return;
    aPath = path;
    setType(typeName);
}

// Files persist only through the virtual streams.
void vFile::restoreGuts(RWFile&) {}

void vFile::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    aPath.saveOn(s);
    vString(fTypeName()).saveOn(s);
}

void vFile::saveGuts(RWFile&) const {}

std::ostream& operator<<(std::ostream& out, const vFile& file) {
    return out.write(file.fPath().data(), static_cast<std::streamsize>(file.fPath().length()));
}
