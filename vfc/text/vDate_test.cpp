#include "vfc/text/vDate.h"

#include <gtest/gtest.h>

#include <ctime>
#include <sstream>
#include <string>

#include "vfc/persist/vPistream.h"
#include "vfc/persist/vPostream.h"
#include "vfc/rw/RWFile.h"
#include "vfc/testing/TempDir.h"
#include "vfc/text/vTime.h"

namespace {

std::string str(const vString& s) {
    return std::string(s.data(), s.length());
}

TEST(vDate, DayNumbersAgreeWithCountingDayByDay) {
    // Walk every day from 0001-01-01 (a Monday) to 9999-12-31 with a plain counter.
    const unsigned lengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    int n = vDate::kFirstDay;
    unsigned weekDay = 1;
    int failures = 0;
    for (int y = 1; y <= 9999 && failures < 5; ++y) {
        const bool leap = y % 4 == 0 && (y % 100 != 0 || y % 400 == 0);
        for (unsigned m = 1; m <= 12; ++m) {
            const unsigned last = lengths[m - 1] + (m == 2 && leap ? 1 : 0);
            EXPECT_EQ(vDate::sfDaysInMonth(m, y), last);
            for (unsigned d = 1; d <= last; ++d, ++n, weekDay = weekDay % 7 + 1) {
                const vDate byNumber = vDate::sfFromDayNumber(n);
                if (vDate(d, m, y).dayNumber() != n || byNumber.day() != d ||
                    byNumber.month() != m || byNumber.year() != y ||
                    byNumber.weekDay() != weekDay) {
                    ADD_FAILURE() << y << "-" << m << "-" << d << " is not day " << n;
                    ++failures;
                }
            }
        }
    }
    EXPECT_EQ(n - 1, vDate::kLastDay);
    EXPECT_EQ(vDate(1, 1, 1970).dayNumber(), 0);
}

TEST(vDate, RejectsDaysThatDoNotExistAndOrdersTheRest) {
    EXPECT_FALSE(vDate(29, 2, 1900).isValid());
    EXPECT_TRUE(vDate(29, 2, 2000).isValid());
    EXPECT_FALSE(vDate(29, 2, 2100).isValid());
    EXPECT_FALSE(vDate(31, 4, 2020).isValid());
    EXPECT_FALSE(vDate(0, 1, 2020).isValid());
    EXPECT_FALSE(vDate(1, 13, 2020).isValid());
    EXPECT_FALSE(vDate(1, 1, 0).isValid());
    EXPECT_FALSE(vDate(1, 1, 10000).isValid());
    EXPECT_FALSE(vDate::sfFromDayNumber(vDate::kLastDay + 1).isValid());
    const vDate bad(30, 2, 2020);
    EXPECT_EQ(bad.year(), 0);
    EXPECT_EQ(bad.weekDay(), 0u);
    EXPECT_LT(bad, vDate(1, 1, 1));
    EXPECT_FALSE(vTime(bad).isValid());

    const vDate a(31, 12, 1999), b(1, 1, 2000), b2(1, 1, 2000);
    EXPECT_EQ(a.compareTo(&b), -1);
    EXPECT_EQ(b.compareTo(&a), 1);
    EXPECT_TRUE(b.isEqual(&b2));
    const vTime t(b);  // a time on the same day is another class
    EXPECT_FALSE(b.isEqual(&t));
    // The day of a time, before and after the epoch.
    EXPECT_EQ(vDate(vTime(-1)), vDate(31, 12, 1969));
    EXPECT_EQ(vDate(vTime(86399)), vDate(1, 1, 1970));
    EXPECT_EQ(vDate(vTime(86400)), vDate(2, 1, 1970));
}

TEST(vTime, CountsSecondsFromTheEpoch) {
    const vTime t(vDate(6, 11, 1994), 8, 49, 37);
    EXPECT_EQ(t.seconds(), 784111777);
    EXPECT_EQ(t.hour() * 10000 + t.minute() * 100 + t.second(), 84937u);
    EXPECT_EQ(vTime(-1).hour(), 23u);
    EXPECT_EQ(vTime(vDate(31, 12, 9999), 23, 59, 59).seconds(), vTime::kLastSecond);
    EXPECT_FALSE(vTime(vTime::kLastSecond + 1).isValid());
    EXPECT_FALSE(vTime(vDate(1, 1, 2000), 24, 0, 0).isValid());
    EXPECT_FALSE(vTime(vDate(1, 1, 2000), 0, 0, 60).isValid());

    // The clock: the same second as the C library's.
    const long long before = static_cast<long long>(std::time(nullptr));
    const vTime now = vTime::now();
    const vDate today;
    const long long after = static_cast<long long>(std::time(nullptr));
    EXPECT_GE(now.seconds(), before);
    EXPECT_LE(now.seconds(), after);
    EXPECT_GE(today.dayNumber(), vDate(now).dayNumber());
    EXPECT_LE(today.dayNumber(), vDate(now).dayNumber() + 1);
}

TEST(vTime, WritesAndReadsTheHttpForm) {
    EXPECT_EQ(str(vTime(vDate(6, 11, 1994), 8, 49, 37).fAsString()),
              "Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(str(vTime(-1).fAsString()), "Wed, 31 Dec 1969 23:59:59 GMT");
    EXPECT_EQ(str(vTime(vTime::kFirstSecond).fAsString()), "Mon, 01 Jan 0001 00:00:00 GMT");
    EXPECT_EQ(str(vTime(vTime::kLastSecond + 1).fAsString()), "");

    // Round trip across the whole range.
    const long long span = vTime::kLastSecond - vTime::kFirstSecond;
    for (long long s = vTime::kFirstSecond; s <= vTime::kLastSecond; s += span / 4999 + 7) {
        vTime back(12345);
        ASSERT_TRUE(back.fFromString(vTime(s).fAsString())) << str(vTime(s).fAsString());
        EXPECT_EQ(back.seconds(), s) << str(vTime(s).fAsString());
    }

    // Read as scanf reads the format: free white space, any weekday word, month in any case.
    vTime t(0);
    EXPECT_TRUE(t.fFromString("  Whatever,  6   nov 1994 8:49:37   GMT \r\n"));
    EXPECT_EQ(t.seconds(), 784111777);
    EXPECT_TRUE(t.fFromString("Tue, 29 Feb 2000 00:00:00 GMT"));
    EXPECT_EQ(vDate(t), vDate(29, 2, 2000));

    const char* const bad[] = {
        "Sun, 06 Foo 1994 08:49:37 GMT",       // unknown month
        "Sun, 06 November 1994 08:49:37 GMT",  // the month is three letters
        "Sun, 31 Apr 1994 08:49:37 GMT",       // no such day
        "Thu, 29 Feb 1900 08:49:37 GMT",
        "Sun, 00 Nov 1994 08:49:37 GMT",
        "Sun, 06 Nov 1994 24:00:00 GMT",  // time of day out of range
        "Sun, 06 Nov 1994 08:49:60 GMT",
        "Sun, 06 Nov 0 08:49:37 GMT",  // year out of range
        "Sun, 06 Nov 1994 08:49:37",   // missing or wrong zone
        "Sun, 06 Nov 1994 08:49:37 GMT+1",
        "Sun, 06 Nov 1994 08:49 GMT",  // missing parts
        "Sun, 06 Nov 1994 08 :49:37 GMT",
        "Sun, 99999999999999999999 Nov 1994 08:49:37 GMT",
        "",
    };
    for (const char* text : bad) {
        vTime keep(42);
        EXPECT_FALSE(keep.fFromString(text)) << text;
        EXPECT_EQ(keep.seconds(), 42) << text;
    }
}

TEST(vTime, PersistsOnBothKindsOfStream) {
    std::stringbuf buf;
    vPostream out(&buf);
    out << vDate(2, 1, 1970) << vTime(-62135596800LL);
    EXPECT_EQ(buf.str(), ":\n256\n\\[\n1\n\\]\n:\n264\n\\[\n-62135596800\n\\]\n");
    vPistream in(&buf);
    vDate d(1, 1, 2000);
    vTime t(5);
    in >> d >> t;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(d, vDate(2, 1, 1970));
    EXPECT_EQ(t.seconds(), vTime::kFirstSecond);

    // Values out of range fail the stream and leave the target alone.
    std::stringbuf badTime(":\n264\n\\[\n253402300800\n\\]\n");
    vPistream badTimeIn(&badTime);
    badTimeIn >> t;
    EXPECT_TRUE(badTimeIn.fail());
    EXPECT_EQ(t.seconds(), vTime::kFirstSecond);

    // The binary form, with both halves of the count in use and the invalid values.
    vfc::testing::TempDir dir;
    const std::string path = dir.file("dates.bin");
    const vTime times[] = {vTime(vTime::kFirstSecond), vTime(vTime::kLastSecond), vTime(-1),
                           vTime(vTime::kLastSecond + 1)};
    const vDate dates[] = {vDate(31, 12, 9999), vDate(0, 0, 0)};
    {
        RWFile f(path.c_str(), "wb");
        for (const vTime& x : times)
            x.recursiveSaveOn(f);
        for (const vDate& x : dates)
            x.recursiveSaveOn(f);
        ASSERT_TRUE(f.good());
    }
    RWFile f(path.c_str(), "rb");
    for (const vTime& x : times) {
        vTime back(7);
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &back), &back);
        EXPECT_EQ(back, x) << x.seconds();
    }
    for (const vDate& x : dates) {
        vDate back(15, 6, 2015);
        EXPECT_EQ(RWCollectable::recursiveRestoreFrom(f, &back), &back);
        EXPECT_EQ(back, x) << x.dayNumber();
    }
    EXPECT_TRUE(f.good());
}

}  // namespace
