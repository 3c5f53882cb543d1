// The Matcher: compiles a union of expressions into fixed tables and searches with two lazily
// built deterministic automata. The forward pass finds the end of the leftmost-longest match;
// a backward pass anchored at that end finds the smallest start that reaches it, which is the
// leftmost start. Both passes read each byte at most once.
#include "vfc/rw/internal/RegexEngine.h"

#include <cstring>
#include <unordered_map>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "vfc/rw/internal/RegexTables.h"

namespace vfc::rx {
namespace {

constexpr size_t kNone = static_cast<size_t>(-1);
constexpr uint32_t kNoRow = static_cast<uint32_t>(-1);

// Splits the classes of cls so that no class has bytes both in and out of set.
void refineClasses(const ByteSet& set, uint8_t* cls, int* nclasses) {
    int16_t remap[2][256];
    std::memset(remap, -1, sizeof remap);
    int n = 0;
    for (unsigned b = 0; b < 256; ++b) {
        int16_t& r = remap[set.has(b) ? 1 : 0][cls[b]];
        if (r < 0) r = static_cast<int16_t>(n++);
        cls[b] = static_cast<uint8_t>(r);
    }
    *nclasses = n;
}

void buildClasses(const std::vector<const Expression*>& alternatives, Compiled* c) {
    std::memset(c->byteClass, 0, sizeof c->byteClass);
    c->nclasses = 1;
    const ByteSet* previous = nullptr;
    for (const Expression* e : alternatives) {
        for (const Item& item : e->items) {
            if (c->nclasses == 256) break;
            if (previous != nullptr && *previous == item.set) continue;
            previous = &item.set;
            refineClasses(item.set, c->byteClass, &c->nclasses);
        }
    }
    std::memset(c->classRep, 0, sizeof c->classRep);
    for (unsigned b = 256; b-- > 0;)
        c->classRep[c->byteClass[b]] = static_cast<uint8_t>(b);
}

// The index of set in nfa->setTable, added when new; index finds the sets seen so far.
using SetIndex = std::unordered_map<ByteSet, uint32_t, ByteSetHash>;
uint32_t internSet(const ByteSet& set, Nfa* nfa, SetIndex& index) {
    auto [it, added] = index.emplace(set, static_cast<uint32_t>(nfa->setTable.size()));
    if (added) nfa->setTable.push_back(set);
    return it->second;
}

// Adds the positions base .. base+n-1 of one alternative, read backward when reversed (its
// anchors then swap roles).
void addAlternative(const Expression& e, bool reversed, int32_t base, Nfa* nfa, SetIndex& sets) {
    const bool anchoredStart = reversed ? e.anchorEnd : e.anchorStart;
    const uint8_t acceptKind =
        (reversed ? e.anchorStart : e.anchorEnd) ? Nfa::kAcceptEnd : Nfa::kAcceptAny;
    const size_t n = e.items.size();
    // Walking from the last item: stop is one past the first non-optional item after k (n if
    // none), tailOptional whether every item after k is optional.
    size_t stop = n;
    bool tailOptional = true;
    for (size_t k = n; k-- > 0;) {
        const Item& item = e.items[reversed ? n - 1 - k : k];
        const int32_t q = base + static_cast<int32_t>(k);
        nfa->setOf[q] = internSet(item.set, nfa, sets);
        nfa->loops[q] = repeats(item.quant);
        nfa->reach[q] = base + static_cast<int32_t>(stop);
        nfa->accept[q] = tailOptional ? acceptKind : 0;
        if (!isOptional(item.quant)) {
            stop = k + 1;
            tailOptional = false;
        }
    }
    const Nfa::Range first{base, base + static_cast<int32_t>(stop)};
    if (first.begin < first.end) {
        nfa->startRanges[Nfa::kEdge].push_back(first);
        if (!anchoredStart) nfa->startRanges[Nfa::kInner].push_back(first);
    }
    if (tailOptional) {
        nfa->accept[Nfa::kEdge] |= acceptKind;
        if (!anchoredStart) nfa->accept[Nfa::kInner] |= acceptKind;
    }
}

// Chooses how the forward search skips bytes that cannot begin a match away from the edge.
// With more than kMaxSkipBytes candidates skips are too short to pay, whatever the text.
void chooseSkip(Nfa* nfa) {
    constexpr int kMaxSkipBytes = 128;
    if (nfa->accept[Nfa::kInner] & Nfa::kAcceptAny) return;  // matches at once: never waits
    ByteSet first;
    for (const Nfa::Range& r : nfa->startRanges[Nfa::kInner]) {
        for (int32_t p = r.begin; p < r.end; ++p) {
            for (int w = 0; w < 4; ++w)
                first.bits[w] |= nfa->set(p).bits[w];
        }
    }
    int count = 0;
    for (unsigned b = 0; b < 256; ++b) {
        nfa->canStart[b] = first.has(b) ? 1 : 0;
        if (!first.has(b)) continue;
        if (count < 4) nfa->skipBytes[count] = static_cast<uint8_t>(b);
        ++count;
        nfa->skipByte = static_cast<uint8_t>(b);
    }
    if (count == 1) {
        nfa->skip = Nfa::Skip::oneByte;
    } else if (count <= 4) {
        nfa->skip = Nfa::Skip::fewBytes;
        nfa->skipCount = count;
    } else if (count <= kMaxSkipBytes) {
        nfa->skip = Nfa::Skip::table;
    }
}

void buildNfa(const std::vector<const Expression*>& alternatives, bool reversed, Nfa* nfa) {
    size_t total = Nfa::kFirstPosition;
    for (const Expression* e : alternatives)
        total += e->items.size();
    nfa->setOf.assign(total, 0);
    nfa->setTable.assign(1, ByteSet());  // the start states read nothing
    nfa->reach.assign(total, 0);
    nfa->loops.assign(total, 0);
    nfa->accept.assign(total, 0);
    SetIndex sets;
    sets.emplace(ByteSet(), 0);
    int32_t base = Nfa::kFirstPosition;
    for (const Expression* e : alternatives) {
        addAlternative(*e, reversed, base, nfa, sets);
        base += static_cast<int32_t>(e->items.size());
    }
    nfa->setTable.shrink_to_fit();
    nfa->innerUseful = !nfa->startRanges[Nfa::kInner].empty() || nfa->accept[Nfa::kInner] != 0;
    if (!reversed && nfa->innerUseful) chooseSkip(nfa);
}

// The length shared by every match when no alternative has a quantifier and all have as many
// items; -1 otherwise.
long commonFixedLength(const std::vector<const Expression*>& alternatives) {
    long length = -1;
    for (const Expression* e : alternatives) {
        for (const Item& item : e->items) {
            if (item.quant != Quant::once) return -1;
        }
        long n = static_cast<long>(e->items.size());
        if (length >= 0 && n != length) return -1;
        length = n;
    }
    return length;
}

// The loops below read entries as unsigned, so that a row read from the table is already the
// 64-bit index of its entries: nothing lies on the chain of dependent loads but the load and an
// add. Negative entries (dead or unbuilt targets) are the ones with the top bit set.
constexpr uint32_t kNegative = 0x80000000u;

// An even row: the loops may follow it without noting a match. One test for sign and parity.
inline bool ordinary(uint32_t entry) {
    return (entry & (kNegative | 1)) == 0;
}
// An odd row: a matching state.
inline bool matching(uint32_t entry) {
    return (entry & (kNegative | 1)) == 1;
}

// Follows transitions from *row through [p, e). Stops at e, at the byte whose entry is negative
// (a dead or unbuilt target; *entry holds it), right after entering the row fresh, or right
// after a byte that led from a row back to itself, unless that row is noLoop (*looped is then
// set: the caller may jump over the rest of the run, see DfaCache::escapes). Entering a
// matching (odd) row moves *matchEnd past the byte. Until the first match the loop is as short
// as it can be; from there on a second loop notes each match with a conditional move, off the
// chain of dependent loads. A row that matched never leads back to the fresh state (every
// later state remembers the match), so the second loop does not look for it.
inline const uint8_t* runForward(const int32_t* trans, const uint8_t* cls, const uint8_t* p,
                                 const uint8_t* e, uint32_t fresh, uint32_t noLoop, int32_t* row,
                                 int32_t* entry, const uint8_t** matchEnd, bool* looped) {
    const auto* t = reinterpret_cast<const uint32_t*>(trans);
    size_t r = static_cast<uint32_t>(*row);
    uint32_t next = 0;
    while (p < e && ordinary(next = t[r + cls[*p]])) {
        const bool again = next == r;
        r = next;
        ++p;
        if (r == fresh) break;
        if (again && next != noLoop) {
            *looped = true;
            next = 0;
            break;
        }
    }
    // Entered at most once per call: laid out aside, so that leaving on a dead entry stays short.
    if (__builtin_expect(matching(next), 0)) {
        r = next;
        const uint8_t* last = ++p;
        while (p < e && !((next = t[r + cls[*p]]) & kNegative)) {
            const bool again = next == r;
            r = next;
            ++p;
            last = (r & 1) ? p : last;
            if (again && next != noLoop) {
                *looped = true;
                next = 0;
                break;
            }
        }
        *matchEnd = last;
    }
    *row = static_cast<int32_t>(r);
    *entry = static_cast<int32_t>(next);
    return p;
}

// The same going backward from p down to lo, reading p[-1]; entering a matching row moves
// *matchStart to the byte.
inline const uint8_t* runBackward(const int32_t* trans, const uint8_t* cls, const uint8_t* p,
                                  const uint8_t* lo, uint32_t noLoop, int32_t* row, int32_t* entry,
                                  const uint8_t** matchStart, bool* looped) {
    const auto* t = reinterpret_cast<const uint32_t*>(trans);
    size_t r = static_cast<uint32_t>(*row);
    uint32_t next = 0;
    while (p > lo && ordinary(next = t[r + cls[p[-1]]])) {
        const bool again = next == r;
        r = next;
        --p;
        if (again && next != noLoop) {
            *looped = true;
            next = 0;
            break;
        }
    }
    if (__builtin_expect(matching(next), 0)) {
        r = next;
        const uint8_t* first = --p;
        while (p > lo && !((next = t[r + cls[p[-1]]]) & kNegative)) {
            const bool again = next == r;
            r = next;
            --p;
            first = (r & 1) ? p : first;
            if (again && next != noLoop) {
                *looped = true;
                next = 0;
                break;
            }
        }
        *matchStart = first;
    }
    *row = static_cast<int32_t>(r);
    *entry = static_cast<int32_t>(next);
    return p;
}

#if defined(__SSE2__)
// Which of sixteen bytes are one of up to four given bytes, as a bit mask (bit i: byte i).
class ByteHits {
  public:
    ByteHits(const uint8_t* bytes, int n)
        : b0_(_mm_set1_epi8(static_cast<char>(bytes[0]))),
          b1_(_mm_set1_epi8(static_cast<char>(bytes[n > 1 ? 1 : 0]))),
          b2_(_mm_set1_epi8(static_cast<char>(bytes[n > 2 ? 2 : 0]))),
          b3_(_mm_set1_epi8(static_cast<char>(bytes[n > 3 ? 3 : 0]))) {}
    unsigned operator()(const uint8_t* at) const {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        return static_cast<unsigned>(_mm_movemask_epi8(
            _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, b0_), _mm_cmpeq_epi8(v, b1_)),
                         _mm_or_si128(_mm_cmpeq_epi8(v, b2_), _mm_cmpeq_epi8(v, b3_)))));
    }

  private:
    __m128i b0_, b1_, b2_, b3_;
};
#endif

