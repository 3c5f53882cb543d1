// A small loadable module for the vLibrary tests: C entry points taking one pointer, and one C++
// function over two collectables, looked up by its decorated name. It links against nothing:
// the collectables are only reached through their virtual functions.
#include "vfc/rw/RWCollectable.h"

extern "C" {

// Sets the int behind state to 42 and reports success.
__attribute__((visibility("default"))) int Plugin_Init(void* state) {
    if (!state) return 0;
    *static_cast<int*>(state) = 42;
    return 1;
}

// Counts its calls in the int behind state and reports failure.
__attribute__((visibility("default"))) int Plugin_Fail(void* state) {
    if (state) ++*static_cast<int*>(state);
    return 0;
}

// Unprefixed: reachable only through a library whose prefix is empty.
__attribute__((visibility("default"))) int Bare(void* state) {
    if (state) *static_cast<int*>(state) = 7;
    return 1;
}

}  // extern "C"

// Non-zero when the two collectables are equal.
__attribute__((visibility("default"))) int Plugin_Same(const RWCollectable& in,
                                                       RWCollectable& out) {
    return in.isEqual(&out) ? 1 : 0;
}
