#ifndef VFC_RW_RWINTEGER_H
#define VFC_RW_RWINTEGER_H

#include "vfc/base/export.h"

class RWFile;
class RWvistream;
class RWvostream;

/// A holder of one platform int, with the persistent form of a single integer item.
///
/// It is a plain value (copies are independent), not a collectable; vInt adds the collectable
/// protocol on top of it. restoreFrom() leaves the value unchanged when the item cannot be read;
/// the stream (its fail state) or the file (not good()) then reports the failure.
class VFC_API RWInteger {
  public:
    RWInteger(int value = 0) : value_(value) {}

    int value() const { return value_; }
    void value(int v) { value_ = v; }
    operator int() const { return value_; }

    // One integer item. restoreFrom leaves the value unchanged when the item cannot be read (the
    // stream or file then reports the failure).
    void saveOn(RWvostream& s) const;
    void saveOn(RWFile& f) const;
    void restoreFrom(RWvistream& s);
    void restoreFrom(RWFile& f);

  private:
    int value_;
};

#endif  // VFC_RW_RWINTEGER_H
