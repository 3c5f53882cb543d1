// For the collection tests: a string that counts its live instances. It is registered with the
// factory, so objects that a stream reader creates are counted too.
#ifndef VFC_TESTING_COUNTEDSTRING_H
#define VFC_TESTING_COUNTEDSTRING_H

#include "vfc/core/vString.h"

namespace vfc::testing {

class Counted : public vString {
  public:
    static constexpr RWClassID kId = 0x7C01;
    static int live;
    Counted() { ++live; }
    explicit Counted(const char* s) : vString(s) { ++live; }
    Counted(const Counted& other) : vString(other) { ++live; }
    ~Counted() override { --live; }
    RWCollectable* newSpecies() const override { return new Counted; }
    RWCollectable* copy() const override { return new Counted(*this); }
    RWClassID isA() const override { return kId; }
};

}  // namespace vfc::testing

#endif  // VFC_TESTING_COUNTEDSTRING_H
