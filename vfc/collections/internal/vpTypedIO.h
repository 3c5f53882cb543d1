// vpTypedIO: the persistence steps that every typed collection shares. A typed collection is
// written exactly as its generic collection is (the count, then every element as an object, or
// for a hash every key and value object), and it is read back element by element with a class
// check: an element that is not a T is destroyed and the stream is marked corrupt, because the
// typed accessors hand out T& and so must never meet another class.
//
// Only templates and inline functions: nothing here is compiled into the library on its own.
#ifndef VFC_COLLECTIONS_INTERNAL_VPTYPEDIO_H
#define VFC_COLLECTIONS_INTERNAL_VPTYPEDIO_H

#include <cstddef>

#include "vfc/rw/RWCollectable.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

class vpTypedIO {
  public:
    static void fWriteCount(RWvostream& s, size_t n) { s << static_cast<unsigned>(n); }
    static void fWriteCount(RWFile& f, size_t n) { f.Write(static_cast<unsigned>(n)); }

    static bool fReadCount(RWvistream& s, size_t& n) {
        s.getCount(n);
        return s.good();
    }
    static bool fReadCount(RWFile& f, size_t& n) { return f.ReadCount(n); }

    static bool fGood(const RWvistream& s) { return s.good(); }
    static bool fGood(const RWFile& f) { return f.good(); }

    static void fMarkCorrupt(RWvistream& s) { s.setstate(RWvios::failbit | RWvios::badbit); }
    static void fMarkCorrupt(RWFile& f) { f.setFailed(); }

    // Reads one element that the caller will own. False when the stream failed or the element
    // is not a T (then it is destroyed and the stream marked corrupt). True with out null for a
    // nil element.
    template <class T, class Stream>
    static bool fReadElement(Stream& s, T*& out) {
        out = nullptr;
        RWCollectable* p = vfc::rw::restoreOwned(s);
        if (!fGood(s)) {
            vfc::rw::discardRestored(s, p);
            return false;
        }
        if (!p) return true;
        out = dynamic_cast<T*>(p);
        if (!out) {
            vfc::rw::discardRestored(s, p);
            fMarkCorrupt(s);
            return false;
        }
        return true;
    }

    // Reads the collection form: a count, then that many elements. Each element read completely
    // goes to insert(T*), which returns false when it refuses the element (a duplicate in a
    // set); a refused element is discarded (vfc::rw::discardRestored: a later reference may
    // still name it). Nil elements are skipped. Stops at the first failure, keeping what was
    // read before it.
    template <class T, class Stream, class Insert>
    static void fRestoreElements(Stream& s, Insert insert) {
        size_t n = 0;
        if (!fReadCount(s, n)) return;
        for (size_t i = 0; i < n; ++i) {
            T* p = nullptr;
            if (!fReadElement(s, p)) return;
            if (p && !insert(p)) vfc::rw::discardRestored(s, p);
        }
    }

    // The same for a hash: a count, then a key object and a value object per entry. An entry
    // with a nil key or value is skipped; insert(K*, V*) returns false to refuse an entry (a
    // key already present), which is then discarded.
    template <class K, class V, class Stream, class Insert>
    static void fRestorePairs(Stream& s, Insert insert) {
        size_t n = 0;
        if (!fReadCount(s, n)) return;
        for (size_t i = 0; i < n; ++i) {
            K* key = nullptr;
            if (!fReadElement(s, key)) return;
            V* value = nullptr;
            if (!fReadElement(s, value)) {
                vfc::rw::discardRestored(s, key);
                return;
            }
            if (key && value && insert(key, value)) continue;
            vfc::rw::discardRestored(s, key);
            vfc::rw::discardRestored(s, value);
        }
    }
};

#endif  // VFC_COLLECTIONS_INTERNAL_VPTYPEDIO_H
