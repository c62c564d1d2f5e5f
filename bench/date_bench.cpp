// Day numbers of ObDate (dayabs, dateabs) against the public days-from-civil
// and civil-from-days algorithms on the same dates. Each benchmark cycles
// through kDates dates from -4800-03-01 to 32767-12-31; items are
// conversions. Before timing, both sides are checked to agree.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "obdate.h"

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

BENCHMARK(BM_DayAbs);
BENCHMARK(BM_DaysFromCivil);
BENCHMARK(BM_DateAbs);
BENCHMARK(BM_CivilFromDays);

}  // namespace

BENCHMARK_MAIN();
