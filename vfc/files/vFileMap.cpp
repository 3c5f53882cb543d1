#include "vfc/files/vFileMap.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "vfc/os/os.h"

namespace os = vfc::os;

static_assert(std::is_same<os::FileHandle, std::intptr_t>::value,
              "vFileMap keeps the host's file handle");

namespace {

// The length mapped when nothing better is known.
constexpr std::uint64_t kDefaultLength = 64u * 1024u * 1024u;
// The local buffer of Print when not formatting in place.
constexpr int kPrintBuffer = 4096;

}  // namespace

vFileMap::~vFileMap() {
    Unmap();
}

char* vFileMap::Map(const char* path, unsigned length, unsigned flags) {
    Unmap();
    if (flags & kMemory) return MapMem(path, length);

    memoryOnly = false;
    const bool readOnly = (flags & kReadOnly) != 0;
    const os::OpenMode mode = readOnly          ? os::OpenMode::eReadOnly
                              : (flags & kKeep) ? os::OpenMode::eReadWriteKeep
                                                : os::OpenMode::eReadWriteNew;
    file = os::OpenFile(path, mode);
    if (file == os::kNoFile) return nullptr;

    std::uint64_t fileSize = 0;
    if (!os::FileSize(file, fileSize)) {
        Unmap();
        return nullptr;
    }
    std::uint64_t mapLength;
    if ((flags & kGrow) && (flags & kKeep))
        mapLength = fileSize + length;
    else if (length != 0 && length < fileSize)
        mapLength = length;
    else if (fileSize == 0)
        mapLength = kDefaultLength;
    else
        mapLength = fileSize;  // also what a length of 0 asks for: the whole file
    if (mapLength == 0 || mapLength > UINT32_MAX) {
        Unmap();
        return nullptr;
    }

    // A mapping past the end of the file would fault when touched, so a writable mapping
    // lengthens the file first; a read-only one cannot, and fails.
    const bool lengthen = mapLength > fileSize;
    if (lengthen && (readOnly || !os::SetFileLength(file, mapLength))) {
        Unmap();
        return nullptr;
    }
    char* view = os::MapFile(file, static_cast<std::size_t>(mapLength), readOnly);
    if (!view) {
        if (lengthen) os::SetFileLength(file, fileSize);  // give the file its length back
        Unmap();
        return nullptr;
    }
    size = static_cast<unsigned>(mapLength);
    mapping = true;
    base = cursor = view;
    return base;
}

char* vFileMap::MapMem(const char* name, unsigned length) {
    if (length == 0) length = static_cast<unsigned>(kDefaultLength);
    memoryOnly = true;
    char* view = os::MapMemory(name, length);
    if (!view) {
        Unmap();
        return nullptr;
    }
    size = length;
    mapping = true;
    base = cursor = view;
    return base;
}

void vFileMap::Unmap() {
    const bool hadView = base != nullptr;
    std::size_t used = 0;
    if (hadView) {
        used = static_cast<std::size_t>(cursor - base);
        os::UnmapView(base, size);
        base = cursor = nullptr;
    }
    mapping = false;
    if (!memoryOnly && file != os::kNoFile) {
        // Without a view the used length is unknown, and the file keeps its length. For a
        // read-only file the system refuses the new length, which leaves it as it is too.
        if (hadView) os::SetFileLength(file, used);
        os::CloseFile(file);
        file = os::kNoFile;
    }
    memoryOnly = false;
    size = 0;
}

unsigned vFileMap::GetPos() const {
    return base ? static_cast<unsigned>(cursor - base) : 0;
}

unsigned vFileMap::SetPos(unsigned pos) {
    if (!base || pos >= size) return 0;
    cursor = base + pos;
    return 1;
}

char* vFileMap::GetOffsetPtr(unsigned off) const {
    return base && off < size ? base + off : nullptr;
}

unsigned vFileMap::SaveAs(const char* path) {
    // The file is made first, even when there is nothing to write into it.
    const os::FileHandle out = os::OpenFile(path, os::OpenMode::eReadWriteNew);
    if (!base || out == os::kNoFile) {
        // Closed rather than left open: the empty file stays, the handle does not.
        os::CloseFile(out);
        return 0;
    }
    const bool written = os::WriteAll(out, base, static_cast<std::size_t>(cursor - base));
    os::CloseFile(out);
    return written ? 1 : 0;
}

char* vFileMap::Print(bool inPlace, const char* format, ...) {
    if (!cursor || !format) return nullptr;
    va_list args;
    va_start(args, format);
    if (inPlace) {
        // Unbounded by contract: the caller guarantees the room.
        const int length = std::vsprintf(cursor, format, args);
        va_end(args);
        if (length < 0) return nullptr;
        cursor += length;
        return cursor;
    }
    char text[kPrintBuffer];
    const int length = std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    // vsnprintf reports the length the whole text would have had; a text that did not fit the
    // buffer was cut, and copying "length" bytes would read past what was formatted. Such a
    // text fails like one that does not fit the mapping.
    if (length < 0 || length >= kPrintBuffer) return nullptr;
    const std::size_t used = static_cast<std::size_t>(cursor - base);
    if (used + static_cast<std::size_t>(length) >= size) return nullptr;
    std::memcpy(cursor, text, static_cast<std::size_t>(length));
    cursor += length;
    return cursor;
}
