#ifndef VFC_PERSIST_VPGSTREAMBUF_H
#define VFC_PERSIST_VPGSTREAMBUF_H

#include <streambuf>

#include "vfc/base/export.h"

/// A stream buffer that hands the bytes written to it to consumer() and takes the bytes read
/// from it from producer(); subclasses supply one or both.
///
/// Both buffers have the size given at construction (at least 1). Its answers differ from a
/// plain std::streambuf in two ways that callers rely on: a failed flush and the end of input
/// are both answered with the value 255, not with end-of-file, and reading always flushes
/// pending output first, so a pipe built on it can read back what was just written.
///
/// Ownership: the buffer owns its two byte areas. A copy gets fresh, empty ones of the same
/// size; nothing pending is copied.
///
/// Failure: nothing throws. sync() answers 255 when the consumer took nothing or claimed more
/// than it was given; writing through a consumer that takes nothing ends in end-of-file from
/// overflow(), which fails the std::ostream on top. At the end of the input a reader sees the
/// byte 255 rather than end-of-file, so a reader must recognise the end from the data itself.
class VFC_API vpGStreambuf : public std::basic_streambuf<char> {
  public:
    explicit vpGStreambuf(int size);
    // A copy gets fresh, empty buffers of the same size.
    vpGStreambuf(const vpGStreambuf& other);
    vpGStreambuf& operator=(const vpGStreambuf&) = delete;
    // Flushes what is pending, through this class's consumer: a subclass that takes bytes must
    // flush in its own destructor.
    ~vpGStreambuf() override;

  protected:
    // Hands the pending output to consumer(). 0 when all of it was taken (or there was none);
    // 255 when the consumer took nothing or claimed more than it was given.
    int sync() override;
    int overflow(int c) override;
    // Flushes pending output, then asks producer() for more; 255 when it gives nothing.
    int underflow() override;
    int pbackfail(int c) override;

    int bufferSize() const { return aSize; }

  private:
    // Takes n output bytes; returns how many it took. The base takes none.
    virtual int consumer(char* data, int n);
    // Gives up to n input bytes; returns how many it gave. The base gives none.
    virtual int producer(char* data, int n);

    int aSize;
    char* aGet;
    char* aPut;
};

#endif  // VFC_PERSIST_VPGSTREAMBUF_H