// The first of the n bytes in [p, e), or e: sixteen bytes at a time where SSE2 is there, the
// last few by one more load ending at e when the text begins at least sixteen bytes before it.
const uint8_t* findAny(const uint8_t* p, const uint8_t* e, const uint8_t* textBegin,
                       const uint8_t* bytes, int n) {
#if defined(__SSE2__)
    const ByteHits hits(bytes, n);
    for (; e - p >= 16; p += 16)
        if (const unsigned mask = hits(p)) return p + __builtin_ctz(mask);
    if (p < e && e - textBegin >= 16) {
        const uint8_t* at = e - 16;
        const unsigned mask = hits(at) & (~0u << (p - at));
        return mask ? at + __builtin_ctz(mask) : e;
    }
#else
    (void)textBegin;
#endif
    for (; p < e; ++p)
        for (int k = 0; k < n; ++k)
            if (*p == bytes[k]) return p;
    return e;
}

// Going backward from p: the q in [lo, p] with none of the n bytes in [q, p) and q == lo or
// q[-1] one of them. The last few bytes take one load starting at lo when the text goes on at
// least sixteen bytes after lo.
const uint8_t* findAnyBackward(const uint8_t* lo, const uint8_t* p, const uint8_t* textEnd,
                               const uint8_t* bytes, int n) {
#if defined(__SSE2__)
    const ByteHits hits(bytes, n);
    for (; p - lo >= 16; p -= 16)
        if (const unsigned mask = hits(p - 16)) return p - 16 + (32 - __builtin_clz(mask));
    if (p > lo && textEnd - lo >= 16) {
        const unsigned mask = hits(lo) & ((1u << (p - lo)) - 1);
        return mask ? lo + (32 - __builtin_clz(mask)) : lo;
    }
#else
    (void)textEnd;
#endif
    for (; p > lo; --p)
        for (int k = 0; k < n; ++k)
            if (p[-1] == bytes[k]) return p;
    return lo;
}

