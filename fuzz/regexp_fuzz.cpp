// Fuzzes pattern compilation and searching: any bytes as a pattern in each of the three forms,
// any bytes as the text. Besides crashes and hangs it checks what every search must satisfy:
// a match lies inside the text, and searching again from a match's position finds that same
// match (leftmost, then longest). A replace walk over the text must end.
//
// Input: byte 0 picks the form (alternation, wildcard, semicolon list) and byte 1 the pattern
// length; the pattern follows, the rest is the text.
#include <cstddef>
#include <cstdint>

#include <vfc/vfc.h>

namespace {

void check(bool ok) {
    if (!ok) __builtin_trap();
}

vRegExp makePattern(uint8_t form, const vString& pattern) {
    switch (form % 3) {
        case 0: return vRegExp(pattern);
        case 1: return vRegExp(pattern, false);
        default: return vRegExp(pattern, true);
    }
}

void checkSearch(const vRegExp& re, const vString& text, size_t start) {
    size_t extent = 0;
    size_t pos = re.index(text, &extent, start);
    if (pos == RW_NPOS) {
        check(extent == 0);
        return;
    }
    check(pos >= start && pos <= text.length() && extent <= text.length() - pos);
    size_t again = 0;
    check(re.index(text, &again, pos) == pos && again == extent);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 2) return 0;
    size_t patternLength = data[1] < size - 2 ? data[1] : size - 2;
    const char* bytes = reinterpret_cast<const char*>(data);
    vString pattern(bytes + 2, patternLength);
    vString text(bytes + 2 + patternLength, size - 2 - patternLength);
    vRegExp re = makePattern(data[0], pattern);

    checkSearch(re, text, 0);
    checkSearch(re, text, text.length() / 2);
    checkSearch(re, text, text.length());
    size_t none = 0;
    check(re.index(text, &none, text.length() + 1) == RW_NPOS);

    vString edited(text);
    size_t steps = 0;
    vSeRe cursor(edited);
    while (cursor.fFind(re)) {
        cursor.fReplace("<>");
        cursor.fAdvance();
        check(++steps <= text.length() + 1);
    }
    vString replaced(text);
    replaced.fReplaceAll(re, "<>");
    check(replaced == edited);
    return 0;
}
