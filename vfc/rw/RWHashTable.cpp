#include "vfc/rw/RWHashTable.h"

#include <utility>

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr size_t RWHashTable::kNone;

namespace {

// The index is kept at most three quarters full; linear probing stays short at that load because
// each slot carries the hash, so a probe rarely has to look at an element.
size_t slotsFor(size_t n) {
    size_t size = 8;
    while (size * 3 < n * 4)
        size *= 2;
    return size;
}

unsigned log2Of(size_t powerOfTwo) {
    unsigned bits = 0;
    while ((size_t{1} << bits) < powerOfTwo)
        ++bits;
    return bits;
}

}  // namespace

RWHashTable::RWHashTable(size_t n) {
    if (n > 0) resize(n);
}

RWHashTable::~RWHashTable() = default;

RWHashTable::RWHashTable(const RWHashTable& other)
    : RWCollection(other),
      entries_(other.entries_),
      slots_(other.slots_),
      live_(other.live_),
      shift_(other.shift_) {}

RWHashTable& RWHashTable::operator=(const RWHashTable& other) {
    entries_ = other.entries_;
    slots_ = other.slots_;
    live_ = other.live_;
    shift_ = other.shift_;
    return *this;
}

RWCollectable* RWHashTable::insert(RWCollectable* a) {
    if (!a) return nullptr;
    return addEntry(a, nullptr, a->hash()) == kNone ? nullptr : a;
}

RWCollectable* RWHashTable::find(const RWCollectable* target) const {
    if (!target) return nullptr;
    size_t i = findEntry(target, target->hash());
    return i == kNone ? nullptr : entries_[i].key;
}

RWCollectable* RWHashTable::remove(const RWCollectable* target) {
    if (!target) return nullptr;
    size_t i = findEntry(target, target->hash());
    if (i == kNone) return nullptr;
    RWCollectable* key = entries_[i].key;
    removeEntry(i);
    return key;
}

void RWHashTable::clear() {
    entries_.clear();
    for (Slot& slot : slots_)
        slot = Slot{0, 0};
    live_ = 0;
}

void RWHashTable::clearAndDestroy() {
    destroyAll();
}

size_t RWHashTable::occurrencesOf(const RWCollectable* target) const {
    if (!target || slots_.empty()) return 0;
    unsigned h = target->hash();
    size_t mask = slots_.size() - 1;
    size_t count = 0;
    for (size_t i = home(h); slots_[i].entry != 0; i = (i + 1) & mask) {
        if (slots_[i].hash == h && entries_[slots_[i].entry - 1].key->isEqual(target)) ++count;
    }
    return count;
}

void RWHashTable::resize(size_t n) {
    if (slotsFor(n) > slots_.size()) rehash(n);
    entries_.reserve(n);
}

size_t RWHashTable::findEntry(const RWCollectable* target, unsigned h) const {
    if (slots_.empty()) return kNone;
    size_t mask = slots_.size() - 1;
    for (size_t i = home(h); slots_[i].entry != 0; i = (i + 1) & mask) {
        if (slots_[i].hash != h) continue;
        size_t e = slots_[i].entry - 1;
        if (entries_[e].key->isEqual(target)) return e;
    }
    return kNone;
}

size_t RWHashTable::addEntry(RWCollectable* key, RWCollectable* value, unsigned h) {
    if (entries_.size() >= UINT32_MAX - 1) return kNone;
    // Before the entry array would reallocate, reuse the room of removed entries instead when
    // they make up a quarter of it.
    if (entries_.size() == entries_.capacity() && entries_.size() - live_ >= entries_.size() / 4 &&
        live_ < entries_.size())
        compact();
    if ((live_ + 1) * 4 > slots_.size() * 3) rehash(live_ + 1);
    size_t e = entries_.size();
    entries_.push_back(Entry{key, value, h});
    size_t mask = slots_.size() - 1;
    size_t i = home(h);
    while (slots_[i].entry != 0)
        i = (i + 1) & mask;
    slots_[i] = Slot{h, static_cast<uint32_t>(e + 1)};
    ++live_;
    return e;
}

size_t RWHashTable::slotOf(size_t entry) const {
    size_t mask = slots_.size() - 1;
    size_t i = home(entries_[entry].hash);
    while (slots_[i].entry != entry + 1)
        i = (i + 1) & mask;
    return i;
}

void RWHashTable::removeEntry(size_t e) {
    // Backward-shift deletion: pull later members of the probe run into the hole so that no
    // search ever needs a tombstone.
    size_t mask = slots_.size() - 1;
    size_t hole = slotOf(e);
    for (size_t j = (hole + 1) & mask; slots_[j].entry != 0; j = (j + 1) & mask) {
        size_t k = home(slots_[j].hash);
        if (((j - k) & mask) >= ((j - hole) & mask)) {
            slots_[hole] = slots_[j];
            hole = j;
        }
    }
    slots_[hole] = Slot{0, 0};
    entries_[e].key = nullptr;
    entries_[e].value = nullptr;
    if (--live_ == 0) entries_.clear();
}

void RWHashTable::rehash(size_t n) {
    size_t size = slotsFor(n);
    slots_.assign(size, Slot{0, 0});
    shift_ = 32 - log2Of(size);
    placeAll();
}

void RWHashTable::compact() {
    size_t j = 0;
    for (size_t i = 0; i < entries_.size(); ++i)
        if (entries_[i].key) entries_[j++] = entries_[i];
    entries_.resize(j);
    for (Slot& slot : slots_)
        slot = Slot{0, 0};
    placeAll();
}

void RWHashTable::placeAll() {
    size_t mask = slots_.size() - 1;
    for (size_t e = 0; e < entries_.size(); ++e) {
        if (!entries_[e].key) continue;
        size_t i = home(entries_[e].hash);
        while (slots_[i].entry != 0)
            i = (i + 1) & mask;
        slots_[i] = Slot{entries_[e].hash, static_cast<uint32_t>(e + 1)};
    }
}

void RWHashTable::replaceWithCopies() {
    for (Entry& entry : entries_) {
        if (!entry.key) continue;
        entry.key = entry.key->copy();
        if (entry.value) entry.value = entry.value->copy();
    }
}

void RWHashTable::destroyAll() {
    // Unlink first, so that the table is consistent while the elements are destroyed.
    std::vector<Entry> doomed;
    doomed.swap(entries_);
    clear();
    for (const Entry& entry : doomed) {
        if (entry.value != entry.key) delete entry.value;
        delete entry.key;
    }
}
