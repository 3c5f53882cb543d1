// Fuzzes the portable object reader: any bytes, read through vPistream into a new object of every
// class the factory knows (restoreGuts straight away) and as a sequence of framed objects (the
// object reader with the factory). Besides crashes, hangs, leaks and unbounded allocation it
// checks that whatever was read completely can be written again and read back, giving the same
// number of bytes once more.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <string>

#include <vfc/vfc.h>

namespace {

void check(bool ok) {
    if (!ok) __builtin_trap();
}

// Naming each class keeps its registration in a static link.
const RWClassID kLinked[] = {
    vString::classIsA(),  vInt::classIsA(),    vFloat::classIsA(),    vIntString::classIsA(),
    vVoid::classIsA(),    vPair::classIsA(),   vSlist::classIsA(),    vHash::classIsA(),
    vSet::classIsA(),     vTable::classIsA(),  vVector::classIsA(),   vVBuffer::classIsA(),
    vRegExp::classIsA(),  vPstream::classIsA(), vSString::classIsA(),
#define VFC_FUZZ_LINK(name, ...) name::classIsA(),
    VFC_TYPED_FAMILY(VFC_FUZZ_LINK, VFC_FUZZ_LINK, VFC_FUZZ_LINK, VFC_FUZZ_LINK, VFC_FUZZ_LINK)
#undef VFC_FUZZ_LINK
};

std::string saved(const RWCollectable& x) {
    std::stringbuf buf;
    vPostream out(&buf);
    x.recursiveSaveOn(out);
    return buf.str();
}

// A complete object must survive a second trip with the same size.
void checkRoundTrip(const RWCollectable& x) {
    const std::string first = saved(x);
    std::stringbuf buf(first);
    vPistream in(&buf);
    std::unique_ptr<RWCollectable> back(RWCollectable::recursiveRestoreFrom(in));
    check(in.good() && back != nullptr);
    check(back->isA() == x.isA());
    check(saved(*back).size() == first.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);

    // The guts of every class.
    for (RWClassID id : kLinked) {
        std::unique_ptr<RWCollectable> object(getRWFactory()->create(id));
        check(object != nullptr);
        std::stringbuf buf(bytes);
        vPistream in(&buf);
        object->restoreGuts(in);
        if (in.good()) checkRoundTrip(*object);
    }

    // Framed objects, as a file holds them.
    std::stringbuf buf(bytes);
    vPistream in(&buf);
    for (int i = 0; i < 16 && in.good(); ++i) {
        std::unique_ptr<RWCollectable> object(RWCollectable::recursiveRestoreFrom(in));
        if (in.good() && object) checkRoundTrip(*object);
    }
    return 0;
}
