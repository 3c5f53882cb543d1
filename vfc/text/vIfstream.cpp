#include "vfc/text/vIfstream.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <ostream>
#include <streambuf>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <immintrin.h>
#define VFC_LINE_SCAN_AVX2 1
#endif

#include "vfc/files/internal/vpContentDetection.h"
#include "vfc/os/os.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/text/vRegExp.h"
#include "vfc/text/vSeRe.h"

RW_DEFINE_COLLECTABLE(vIfstream, vClassID::vIfstream)

namespace {

// The file buffer: large reads keep the system calls per byte low on the line-reading path.
constexpr std::streamsize kBufferSize = 128 * 1024;
// How much the type detection reads.
constexpr std::streamsize kDetectBytes = 1024;
// The chunk of the bulk reads. fRead reads straight into its string and the copy operator
// into a buffer of its own: the results are those of scratch buffers shared by all streams,
// without the sharing.
constexpr std::streamsize kChunk = 1024;

// The get area of a stream buffer, reached through pointers to its protected members (legal
// when taken inside a derived class), so the line reader consumes exactly what it scanned and
// every other input operation of the stream carries on behind it.
struct GetArea : std::streambuf {
    static char* next(std::streambuf* b) { return (b->*&GetArea::gptr)(); }
    static char* end(std::streambuf* b) { return (b->*&GetArea::egptr)(); }
    static void skip(std::streambuf* b, std::ptrdiff_t n) {
        for (; n > INT_MAX; n -= INT_MAX)  // only for a get area larger than ours
            (b->*&GetArea::gbump)(INT_MAX);
        (b->*&GetArea::gbump)(static_cast<int>(n));
    }
};

// The first CR or LF in [p, e), or e: 16 bytes at a time where SSE2 is there (always on
// x86-64), 32 where the processor has AVX2, the rest byte by byte.
const char* findLineEndBytes(const char* p, const char* e) {
    while (p < e && *p != '\n' && *p != '\r')
        ++p;
    return p;
}

#if defined(__SSE2__)
const char* findLineEndSse2(const char* p, const char* e) {
    const __m128i lf = _mm_set1_epi8('\n');
    const __m128i cr = _mm_set1_epi8('\r');
    while (e - p >= 16) {
        __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        int mask = _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(v, lf), _mm_cmpeq_epi8(v, cr)));
        if (mask) return p + __builtin_ctz(static_cast<unsigned>(mask));
        p += 16;
    }
    return findLineEndBytes(p, e);
}
#endif

#if defined(VFC_LINE_SCAN_AVX2)
__attribute__((target("avx2"))) const char* findLineEndAvx2(const char* p, const char* e) {
    const __m256i lf = _mm256_set1_epi8('\n');
    const __m256i cr = _mm256_set1_epi8('\r');
    while (e - p >= 32) {
        __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
        __m256i hits = _mm256_or_si256(_mm256_cmpeq_epi8(v, lf), _mm256_cmpeq_epi8(v, cr));
        unsigned mask = static_cast<unsigned>(_mm256_movemask_epi8(hits));
        if (mask) return p + __builtin_ctz(mask);
        p += 32;
    }
    return findLineEndSse2(p, e);
}

// Asked while the library loads, possibly before the compiler's own start-up code did.
bool hasAvx2() {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2");
}
const bool kHasAvx2 = hasAvx2();
#endif

const char* findLineEnd(const char* p, const char* e) {
#if defined(VFC_LINE_SCAN_AVX2)
    if (kHasAvx2) return findLineEndAvx2(p, e);
#endif
#if defined(__SSE2__)
    return findLineEndSse2(p, e);
#else
    return findLineEndBytes(p, e);
#endif
}

