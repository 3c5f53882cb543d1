#ifndef VFC_RW_RWVIOS_H
#define VFC_RW_RWVIOS_H

#include "vfc/base/export.h"

/// The state shared by the virtual object streams RWvistream and RWvostream.
///
/// A stream starts good; a read past the end sets eof and fail, a malformed token sets fail, a
/// structure that cannot be trusted any more (a bad count, an unknown class, a missing object
/// marker) sets bad as well. Once a stream is not good every further read leaves its target alone
/// and every write is dropped. fail() is true when fail or bad is set; clear() resets the state.
class VFC_API RWvios {
  public:
    // The state bits: goodbit is no bit at all; eofbit, failbit and badbit combine.
    enum iostate { goodbit = 0, eofbit = 1, failbit = 2, badbit = 4 };

    virtual ~RWvios();

    int rdstate() const { return state_; }
    bool good() const { return state_ == goodbit; }
    bool eof() const { return (state_ & eofbit) != 0; }
    bool fail() const { return (state_ & (failbit | badbit)) != 0; }
    bool bad() const { return (state_ & badbit) != 0; }
    explicit operator bool() const { return !fail(); }
    bool operator!() const { return fail(); }
    // Replaces the state (good by default) or adds bits to it.
    void clear(int state = goodbit) { state_ = state; }
    void setstate(int bits) { state_ |= bits; }

  private:
    int state_ = goodbit;
};

#endif  // VFC_RW_RWVIOS_H