// The first byte in [p, e) that table marks (non-zero), or e; four bytes a test.
const uint8_t* firstIn(const uint8_t* table, const uint8_t* p, const uint8_t* e) {
    while (e - p >= 4 && !(table[p[0]] | table[p[1]] | table[p[2]] | table[p[3]]))
        p += 4;
    while (p < e && !table[*p])
        ++p;
    return p;
}

// The first byte in [p, e) that can begin a match, or e; the text begins at textBegin.
const uint8_t* skipAhead(const Nfa& nfa, const uint8_t* p, const uint8_t* e,
                         const uint8_t* textBegin) {
    if (p == e) return e;
    if (nfa.skip == Nfa::Skip::oneByte) {
        const void* hit = std::memchr(p, nfa.skipByte, static_cast<size_t>(e - p));
        return hit ? static_cast<const uint8_t*>(hit) : e;
    }
    if (nfa.skip == Nfa::Skip::fewBytes)
        return findAny(p, e, textBegin, nfa.skipBytes, nfa.skipCount);
    return firstIn(nfa.canStart, p, e);
}

// One forward search: finds the end of the leftmost-longest match at or after start.
class ForwardScan {
  public:
    ForwardScan(DfaCache& dfa, const uint8_t* text, size_t length, size_t start)
        : dfa_(dfa),
          cls_(dfa.compiled.byteClass),
          text_(text),
          begin_(text + start),
          p_(text + start),
          e_(text + length),
          skipping_(dfa.nfa.skip != Nfa::Skip::none && dfa.skipWorthwhile()) {
        row_ = dfa.startRow(start == 0);
        fresh_ = skipping_ ? static_cast<uint32_t>(dfa.freshRow()) : kNoRow;
    }

