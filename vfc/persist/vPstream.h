#ifndef VFC_PERSIST_VPSTREAM_H
#define VFC_PERSIST_VPSTREAM_H

#include <memory>

#include "vfc/base/export.h"
#include "vfc/core/vString.h"

class vPistream;
class vPostream;
class vpStringStreambuf;

/// An in-memory first-in first-out pipe of objects whose bytes live in the string it is.
///
/// Write objects through insert(), call flush(), then read them back through extract(). Bytes
/// read leave the front of the string and bytes written join its end, so the string always holds
/// what has been written and not yet read (output still buffered waits until the next flush).
/// As a collectable the pipe persists as a string (its bytes), under its own class identifier.
///
/// \code
/// vPstream pipe;
/// pipe.insert() << vString("abc");
/// pipe.flush();
/// vString back;
/// pipe.extract() >> back;   // "abc"; the pipe is empty again
/// \endcode
///
/// Ownership: the pipe owns its bytes and shares its two streams with its copies. The
/// references that insert() and extract() return stay valid until the next flush() or the
/// pipe's destruction. A copy holds the same text and shares the source's streams; it is meant
/// to be read as text, not used as a second pipe. The streams write into the pipe that made
/// them: when that pipe goes away or is flushed, the streams a copy still shares are detached
/// and take and give nothing.
///
/// Failure: nothing throws. Reading past the bytes available, or data that does not parse,
/// fails the input stream (extract().fail()); it stays failed until it is cleared or flush()
/// starts fresh streams.
class VFC_API vPstream : public vString {
  public:
    vPstream();
    vPstream(const vPstream& other);
    vPstream& operator=(const vPstream&) = delete;
    // Destroys the output stream, the input stream, then both buffers, then the string.
    ~vPstream() override;

    vPostream& insert() { return *aStreams->out; }
    vPistream& extract() { return *aStreams->in; }
    // Hands buffered output to the string and starts fresh streams; the text is kept.
    void flush();

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    struct Streams {
        vPistream* in = nullptr;
        vPostream* out = nullptr;
        vpStringStreambuf* outBuf = nullptr;
        vpStringStreambuf* inBuf = nullptr;
        ~Streams();
    };
    void fOpen();
    void fRelease();

    std::shared_ptr<Streams> aStreams;
};

#endif  // VFC_PERSIST_VPSTREAM_H
