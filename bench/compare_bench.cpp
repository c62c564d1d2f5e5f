// Fixed-width key comparators against native floors: a std::less
// lexicographic loop over the memory form and memcmp over the big-endian
// stored form. Each benchmark cycles through kPairs pairs so that a branch
// predictor cannot learn a single outcome; items are elements, so rates are
// per element and comparable across array lengths.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "obkeycmp.h"

namespace {

constexpr size_t kPairs = 256;  // power of two: the index wraps with a mask
constexpr uint64_t kSeed = 0x5eed'1234'abcdULL;
constexpr uint32_t kLengths[] = {1, 64};

template <size_t W>
struct BitsOf;
template <>
struct BitsOf<2> {
  using type = uint16_t;
};
template <>
struct BitsOf<4> {
  using type = uint32_t;
};
template <>
struct BitsOf<8> {
  using type = uint64_t;
};

// Values come from raw mt19937_64 output, whose sequence the standard fixes,
// so every platform benchmarks the same keys.
template <class T>
T RandomValue(std::mt19937_64& rng) {
  if constexpr (std::is_floating_point_v<T>) {
    return static_cast<T>((rng() >> 11) * 0x1.0p-53 * 2e6 - 1e6);
  } else {
    return static_cast<T>(rng());
  }
}

template <class T>
void StoreBig(T v, uint8_t* out) {
  typename BitsOf<sizeof(T)>::type u;
  std::memcpy(&u, &v, sizeof u);
  for (size_t i = sizeof u; i-- > 0; u >>= 8) out[i] = static_cast<uint8_t>(u);
}

// kPairs operand pairs of n elements, back to back, in memory form and in
// stored format 2. Pairs agree on the first n-1 elements so that a
// comparator visits them all; the last element differs unless all_equal.
template <class T>
struct Keys {
  uint32_t n;
  std::vector<T> a, b;
  std::vector<uint8_t> big_a, big_b;

  Keys(uint32_t count, bool all_equal) : n(count) {
    std::mt19937_64 rng(kSeed);
    a.resize(kPairs * n);
    b.resize(kPairs * n);
    for (size_t i = 0; i < a.size(); ++i) {
      a[i] = b[i] = RandomValue<T>(rng);
      if (!all_equal && i % n == n - 1) {
        while (b[i] == a[i]) b[i] = RandomValue<T>(rng);
      }
    }
    big_a.resize(a.size() * sizeof(T));
    big_b.resize(b.size() * sizeof(T));
    for (size_t i = 0; i < a.size(); ++i) {
      StoreBig(a[i], &big_a[i * sizeof(T)]);
      StoreBig(b[i], &big_b[i * sizeof(T)]);
    }
  }
};

// Three-way: the first differing element decides, as in the comparators.
template <class T>
int32_t LessLoop(const T* a, const T* b, uint32_t n) {
  const std::less<T> lt;
  for (uint32_t i = 0; i < n; ++i) {
    if (lt(a[i], b[i])) return -1;
    if (lt(b[i], a[i])) return 1;
  }
  return 0;
}

int32_t Sign(int32_t r) { return (r > 0) - (r < 0); }

template <class T>
void BM_Comparator(benchmark::State& state, ObKeyCompareFn fn,
                   std::shared_ptr<const Keys<T>> keys, bool big) {
  const Keys<T>& k = *keys;
  const uint32_t n = k.n;
  const uint32_t bytes = n * sizeof(T);
  const uint8_t flags = big ? kObFormatBig : kObFormatMemory;
  const uint32_t len = big ? bytes : 0;
  const uint8_t* a =
      big ? k.big_a.data() : reinterpret_cast<const uint8_t*>(k.a.data());
  const uint8_t* b =
      big ? k.big_b.data() : reinterpret_cast<const uint8_t*>(k.b.data());
  // A wrong encoding would measure an early exit instead of a full visit.
  for (size_t i = 0; i < kPairs; ++i) {
    int32_t status = -1;
    int32_t r = fn(flags, len, a + i * bytes, len, b + i * bytes, 0, n, status);
    if (status != 0 || Sign(r) != LessLoop(&k.a[i * n], &k.b[i * n], n)) {
      state.SkipWithError("comparator disagrees with std::less");
      return;
    }
  }
  // The index layer reaches comparators through an ObKeyCompareFn; hiding
  // the pointer's value keeps the call indirect here too.
  benchmark::DoNotOptimize(fn);
  size_t i = 0;
  for (auto _ : state) {
    int32_t status;
    int32_t r = fn(flags, len, a + i * bytes, len, b + i * bytes, 0, n, status);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations() * n);
}

template <class T>
void BM_StdLess(benchmark::State& state, std::shared_ptr<const Keys<T>> keys) {
  const Keys<T>& k = *keys;
  const uint32_t n = k.n;
  size_t i = 0;
  for (auto _ : state) {
    int32_t r = LessLoop(&k.a[i * n], &k.b[i * n], n);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations() * n);
}

// A speed floor only: memcmp misorders negative and floating values.
template <class T>
void BM_Memcmp(benchmark::State& state, std::shared_ptr<const Keys<T>> keys) {
  const Keys<T>& k = *keys;
  const size_t bytes = k.n * sizeof(T);
  size_t i = 0;
  for (auto _ : state) {
    int r = std::memcmp(&k.big_a[i * bytes], &k.big_b[i * bytes], bytes);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations() * k.n);
}

// Registration order is run order: each comparator directly follows or
// precedes its floor for the same keys.
template <class T>
void RegisterType(const char* type, ObKeyCompareFn fn) {
  for (bool all_equal : {false, true}) {
    for (uint32_t n : kLengths) {
      auto keys = std::make_shared<const Keys<T>>(n, all_equal);
      const std::string pre = std::string("BM_") + type + "_";
      const std::string post = all_equal ? "_AllEq" : "";
      benchmark::RegisterBenchmark((pre + "Memory" + post).c_str(),
                                   BM_Comparator<T>, fn, keys, false)
          ->Arg(n);
      benchmark::RegisterBenchmark((pre + "StdLess" + post).c_str(),
                                   BM_StdLess<T>, keys)
          ->Arg(n);
      benchmark::RegisterBenchmark((pre + "Big" + post).c_str(),
                                   BM_Comparator<T>, fn, keys, true)
          ->Arg(n);
      benchmark::RegisterBenchmark((pre + "Memcmp" + post).c_str(),
                                   BM_Memcmp<T>, keys)
          ->Arg(n);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterType<int32_t>("Int", IntCompare);
  RegisterType<int32_t>("Long", LongCompare);
  RegisterType<double>("Double", DoubleCompare);
  RegisterType<int64_t>("O_8B", O_8BCompare);
  RegisterType<int16_t>("Short", ShortCompare);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