    // The end of the match, or kNone.
    size_t run();
    bool skipping() const { return skipping_; }
    size_t bytesRead() const { return static_cast<size_t>(p_ - begin_); }

  private:
    void skip();
    void jumpOverLoop();
    bool take(int32_t entry);
    size_t end() const { return end_ ? static_cast<size_t>(end_ - text_) : kNone; }

    DfaCache& dfa_;
    const uint8_t* const cls_;
    const uint8_t* const text_;
    const uint8_t* const begin_;
    const uint8_t* p_;
    const uint8_t* const e_;
    bool skipping_;
    int32_t row_;
    uint32_t fresh_;                // the row where skipping applies, or kNoRow
    uint32_t noLoop_ = kNoRow;      // the last looping row found to have too many escapes
    const uint8_t* end_ = nullptr;  // the end of the longest match so far
};

// A dead start row needs no test of its own: it neither matches nor accepts at the end, and its
// first step leads to kDeadEntry.
size_t ForwardScan::run() {
    if (DfaCache::matches(row_)) end_ = p_;
    for (;;) {
        if (static_cast<uint32_t>(row_) == fresh_) skip();
        int32_t entry = 0;
        bool looped = false;
        p_ = runForward(dfa_.trans.data(), cls_, p_, e_, fresh_, noLoop_, &row_, &entry, &end_,
                        &looped);
        if (looped) jumpOverLoop();
        if (p_ == e_) break;
        if (looped) continue;
        if (entry < 0 && !take(entry)) return end();  // entry >= 0: back in the fresh state
    }
    if (dfa_.flags(row_) & DfaCache::kEndAccept) end_ = e_;
    return end();
}

