#include "vfc/text/vTime.h"

#include <chrono>
#include <cstdint>
#include <cstdio>

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr long long vTime::kFirstSecond;
constexpr long long vTime::kLastSecond;
constexpr long long vTime::kInvalidSecond;

RW_DEFINE_COLLECTABLE(vTime, vClassID::vTime)

namespace {

constexpr long long kSecondsPerDay = 86400;

const char* const kWeekDays[7] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
const char* const kMonths[12] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// A reader of the text form with the conventions of scanf: white space in the format matches
// any amount of white space, numbers and words skip the white space before them.
class Scanner {
  public:
    Scanner(const char* p, const char* end) : aP(p), aEnd(end) {}

    void skipSpace() {
        while (aP != aEnd && isSpace(*aP))
            ++aP;
    }
    // %s, at most max characters: a run of one or more characters other than white space.
    bool word(const char*& start, size_t& length, size_t max) {
        skipSpace();
        start = aP;
        while (aP != aEnd && !isSpace(*aP) && static_cast<size_t>(aP - start) < max)
            ++aP;
        length = static_cast<size_t>(aP - start);
        return length > 0;
    }
    // %d: an optional sign and one or more digits. Values beyond any valid part are clamped
    // (they are rejected later anyway).
    bool number(long long& out) {
        skipSpace();
        bool negative = false;
        if (aP != aEnd && (*aP == '+' || *aP == '-')) negative = *aP++ == '-';
        const char* digits = aP;
        long long v = 0;
        while (aP != aEnd && *aP >= '0' && *aP <= '9') {
            if (v < 1000000000LL) v = v * 10 + (*aP - '0');
            ++aP;
        }
        if (aP == digits) return false;
        out = negative ? -v : v;
        return true;
    }
    // A literal character, not preceded by white space.
    bool literal(char c) {
        if (aP == aEnd || *aP != c) return false;
        ++aP;
        return true;
    }
    bool literal(const char* s) {
        for (; *s; ++s)
            if (!literal(*s)) return false;
        return true;
    }
    bool atEnd() {
        skipSpace();
        return aP == aEnd;
    }

  private:
    static bool isSpace(char c) {
        return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
    }

    const char* aP;
    const char* aEnd;
};

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// 1..12 for a month name of exactly three letters in any case; 0 otherwise.
unsigned monthOfName(const char* p, size_t n) {
    if (n != 3) return 0;
    for (unsigned m = 0; m < 12; ++m) {
        const char* name = kMonths[m];
        if (lowerAscii(p[0]) == lowerAscii(name[0]) && lowerAscii(p[1]) == lowerAscii(name[1]) &&
            lowerAscii(p[2]) == lowerAscii(name[2]))
            return m + 1;
    }
    return 0;
}

}  // namespace

vTime::vTime() : vTime(now()) {}

vTime::vTime(long long seconds) {
    if (seconds >= kFirstSecond && seconds <= kLastSecond) aSeconds = seconds;
}

vTime::vTime(const vDate& date, unsigned hour, unsigned minute, unsigned second) {
    if (!date.isValid() || hour > 23 || minute > 59 || second > 59) return;
    aSeconds = static_cast<long long>(date.dayNumber()) * kSecondsPerDay + hour * 3600LL +
               minute * 60LL + second;
}

vTime::~vTime() = default;

vTime vTime::now() {
    namespace chrono = std::chrono;
    const auto now = chrono::floor<chrono::seconds>(chrono::system_clock::now());
    return vTime(static_cast<long long>(now.time_since_epoch().count()));
}

long long vTime::fSecondOfDay() const {
    long long r = aSeconds % kSecondsPerDay;
    return r < 0 ? r + kSecondsPerDay : r;
}

unsigned vTime::hour() const {
    return isValid() ? static_cast<unsigned>(fSecondOfDay() / 3600) : 0;
}

unsigned vTime::minute() const {
    return isValid() ? static_cast<unsigned>(fSecondOfDay() / 60 % 60) : 0;
}

unsigned vTime::second() const {
    return isValid() ? static_cast<unsigned>(fSecondOfDay() % 60) : 0;
}

vString vTime::fAsString() const {
    if (!isValid()) return vString();
    const vDate d(*this);
    char text[48];
    int n = std::snprintf(text, sizeof text, "%s, %02u %s %04d %02u:%02u:%02u GMT",
                          kWeekDays[d.weekDay() - 1], d.day(), kMonths[d.month() - 1], d.year(),
                          hour(), minute(), second());
    return vString(text, n > 0 ? static_cast<size_t>(n) : 0);
}

bool vTime::fFromString(const vString& text) {
    Scanner in(text.data(), text.data() + text.length());
    const char* weekDay = nullptr;
    const char* monthName = nullptr;
    size_t weekDayLength = 0;
    size_t monthLength = 0;
    long long day = 0, year = 0, h = 0, m = 0, s = 0;
    if (!in.word(weekDay, weekDayLength, static_cast<size_t>(-1)) || !in.number(day) ||
        !in.word(monthName, monthLength, 3) || !in.number(year) || !in.number(h) ||
        !in.literal(':') || !in.number(m) || !in.literal(':') || !in.number(s))
        return false;
    in.skipSpace();
    if (!in.literal("GMT") || !in.atEnd()) return false;

    const unsigned month = monthOfName(monthName, monthLength);
    if (month == 0 || year < 1 || year > 9999 || day < 1 || h < 0 || h > 23 || m < 0 || m > 59 ||
        s < 0 || s > 59)
        return false;
    const vDate date(static_cast<unsigned>(day), month, static_cast<int>(year));
    if (!date.isValid()) return false;
    *this =
        vTime(date, static_cast<unsigned>(h), static_cast<unsigned>(m), static_cast<unsigned>(s));
    return true;
}

RWCollectable* vTime::newSpecies() const {
    return new vTime;
}

RWCollectable* vTime::copy() const {
    return new vTime(*this);
}

int vTime::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const long long o = static_cast<const vTime*>(other)->aSeconds;
    return aSeconds < o ? -1 : (aSeconds > o ? 1 : 0);
}

unsigned vTime::hash() const {
    const uint64_t bits = static_cast<uint64_t>(aSeconds);
    return static_cast<unsigned>(bits ^ (bits >> 32));
}

bool vTime::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && static_cast<const vTime*>(other)->aSeconds == aSeconds;
}

void vTime::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    long long n = 0;
    s >> n;
    if (!s.good()) return;
    if (!sfAcceptable(n)) {
        s.setstate(RWvios::failbit);
        return;
    }
    aSeconds = n;
}

void vTime::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    unsigned low = 0;
    int high = 0;
    if (!f.Read(low) || !f.Read(high)) return;
    const long long n = static_cast<long long>(
        (static_cast<uint64_t>(static_cast<uint32_t>(high)) << 32) | static_cast<uint64_t>(low));
    if (!sfAcceptable(n)) {
        f.setFailed();
        return;
    }
    aSeconds = n;
}

void vTime::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << aSeconds;
}

void vTime::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    const uint64_t bits = static_cast<uint64_t>(aSeconds);
    f.Write(static_cast<unsigned>(bits & 0xFFFFFFFFu));
    f.Write(static_cast<int>(static_cast<int32_t>(static_cast<uint32_t>(bits >> 32))));
}
