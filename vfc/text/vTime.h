#ifndef VFC_TEXT_VTIME_H
#define VFC_TEXT_VTIME_H

#include "vfc/base/export.h"
#include "vfc/core/vString.h"
#include "vfc/rw/RWCollectable.h"
#include "vfc/text/vDate.h"

/// A point in time, held as the number of seconds since 1970-01-01 00:00:00 UTC (leap seconds
/// not counted).
///
/// Times run from 0001-01-01 00:00:00 to 9999-12-31 23:59:59 UTC; anything else makes an
/// invalid time, which isValid() reports and which orders before every valid time. The text
/// form is the one of HTTP headers, always in UTC:
///
/// \code
/// vTime t(vDate(6, 11, 1994), 8, 49, 37);
/// t.fAsString();                  // "Sun, 06 Nov 1994 08:49:37 GMT"
/// t.fFromString("Mon, 07 Nov 1994 00:00:00 GMT");
/// \endcode
///
/// A collectable value: the persistent form is the second count, as one 64-bit integer item on
/// the virtual streams and as two 32-bit integers (low half first) on an RWFile.
///
/// Ownership: a plain value; copies are independent.
///
/// Failure: nothing throws. Out-of-range input gives the invalid time (check isValid()), whose
/// parts read as 0 and whose text form is empty. fFromString answers false and leaves the time
/// unchanged on text it cannot read. A stored count outside the valid range (other than the
/// invalid time's) fails the stream or RWFile and leaves the time as it was.
class VFC_API vTime : public RWCollectable {
  public:
    // The second counts of the first and the last valid time, and of the invalid time.
    static constexpr long long kFirstSecond = -62135596800LL;  // 0001-01-01 00:00:00
    static constexpr long long kLastSecond = 253402300799LL;   // 9999-12-31 23:59:59
    static constexpr long long kInvalidSecond = -9223372036854775807LL - 1;

    // Now.
    vTime();
    // The given second count; invalid outside kFirstSecond..kLastSecond.
    explicit vTime(long long seconds);
    // The given time of day (hour 0..23, minute and second 0..59) on a date, in UTC; invalid
    // for an invalid date or a part out of range.
    vTime(const vDate& date, unsigned hour = 0, unsigned minute = 0, unsigned second = 0);
    vTime(const vTime& other) = default;
    vTime& operator=(const vTime& other) = default;
    ~vTime() override;

    // The current time, from the system clock, to the second.
    static vTime now();

    bool isValid() const { return aSeconds != kInvalidSecond; }
    // Seconds since 1970-01-01 00:00:00 UTC; kInvalidSecond for the invalid time.
    long long seconds() const { return aSeconds; }
    // The time of day in UTC; 0 for the invalid time.
    unsigned hour() const;
    unsigned minute() const;
    unsigned second() const;

    // "Sun, 06 Nov 1994 08:49:37 GMT": weekday, two-digit day, month name, four-digit year,
    // time of day, "GMT". Empty for the invalid time.
    vString fAsString() const;
    // Reads the form above as the format "%s %d %3s %d %d:%d:%d GMT" reads it: a weekday token
    // (any word; it is not checked against the date), the day, a three-letter English month
    // name (in any case), the year, hour, minute and second, then "GMT" and nothing but white
    // space. False, with the time unchanged, when a part is missing or out of range.
    bool fFromString(const vString& text);

    bool operator==(const vTime& o) const { return aSeconds == o.aSeconds; }
    bool operator!=(const vTime& o) const { return aSeconds != o.aSeconds; }
    bool operator<(const vTime& o) const { return aSeconds < o.aSeconds; }
    bool operator<=(const vTime& o) const { return aSeconds <= o.aSeconds; }
    bool operator>(const vTime& o) const { return aSeconds > o.aSeconds; }
    bool operator>=(const vTime& o) const { return aSeconds >= o.aSeconds; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // -1, 0 or 1 by second count; -1 against null or another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    // A stored count outside the valid range (other than the invalid time's) fails the stream
    // and leaves the time as it was.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    // Seconds since midnight; the time must be valid.
    long long fSecondOfDay() const;
    static bool sfAcceptable(long long s) {
        return s == kInvalidSecond || (s >= kFirstSecond && s <= kLastSecond);
    }

    long long aSeconds = kInvalidSecond;
};

#endif  // VFC_TEXT_VTIME_H
