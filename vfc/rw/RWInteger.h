// RWInteger: a holder of one platform int, with the persistent form of a single integer item.
// It is a plain value, not a collectable; vInt adds the collectable protocol on top of it.
#ifndef VFC_RW_RWINTEGER_H
#define VFC_RW_RWINTEGER_H

#include "vfc/base/export.h"

class RWFile;
class RWvistream;
class RWvostream;

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
