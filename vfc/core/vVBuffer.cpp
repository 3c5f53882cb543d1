#include "vfc/core/vVBuffer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

namespace {
// Segment sizes above this in a stream are taken for corruption.
constexpr size_t kMaxSegmentSize = size_t{1} << 24;
}  // namespace

RW_DEFINE_COLLECTABLE(vVBuffer, vClassID::vVBuffer)

vVBuffer::vVBuffer(size_t segmentSize) : aSegmentSize(std::max<size_t>(segmentSize, 1)) {}

vVBuffer::~vVBuffer() = default;

void vVBuffer::fAppend(const char* bytes, size_t n) {
    while (n > 0) {
        if (aSegments.empty() || aSegments.back().size() == aSegmentSize) {
            aSegments.emplace_back();
            // Large segments grow as bytes arrive instead of being claimed at once.
            aSegments.back().reserve(std::min<size_t>(aSegmentSize, 65536));
        }
        std::string& last = aSegments.back();
        size_t take = std::min(n, aSegmentSize - last.size());
        last.append(bytes, take);
        bytes += take;
        n -= take;
        aLength += take;
    }
}

void vVBuffer::fAppend(const char* text) {
    fAppend(text, text ? std::strlen(text) : 0);
}

void vVBuffer::fClear() {
    aSegments.clear();
    aLength = 0;
}

bool vVBuffer::fForEachSegment(const std::function<bool(const char*, size_t)>& visit) const {
    for (const std::string& segment : aSegments)
        if (!visit(segment.data(), segment.size())) return false;
    return true;
}

RWCollectable* vVBuffer::newSpecies() const {
    return new vVBuffer(aSegmentSize);
}

RWCollectable* vVBuffer::copy() const {
    return new vVBuffer(*this);
}

size_t vVBuffer::fRead(size_t offset, char* out, size_t n) const {
    if (offset >= aLength) return 0;
    n = std::min(n, aLength - offset);
    size_t copied = 0;
    size_t index = offset / aSegmentSize;  // every segment but the last is full
    size_t within = offset % aSegmentSize;
    while (copied < n) {
        const std::string& segment = aSegments[index++];
        size_t take = std::min(n - copied, segment.size() - within);
        std::memcpy(out + copied, segment.data() + within, take);
        copied += take;
        within = 0;
    }
    return copied;
}

int vVBuffer::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return RWCollectable::compareTo(other);
    const auto* b = static_cast<const vVBuffer*>(other);
    // Byte order, compared in blocks so differing segment sizes do not matter.
    char mine[512], theirs[512];
    size_t offset = 0;
    for (;;) {
        size_t n = fRead(offset, mine, sizeof mine);
        size_t m = b->fRead(offset, theirs, sizeof theirs);
        size_t common = std::min(n, m);
        if (int c = std::memcmp(mine, theirs, common)) return c < 0 ? -1 : 1;
        if (n != m) return n < m ? -1 : 1;
        if (n == 0) return 0;
        offset += n;
    }
}

unsigned vVBuffer::hash() const {
    // FNV-1a over every byte.
    uint32_t h = 2166136261u;
    fForEachSegment([&h](const char* p, size_t n) {
        for (size_t i = 0; i < n; ++i) h = (h ^ static_cast<unsigned char>(p[i])) * 16777619u;
        return true;
    });
    return h;
}

bool vVBuffer::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() &&
           static_cast<const vVBuffer*>(other)->aLength == aLength && compareTo(other) == 0;
}

void vVBuffer::saveGuts(RWvostream& s) const {
    s << static_cast<unsigned>(aSegmentSize) << static_cast<unsigned>(aSegments.size());
    for (const std::string& segment : aSegments) s.putString(segment.data(), segment.size());
}

void vVBuffer::saveGuts(RWFile& f) const {
    f.Write(static_cast<unsigned>(aSegmentSize));
    f.Write(static_cast<unsigned>(aSegments.size()));
    for (const std::string& segment : aSegments) f.WriteString(segment.data(), segment.size());
}

void vVBuffer::restoreGuts(RWvistream& s) {
    fClear();
    size_t segmentSize = 0, count = 0;
    s.getCount(segmentSize);
    s.getCount(count);
    if (!s.good()) return;
    if (segmentSize == 0 || segmentSize > kMaxSegmentSize) {
        s.setstate(RWvios::failbit | RWvios::badbit);
        return;
    }
    aSegmentSize = segmentSize;
    RWCString segment;
    for (size_t i = 0; i < count && s.good(); ++i) {
        s.getString(segment);
        if (s.good()) fAppend(segment.data(), segment.length());
    }
}

void vVBuffer::restoreGuts(RWFile& f) {
    fClear();
    unsigned segmentSize = 0;
    size_t count = 0;
    if (!f.Read(segmentSize) || !f.ReadCount(count)) return;
    if (segmentSize == 0 || segmentSize > kMaxSegmentSize) {
        f.setFailed();
        return;
    }
    aSegmentSize = segmentSize;
    RWCString segment;
    for (size_t i = 0; i < count && f.ReadString(segment); ++i)
        fAppend(segment.data(), segment.length());
}