// Jumps to the next byte that can begin a match; stops skipping when that does not pay.
void ForwardScan::skip() {
    const uint8_t* to = skipAhead(dfa_.nfa, p_, e_, text_);
    if (!dfa_.noteSkip(static_cast<size_t>(to - p_), to == e_)) {
        skipping_ = false;
        fresh_ = kNoRow;
    }
    p_ = to;
}

// In a row that loops on itself: moves to the next byte that leaves it, or remembers that the
// row leaves on too many bytes for that to pay.
void ForwardScan::jumpOverLoop() {
    const uint8_t* bytes = nullptr;
    const int n = dfa_.escapes(row_, &bytes);
    if (n == 0) {
        noLoop_ = static_cast<uint32_t>(row_);
        return;
    }
    p_ = findAny(p_, e_, text_, bytes, n);
    if (DfaCache::matches(row_)) end_ = p_;
}

// Moves over the byte at p_, whose entry is negative (dead or not built yet); false when the
// new state is dead.
bool ForwardScan::take(int32_t entry) {
    if (entry == DfaCache::kUnknown) {
        entry = dfa_.step(row_, cls_[*p_]);
        if (skipping_) fresh_ = static_cast<uint32_t>(dfa_.freshRow());  // moves on a clear
    }
    ++p_;
    if (entry == DfaCache::kDeadEntry) return false;
    row_ = entry;
    if (DfaCache::matches(row_)) end_ = p_;
    return true;
}

// The end of the leftmost-longest match at or after start, or kNone. Searches that did not skip
// count towards trying skipping again.
size_t scanForward(DfaCache& dfa, const uint8_t* text, size_t length, size_t start) {
    ForwardScan scan(dfa, text, length, start);
    const size_t end = scan.run();
    if (!scan.skipping() && dfa.nfa.skip != Nfa::Skip::none) {
        dfa.noteUnskipped(scan.bytesRead());
    }
    return end;
}

