#include "vfc/collections/vSlist.h"

#include <string_view>

#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWSlistCollectablesIterator.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

RW_DEFINE_COLLECTABLE(vSlist, vClassID::vSlist)

namespace {

// A position as the unsigned number it compares as: negative positions are then out of range.
size_t position(const vInt& i) {
    return static_cast<unsigned>(i.value());
}

// Calls f(element) for each element in order. Steps by count rather than stopping at the first
// null, so that lists holding null pointers (a pair with a missing member) are walked in full.
template <class F>
void forEach(const RWSlistCollectables& list, F f) {
    RWSlistCollectablesIterator it(const_cast<RWSlistCollectables&>(list));
    for (size_t i = 0, n = list.entries(); i < n; ++i)
        f(it());
}

template <class Stream>
void saveElements(const RWSlistCollectables& list, Stream& s) {
    forEach(list, [&s](const RWCollectable* item) { vfc::rw::saveObject(s, item); });
}

bool readable(const RWvistream& s) {
    return s.good();
}

bool readable(const RWFile& f) {
    return f.good();
}

bool readCount(RWvistream& s, size_t& n) {
    s.getCount(n);
    return s.good();
}

bool readCount(RWFile& f, size_t& n) {
    return f.ReadCount(n);
}

// Appends the elements of the collection form; stops at the first failure, keeping what was
// read completely. Nil elements are skipped: an owning list holds objects only.
template <class Stream>
void restoreElements(vSlist& list, Stream& s) {
    size_t n = 0;
    if (!readCount(s, n)) return;
    for (size_t i = 0; i < n; ++i) {
        RWCollectable* item = vfc::rw::restoreOwned(s);
        if (!readable(s)) {
            vfc::rw::discardRestored(s, item);
            return;
        }
        if (item) list.append(item);
    }
}

}  // namespace

vSlist::vSlist(const vSlist& other) : RWSlistCollectables() {
    fAppendCopies(other);
}

vSlist::~vSlist() {
    clearAndDestroy();
}

vSlist& vSlist::operator=(const vSlist& other) {
    if (&other == this) return *this;
    clearAndDestroy();
    fAppendCopies(other);
    return *this;
}

vSlist& vSlist::operator+=(const vSlist& other) {
    if (&other != this) fAppendCopies(other);
    return *this;
}

vSlist& vSlist::operator|=(const vSlist& other) {
    if (&other == this) return *this;
    forEach(other, [this](const RWCollectable* item) {
        if (item && !contains(item)) append(item->copy());
    });
    return *this;
}

vSlist& vSlist::operator&=(const vSlist& other) {
    if (&other == this) return *this;
    // Removing through the walking iterator keeps the survivors' order and visits each once.
    RWSlistCollectablesIterator it(*this);
    for (size_t i = 0, n = entries(); i < n; ++i) {
        RWCollectable* item = it();
        if (!item || !other.contains(item)) delete it.remove();
    }
    return *this;
}

void vSlist::fAppendCopies(const RWSlistCollectables& other) {
    forEach(other, [this](const RWCollectable* item) { append(item ? item->copy() : nullptr); });
}

bool vSlist::fInsert(const RWCollectable& x) {
    append(x.copy());
    return true;
}

bool vSlist::fInsertReference(RWCollectable* p) {
    if (!p) return false;
    append(p);
    return true;
}

bool vSlist::fInsertAt(const vInt& i, const RWCollectable& x) {
    size_t at = position(i);
    if (at > entries()) return false;
    insertAt(at, x.copy());
    return true;
}

bool vSlist::fContains(const RWCollectable& x) const {
    return contains(&x);
}

bool vSlist::fContainsReference(const RWCollectable* p) const {
    return containsReference(p);
}

bool vSlist::fIndex(const RWCollectable& x, vInt& i) const {
    RWSlistCollectablesIterator it(const_cast<vSlist&>(*this));
    for (size_t at = 0, n = entries(); at < n; ++at) {
        RWCollectable* item = it();
        if (item && item->isEqual(&x)) {
            i = static_cast<int>(at);
            return true;
        }
    }
    i = 0;
    return false;
}

bool vSlist::fRemove(const RWCollectable& x, RWCollectable*& out) {
    out = remove(&x);
    return out != nullptr;
}

bool vSlist::fRemoveAt(const vInt& i, RWCollectable*& out) {
    size_t at = position(i);
    if (at >= entries()) return false;
    out = removeAt(at);
    return true;
}

bool vSlist::fRemoveFirst(RWCollectable*& out) {
    if (entries() == 0) return false;
    out = removeFirst();
    return true;
}

bool vSlist::fRemoveLast(RWCollectable*& out) {
    if (entries() == 0) return false;
    out = removeLast();
    return true;
}

bool vSlist::fRemoveReference(const RWCollectable* p) {
    return p && removeReference(p) != nullptr;
}

bool vSlist::fDelete(const RWCollectable& x) {
    RWCollectable* item = remove(&x);
    if (!item) return false;
    delete item;
    return true;
}

bool vSlist::fDeleteAt(const vInt& i) {
    size_t at = position(i);
    if (at >= entries()) return false;
    delete removeAt(at);
    return true;
}

bool vSlist::fDeleteFirst() {
    if (entries() == 0) return false;
    delete removeFirst();
    return true;
}

bool vSlist::fDeleteLast() {
    if (entries() == 0) return false;
    delete removeLast();
    return true;
}

bool vSlist::fClear() {
    clear();
    return true;
}

bool vSlist::fClearAndDestroy() {
    clearAndDestroy();
    return true;
}

bool vSlist::fIsEqual(const vSlist& other) const {
    return isEqual(&other);
}

void vSlist::fStringToSlist(const vString& text, vSlist& list) {
    std::string_view rest = text.view();
    while (!rest.empty()) {
        size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        if (!line.empty()) list.append(new vString(line.data(), line.size()));
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
}

RWCollectable* vSlist::newSpecies() const {
    return new vSlist;
}

RWCollectable* vSlist::copy() const {
    return new vSlist(*this);
}

bool vSlist::isEqual(const RWCollectable* other) const {
    const RWSlistCollectables* o = dynamic_cast<const RWSlistCollectables*>(other);
    if (!o || o->entries() != entries()) return false;
    RWSlistCollectablesIterator mine(const_cast<vSlist&>(*this));
    RWSlistCollectablesIterator theirs(const_cast<RWSlistCollectables&>(*o));
    for (size_t i = 0, n = entries(); i < n; ++i) {
        const RWCollectable* a = mine();
        const RWCollectable* b = theirs();
        if (!a || !b ? a != b : !a->isEqual(b)) return false;
    }
    return true;
}

void vSlist::restoreGuts(RWvistream& s) {
    clearAndDestroy();
    restoreElements(*this, s);
}

void vSlist::restoreGuts(RWFile& f) {
    clearAndDestroy();
    restoreElements(*this, f);
}

void vSlist::saveGuts(RWvostream& s) const {
    s << static_cast<unsigned>(entries());
    saveElements(*this, s);
}

void vSlist::saveGuts(RWFile& f) const {
    f.Write(static_cast<unsigned>(entries()));
    saveElements(*this, f);
}
