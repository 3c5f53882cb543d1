// vpSubRegExp: one alternative of a vRegExp, holding its compiled single expression. Private to
// the library.
#ifndef VFC_TEXT_INTERNAL_VPSUBREGEXP_H
#define VFC_TEXT_INTERNAL_VPSUBREGEXP_H

#include "vfc/rw/RWCRegexp.h"
#include "vfc/rw/RWCString.h"
#include "vfc/rw/RWCollectable.h"

class vpSubRegExp : public RWCollectable {
  public:
    // The expression ".*".
    vpSubRegExp() : aRegexp(".*") {}
    explicit vpSubRegExp(const RWCString& pattern) : aRegexp(pattern) {}

    RWCollectable* newSpecies() const override { return new vpSubRegExp; }
    RWCollectable* copy() const override { return new vpSubRegExp(*this); }
    RWClassID isA() const override { return RW_UNREGISTERED_ID; }

    const RWCRegexp& fRegexp() const { return aRegexp; }

  private:
    RWCRegexp aRegexp;
};

#endif  // VFC_TEXT_INTERNAL_VPSUBREGEXP_H
