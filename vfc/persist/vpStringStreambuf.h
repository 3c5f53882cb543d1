// vpStringStreambuf: the stream buffer of a vPstream. Output bytes are appended to the pipe's
// string; input bytes are taken from the front of it and removed. A buffer detached from its
// pipe (the pipe is gone or was flushed) takes and gives nothing.
#ifndef VFC_PERSIST_VPSTRINGSTREAMBUF_H
#define VFC_PERSIST_VPSTRINGSTREAMBUF_H

#include "vfc/base/export.h"
#include "vfc/persist/vpGStreambuf.h"

class vPstream;

class VFC_API vpStringStreambuf : public vpGStreambuf {
  public:
    explicit vpStringStreambuf(vPstream* owner) : vpGStreambuf(1024), aOwner(owner) {}
    vpStringStreambuf(const vpStringStreambuf&) = delete;
    vpStringStreambuf& operator=(const vpStringStreambuf&) = delete;
    // Hands pending output to the pipe first.
    ~vpStringStreambuf() override;

    vPstream* fOwner() const { return aOwner; }
    // Flushes pending output to the pipe, then forgets the pipe.
    void fDetach();

  private:
    int consumer(char* data, int n) override;
    int producer(char* data, int n) override;

    vPstream* aOwner;  // not owned
};

#endif  // VFC_PERSIST_VPSTRINGSTREAMBUF_H
