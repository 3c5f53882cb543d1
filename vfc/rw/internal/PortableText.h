#ifndef VFC_RW_INTERNAL_PORTABLETEXT_H
#define VFC_RW_INTERNAL_PORTABLETEXT_H

#include <cstddef>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vfc::rw {

// Whether byte c stands for itself inside a string item of the portable format: printable
// ASCII other than the quote and the backslash. Every other byte is escaped.
inline bool isPlainTextByte(unsigned char c) {
    return c >= 0x20 && c <= 0x7E && c != '"' && c != '\\';
}

// How many of the n bytes at p, from the first, are plain text bytes. The writer copies such
// runs as they are and the reader takes them back the same way.
inline size_t plainTextPrefix(const char* p, size_t n) {
    size_t i = 0;
#if defined(__SSE2__)
    const __m128i space = _mm_set1_epi8(0x20), del = _mm_set1_epi8(0x7F);
    const __m128i quote = _mm_set1_epi8('"'), backslash = _mm_set1_epi8('\\');
    auto specials = [&](const char* at) {
        __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        // Signed: bytes of 0x80 and above are negative, so below the space too.
        __m128i bad = _mm_or_si128(_mm_cmplt_epi8(v, space), _mm_cmpeq_epi8(v, del));
        bad = _mm_or_si128(bad,
                           _mm_or_si128(_mm_cmpeq_epi8(v, quote), _mm_cmpeq_epi8(v, backslash)));
        return static_cast<unsigned>(_mm_movemask_epi8(bad));
    };
    if (n >= 16) {
        for (; i + 16 <= n; i += 16)
            if (unsigned m = specials(p + i)) return i + static_cast<size_t>(__builtin_ctz(m));
        if (i == n) return n;
        // The last bytes through one overlapping load, without the ones already seen.
        unsigned m = specials(p + n - 16) >> (16 - (n - i));
        return m ? i + static_cast<size_t>(__builtin_ctz(m)) : n;
    }
#endif
    while (i < n && isPlainTextByte(static_cast<unsigned char>(p[i])))
        ++i;
    return i;
}

}  // namespace vfc::rw

#endif  // VFC_RW_INTERNAL_PORTABLETEXT_H
