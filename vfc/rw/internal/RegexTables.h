// The data behind the regular-expression engine: parsed expressions, the position automaton
// compiled from a union of them, and the cache of deterministic states built from it while
// searching. Private to RegexParser.cpp, RegexDfa.cpp and RegexEngine.cpp.
//
// The automaton has no epsilon moves: state 0 is "at the edge of the text" (position 0 going
// forward, the end going backward), state 1 "anywhere else", and every item of every
// alternative is one more state, entered by reading a byte of its set.
#ifndef VFC_RW_INTERNAL_REGEXTABLES_H
#define VFC_RW_INTERNAL_REGEXTABLES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "vfc/rw/internal/RegexEngine.h"

namespace vfc::rx {

// More items than this in one expression make parse() answer tooLong.
constexpr size_t kMaxItems = 4096;

// A set of bytes, one bit each.
struct ByteSet {
    uint64_t bits[4] = {0, 0, 0, 0};

    bool has(unsigned b) const { return (bits[b >> 6] >> (b & 63)) & 1; }
    void add(unsigned b) { bits[b >> 6] |= uint64_t{1} << (b & 63); }
    void addRange(unsigned lo, unsigned hi) {
        for (unsigned b = lo; b <= hi; ++b)
            add(b);
    }
    void invert() {
        for (uint64_t& w : bits)
            w = ~w;
    }
    bool operator==(const ByteSet& o) const {
        return bits[0] == o.bits[0] && bits[1] == o.bits[1] && bits[2] == o.bits[2] &&
               bits[3] == o.bits[3];
    }
};

struct ByteSetHash {
    size_t operator()(const ByteSet& s) const {
        uint64_t h = s.bits[0] * 0x9E3779B97F4A7C15ull;
        for (int w = 1; w < 4; ++w)
            h = (h ^ (h >> 31) ^ s.bits[w]) * 0x9E3779B97F4A7C15ull;
        return static_cast<size_t>(h ^ (h >> 29));
    }
};

enum class Quant : uint8_t { once, optional, star, plus };

inline bool isOptional(Quant q) {
    return q == Quant::optional || q == Quant::star;
}
inline bool repeats(Quant q) {
    return q == Quant::star || q == Quant::plus;
}

struct Item {
    ByteSet set;
    Quant quant;
};

class Expression {
  public:
    bool anchorStart = false;  // ^: the match begins at text position 0
    bool anchorEnd = false;    // $: the match ends at the text length
    std::vector<Item> items;
};

// The position automaton of a union of expressions, read in one direction.
struct Nfa {
    static constexpr int32_t kEdge = 0;   // at the edge of the text: every alternative may start
    static constexpr int32_t kInner = 1;  // elsewhere: only alternatives without a start anchor
    static constexpr int32_t kFirstPosition = 2;

    enum : uint8_t { kAcceptAny = 1, kAcceptEnd = 2 };  // acceptEnd: only at the far edge

    struct Range {
        int32_t begin, end;
    };

    // Per state. The followers of a position q are q itself when loops[q], then the
    // positions q+1 .. reach[q]-1; those of the two start states are startRanges[kEdge/kInner].
    // The byte set of q is setTable[setOf[q]]: patterns repeat few distinct sets, and a set
    // takes 32 bytes.
    std::vector<uint32_t> setOf;
    std::vector<ByteSet> setTable;
    std::vector<int32_t> reach;
    std::vector<uint8_t> loops;
    std::vector<uint8_t> accept;
    std::vector<Range> startRanges[2];
    bool innerUseful = false;  // kInner has followers or accepts: fresh starts can matter

    // While the forward search waits for a match to begin, it can jump over bytes that cannot
    // begin one: with memchr when a single byte can, sixteen bytes at a time when two to four
    // can, with a table loop when a few more can.
    enum class Skip : uint8_t { none, oneByte, fewBytes, table };
    Skip skip = Skip::none;
    uint8_t skipByte = 0;
    int skipCount = 0;  // for fewBytes: how many of skipBytes
    uint8_t skipBytes[4] = {};
    uint8_t canStart[256] = {};  // 1 for the bytes that can begin a match at an inner position

