#include "vfc/core/vVBuffer.h"

#include <algorithm>
#include <cstring>

#include "vfc/persist/vClassIds.h"

const RWClassID vVBuffer::myAtom = vClassID::vVBuffer;

RWClassID vVBuffer::classIsA() {
    return myAtom;
}

vVBuffer::vVBuffer(size_t segmentSize) : aSegmentSize(std::max<size_t>(segmentSize, 1)) {}

vVBuffer::~vVBuffer() = default;

void vVBuffer::fAppend(const char* bytes, size_t n) {
    while (n > 0) {
        if (aSegments.empty() || aSegments.back().size() == aSegmentSize) {
            aSegments.emplace_back();
            aSegments.back().reserve(aSegmentSize);
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
