#include "vfc/rw/RWCollectable.h"

#include <cstdint>
#include <functional>
#include <type_traits>

#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/rw/internal/StoreTable.h"

RWCollectable::~RWCollectable() = default;

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
    // are never looked at again.
    ~Operation() { --table_.depth; }
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

// The common part of both readers after the class identifier: make or reuse the object, record
// it, let restore() read its state, mark it complete. Null when anything failed.
template <class Restore, class Fail>
RWCollectable* restoreNew(RestoreTable& table, RWClassID id, RWCollectable* into,
                          Restore restore, Fail fail) {
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
    size_t ordinal = table.objects.size();
    table.objects.push_back({object, false});
    if (!restore(object)) {
        // Drop the entry so nothing later can reach a destroyed object.
        table.objects.resize(ordinal);
        if (owned) delete object;
        return nullptr;
    }
    table.objects[ordinal].complete = true;
    return object;
}

RWCollectable* lookup(RestoreTable& table, uint64_t ordinal) {
    if (ordinal >= table.objects.size() || !table.objects[ordinal].complete) return nullptr;
    return table.objects[ordinal].object;
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
    auto corrupt = [&s] { s.setstate(RWvios::failbit | RWvios::badbit); };
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
        table, id, p,
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
    auto corrupt = [&f] { f.setFailed(); };
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
        table, id, p,
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
// A reference to an object read earlier is shared with whoever owns it; an owner gets a copy.
template <class Stream>
RWCollectable* ownedFrom(Stream& s) {
    auto& table = s.restoreTable();
    size_t before = table.objects.size();
    RWCollectable* object = RWCollectable::recursiveRestoreFrom(s);
    if (!object) return nullptr;
    // A new object got a fresh ordinal; when none was added the result is a shared reference.
    // (The table is emptied when the outermost operation ends, so compare only inside one.)
    bool fresh = table.depth == 0 ? true : table.objects.size() > before;
    return fresh ? object : object->copy();
}
}  // namespace

RWCollectable* restoreOwned(RWvistream& s) {
    return ownedFrom(s);
}

RWCollectable* restoreOwned(RWFile& f) {
    return ownedFrom(f);
}

}  // namespace vfc::rw
