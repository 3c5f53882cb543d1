// The persistent form shared by the owning collections: the number of elements, then each element
// (for hashes each key, then its value) as an object. Readers stop at the first failure and keep
// what was read completely; a nil element is dropped, as an owning collection holds no nulls.
#ifndef VFC_COLLECTIONS_INTERNAL_COLLECTIONIO_H
#define VFC_COLLECTIONS_INTERNAL_COLLECTIONIO_H

#include <cstddef>

#include "vfc/rw/RWCollectable.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/rw/internal/StoreTable.h"

namespace vfc::collections {

inline void writeCount(RWvostream& s, size_t n) {
    s << static_cast<unsigned>(n);
}
inline void writeCount(RWFile& f, size_t n) {
    f.Write(static_cast<unsigned>(n));
}
inline bool readCount(RWvistream& s, size_t& n) {
    s.getCount(n);
    return s.good();
}
inline bool readCount(RWFile& f, size_t& n) {
    return f.ReadCount(n);
}
inline bool isGood(const RWvistream& s) {
    return s.good();
}
inline bool isGood(const RWFile& f) {
    return f.good();
}

// Writes the count of live entries, then every live entry of a hash table in order: its key and,
// when withValues, its value, as objects. entryAt(i) is the entry at position i below span, a
// hole when its key is null. The entries lie in one array but their objects lie anywhere, so the
// objects of the entry a few places on, and their slots in the identity table, are requested
// from memory before they are written.
template <class Out, class EntryAt>
void saveLiveEntries(Out& out, size_t live, size_t span, EntryAt entryAt, bool withValues) {
    constexpr size_t kAhead = 8;
    writeCount(out, live);
    const vfc::rw::SaveTable& table = out.saveTable();
    for (size_t i = 0; i < span; ++i) {
        if (i + kAhead < span) {
            const auto& next = entryAt(i + kAhead);
            if (next.key) {
                __builtin_prefetch(next.key);
                __builtin_prefetch(table.slotAddress(next.key));
                if (withValues) {
                    __builtin_prefetch(next.value);
                    __builtin_prefetch(table.slotAddress(next.value));
                }
            }
        }
        const auto& e = entryAt(i);
        if (!e.key) continue;
        vfc::rw::saveObject(out, e.key);
        if (withValues) vfc::rw::saveObject(out, e.value);
    }
}

// Reads a count and that many objects, handing each to store(p), which answers whether it kept p;
// objects not kept are discarded (vfc::rw::discardRestored: a later reference may still name
// them).
template <class In, class Store>
void restoreElements(In& in, Store store) {
    size_t n = 0;
    if (!readCount(in, n)) return;
    for (size_t i = 0; i < n; ++i) {
        RWCollectable* p = vfc::rw::restoreOwned(in);
        if (p && !store(p)) vfc::rw::discardRestored(in, p);
        if (!isGood(in)) return;
    }
}

// Reads a count and that many key and value objects, handing each complete pair to
// store(key, value); pairs not kept, and pairs with a nil side, are discarded.
template <class In, class Store>
void restorePairs(In& in, Store store) {
    size_t n = 0;
    if (!readCount(in, n)) return;
    for (size_t i = 0; i < n; ++i) {
        RWCollectable* key = vfc::rw::restoreOwned(in);
        if (!isGood(in)) {
            vfc::rw::discardRestored(in, key);
            return;
        }
        RWCollectable* value = vfc::rw::restoreOwned(in);
        if (!key || !value || !store(key, value)) {
            vfc::rw::discardRestored(in, key);
            vfc::rw::discardRestored(in, value);
        }
        if (!isGood(in)) return;
    }
}

}  // namespace vfc::collections

#endif  // VFC_COLLECTIONS_INTERNAL_COLLECTIONIO_H
