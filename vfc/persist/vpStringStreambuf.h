#ifndef VFC_PERSIST_VPSTRINGSTREAMBUF_H
#define VFC_PERSIST_VPSTRINGSTREAMBUF_H

#include "vfc/base/export.h"
#include "vfc/persist/vpGStreambuf.h"

class vPstream;

/// The stream buffer of a vPstream: output bytes are appended to the pipe's string; input bytes
/// are taken from the front of it and removed.
///
/// Ownership: the buffer borrows its pipe (fOwner()) and never destroys it. The pipe detaches its
/// buffers when it is flushed or destroyed; a detached buffer (fOwner() null) takes and gives
/// nothing, so it is safe to keep using after the pipe is gone. Not copyable.
///
/// Failure: as for vpGStreambuf: output to a detached buffer is refused (sync() answers 255),
/// and input from an empty or detached pipe reads as the byte 255.
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
