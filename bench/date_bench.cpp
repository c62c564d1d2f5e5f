// Day numbers of ObDate (dayabs, dateabs) against the public days-from-civil
// and civil-from-days algorithms on the same dates. Each benchmark cycles
// through kDates dates from -4800-03-01 to 32767-12-31; items are
// conversions. Before timing, both sides are checked to agree.
//
// Text forms: ObDateTime printed with "%Y-%m-%dT%H:%M:%S" into an ObString
// against strftime into a buffer, and scanned back against strptime, over
// kDates date-times from 1900 to 2099; items are values. The texts of both
// sides are checked to agree first.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "obdate.h"
#include "obdatetime.h"
#include "obstring.h"

namespace {

constexpr size_t kDates = 1024;  // power of two: the index wraps with a mask
constexpr int32_t kEpochDay = 2440588;  // day number of 1970-01-01

struct Civil {
  int32_t y;
  uint32_t m, d;
};

// Days since 1970-01-01 of a proleptic Gregorian date (floor division by
// eras of 400 years).
int32_t DaysFromCivil(int32_t y, uint32_t m, uint32_t d) {
  y -= m <= 2;
  const int32_t era = (y >= 0 ? y : y - 399) / 400;
  const uint32_t yoe = static_cast<uint32_t>(y - era * 400);  // [0, 399]
  const uint32_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
  const uint32_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;  // [0, 146096]
  return era * 146097 + static_cast<int32_t>(doe) - 719468;
}

Civil CivilFromDays(int32_t z) {
  z += 719468;
  const int32_t era = (z >= 0 ? z : z - 146096) / 146097;
  const uint32_t doe = static_cast<uint32_t>(z - era * 146097);
  const uint32_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const uint32_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const uint32_t mp = (5 * doy + 2) / 153;
  const uint32_t d = doy - (153 * mp + 2) / 5 + 1;
  const uint32_t m = mp < 10 ? mp + 3 : mp - 9;
  return {static_cast<int32_t>(yoe) + era * 400 + (m <= 2), m, d};
}

struct Dates {
  std::vector<int32_t> dayNumbers;
  std::vector<ObDate> dates;
  Dates() {
    std::mt19937 rng(6);
    std::uniform_int_distribution<int32_t> pick(-32044, 13689325);
    for (size_t i = 0; i < kDates; ++i) {
      const int32_t j = pick(rng);
      const ObDate date(j);
      const Civil c = CivilFromDays(j - kEpochDay);
      if (date.dayabs() != j || DaysFromCivil(c.y, c.m, c.d) != j - kEpochDay ||
          c.y != date.year || c.m != uint32_t(date.month) ||
          c.d != uint32_t(date.day)) {
        std::fprintf(stderr, "day number %d: the algorithms disagree\n", j);
        std::abort();
      }
      dayNumbers.push_back(j);
      dates.push_back(date);
    }
  }
};
const Dates& TheDates() {
  static const Dates dates;
  return dates;
}

void BM_DayAbs(benchmark::State& state) {
  const Dates& t = TheDates();
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(t.dates[i++ & (kDates - 1)].dayabs());
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_DaysFromCivil(benchmark::State& state) {
  const Dates& t = TheDates();
  size_t i = 0;
  for (auto _ : state) {
    const ObDate& d = t.dates[i++ & (kDates - 1)];
    benchmark::DoNotOptimize(
        DaysFromCivil(d.year, uint32_t(d.month), uint32_t(d.day)) + kEpochDay);
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_DateAbs(benchmark::State& state) {
  const Dates& t = TheDates();
  ObDate d(0, 0, 0);
  size_t i = 0;
  for (auto _ : state) {
    d.dateabs(t.dayNumbers[i++ & (kDates - 1)]);
    benchmark::DoNotOptimize(d);
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_CivilFromDays(benchmark::State& state) {
  const Dates& t = TheDates();
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        CivilFromDays(t.dayNumbers[i++ & (kDates - 1)] - kEpochDay));
  }
  state.SetItemsProcessed(state.iterations());
}

constexpr char kIsoFormat[] = "%Y-%m-%dT%H:%M:%S";

struct DateTimes {
  std::vector<ObDateTime> values;
  std::vector<std::tm> tms;
  std::vector<std::string> texts;
  DateTimes() {
    std::mt19937 rng(12);
    std::uniform_int_distribution<int32_t> day(2415021, 2488069);
    std::uniform_int_distribution<int32_t> second(0, 86399);
    for (size_t i = 0; i < kDates; ++i) {
      const ObDateTime v(ObDate(day(rng)), ObTime(second(rng)));
      std::tm tm{};
      tm.tm_year = v.date.year - 1900;
      tm.tm_mon = v.date.month - 1;
      tm.tm_mday = v.date.day;
      tm.tm_hour = v.time.hour;
      tm.tm_min = v.time.minute;
      tm.tm_sec = v.time.second;
      char buf[64];
      std::strftime(buf, sizeof buf, kIsoFormat, &tm);
      ObString ours;
      v.PrintToObString(ours, kIsoFormat);
      if (std::strcmp(buf, ours.StrGet()) != 0) {
        std::fprintf(stderr, "%s printed as %s\n", buf, ours.StrGet());
        std::abort();
      }
      values.push_back(v);
      tms.push_back(tm);
      texts.push_back(buf);
    }
  }
};
const DateTimes& TheDateTimes() {
  static const DateTimes t;
  return t;
}

void BM_PrintDateTime(benchmark::State& state) {
  const DateTimes& t = TheDateTimes();
  size_t i = 0;
  for (auto _ : state) {
    ObString out;
    t.values[i++ & (kDates - 1)].PrintToObString(out, kIsoFormat);
    benchmark::DoNotOptimize(out.StrGet());
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_Strftime(benchmark::State& state) {
  const DateTimes& t = TheDateTimes();
  size_t i = 0;
  char buf[64];
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        std::strftime(buf, sizeof buf, kIsoFormat, &t.tms[i++ & (kDates - 1)]));
  }
  state.SetItemsProcessed(state.iterations());
}

// The texts are made once: the loops time the scan alone.
void BM_ScanDateTime(benchmark::State& state) {
  const DateTimes& t = TheDateTimes();
  std::vector<ObString> texts;
  for (const std::string& s : t.texts) texts.emplace_back(s.c_str());
  ObDateTime v(ObDate(0, 0, 0), ObTime(0, 0, 0));
  size_t i = 0;
  for (auto _ : state) {
    v.ScanFromObString(texts[i++ & (kDates - 1)], kIsoFormat);
    benchmark::DoNotOptimize(v);
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_Strptime(benchmark::State& state) {
  const DateTimes& t = TheDateTimes();
  std::tm tm{};
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(
        strptime(t.texts[i++ & (kDates - 1)].c_str(), kIsoFormat, &tm));
  }
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_DayAbs);
BENCHMARK(BM_DaysFromCivil);
BENCHMARK(BM_DateAbs);
BENCHMARK(BM_CivilFromDays);
BENCHMARK(BM_PrintDateTime);
BENCHMARK(BM_Strftime);
BENCHMARK(BM_ScanDateTime);
BENCHMARK(BM_Strptime);

}  // namespace

BENCHMARK_MAIN();
