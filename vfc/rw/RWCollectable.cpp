#include "vfc/rw/RWCollectable.h"

#include <cstdint>
#include <functional>
#include <type_traits>

#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/rw/internal/StoreTable.h"

RWCollectable* RWCollectable::newSpecies() const {
    return new RWCollectable;
}

RWCollectable* RWCollectable::copy() const {
    return new RWCollectable(*this);
}

RWClassID RWCollectable::isA() const {
    return classIsA();
}

size_t RWCollectable::binaryStoreSize() const {
    return 0;
}

int RWCollectable::compareTo(const RWCollectable* other) const {
    // std::less gives a total order on unrelated pointers, where the built-in < does not.
    if (this == other) return 0;
    return std::less<const RWCollectable*>()(this, other) ? -1 : 1;
}

unsigned RWCollectable::hash() const {
    // Heap objects are at least 16-byte aligned: drop the bits that never vary.
    uint64_t bits = static_cast<uint64_t>(reinterpret_cast<std::uintptr_t>(this)) >> 4;
    return static_cast<unsigned>(bits ^ (bits >> 32));
}

bool RWCollectable::isEqual(const RWCollectable* other) const {
    return this == other;
}

void RWCollectable::restoreGuts(RWvistream&) {}
void RWCollectable::restoreGuts(RWFile&) {}
void RWCollectable::saveGuts(RWvostream&) const {}
void RWCollectable::saveGuts(RWFile&) const {}

// ---- the object writer and reader --------------------------------------------------------------

namespace {

using vfc::rw::RestoreTable;
using vfc::rw::SaveTable;

// Opens a store or restore operation on a table: the outermost call empties it.
template <class Table>
class Operation {
  public:
    explicit Operation(Table& t) : table_(t) {
        if (table_.depth++ == 0) clearTable();
    }
    // The table is emptied when an operation starts, not when it ends: entries left behind
    // are never looked at again. Objects retired during a restore operation go at its end.
    ~Operation() {
        if (--table_.depth == 0) {
            if constexpr (std::is_same_v<Table, RestoreTable>) table_.destroyRetired();
        }
    }
    Operation(const Operation&) = delete;
    Operation& operator=(const Operation&) = delete;
    int depth() const { return table_.depth; }

  private:
    void clearTable() {
        if constexpr (std::is_same_v<Table, SaveTable>)
            table_.clear();
        else
            table_.objects.clear();
    }
    Table& table_;
};

// Returns the ordinal of p when it was written before in this operation; otherwise records p.
bool seenBefore(SaveTable& table, const RWCollectable* p, uint32_t& ordinal) {
    return table.findOrAdd(p, ordinal);
}

// Malformed data: the text stream fails with bad, the file fails.
void markCorrupt(RWvistream& s) {
    s.setstate(RWvios::failbit | RWvios::badbit);
}

void markCorrupt(RWFile& f) {
    f.setFailed();
}

unsigned long long bytesReadFrom(const RWvistream& s) {
    return s.bytesRead();
}

unsigned long long bytesReadFrom(const RWFile& f) {
    return f.BytesRead();
}

// The common part of both readers after the class identifier: make or reuse the object, record
// it, let restore() read its state, mark it complete with what a copy of it would cost. Null
// when anything failed.
template <class Stream, class Restore, class Fail>
RWCollectable* restoreNew(Stream& s, RWClassID id, RWCollectable* into, Restore restore,
                          Fail fail) {
    RestoreTable& table = s.restoreTable();
    RWCollectable* object = nullptr;
    bool owned = false;
    if (into) {
        if (into->isA() != id) return fail(), nullptr;
        object = into;
    } else {
        object = getRWFactory()->create(id);
        if (!object) return fail(), nullptr;
        owned = true;
    }
    const uint64_t madeBefore = table.made++;
    const uint64_t bytesBefore = bytesReadFrom(s) + table.copiedBytes;
    size_t ordinal = table.objects.size();
    // Grown and then filled in, rather than pushed as a whole: the compiler would build the
    // entry on the stack in parts and copy it in one load, which stalls on the parts.
    table.objects.emplace_back();
    table.objects.back().object = object;
    bool restored = restore(object);
    // References read inside the object were its own; the object itself is new.
    table.lastReference = RestoreTable::kNoReference;
    if (!restored) {
        // Drop the entry so nothing later can reach a destroyed object.
        table.objects.resize(ordinal);
        if (owned) delete object;
        return nullptr;
    }
    RestoreTable::Entry& entry = table.objects[ordinal];
    entry.complete = true;
    entry.objects = table.made - madeBefore;
    entry.bytes = bytesReadFrom(s) + table.copiedBytes - bytesBefore;
    return object;
}

// The object recorded under ordinal, complete; null when there is none.
RWCollectable* lookup(RestoreTable& table, uint64_t ordinal) {
    if (ordinal >= table.objects.size() || !table.objects[ordinal].complete) return nullptr;
    table.lastReference = ordinal;
    return table.objects[ordinal].object;
}

// Charges a copy of the object under ordinal to the stream's budget; false when that would
// exceed what the bytes read so far allow.
template <class Stream>
bool chargeCopy(Stream& s, uint64_t ordinal) {
    RestoreTable& table = s.restoreTable();
    const RestoreTable::Entry& entry = table.objects[ordinal];
    table.made += entry.objects;
    table.copiedBytes += entry.bytes;
    const unsigned long long read = bytesReadFrom(s);
    return table.made <= RWvistream::kObjectAllowance + RWvistream::kObjectsPerByteRead * read &&
           table.copiedBytes <=
               RWvistream::kCopyAllowance + RWvistream::kCopiedBytesPerByteRead * read;
}

}  // namespace

