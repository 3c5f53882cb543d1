#include "vfc/testing/CountedString.h"

#include "vfc/rw/RWFactory.h"

namespace vfc::testing {

int Counted::live = 0;

namespace {
RWCollectable* makeCounted() {
    return new Counted;
}
const vfc::rw::FactoryRegistration countedRegistration(&makeCounted, Counted::kId);
}  // namespace

}  // namespace vfc::testing
