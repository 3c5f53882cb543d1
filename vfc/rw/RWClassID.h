#ifndef VFC_RW_RWCLASSID_H
#define VFC_RW_RWCLASSID_H

/// A class identifier: the 16-bit number that every collectable class answers from isA() and that
/// persistent streams record, so that a reader can make the right class through RWFactory.
///
/// The library's own identifiers are listed in vfc/persist/vClassIds.h; the platform layer's few
/// are here, outside the library's ranges.
using RWClassID = unsigned short;

/// The identifier of RWCollectable itself.
constexpr RWClassID RW_COLLECTABLE_ID = 0x8000;
/// The identifier of classes that are never written to a stream and so are not registered
/// anywhere.
constexpr RWClassID RW_UNREGISTERED_ID = 0xFFFF;

#endif  // VFC_RW_RWCLASSID_H