// The smallest position s >= start such that [s, end) is a match.
size_t scanBackward(DfaCache& dfa, const uint8_t* text, size_t length, size_t start, size_t end) {
    const uint8_t* cls = dfa.compiled.byteClass;
    const uint8_t* p = text + end;
    const uint8_t* const lo = text + start;
    int32_t row = dfa.startRow(end == length);  // a dead one needs no test: see ForwardScan::run
    const uint8_t* found = DfaCache::matches(row) ? p : nullptr;
    uint32_t noLoop = kNoRow;
    for (;;) {
        int32_t entry = 0;
        bool looped = false;
        p = runBackward(dfa.trans.data(), cls, p, lo, noLoop, &row, &entry, &found, &looped);
        if (looped) {
            // Jump back to the nearest byte that leaves the row, when few bytes do.
            const uint8_t* bytes = nullptr;
            const int n = dfa.escapes(row, &bytes);
            if (n == 0) {
                noLoop = static_cast<uint32_t>(row);
            } else {
                p = findAnyBackward(lo, p, text + length, bytes, n);
                if (DfaCache::matches(row)) found = p;
            }
            if (p == lo) break;
            continue;
        }
        if (p == lo) break;
        --p;
        if (entry == DfaCache::kUnknown) entry = dfa.step(row, cls[*p]);
        if (entry == DfaCache::kDeadEntry) return found ? static_cast<size_t>(found - text) : kNone;
        row = entry;
        if (DfaCache::matches(row)) found = p;
    }
    if (start == 0 && (dfa.flags(row) & DfaCache::kEndAccept)) found = text;
    return found ? static_cast<size_t>(found - text) : kNone;
}

}  // namespace

void compileTables(const std::vector<const Expression*>& alternatives, Compiled* out) {
    out->none = alternatives.empty();
    buildClasses(alternatives, out);
    buildNfa(alternatives, false, &out->forward);
    buildNfa(alternatives, true, &out->reverse);
    out->allAnchoredStart = !alternatives.empty();
    out->allAnchoredEnd = !alternatives.empty();
    for (const Expression* e : alternatives) {
        out->allAnchoredStart &= e->anchorStart;
        out->allAnchoredEnd &= e->anchorEnd;
    }
    out->fixedLength = commonFixedLength(alternatives);
    if (alternatives.size() == 1 && !alternatives[0]->anchorStart && !alternatives[0]->anchorEnd &&
        alternatives[0]->items.size() == 1 &&
        (alternatives[0]->items[0].quant == Quant::once ||
         alternatives[0]->items[0].quant == Quant::plus)) {
        const Item& item = alternatives[0]->items[0];
        out->singleRun = true;
        out->runRepeats = item.quant == Quant::plus;
        for (unsigned b = 0; b < 256; ++b) {
            if (!item.set.has(b)) continue;
            out->inRun[b] = 1;
            if (out->runBytes <= 4) {
                if (out->runBytes < 4) out->runByte[out->runBytes] = static_cast<uint8_t>(b);
                ++out->runBytes;
            }
        }
    }
}

Matcher::Matcher(const std::vector<std::shared_ptr<const Expression>>& alternatives) {
    std::vector<const Expression*> valid;
    std::vector<std::shared_ptr<const Expression>> starting, ending;
    bool split = true;
    for (const auto& e : alternatives) {
        if (!e) continue;
        valid.push_back(e.get());
        if (e->anchorStart == e->anchorEnd) split = false;  // both anchors, or neither
        (e->anchorStart ? starting : ending).push_back(e);
    }
    if (split && !starting.empty() && !ending.empty()) {
        atStart_ = std::make_unique<Matcher>(starting);
        atEnd_ = std::make_unique<Matcher>(ending);
    }
    auto compiled = std::make_shared<Compiled>();
    compileTables(valid, compiled.get());
    compiled_ = std::move(compiled);
}

Matcher::Matcher(const Matcher& other) : compiled_(other.compiled_) {
    if (other.atStart_) {
        atStart_ = std::make_unique<Matcher>(*other.atStart_);
        atEnd_ = std::make_unique<Matcher>(*other.atEnd_);
    }
}

Matcher::~Matcher() = default;