bool isSeparator(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// The quoting tokenizer over one line; see fGetLineAndParse.
class QuotingTokenizer {
  public:
    QuotingTokenizer(vSlistvString& tokens, bool& error, vString& message)
        : aTokens(tokens), aError(error), aMessage(message) {}

    void fRun(const vString& line) {
        const char* s = line.data();
        size_t n = line.length();
        for (size_t i = 0; i < n; ++i)
            if (!fTake(s[i], i + 1 < n ? &s[i + 1] : nullptr)) return;
        fFinish();
    }

  private:
    // Handles c (next: the character after it, null at the end); false when parsing stops.
    bool fTake(char c, const char* next) {
        if (aEscape) {
            fAppend(c);
            aEscape = false;
        } else if (c == '\\') {
            aEscape = true;
            aAtSeparator = false;
        } else if (c == '"') {
            return fQuote(next);
        } else if (isSeparator(c) && !aInQuote) {
            if (!aAtSeparator) fEmit();
            aAtSeparator = true;
        } else {
            fAppend(c);
        }
        return true;
    }

    bool fQuote(const char* next) {
        aAtSeparator = false;
        if (!aInQuote) {
            aInQuote = true;
            return true;
        }
        aInQuote = false;
        if (next && !isSeparator(*next)) {
            aMessage.append("Unexpected character ");
            aMessage.append(*next);
            aMessage.append(" found after a quoted string.");
            aError = true;
            return false;
        }
        // A closed quote ends its token, empty or not.
        fEmit();
        aAtSeparator = true;
        return true;
    }

    void fFinish() {
        if (aInQuote) {
            aMessage.append("A closing \" was not found.");
            aError = true;
        } else if (aEscape) {
            aMessage.append("Last character does not exist for escape.");
            aError = true;
        } else if (!aToken.isNull()) {
            fEmit();
        }
    }

    void fAppend(char c) {
        aToken.append(c);
        aAtSeparator = false;
    }
    void fEmit() {
        aTokens.fInsertReference(new vString(std::move(aToken)));
        aToken = vString();
    }

    vSlistvString& aTokens;
    bool& aError;
    vString& aMessage;
    vString aToken;
    bool aInQuote = false;
    bool aEscape = false;
    bool aAtSeparator = true;
};

}  // namespace

vIfstream::vIfstream() = default;

vIfstream::vIfstream(const vIfstream& other)
    : std::basic_ios<char>(),
      std::basic_ifstream<char>(),
      RWCollectable(other),
      aBinary(other.aBinary),
      aFileInfo(other.aFileInfo) {}

vIfstream::~vIfstream() {
    // The file buffer must let go of aBuffer before the member goes.
    if (is_open()) close();
}

bool vIfstream::fOpen(const vFile& f, bool binary, vFile::KindEnum* kind) {
    aBinary = binary;
    aFileInfo = f;
    if (is_open()) close();
    clear();
    // One status query answers both: the file must exist, and a directory cannot be read as a
    // file (a read from one would fail half-way).
    const vFile::KindEnum found = f.fKind();
    if (kind) *kind = found;
    if (found == vFile::KindEnum::eMissing || found == vFile::KindEnum::eDirectory) {
        setstate(failbit);
        return false;
    }
    if (!aBuffer) aBuffer.reset(new char[kBufferSize]);
    // The buffer is taken only by a closed file buffer, so it is handed over before each open.
    rdbuf()->pubsetbuf(aBuffer.get(), kBufferSize);
    {
        vfc::os::UserLocaleScope userLocale;
        open(aFileInfo.fDOSPath().data(), binary ? in | std::ios_base::binary : in);
    }
    return rdstate() == goodbit;
}

bool vIfstream::fOpenText(const vFile& f) {
    return fOpen(f, false);
}

bool vIfstream::fOpenBinary(const vFile& f) {
    return fOpenBinary(true, f);
}

bool vIfstream::fOpenBinary(bool detectType, const vFile& f) {
    vFile::KindEnum kind = vFile::KindEnum::eMissing;
    if (!fOpen(f, true, &kind)) return false;
    return !detectType || fDetectTypeAndReopen(kind == vFile::KindEnum::eRegular);
}

bool vIfstream::fDetectTypeAndReopen(bool regular) {
    char head[kDetectBytes];
    size_t n = 0;
    if (regular) {
        read(head, kDetectBytes);
        n = static_cast<size_t>(gcount());
        // Reading starts again at the beginning of the reopened file. A file that went away
        // meanwhile fails here, untyped.
        vFile file(aFileInfo);
        if (!fOpen(file, true)) return false;
    } else {
        n = fPeekHead(head, sizeof head);
    }
    vString typeName;
    if (vpFindFileInfoHeader(head, n, typeName))
        aFileInfo.setType(typeName);
    else
        aFileInfo.setType(vpDetectContentType(head, n, aFileInfo.fExtension()));
    return true;
}

size_t vIfstream::fPeekHead(char* head, size_t size) {
    // A FIFO or a device cannot be opened again to start over (a FIFO would wait for a new
    // writer, and what it held is gone): the bytes of the first read stay in the buffer and
    // are typed where they lie, so reading then starts with them.
    std::streambuf* buf = rdbuf();
    if (traits_type::eq_int_type(buf->sgetc(), traits_type::eof())) return 0;
    size_t n = std::min(size, static_cast<size_t>(GetArea::end(buf) - GetArea::next(buf)));
    std::memcpy(head, GetArea::next(buf), n);
    return n;
}

