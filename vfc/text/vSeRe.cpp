#include "vfc/text/vSeRe.h"

#include "vfc/text/vRegExp.h"

vSeRe::vSeRe(const vString& text) : aText(&text), aEditable(nullptr) {}

vSeRe::vSeRe(vString& text) : aText(&text), aEditable(&text) {}

bool vSeRe::fFind(const vRegExp& re) {
    size_t start = aPosition == RW_NPOS ? 0 : aPosition;
    aFound = false;
    if (start > aText->length()) return false;
    size_t extent = 0;
    size_t pos = re.index(*aText, &extent, start);
    if (pos == RW_NPOS) return false;
    aPosition = pos;
    aLength = aMatchLength = extent;
    aFound = true;
    return true;
}

void vSeRe::fReplace(const vString& replacement) {
    if (!aEditable || !aFound) return;
    aEditable->replace(aPosition, aLength, replacement);
    aLength = replacement.length();
}

void vSeRe::fAdvance() {
    // From "before the start" the single step wraps RW_NPOS round to 0.
    aPosition += aFound ? aLength + (aMatchLength == 0 ? 1 : 0) : 1;
    aLength = aMatchLength = 0;
    aFound = false;
}

void vSeRe::fReset() {
    aPosition = RW_NPOS;
    aLength = aMatchLength = 0;
    aFound = false;
}

vSubString vSeRe::fSubString() const {
    if (!aFound) return vString::nullString()(RW_NPOS, 0);
    return (*aText)(aPosition, aLength);
}