// The end of the leftmost-longest match, by the forward pass.
inline size_t Matcher::findEnd(const uint8_t* text, size_t length, size_t start) const {
    if (!forward_) forward_ = std::make_unique<DfaCache>(*compiled_, compiled_->forward, true);
    return scanForward(*forward_, text, length, start);
}

// The smallest start at or after start of a match ending at end, kNone if there is none (only
// possible when the forward pass was skipped because every match ends at the text length).
inline size_t Matcher::findStart(const uint8_t* text, size_t length, size_t start,
                                 size_t end) const {
    const Compiled& c = *compiled_;
    if (c.allAnchoredStart && !c.allAnchoredEnd) return 0;
    if (c.fixedLength >= 0 && !c.allAnchoredEnd) return end - static_cast<size_t>(c.fixedLength);
    if (!reverse_) reverse_ = std::make_unique<DfaCache>(c, c.reverse, false);
    return scanBackward(*reverse_, text, length, start, end);
}

uint64_t Matcher::positionsLookedAt() const {
    return (forward_ ? forward_->positionsLookedAt() : 0) +
           (reverse_ ? reverse_->positionsLookedAt() : 0) +
           (atStart_ ? atStart_->positionsLookedAt() + atEnd_->positionsLookedAt() : 0);
}

uint64_t positionsLookedAtSearching(const std::vector<const char*>& patterns, const char* text,
                                    size_t length, size_t* found) {
    std::vector<std::shared_ptr<const Expression>> expressions;
    for (const char* p : patterns) {
        std::shared_ptr<const Expression> e;
        if (parse(p, std::strlen(p), &e) == ParseStatus::ok) expressions.push_back(e);
    }
    Matcher matcher(expressions);
    size_t extent = 0;
    *found = matcher.search(text, length, 0, &extent);
    return matcher.positionsLookedAt();
}

size_t Matcher::search(const char* text, size_t length, size_t start, size_t* extent) const {
    if (extent != nullptr) *extent = 0;
    const Compiled& c = *compiled_;
    if (start > length || c.none || (c.allAnchoredStart && start > 0)) return kNone;
    if (text == nullptr) {
        if (length != 0) return kNone;
        text = "";
    }
    if (c.singleRun) {
        // The first byte of the set, then (repeated) the run it begins.
        const auto* bytes = reinterpret_cast<const uint8_t*>(text);
        const uint8_t* p = bytes + start;
        const uint8_t* const e = bytes + length;
        if (c.runBytes >= 1 && c.runBytes <= 4) {
            p = findAny(p, e, bytes, c.runByte, c.runBytes);
        } else {
            p = firstIn(c.inRun, p, e);
        }
        if (p == e) return kNone;
        const uint8_t* q = p + 1;
        if (c.runRepeats) {
            while (q < e && c.inRun[*q])
                ++q;
        }
        if (extent != nullptr) *extent = static_cast<size_t>(q - p);
        return static_cast<size_t>(p - bytes);
    }
    if (atStart_) {
        // ^A|B$: a match of A can only begin at 0, where it is the leftmost; a match of B from
        // 0 too ends at the text's end, which is the longer. Otherwise B's leftmost match.
        size_t endExtent = 0;
        const size_t endAt = atEnd_->search(text, length, start, &endExtent);
        if (start == 0 && endAt != 0) {
            size_t startExtent = 0;
            if (atStart_->search(text, length, 0, &startExtent) == 0) {
                if (extent != nullptr) *extent = startExtent;
                return 0;
            }
        }
        if (endAt != kNone && extent != nullptr) *extent = endExtent;
        return endAt;
    }
    const auto* bytes = reinterpret_cast<const uint8_t*>(text);
    const size_t end = c.allAnchoredEnd ? length : findEnd(bytes, length, start);
    if (end == kNone) return kNone;
    const size_t begin = findStart(bytes, length, start, end);
    if (begin == kNone) return kNone;
    if (extent != nullptr) *extent = end - begin;
    return begin;
}

}  // namespace vfc::rx