    const ByteSet& set(int32_t q) const { return setTable[setOf[q]]; }
    size_t size() const { return setOf.size(); }
};

// The fixed tables of a Matcher, shared by its copies and never changed after construction.
struct Compiled {
    uint8_t byteClass[256];  // byte -> equivalence class: the bytes no item tells apart
    uint8_t classRep[256];   // class -> one byte of it
    int nclasses = 1;
    Nfa forward;
    Nfa reverse;                    // the alternatives reversed, anchors swapped
    bool none = true;               // no alternatives: never matches
    bool allAnchoredStart = false;  // every match starts at 0
    bool allAnchoredEnd = false;    // every match ends at the text length
    long fixedLength = -1;          // every match has this length, or -1
    // One unanchored item, once or repeated at least once ("[a-z]+"): the match is the first
    // byte of the set and, repeated, the run of set bytes it begins. No automaton is needed.
    bool singleRun = false;
    bool runRepeats = false;
    uint8_t inRun[256] = {};  // 1 for the bytes of the item's set
    int runBytes = 0;         // how many bytes the set has, when at most 4
    uint8_t runByte[4] = {};
};

// The deterministic states built so far for one direction of one Matcher. A state is an
// ordered list of groups of automaton states, oldest start first (see RegexDfa.cpp). States
// live in the flat table trans, stride entries per state: the entries of a row are indexed by
// byte class and the state's flags sit in the last entry of its stride. A row that matches
// (kMatch) begins one entry into its stride, at an odd index, any other at an even index: the
// search loops tell a match from the row they step to, without loading its flags. An entry is
// the target's row, kUnknown while not built, or kDeadEntry when the target is dead, so the
// search loops leave only on a negative entry. kFresh marks the state that waits for a match
// to begin, where the forward search may skip bytes.
struct DfaCache {
    enum : int32_t { kMatch = 1, kDead = 2, kFresh = 4, kEndAccept = 8 };
    static constexpr int32_t kUnknown = -1;
    static constexpr int32_t kDeadEntry = -2;

    // leftmost: keep starting new groups and prefer older ones (the forward search); otherwise
    // run one anchored group (the backward search).
    DfaCache(const Compiled& compiled, const Nfa& nfa, bool leftmost);

    // The row of the start state at the edge of the text or elsewhere.
    int32_t startRow(bool atEdge) {
        int32_t row = startRows_[atEdge ? 1 : 0];
        return row >= 0 ? row : buildStart(atEdge);
    }
    // The encoded entry for row on class cls, building the target state if needed. Building
    // may empty the cache when it is full; row is then stale, the returned entry is not.
    int32_t step(int32_t row, int cls);

    // The row of the kFresh state, or -1 while it is not built. Only kept when nfa.skip is set.
    int32_t freshRow() const { return startRows_[0]; }

    // Whether the next search should skip in the fresh state. Skipping pays only when skips are
    // long: short ones cost a mispredicted branch each. The verdict is learnt from the texts
    // searched so far (noteSkip), and tried again once enough bytes went by unskipped.
    bool skipWorthwhile() {
        if (skipScore_ >= 0) return true;
        if (unskippedBytes_ < kReprobeBytes) return false;
        unskippedBytes_ = 0;
        skipScore_ = kProbeScore;
        return true;
    }
    void noteUnskipped(size_t bytes) { unskippedBytes_ += bytes; }
    // Records a skip over distance bytes (to the end of the text when atEnd); false when
    // skipping stopped paying: the score sums how far each skip beat its break-even distance.
    bool noteSkip(size_t distance, bool atEnd) {
        const int breakEven = nfa.skip == Nfa::Skip::table ? kTableBreakEven : kMemchrBreakEven;
        const int gain = atEnd || distance >= kGainCap ? kGainCap : static_cast<int>(distance);
        skipScore_ = std::min(skipScore_ + gain - breakEven, kMaxScore);
        return skipScore_ >= 0;
    }

