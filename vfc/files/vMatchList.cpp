#include "vfc/files/vMatchList.h"

#include "vfc/collections/vSlistIterator.h"
#include "vfc/core/vString.h"
#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/text/vRegExp.h"

RW_DEFINE_COLLECTABLE(vMatchList, vClassID::vMatchList)

namespace {

// Characters that the expression dialect would read as operators; they are escaped so that they
// match themselves.
bool isSpecial(char c) {
    switch (c) {
        case '$':
        case '+':
        case '.':
        case '?':
        case '[':
        case '\\':
        case ']':
        case '^':
        case '|':
            return true;
        default:
            return false;
    }
}

// ASCII case mapping, whatever the locale: only letters change.
char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

vMatchList::vMatchList(const vSlistvString& patterns, bool ignoreCase)
    : aPatterns(patterns), aIgnoreCase(ignoreCase) {
    fStringListToMatchHash();
}

vMatchList::~vMatchList() = default;

void vMatchList::fStringToRegExp(const vString& pattern, vRegExp& out) const {
    vString text("^");
    const char* p = pattern.data();
    for (size_t i = 0, n = pattern.length(); i < n; ++i) {
        const char c = p[i];
        if (isSpecial(c)) {
            text.append('\\').append(c);
        } else if (c == '*') {
            text.append(".*");
        } else if (aIgnoreCase && c >= 'A' && c <= 'z') {
            // The six codes between "Z" and "a" that get here ("_" and "`"; the others were
            // escaped above) have no case and stand twice in their bracket.
            text.append('[').append(upper(c)).append(lower(c)).append(']');
        } else {
            text.append(c);
        }
    }
    text.append('$');
    out = vRegExp(text);
}

bool vMatchList::fInsert(const vString& pattern) {
    vRegExp expression;
    fStringToRegExp(pattern, expression);
    if (!aMatchers.fInsert(pattern, expression)) return false;
    if (!aPatterns.fInsert(pattern)) {
        aMatchers.fDelete(pattern);
        return false;
    }
    return true;
}

bool vMatchList::fDelete(const vString& pattern) {
    if (!aMatchers.fDelete(pattern)) return false;
    aPatterns.fDelete(pattern);
    return true;
}

bool vMatchList::fCheckForMatch(const vString& name) const {
    vHashvStringvRegExpIter it(aMatchers);
    while (it.fAdvance()) {
        size_t extent = 0;
        if (it.aValue().index(name, &extent, 0) != RW_NPOS) return true;
    }
    return false;
}

void vMatchList::fStringListToMatchHash() {
    const vSlistvString patterns(aPatterns);
    aPatterns.fClearAndDestroy();
    aMatchers.fClearAndDestroy();
    vSlistvStringIter it(patterns);
    while (it.fAdvance())
        fInsert(it.aKey());
}

RWCollectable* vMatchList::newSpecies() const {
    return new vMatchList;
}

RWCollectable* vMatchList::copy() const {
    return new vMatchList(*this);
}

unsigned vMatchList::hash() const {
    return static_cast<unsigned>(aPatterns.fEntries()) ^ (aIgnoreCase ? 1u : 0u);
}

bool vMatchList::isEqual(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return false;
    const vMatchList* o = static_cast<const vMatchList*>(other);
    return aIgnoreCase == o->aIgnoreCase && aPatterns.fIsEqual(o->aPatterns);
}

void vMatchList::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    aPatterns.fClearAndDestroy();
    aMatchers.fClearAndDestroy();
    size_t n = 0;
    s.getCount(n);
    for (size_t i = 0; i < n && s.good(); ++i) {
        vString pattern;
        pattern.restoreFrom(s);
        if (s.good()) aPatterns.fInsert(pattern);
    }
    bool ignoreCase = aIgnoreCase;
    s >> ignoreCase;
    if (s.good()) aIgnoreCase = ignoreCase;
    fStringListToMatchHash();
}

// Match lists persist only through the virtual streams.
void vMatchList::restoreGuts(RWFile&) {}

void vMatchList::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << static_cast<unsigned>(aPatterns.fEntries());
    vSlistvStringIter it(aPatterns);
    while (it.fAdvance())
        it.aKey().saveOn(s);
    s << aIgnoreCase;
}

void vMatchList::saveGuts(RWFile&) const {}