void vIfstream::fClose() {
    close();
}

bool vIfstream::fLocateQuotes(const char* const buf, int len, int& first, int& second) {
    return vpLocateQuotes(buf, len, first, second);
}

bool vIfstream::fRefill() {
    // peek() sets the end-of-file bit, or the bad bit on a read error (the file buffer may
    // throw; peek catches it). Running dry also fails the stream, as a character read does.
    if (traits_type::eq_int_type(peek(), traits_type::eof())) {
        setstate(failbit);
        return false;
    }
    return true;
}

bool vIfstream::fGetLine(vString& line) {
    if (rdstate() != goodbit) {
        line.remove(0);
        // At the end of the input a further read fails.
        setstate(failbit);
        return false;
    }
    std::streambuf* buf = rdbuf();
    bool started = false;  // whether line holds the start of this line yet
    for (;;) {
        char* p = GetArea::next(buf);
        char* e = GetArea::end(buf);
        if (p == e) {
            if (fRefill()) continue;
            if (!started) line.remove(0);
            return !line.isNull();
        }
        const char* hit = findLineEnd(p, e);
        size_t n = static_cast<size_t>(hit - p);
        if (started) {
            line.append(p, n);
        } else {
            // The whole line in one copy, into the buffer the string already has.
            line.resizeAndOverwrite(n, [p, n](char* to, size_t) {
                std::memcpy(to, p, n);
                return n;
            });
            started = true;
        }
        if (hit == e) {
            GetArea::skip(buf, e - p);
            continue;
        }
        // A CR ends the line; an LF right after it belongs to the same line end, also when it
        // is the first byte of the next buffer. Worked out without branching on the kind of
        // line end, which varies unpredictably in files of mixed ends.
        if (hit + 1 < e) {
            GetArea::skip(buf, hit - p + 1 + ((*hit == '\r') & (hit[1] == '\n')));
            return true;
        }
        GetArea::skip(buf, hit - p + 1);
        // peek() refills the buffer (at the end it sets only the end-of-file bit).
        if (*hit == '\r' && traits_type::eq_int_type(peek(), '\n')) GetArea::skip(buf, 1);
        return true;
    }
}

bool vIfstream::fGetLineTokens(vSlistvString& tokens, const vRegExp& token) {
    tokens.fClearAndDestroy();
    vString line;
    if (!fGetLine(line)) return false;
    vSeRe cursor(std::as_const(line));
    while (cursor.fFind(token)) {
        tokens.fInsertReference(new vString(cursor.fSubString()));
        cursor.fAdvance();
    }
    return true;
}

bool vIfstream::fGetLineAndParse(vSlistvString& tokens, bool& error, vString& message) {
    tokens.fClearAndDestroy();
    error = false;
    vString line;
    if (!fGetLine(line)) return false;
    QuotingTokenizer(tokens, error, message).fRun(line);
    return true;
}

void vIfstream::fParseAsINI(vHashvStringvHvSvS& sections) {
    sections.fClearAndDestroy();
    vString current;
    sections.fInsert(current, vHashvStringvString());
    vString line;
    while (fGetLine(line)) {
        size_t n = line.length();
        if (n > 0 && line[0] == '[' && line[n - 1] == ']') {
            current = line;
            continue;
        }
        size_t firstEq = line.first('=');
        if (firstEq == RW_NPOS) continue;
        size_t lastEq = line.last('=');
        vString key(line.data(), firstEq);
        vString value(line.data() + lastEq + 1, n - lastEq - 1);
        if (!sections.fLookup(current)) {
            sections.fInsert(current, vHashvStringvString());
            sections.fLookup(current);
        }
        sections.aValue().fInsert(key, value);
    }
}

bool vIfstream::fRead(vString& out, unsigned n) {
    out.remove(0);
    size_t taken = 0;
    while (good() && taken < n) {
        std::streamsize want = std::min<std::streamsize>(n - taken, kChunk);
        out.resizeAndOverwrite(taken + static_cast<size_t>(want), [&](char* p, size_t) {
            read(p + taken, want);
            return taken + static_cast<size_t>(gcount());
        });
        taken = out.length();
    }
    return !out.isNull();
}

RWCollectable* vIfstream::newSpecies() const {
    return new vIfstream;
}

RWCollectable* vIfstream::copy() const {
    return new vIfstream(*this);
}

std::ostream& operator<<(std::ostream& out, vIfstream& in) {
    char chunk[kChunk];
    while (out.good() && in.rdstate() == std::ios_base::goodbit) {
        in.read(chunk, kChunk);
        out.write(chunk, in.gcount());
    }
    return out;
}