void RWCollectable::recursiveSaveOn(RWvostream& s) const {
    SaveTable& table = s.saveTable();
    {
        Operation<SaveTable> op(table);
        uint32_t ordinal;
        if (seenBefore(table, this, ordinal)) {
            s << '@' << ordinal;
        } else {
            s << ':' << isA();
            s.putObjectStart();
            saveGuts(s);
            s.putObjectEnd();
        }
    }
    // The outermost object is complete: the stream may hand it over now.
    if (table.depth == 0) s.commit();
}

void RWCollectable::recursiveSaveOn(RWFile& f) const {
    SaveTable& table = f.saveTable();
    Operation<SaveTable> op(table);
    uint32_t ordinal;
    if (seenBefore(table, this, ordinal)) {
        f.Write('@');
        f.Write(ordinal);
        return;
    }
    f.Write(':');
    f.Write(isA());
    saveGuts(f);
}

RWCollectable* RWCollectable::recursiveRestoreFrom(RWvistream& s, RWCollectable* p) {
    if (!s.good()) return nullptr;
    RestoreTable& table = s.restoreTable();
    Operation<RestoreTable> op(table);
    table.lastReference = RestoreTable::kNoReference;
    auto corrupt = [&s] { markCorrupt(s); };
    if (op.depth() > RWvistream::kMaxDepth) return corrupt(), nullptr;
    char tag = 0;
    s >> tag;
    if (!s.good()) return nullptr;
    if (tag == 'N') return nullptr;
    if (tag == '@') {
        unsigned ordinal = 0;
        s >> ordinal;
        if (!s.good()) return nullptr;
        RWCollectable* object = p ? nullptr : lookup(table, ordinal);
        if (!object) corrupt();
        return object;
    }
    if (tag != ':') return corrupt(), nullptr;
    RWClassID id = 0;
    s >> id;
    if (!s.good()) return nullptr;
    return restoreNew(
        s, id, p,
        [&s](RWCollectable* object) {
            if (!s.getObjectStart()) return false;
            object->restoreGuts(s);
            return s.good() && s.getObjectEnd();
        },
        corrupt);
}

RWCollectable* RWCollectable::recursiveRestoreFrom(RWFile& f, RWCollectable* p) {
    if (!f.good()) return nullptr;
    RestoreTable& table = f.restoreTable();
    Operation<RestoreTable> op(table);
    table.lastReference = RestoreTable::kNoReference;
    auto corrupt = [&f] { markCorrupt(f); };
    if (op.depth() > RWvistream::kMaxDepth) return corrupt(), nullptr;
    char tag = 0;
    if (!f.Read(tag) || tag == 'N') return nullptr;
    if (tag == '@') {
        unsigned ordinal = 0;
        if (!f.Read(ordinal)) return nullptr;
        RWCollectable* object = p ? nullptr : lookup(table, ordinal);
        if (!object) corrupt();
        return object;
    }
    if (tag != ':') return corrupt(), nullptr;
    RWClassID id = 0;
    if (!f.Read(id)) return nullptr;
    return restoreNew(
        f, id, p,
        [&f](RWCollectable* object) {
            object->restoreGuts(f);
            return f.good();
        },
        corrupt);
}

namespace vfc::rw {

void saveObject(RWvostream& s, const RWCollectable* p) {
    if (p)
        p->recursiveSaveOn(s);
    else
        s << 'N';
}

void saveObject(RWFile& f, const RWCollectable* p) {
    if (p)
        p->recursiveSaveOn(f);
    else
        f.Write('N');
}

namespace {

// A reference to an object read earlier is shared with whoever owns it; an owner gets a copy,
// charged to the stream's budget.
template <class Stream>
RWCollectable* ownedFrom(Stream& s) {
    RWCollectable* object = RWCollectable::recursiveRestoreFrom(s);
    if (!object) return nullptr;
    RestoreTable& table = s.restoreTable();
    const uint64_t reference = table.lastReference;
    if (reference == RestoreTable::kNoReference) return object;
    if (!chargeCopy(s, reference)) {
        markCorrupt(s);
        return nullptr;
    }
    return object->copy();
}

template <class Stream>
void retire(Stream& s, RWCollectable* p) {
    if (!p) return;
    RestoreTable& table = s.restoreTable();
    if (table.depth > 0)
        table.retired.push_back(p);
    else
        delete p;  // no operation is open, so no reference can reach it any more
}

}  // namespace

RWCollectable* restoreOwned(RWvistream& s) {
    return ownedFrom(s);
}

RWCollectable* restoreOwned(RWFile& f) {
    return ownedFrom(f);
}

void discardRestored(RWvistream& s, RWCollectable* p) {
    retire(s, p);
}

void discardRestored(RWFile& f, RWCollectable* p) {
    retire(f, p);
}

RestoreTable::~RestoreTable() {
    destroyRetired();
}

void RestoreTable::destroyRetired() {
    for (RWCollectable* p : retired)
        delete p;
    retired.clear();
}

}  // namespace vfc::rw
