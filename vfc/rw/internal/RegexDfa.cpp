// The lazily built deterministic states of a search direction.
//
// A state's key is a matched flag followed by groups of automaton states, each group ended by
// kSep. Going forward every group stands for the matches that began at one text position,
// oldest first. A step moves every group through the byte, drops an automaton state already
// present in an older group (its future is the same and the older start wins), drops empty
// groups and, until something matched, appends a fresh group for a match beginning after the
// byte. When a group can accept, the groups younger than the oldest accepting one can no longer
// give the leftmost match and are cut, and no fresh groups are started any more: the search
// only has to extend the surviving groups for the longest end. Going backward there is one
// anchored group and nothing is cut.
#include <algorithm>
#include <cstring>

#include "vfc/rw/internal/RegexTables.h"

namespace vfc::rx {
namespace {

constexpr int32_t kSep = -1;
// Beyond either bound the cache is emptied and rebuilt as the text demands, which keeps memory
// bounded and the work per byte bounded by the size of the automaton.
constexpr size_t kMaxStates = 10000;
constexpr size_t kMaxBytes = size_t{8} << 20;

uint32_t hashKey(const int32_t* key, size_t length) {
    uint64_t h = 0x9e3779b97f4a7c15u ^ length;
    for (size_t i = 0; i < length; ++i) {
        h = (h ^ static_cast<uint32_t>(key[i])) * 0x100000001b3u;
        h ^= h >> 29;
    }
    return static_cast<uint32_t>(h ^ (h >> 32));
}

}  // namespace

DfaCache::DfaCache(const Compiled& c, const Nfa& n, bool lm)
    : compiled(c), nfa(n), leftmost(lm), stride((c.nclasses + 3) & ~1) {
    taken_.assign(nfa.size(), 0);
    skipTo_.assign(nfa.size(), 0);
    clear();
}

int32_t DfaCache::buildStart(bool atEdge) {
    next_.assign(1, 0);
    if (atEdge || nfa.innerUseful) {
        next_.push_back(atEdge ? Nfa::kEdge : Nfa::kInner);
        next_.push_back(kSep);
    }
    settleAcceptance();
    int32_t row = intern(next_);
    startRows_[atEdge ? 1 : 0] = row;  // intern may have emptied the cache: store afresh
    return row;
}

int32_t DfaCache::step(int32_t row, int cls) {
    int32_t id = row / stride;
    computeNext(keys_.data() + keyBegin_[id], keyBegin_[id + 1] - keyBegin_[id], cls);
    uint32_t clears = clears_;
    int32_t entry = encode(intern(next_));
    if (clears == clears_) trans[row + cls] = entry;
    ++built_;
    return entry;
}

const DfaCache::Escapes& DfaCache::escapesOf(int32_t row) {
    const size_t id = static_cast<size_t>(row / stride);
    if (id >= escapes_.size()) {
        escapes_.resize(id + 1);
        lastEscapeRow_ = -1;  // the vector moved
    }
    Escapes& e = escapes_[id];
    if (e.built != built_) {
        e.built = built_;
        e.count = 0;
        const int32_t* entries = trans.data() + row;
        const uint8_t* cls = compiled.byteClass;
        bool loops = false;
        for (unsigned b = 0; b < 256; ++b) {
            if (entries[cls[b]] == row) {
                loops = true;
                continue;
            }
            if (e.count == kMaxEscapes) {
                loops = false;
                break;
            }
            e.bytes[e.count++] = static_cast<uint8_t>(b);
        }
        if (!loops) e.count = 0;
    }
    return e;
}

void DfaCache::computeNext(const int32_t* key, size_t length, int cls) {
    if (++generation_ == 0) {
        std::fill(taken_.begin(), taken_.end(), 0);
        generation_ = 1;
    }
    unsigned byte = compiled.classRep[cls];
    bool matched = key[0] != 0;
    next_.assign(1, key[0]);
    for (size_t i = 1; i < length; ++i) {
        size_t groupBegin = next_.size();
        for (; key[i] != kSep; ++i)
            addFollowers(key[i], byte);
        closeGroup(groupBegin);
    }
    if (leftmost && !matched && nfa.innerUseful) {
        next_.push_back(Nfa::kInner);
        next_.push_back(kSep);
    }
    settleAcceptance();
}

// The first position at or after p that this step has not taken, or the number of positions.
// Taken positions point past themselves; the chains are shortened as they are walked, so that
// every step looks at each position about once however much the follower ranges overlap.
int32_t DfaCache::firstUntaken(int32_t p) {
    const int32_t n = static_cast<int32_t>(taken_.size());
    int32_t r = p;
    while (r < n && taken_[r] == generation_)
        r = skipTo_[r];
    while (p < r) {
        int32_t next = skipTo_[p];
        skipTo_[p] = r;
        p = next;
    }
    return r;
}

// Takes position p for this step: it joins the group when it reads byte. A position taken
// once is not looked at again in the step, in this group or a younger one: an older group
// already holds it (its future is the same and the older start wins), or it cannot read byte.
void DfaCache::take(int32_t p, unsigned byte) {
    ++lookedAt_;
    taken_[p] = generation_;
    skipTo_[p] = p + 1;
    if (nfa.set(p).has(byte)) next_.push_back(p);
}

// Appends the followers of q that read byte and are not in an older group yet.
void DfaCache::takeRange(int32_t begin, int32_t end, unsigned byte) {
    for (int32_t p = firstUntaken(begin); p < end; p = firstUntaken(p + 1))
        take(p, byte);
}

void DfaCache::addFollowers(int32_t q, unsigned byte) {
    if (q < Nfa::kFirstPosition) {
        for (const Nfa::Range& r : nfa.startRanges[q])
            takeRange(r.begin, r.end, byte);
        return;
    }
    if (nfa.loops[q] && taken_[q] != generation_) take(q, byte);
    takeRange(q + 1, nfa.reach[q], byte);
}

// Ends the group begun at groupBegin in next_, sorted so equal sets give equal keys; an empty
// group is dropped.
void DfaCache::closeGroup(size_t groupBegin) {
    if (next_.size() == groupBegin) return;
    std::sort(next_.begin() + static_cast<ptrdiff_t>(groupBegin), next_.end());
    next_.push_back(kSep);
}

// Cuts the groups younger than the oldest one that can accept here, and notes that a match
// was seen. Only the forward search keeps several groups.
void DfaCache::settleAcceptance() {
    if (!leftmost) return;
    for (size_t i = 1; i < next_.size(); ++i) {
        if (next_[i] == kSep) continue;
        if (!(nfa.accept[next_[i]] & Nfa::kAcceptAny)) continue;
        while (next_[i] != kSep)
            ++i;
        next_.resize(i + 1);
        next_[0] = 1;
        return;
    }
}

int32_t DfaCache::flagsOf(const std::vector<int32_t>& key) const {
    if (key.size() == 1) return kDead;
    int32_t f = 0;
    for (size_t i = 1; i < key.size(); ++i) {
        if (key[i] == kSep) continue;
        uint8_t a = nfa.accept[key[i]];
        if (a & Nfa::kAcceptAny) f |= kMatch | kEndAccept;
        if (a & Nfa::kAcceptEnd) f |= kEndAccept;
    }
    if (leftmost && nfa.skip != Nfa::Skip::none && key.size() == 3 && key[0] == 0 &&
        key[1] == Nfa::kInner) {
        f |= kFresh;
    }
    return f;
}

// The row of the state with this key, added when new.
int32_t DfaCache::intern(const std::vector<int32_t>& key) {
    uint32_t h = hashKey(key.data(), key.size());
    size_t mask = slots_.size() - 1;
    for (size_t s = h & mask;; s = (s + 1) & mask) {
        int32_t id = slots_[s];
        if (id < 0) break;
        if (hashes_[id] != h) continue;
        size_t len = keyBegin_[id + 1] - keyBegin_[id];
        if (len == key.size() &&
            std::memcmp(keys_.data() + keyBegin_[id], key.data(), len * sizeof(int32_t)) == 0) {
            return rowOf(id);
        }
    }
    if (full(key.size())) clear();
    return insert(key, h);
}

int32_t DfaCache::insert(const std::vector<int32_t>& key, uint32_t hash) {
    int32_t id = static_cast<int32_t>(hashes_.size());
    keys_.insert(keys_.end(), key.begin(), key.end());
    keyBegin_.push_back(static_cast<uint32_t>(keys_.size()));
    hashes_.push_back(hash);
    trans.resize(trans.size() + static_cast<size_t>(stride), kUnknown);
    trans.back() = flagsOf(key);
    const int32_t row = rowOf(id);
    if (trans.back() & kFresh) startRows_[0] = row;  // found again after a clear
    if (hashes_.size() * 2 > slots_.size()) {
        growSlots();
    } else {
        size_t mask = slots_.size() - 1;
        size_t s = hash & mask;
        while (slots_[s] >= 0)
            s = (s + 1) & mask;
        slots_[s] = id;
    }
    return row;
}

// The row of state id: one entry into its stride when it matches, so that its index is odd.
int32_t DfaCache::rowOf(int32_t id) const {
    const int32_t base = id * stride;
    return (trans[static_cast<size_t>(base + stride - 1)] & kMatch) ? base + 1 : base;
}

bool DfaCache::full(size_t keyLength) const {
    if (hashes_.empty()) return false;  // a lone state always fits, however large
    size_t bytes = (trans.size() + static_cast<size_t>(stride) + keys_.size() + keyLength) * 4;
    return hashes_.size() >= kMaxStates || bytes > kMaxBytes;
}

void DfaCache::clear() {
    trans.clear();
    keys_.clear();
    keyBegin_.assign(1, 0);
    hashes_.clear();
    slots_.assign(64, -1);
    startRows_[0] = startRows_[1] = -1;
    ++clears_;
    escapes_.clear();
    lastEscapeRow_ = -1;
    ++built_;
}

// Doubles the slot table and places every state again.
void DfaCache::growSlots() {
    slots_.assign(slots_.size() * 2, -1);
    size_t mask = slots_.size() - 1;
    for (size_t id = 0; id < hashes_.size(); ++id) {
        size_t s = hashes_[id] & mask;
        while (slots_[s] >= 0)
            s = (s + 1) & mask;
        slots_[s] = static_cast<int32_t>(id);
    }
}

}  // namespace vfc::rx