    // A row that steps to itself on every byte but at most kMaxEscapes: writes those bytes
    // into bytes and returns how many there are; 0 for any other row. A search in such a row
    // can jump to the next of those bytes instead of stepping through the rest. Transitions
    // not built yet count as leaving the row, so the answer is always safe; it is worked out
    // once per row until the next transition is built.
    static constexpr int kMaxEscapes = 4;
    // Searches ask again and again for the same row: the last answer is kept at hand.
    int escapes(int32_t row, const uint8_t** bytes) {
        if (row != lastEscapeRow_ || lastEscape_->built != built_) {
            lastEscape_ = &escapesOf(row);
            lastEscapeRow_ = row;
        }
        *bytes = lastEscape_->bytes;
        return lastEscape_->count;
    }

    static bool matches(int32_t row) { return (row & 1) != 0; }
    uint64_t positionsLookedAt() const { return lookedAt_; }
    // The flags sit at the last entry of the stride, whichever parity the row has.
    int32_t flags(int32_t row) const { return trans[(row | 1) + stride - 2]; }

    const Compiled& compiled;
    const Nfa& nfa;
    const bool leftmost;
    const int32_t stride;  // even, at least nclasses + 2: room for the odd start and the flags
    std::vector<int32_t> trans;

  private:
    int32_t buildStart(bool atEdge);
    void computeNext(const int32_t* key, size_t length, int cls);
    void addFollowers(int32_t q, unsigned byte);
    int32_t firstUntaken(int32_t p);
    void take(int32_t p, unsigned byte);
    void takeRange(int32_t begin, int32_t end, unsigned byte);
    void closeGroup(size_t groupBegin);
    void settleAcceptance();
    int32_t flagsOf(const std::vector<int32_t>& key) const;
    int32_t intern(const std::vector<int32_t>& key);
    int32_t insert(const std::vector<int32_t>& key, uint32_t hash);
    bool full(size_t keyLength) const;
    void clear();
    void growSlots();
    int32_t rowOf(int32_t id) const;
    int32_t encode(int32_t row) const { return (flags(row) & kDead) ? kDeadEntry : row; }

    static constexpr int kTableBreakEven = 12;
    static constexpr int kMemchrBreakEven = 6;
    static constexpr int kGainCap = 64;
    static constexpr size_t kReprobeBytes = size_t{1} << 20;
    static constexpr int kProbeScore = 64;
    static constexpr int kMaxScore = 256;
    int skipScore_ = kProbeScore;
    size_t unskippedBytes_ = 0;

    std::vector<int32_t> keys_;       // the keys of all states, back to back
    std::vector<uint32_t> keyBegin_;  // state id -> offset in keys_; one extra at the end
    std::vector<uint32_t> hashes_;    // state id -> hash of its key
    std::vector<int32_t> slots_;      // open addressing: state id or -1
    int32_t startRows_[2] = {-1, -1};
    uint32_t clears_ = 0;

    // The escape bytes of each state (see escapes), valid while built equals built_.
    struct Escapes {
        uint32_t built = 0;
        uint8_t count = 0;
        uint8_t bytes[kMaxEscapes] = {};
    };
    const Escapes& escapesOf(int32_t row);
    std::vector<Escapes> escapes_;
    uint32_t built_ = 1;  // bumped by every transition built and every clear
    int32_t lastEscapeRow_ = -1;
    const Escapes* lastEscape_ = nullptr;

    // Scratch for building a state, kept to avoid allocating per step.
    std::vector<int32_t> next_;
    std::vector<uint32_t> taken_;  // NFA state -> the step (generation) that last took it
    std::vector<int32_t> skipTo_;  // for a state taken this step: a later one to look at
    uint32_t generation_ = 0;
    uint64_t lookedAt_ = 0;
};

// Builds the tables for the given (non-null) alternatives.
void compileTables(const std::vector<const Expression*>& alternatives, Compiled* out);

}  // namespace vfc::rx

#endif  // VFC_RW_INTERNAL_REGEXTABLES_H
