#ifndef VFC_CORE_VVBUFFER_H
#define VFC_CORE_VVBUFFER_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"

/// A growable byte buffer kept as a list of fixed-size segments, so appending never moves what is
/// already stored.
///
/// Readers walk it segment by segment with fForEachSegment or copy ranges out with fRead. Two
/// buffers are equal (and order by their bytes) when they hold the same bytes, whatever their
/// segment sizes. Persisted as the segment size, the segment count and each segment as a string
/// item.
///
/// Ownership: the buffer owns its bytes; copies are deep and independent. The pointers passed to a
/// fForEachSegment visitor are valid only during that call.
///
/// Failure: fRead copies what exists and answers the number of bytes copied (0 from an offset at or
/// past the end). Restoring first empties the buffer; a segment size of 0 or above 16 MiB fails the
/// stream (fail and bad) or the RWFile, and on a failed read the buffer keeps the segments read
/// completely. Check the stream or file after restoring.
class VFC_API vVBuffer : public RWCollectable {
  public:
    // segmentSize: bytes per segment (at least 1).
    explicit vVBuffer(size_t segmentSize = 4096);
    vVBuffer(const vVBuffer& other) = default;
    vVBuffer& operator=(const vVBuffer& other) = default;
    ~vVBuffer() override;

    void fAppend(const char* bytes, size_t n);
    void fAppend(const char* text);
    size_t fLength() const { return aLength; }
    size_t fSegments() const { return aSegments.size(); }
    void fClear();

    // Calls visit once per segment, in order, with the segment's bytes and length, until visit
    // returns false. True when every segment was visited.
    bool fForEachSegment(const std::function<bool(const char*, size_t)>& visit) const;
    // Copies up to n bytes from offset on into out; returns how many were copied.
    size_t fRead(size_t offset, char* out, size_t n) const;
    size_t fSegmentSize() const { return aSegmentSize; }

    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    size_t aSegmentSize;
    size_t aLength = 0;
    std::vector<std::string> aSegments;  // every one full but the last
};

#endif  // VFC_CORE_VVBUFFER_H
