// Class identifiers of the platform layer. Every collectable class answers isA() with a 16-bit
// identifier that persistent streams record; the library's own identifiers are listed in
// vfc/persist/vClassIds.h, the platform's few here, outside the library's ranges.
#ifndef VFC_RW_RWCLASSID_H
#define VFC_RW_RWCLASSID_H

using RWClassID = unsigned short;

// RWCollectable itself.
constexpr RWClassID RW_COLLECTABLE_ID = 0x8000;
// Classes that are never written to a stream and so are not registered anywhere.
constexpr RWClassID RW_UNREGISTERED_ID = 0xFFFF;

#endif  // VFC_RW_RWCLASSID_H
