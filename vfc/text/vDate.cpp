#include "vfc/text/vDate.h"

#include "vfc/persist/vClassIds.h"
#include "vfc/rw/RWFactory.h"
#include "vfc/rw/RWFile.h"
#include "vfc/rw/RWvistream.h"
#include "vfc/rw/RWvostream.h"
#include "vfc/text/vTime.h"

// The constants get their one definition here, so that a DLL exports them for importers that
// take one by reference.
constexpr int vDate::kFirstDay;
constexpr int vDate::kLastDay;
constexpr int vDate::kInvalidDay;

RW_DEFINE_COLLECTABLE(vDate, vClassID::vDate)

// The calendar arithmetic counts in 400-year eras of 146097 days, each starting on the 1st of
// March so that the leap day is the last day of its year; 719468 is the day number of
// 0000-03-01 counted back from 1970-01-01.

namespace {

constexpr long long kSecondsPerDay = 86400;

long long daysFromCivil(long long y, unsigned m, unsigned d) {
    y -= m <= 2 ? 1 : 0;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long yoe = y - era * 400;                                    // 0..399
    const long long doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;  // 0..365
    const long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;            // 0..146096
    return era * 146097 + doe - 719468;
}

void civilFromDays(long long z, long long& y, unsigned& m, unsigned& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const long long doe = z - era * 146097;
    const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const long long mp = (5 * doy + 2) / 153;  // 0 = March .. 11 = February
    d = static_cast<unsigned>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<unsigned>(mp < 10 ? mp + 3 : mp - 9);
    y = yoe + era * 400 + (m <= 2 ? 1 : 0);
}

// Division rounding towards minus infinity.
long long floorDiv(long long a, long long b) {
    long long q = a / b;
    return (a % b != 0 && (a < 0) != (b < 0)) ? q - 1 : q;
}

}  // namespace

vDate::vDate() : vDate(vTime::now()) {}

vDate::vDate(unsigned day, unsigned month, int year) {
    if (year < 1 || year > 9999 || day < 1 || day > sfDaysInMonth(month, year)) return;
    aDay = static_cast<int>(daysFromCivil(year, month, day));
}

vDate::vDate(const vTime& time) {
    if (time.isValid()) aDay = static_cast<int>(floorDiv(time.seconds(), kSecondsPerDay));
}

vDate::~vDate() = default;

vDate vDate::sfFromDayNumber(int dayNumber) {
    vDate d(0, 0, 0);  // invalid
    if (dayNumber >= kFirstDay && dayNumber <= kLastDay) d.aDay = dayNumber;
    return d;
}

bool vDate::sfIsLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

unsigned vDate::sfDaysInMonth(unsigned month, int year) {
    static const unsigned kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 0;
    return month == 2 && sfIsLeapYear(year) ? 29 : kDays[month - 1];
}

vDate::Civil vDate::fCivil() const {
    Civil c{0, 0, 0};
    if (!isValid()) return c;
    long long y = 0;
    civilFromDays(aDay, y, c.month, c.day);
    c.year = static_cast<int>(y);
    return c;
}

unsigned vDate::day() const {
    return fCivil().day;
}

unsigned vDate::month() const {
    return fCivil().month;
}

int vDate::year() const {
    return fCivil().year;
}

unsigned vDate::weekDay() const {
    if (!isValid()) return 0;
    // Day 0 was a Thursday (4).
    long long r = (static_cast<long long>(aDay) + 3) % 7;
    if (r < 0) r += 7;
    return static_cast<unsigned>(r) + 1;
}

RWCollectable* vDate::newSpecies() const {
    return new vDate;
}

RWCollectable* vDate::copy() const {
    return new vDate(*this);
}

int vDate::compareTo(const RWCollectable* other) const {
    if (!other || other->isA() != isA()) return -1;
    const int o = static_cast<const vDate*>(other)->aDay;
    return aDay < o ? -1 : (aDay > o ? 1 : 0);
}

unsigned vDate::hash() const {
    return static_cast<unsigned>(aDay);
}

bool vDate::isEqual(const RWCollectable* other) const {
    return other && other->isA() == isA() && static_cast<const vDate*>(other)->aDay == aDay;
}

void vDate::restoreGuts(RWvistream& s) {
    RWCollectable::restoreGuts(s);
    int n = 0;
    s >> n;
    if (!s.good()) return;
    if (!sfAcceptable(n)) {
        s.setstate(RWvios::failbit);
        return;
    }
    aDay = n;
}

void vDate::restoreGuts(RWFile& f) {
    RWCollectable::restoreGuts(f);
    int n = 0;
    if (!f.Read(n)) return;
    if (!sfAcceptable(n)) {
        f.setFailed();
        return;
    }
    aDay = n;
}

void vDate::saveGuts(RWvostream& s) const {
    RWCollectable::saveGuts(s);
    s << aDay;
}

void vDate::saveGuts(RWFile& f) const {
    RWCollectable::saveGuts(f);
    f.Write(aDay);
}
