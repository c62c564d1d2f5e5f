// The date and time text engines, the members built on them and the
// catalogue rows' print and scan.
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "obtimetext.h"
#include "quillstore.h"

namespace {

using obtimetext::Fields;
using obtimetext::ScanResult;

Fields F(int32_t y, int32_t mo, int32_t d, int32_t h = 0, int32_t mi = 0,
         int32_t s = 0, int32_t ns = 0) {
  Fields f;
  f.year = y;
  f.month = mo;
  f.day = d;
  f.hour = h;
  f.minute = mi;
  f.second = s;
  f.nanos = ns;
  return f;
}

std::string Print(const Fields& f, const char* format) {
  std::string out;
  obtimetext::Print(f, format, out);
  return out;
}

std::string Str(const Fields& f) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "%d-%d-%d %d:%d:%d.%d", f.year, f.month, f.day,
                f.hour, f.minute, f.second, f.nanos);
  return buf;
}

TEST(TimeText, PrintCodes) {
  struct Case {
    Fields f;
    const char* format;
    const char* want;
  } const cases[] = {
      {F(2024, 3, 5), "%Y-%m-%d", "2024-03-05"},
      {F(2024, 3, 5), "%a %e.%b %Y", "Tue 05.Mar 2024"},
      {F(2024, 3, 5), "%A %B", "Tuesday March"},
      {F(2024, 1, 2), "%B|%b", "Januar|Jan"},
      {F(2024, 2, 2), "%B|%b", "Februar|Feb"},
      {F(2024, 13, 2), "%B|%b", "013|013"},
      {F(-5, 1, 1), "%Y|%y", "-0005|-05"},
      {F(12345, 1, 1), "%Y|%y", "12345|45"},
      {F(-1, 5, -1), "%Y-%m-%d|%a|%J", "*-05-*|*|-211"},
      {F(-1, -1, -1), "%J", "*"},
      {F(0, 0, 0, 13, 5, 9), "%I:%M:%S %p", "01:05:09 pm"},
      {F(0, 0, 0, 0, 30, 0), "%I:%M:%S %P", "12:30:00 AM"},
      {F(0, 0, 0, 12, 0, 0), "%I%p", "12pm"},
      {F(0, 0, 0, 11, 0, 0), "%I%p", "11am"},
      {F(0, 0, 0, 0, 0, 0), "%I", "00"},  // no am/pm: the hour as it is
      {F(0, 0, 0, 15, 0, 0), "%I", "03"},
      {F(0, 0, 0, -1, 0, 0), "%I %p", "* *"},
      {F(0, 0, 0, 0, 0, 5), "%f", "05"},
      {F(0, 0, 0, 0, 0, 5, 500000000), "%f", "05.500"},
      {F(0, 0, 0, 0, 0, 5, 250000), "%f", "05.000250"},
      {F(0, 0, 0, 0, 0, 5, 1), "%f|%N", "05.000000001|1"},
      {F(2024, 1, 1, 10, 0, 5, 500000000), "%X", "2024-01-01T10:00:05.500"},
      {F(2024, 1, 1, 10, 0, 5), "%X", "2024-01-01T10:00:05"},
      {F(1, 2, 3, 4, 5, 6), "%V", "423.04:05:06"},
      {F(2024, 1, 2, 3, 4, 5), "%D %T|%O",
       "2024-01-02 03:04:05|"
       "2024-01-02T03:04:05"},
      {F(1, 1, 1), "%%|%q|%", "%|q|"},
      // Suppression: only before the first code that prints.
      {F(0, 0, 0, 0, 5, 6), "%?(J.)%?(H:)%M:%S", "05:06"},
      {F(0, 0, 0, 4, 5, 6), "%?(J.)%?(H:)%M:%S", "04:05:06"},
      {F(0, 0, 2, 0, 5, 6), "%?(J.)%?(H:)%M:%S", "2.00:05:06"},
      {F(0, 0, 0, 0, 0, 0), "x%?Hy%?M", "xy"},
      {F(0, 0, 0, 0, 0, 0), "%?(Hx", "x"},  // no ')': nothing is removed
      {F(0, 0, 0, 1, 0, 0), "%?(H)%?M", "0100"},
      {F(0, 0, 0, 0, 0, 0), ")%?(y)", ")"},
      {F(0, 0, 0, 0, 0, 0, 0), "%?f|", "|"},
      {F(0, 0, 0, 0, 0, 0, 1), "%?f|", "00.000000001|"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Print(c.f, c.format), c.want) << c.format;
}

TEST(TimeText, ScanCodes) {
  struct Case {
    const char* text;
    const char* format;
    Fields want;
    bool ok;
  } const cases[] = {
      {"2024-03-05", "%Y-%m-%d", F(2024, 3, 5), true},
      {" 2024 / 3 / 5", "%Y-%m-%d", F(2024, 3, 5), true},
      {"*-05-*", "%Y-%m-%d", F(-1, 5, -1), true},
      {"99", "%y", F(1999, 0, 0), true},
      {"30", "%y", F(2030, 0, 0), true},
      {"Tue 05.Mar 2024", "%a %e.%b %Y", F(2024, 3, 5), true},
      {"Januar 1", "%B %d", F(0, 1, 1), true},
      {"Janxary 1", "%B %d", F(0, 1, 0), true},  // stops where the name ends
      {"012 7", "%B %d", F(0, 12, 7), true},
      {"01:05:09 pm", "%I:%M:%S %p", F(0, 0, 0, 13, 5, 9), true},
      {"12:30:00 AM", "%I:%M:%S %P", F(0, 0, 0, 0, 30, 0), true},
      {"*:30 pm", "%I:%M %p", F(0, 0, 0, -1, 30, 0), true},
      {"05.5", "%f", F(0, 0, 0, 0, 0, 5, 500000000), true},
      {"-1.25", "%f", F(0, 0, 0, 0, 0, -1, -250000000), true},
      {"423.04:05:06.5", "%V", F(1, 2, 3, 4, 5, 6, 500000000), true},
      {"2024-01-01T10:00:05.5", "%X", F(2024, 1, 1, 10, 0, 5, 500000000), true},
      {"2024-03", "%Y-%m-%d", F(2024, 3, 0), false},
      {"", "%Y", F(0, 0, 0), false},
      {"", "abc", F(0, 0, 0), true},
      {"2024x03", "%Y-%m", F(2024, 3, 0), true},  // any non-digit matches
      {"20245-03", "%Y4-%m", F(20245, 3, 0), true},
      {"1234", "%Y-%m", F(1234, 0, 0), false},
      {"-", "%Y", F(0, 0, 0), true},           // no digits: the field stays
      {"4294967297", "%d", F(0, 0, 1), true},  // wraps as 32 bits
      {"1%2", "%m%%%d", F(0, 1, 2), true},
      {"7", "%", F(0, 0, 0), true},
  };
  for (const Case& c : cases) {
    Fields f;
    const ScanResult r =
        obtimetext::Scan(f, c.text, std::strlen(c.text), c.format);
    EXPECT_EQ(Str(f), Str(c.want)) << c.text << " / " << c.format;
    EXPECT_EQ(r == ScanResult::kOk, c.ok) << c.text << " / " << c.format;
  }
}

// Every printed value reads back as itself (fractions are left out: they
// read back through a double, truncated).
TEST(TimeText, RoundTrip) {
  std::mt19937 rng(45);
  std::uniform_int_distribution<int32_t> pick(-1, 99999);
  for (int i = 0; i < 2000; ++i) {
    const Fields f = F(pick(rng) - 50000, pick(rng) % 13, pick(rng) % 32,
                       pick(rng) % 24, pick(rng) % 60, pick(rng) % 60);
    const char* format = i % 2 ? "%X" : "%a %e %B %Y %I:%M:%S %p";
    const std::string text = Print(f, format);
    Fields back;
    ASSERT_EQ(obtimetext::Scan(back, text.data(), text.size(), format),
              ScanResult::kOk);
    EXPECT_EQ(Str(back), Str(f)) << text;
  }
}

// Random texts and formats, each in a heap block of its exact size: the
// sanitizer build catches any read past either.
TEST(TimeText, ScanStaysInside) {
  static const char kPieces[] =
      "%?()*-+.:0123456789YymdeBbAaHIMSfNJpPDTOXV "
      "JanuarFebpmAM";
  std::mt19937 rng(7);
  std::uniform_int_distribution<size_t> piece(0, sizeof kPieces - 2);
  std::uniform_int_distribution<size_t> length(0, 24);
  for (int i = 0; i < 20000; ++i) {
    const size_t tn = length(rng);
    const size_t fn = length(rng);
    std::vector<char> text(tn);
    for (char& c : text) c = kPieces[piece(rng)];
    if (i % 7 == 0) text.assign(tn, '9');  // huge numbers
    std::unique_ptr<char[]> format(new char[fn + 1]);
    for (size_t k = 0; k < fn; ++k) format[k] = kPieces[piece(rng)];
    format[fn] = '\0';
    if (fn > 0 && i % 3 == 0) format[fn - 1] = '%';  // unterminated code
    std::unique_ptr<char[]> exact(new char[tn == 0 ? 1 : tn]);
    if (tn != 0) std::memcpy(exact.get(), text.data(), tn);
    Fields f;
    obtimetext::Scan(f, exact.get(), tn, format.get());
    std::string out;
    obtimetext::Print(f, format.get(), out);
  }
}

TEST(TimeText, Members) {
  ObString out("x");
  ObDate(2024, 3, 5).PrintToObString(out, nullptr);
  ObTime(13, 5, 9).PrintToObString(out, "|%I:%M:%S %p|");
  ObDateTime(ObDate(2024, 3, 5), ObTime(1, 2, 3)).PrintToObString(out, nullptr);
  ObDate(ObDate::NullValue()).PrintToObString(out, nullptr);
  EXPECT_STREQ(out.StrGet(),
               "x2024-03-05|01:05:09 pm|2024-03-05T01:02:03{NULL}");

  ObDate d(1, 1, 1);
  d.ScanFromObString("1999-12-31T23:59:58", nullptr);
  EXPECT_TRUE(d == ObDate(1999, 12, 31));
  ObTime t(1, 1, 1);
  t.ScanFromObString("2024-03-05", "%Y-%m-%d");  // a date's fields only
  EXPECT_TRUE(t == ObTime(0, 0, 0));
  ObDateTime v(ObDate(1, 1, 1), ObTime(1, 1, 1));
  v.ScanFromObString("2024-02-29T12:00:07", nullptr);
  EXPECT_TRUE(v.date == ObDate(2024, 2, 29) && v.time == ObTime(12, 0, 7));
  v.ScanFromObString("{NULL} and more", nullptr);
  EXPECT_TRUE(v.IsNullValue());
}

TEST(TimeText, NanoMembers) {
  ObString out;
  ObDateTimeN(2024, 1, 1, 10, 0, 5, 500000000).PrintToObString(out, nullptr);
  out << "|";
  ObDateTimeN(2024, 1, 1, 10, 0, 5, 0).PrintToObString(out, nullptr);
  out << "|";
  ObTimeSpan(1, 2, 3, 4, 5, 6, 0).PrintToObString(out, nullptr);
  out << "|";
  ObTimeSpan().PrintToObString(out, nullptr);
  EXPECT_STREQ(out.StrGet(),
               "2024-01-01T10:00:05.500|2024-01-01T10:00:05|423.04:05:06|"
               "{NULL}");

  ObTimeSpan span;
  span.ScanFromObString("423.04:05:06.25", nullptr);
  EXPECT_EQ(
      Str(F(span.date.year, span.date.month, span.date.day, span.time.hour,
            span.time.minute, span.time.second, span.nanoseconds)),
      Str(F(1, 2, 3, 4, 5, 6, 250000000)));
  ObDateTimeN v;
  v.ScanFromObString("*-05-*T*:*:*", nullptr);
  EXPECT_EQ(Str(F(v.date.year, v.date.month, v.date.day, v.time.hour,
                  v.time.minute, v.time.second, v.nanoseconds)),
            Str(F(-1, 5, -1, -1, -1, -1, -1)));
}

TEST(TimeText, Rows) {
  ObTypeMgr mgr(5);
  ObDate dates[2] = {ObDate(2024, 3, 5), ObDate(2024, 3, 6)};
  ObString out("old");
  mgr.PrintToObString(ObDATE_T, out, dates, nullptr, 2);
  EXPECT_STREQ(out.StrGet(), "oldTue 05.Mar 2024,Wed 06.Mar 2024");
  ObTime time(0, 30, 0);
  out = "old";
  mgr.PrintToObString(ObTIME_T, out, &time, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "12:30:00 am");
  ObDateTime v(ObDate(2024, 3, 5), ObTime(13, 0, 0));
  out = "";
  mgr.PrintToObString(ObDATIME_T, out, &v, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "Tue 05.Mar 2024 01:00:00 pm");

  ObString text("Wed 6.Mar 2024 02:03:04 PM");
  EXPECT_EQ(mgr.ScanFromObString(ObDATIME_T, &v, text, nullptr, 1), &v);
  EXPECT_TRUE(v.date == ObDate(2024, 3, 6) && v.time == ObTime(14, 3, 4));
  ObString cut("Wed 6.Mar 2024");
  EXPECT_EQ(mgr.ScanFromObString(ObDATIME_T, &v, cut, nullptr, 1), nullptr);
  EXPECT_EQ(mgr.ScanFromObString(ObDATE_T, nullptr, cut, nullptr, 1), nullptr);
  ObTimeSpan span(0, 0, 0, 4, 5, 6, 7);
  out = "";
  mgr.PrintToObString(ObTIMESPAN_T, out, &span, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "0.04:05:06.000000007");
  ObString spanText("2.01:00:00");
  EXPECT_EQ(mgr.ScanFromObString(ObTIMESPAN_T, &span, spanText, nullptr, 1),
            &span);
  EXPECT_TRUE(span.date.day == 2 && span.time.hour == 1 &&
              span.nanoseconds == 0);

  // The standard types: no null text; a time keeps its zone.
  d_Timestamp stamp(d_Date(2024, 3, 5),
                    d_Time::FromFields(1, 30, 13, 5, 9, 50));
  out = "";
  mgr.PrintToObString(D_TIMESTAMP_T, out, &stamp, "%Y-%m-%d %I:%M:%f %p", 1);
  EXPECT_STREQ(out.StrGet(), "2024-03-05 01:05:09.500 pm");
  ObString stampText("2023-12-31 23:59:58.25");
  EXPECT_EQ(mgr.ScanFromObString(D_TIMESTAMP_T, &stamp, stampText,
                                 "%Y-%m-%d %H:%M:%f", 1),
            &stamp);
  EXPECT_TRUE(stamp.date() == d_Date(2023, 12, 31));
  EXPECT_TRUE(stamp.time().hour() == 23 && stamp.time().second() == 58 &&
              stamp.time().hundredths() == 25 && stamp.time().tz_hour() == 1 &&
              stamp.time().tz_minute() == 30);
  d_Date date(2024, 3, 5);
  out = "";
  mgr.PrintToObString(D_DATE_T, out, &date, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "Tue Mar 05");
  ObString nullText("{NULL}");
  EXPECT_EQ(mgr.ScanFromObString(D_DATE_T, &date, nullText, "%Y", 1), &date);
}

}  // namespace

namespace {

// d_Interval: days, hours, minutes and seconds of its length, both ways.
TEST(IntervalText, PrintsAndScans) {
  ObTypeMgr mgr(5);
  const d_Interval i(1, 2, 3, 4.5f);
  ObString out;
  mgr.PrintToObString(D_INTERVAL_T, out, &i, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "01 days, 02 hours, 03 minutes, 04 seconds");
  d_Interval back;
  ObString text("01 days, 02 hours, 03 minutes, 04 seconds");
  mgr.ScanFromObString(D_INTERVAL_T, &back, text, nullptr, 1);
  EXPECT_EQ(back.value(), 93784.0f);
}

}  // namespace
