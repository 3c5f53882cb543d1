#include "vfc/text/vRegExp.h"

#include <vector>

#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/internal/RegexEngine.h"
#include "vfc/text/internal/vpSubRegExp.h"

RW_DEFINE_COLLECTABLE(vRegExp, vClassID::vRegExp)

vRegExp::vRegExp() = default;

vRegExp::vRegExp(const vString& pattern) {
    fInitialize(pattern);
    fBuildMatcher();
}

vRegExp::vRegExp(const vString& pattern, bool semicolonList) {
    if (semicolonList) {
        fInitializeWithSemis(pattern);
    } else {
        vString expression;
        fNormalize(pattern, expression);
        fInitialize(expression);
    }
    fBuildMatcher();
}

vRegExp::vRegExp(const vRegExp& other)
    : RWCollectable(other),
      aList(other.aList),
      aMatcher(other.aMatcher ? new vfc::rx::Matcher(*other.aMatcher) : nullptr) {}

vRegExp& vRegExp::operator=(const vRegExp& other) {
    if (&other == this) return *this;
    aList = other.aList;
    aMatcher.reset(other.aMatcher ? new vfc::rx::Matcher(*other.aMatcher) : nullptr);
    return *this;
}

vRegExp::~vRegExp() = default;

void vRegExp::fAddAlternative(const vString& text) {
    if (!text.isNull()) aList.fInsertReference(new vpSubRegExp(text));
}

void vRegExp::fBuildMatcher() {
    std::vector<std::shared_ptr<const vfc::rx::Expression>> valid;
    vSlistIterator it(aList);
    while (it.fAdvance()) {
        const RWCRegexp& re = static_cast<const vpSubRegExp*>(it.apKey())->fRegexp();
        if (re.status() == RWCRegexp::OK) valid.push_back(re.expression_);
    }
    aMatcher.reset(valid.empty() ? nullptr : new vfc::rx::Matcher(valid));
}

void vRegExp::fInitialize(const vString& pattern) {
    const char* p = pattern.data();
    size_t n = pattern.length();
    vString scratch;
    bool inBracket = false;
    for (size_t i = 0; i < n; ++i) {
        char c = p[i];
        if (c == '\\' && i + 1 < n) {
            char next = p[++i];
            if (next == '|') {
                scratch.append('|');  // an escaped bar is a literal bar
            } else {
                scratch.append('\\').append(next);
            }
        } else if (c == '|' && !inBracket) {
            fAddAlternative(scratch);
            scratch = "";
        } else {
            if (c == '[') inBracket = true;
            if (c == ']') inBracket = false;
            scratch.append(c);
        }
    }
    fAddAlternative(scratch);
}

void vRegExp::fNormalize(const vString& in, vString& out) {
    const char* p = in.data();
    size_t n = in.length();
    out = "^";
    for (size_t i = 0; i < n; ++i) {
        switch (p[i]) {
            case '*':
                out.append(".*");
                break;
            case '?':
                out.append('.');
                break;
            case '.':
            case '+':
            case '$':
            case '^':
            case '[':
            case ']':
                out.append('\\').append(p[i]);
                break;
            case '\\':
                if (i + 1 < n && p[i + 1] == '\\') {
                    out.append("\\\\\\\\");
                    ++i;
                } else {
                    out.append("\\\\");
                }
                break;
            default:
                out.append(p[i]);
        }
    }
    out.append('$');
}

void vRegExp::fInitializeWithSemis(const vString& pattern) {
    const char* p = pattern.data();
    size_t n = pattern.length();
    vString piece;
    auto addPiece = [this, &piece] {
        if (piece.isNull()) return;
        vString expression;
        fNormalize(piece, expression);
        aList.fInsertReference(new vpSubRegExp(expression));
        piece = "";
    };
    for (size_t i = 0; i < n; ++i) {
        char c = p[i];
        if (c == ';') {
            addPiece();
        } else if (c == '\\' && i + 1 < n) {
            char next = p[++i];
            if (next == '|') {
                piece.append(';');  // the way to put a semicolon into a piece
            } else {
                piece.append('\\').append(next);
            }
        } else {
            piece.append(c);
        }
    }
    addPiece();
}

size_t vRegExp::index(const vString& text, size_t* extent, size_t start) const {
    return index(text.data(), text.length(), extent, start);
}

size_t vRegExp::index(const char* text, size_t length, size_t* extent, size_t start) const {
    size_t found = 0;
    size_t pos = aMatcher ? aMatcher->search(text, length, start, &found) : RW_NPOS;
    if (extent) *extent = pos == RW_NPOS ? 0 : found;
    return pos;
}

RWCollectable* vRegExp::newSpecies() const {
    return new vRegExp;
}

RWCollectable* vRegExp::copy() const {
    return new vRegExp(*this);
}
