#ifndef VFC_TEXT_VDATE_H
#define VFC_TEXT_VDATE_H

#include "vfc/base/export.h"
#include "vfc/rw/RWCollectable.h"

class vTime;

/// A calendar day of the Gregorian calendar (extended backwards before its introduction), held
/// as the number of days since 1970-01-01.
///
/// Dates run from 0001-01-01 to 9999-12-31; a day, month and year that do not name such a day
/// make an invalid date, which isValid() reports and which orders before every valid date.
///
/// \code
/// vDate d(6, 11, 1994);
/// d.weekDay();                    // 7 (Sunday)
/// vDate(29, 2, 1900).isValid();   // false: 1900 is not a leap year
/// \endcode
///
/// A collectable value: the persistent form is the day number as one integer item, on both
/// kinds of stream.
///
/// Ownership: a plain value; copies are independent.
///
/// Failure: nothing throws. Out-of-range input gives the invalid date (check isValid()), whose
/// parts read as 0. A stored day number outside the valid range (other than the invalid
/// date's) fails the stream or RWFile and leaves the date as it was.
class VFC_API vDate : public RWCollectable {
  public:
    // The day numbers of the first and the last valid date, and of the invalid date.
    static constexpr int kFirstDay = -719162;  // 0001-01-01
    static constexpr int kLastDay = 2932896;   // 9999-12-31
    static constexpr int kInvalidDay = -2147483647 - 1;

    // Today, in UTC.
    vDate();
    // The given day (1..31), month (1..12) and year (1..9999); invalid when they name no day.
    vDate(unsigned day, unsigned month, int year);
    // The day of a point in time, in UTC; invalid for an invalid time.
    explicit vDate(const vTime& time);
    vDate(const vDate& other) = default;
    vDate& operator=(const vDate& other) = default;
    ~vDate() override;

    // The date of a day number; invalid outside kFirstDay..kLastDay.
    static vDate sfFromDayNumber(int dayNumber);
    static bool sfIsLeapYear(int year);
    // 28 to 31; 0 for a month outside 1..12.
    static unsigned sfDaysInMonth(unsigned month, int year);

    bool isValid() const { return aDay != kInvalidDay; }
    // Days since 1970-01-01 (negative before it); kInvalidDay for the invalid date.
    int dayNumber() const { return aDay; }
    // The parts of the date; 0 for the invalid date.
    unsigned day() const;
    unsigned month() const;
    int year() const;
    // 1 (Monday) to 7 (Sunday); 0 for the invalid date.
    unsigned weekDay() const;

    bool operator==(const vDate& o) const { return aDay == o.aDay; }
    bool operator!=(const vDate& o) const { return aDay != o.aDay; }
    bool operator<(const vDate& o) const { return aDay < o.aDay; }
    bool operator<=(const vDate& o) const { return aDay <= o.aDay; }
    bool operator>(const vDate& o) const { return aDay > o.aDay; }
    bool operator>=(const vDate& o) const { return aDay >= o.aDay; }

    RWCollectable* newSpecies() const override;
    RWCollectable* copy() const override;
    RWClassID isA() const override { return classIsA(); }
    // -1, 0 or 1 by day number; -1 against null or another class.
    int compareTo(const RWCollectable* other) const override;
    unsigned hash() const override;
    bool isEqual(const RWCollectable* other) const override;
    // A stored day number outside the valid range (other than the invalid date's) fails the
    // stream and leaves the date as it was.
    void restoreGuts(RWvistream& s) override;
    void restoreGuts(RWFile& f) override;
    void saveGuts(RWvostream& s) const override;
    void saveGuts(RWFile& f) const override;
    static RWClassID classIsA();
    static const RWClassID myAtom;

  private:
    struct Civil {
        int year;
        unsigned month;
        unsigned day;
    };
    Civil fCivil() const;
    static bool sfAcceptable(int dayNumber) {
        return dayNumber == kInvalidDay || (dayNumber >= kFirstDay && dayNumber <= kLastDay);
    }

    int aDay = kInvalidDay;
};

#endif  // VFC_TEXT_VDATE_H
