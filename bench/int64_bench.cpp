// ObInt64 arithmetic against native 64-bit arithmetic, and the identity key
// comparators against memcmp of the same bytes. Each benchmark cycles
// through kPairs operands so that a branch predictor cannot learn a single
// outcome; items are operations (arithmetic) or elements (comparators).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "obclassid.h"
#include "obint64.h"
#include "obobjid.h"
#include "obref.h"
#include "obseal.h"

namespace {

constexpr size_t kPairs = 1024;  // power of two: the index wraps with a mask
constexpr uint64_t kSeed = 0x5eed'1234'abcdULL;

// Operands: full-range values, divisors that are never 0 and never -1
// (native division of the most negative value by -1 is undefined), and
// shift counts below 64 (native shifts beyond are undefined).
struct Operands {
  std::vector<uint64_t> a, b;
  std::vector<uint32_t> shift;
  Operands() : a(kPairs), b(kPairs), shift(kPairs) {
    std::mt19937_64 rng(kSeed);
    for (size_t i = 0; i < kPairs; ++i) {
      a[i] = rng();
      do {
        b[i] = rng() >> (rng() % 62);
        if (rng() & 1) b[i] = ~b[i] + 1;
      } while (b[i] == 0 || b[i] == UINT64_MAX);
      shift[i] = static_cast<uint32_t>(rng() % 64);
    }
  }
};

const Operands& Ops() {
  static const Operands ops;
  return ops;
}

int64_t Signed(uint64_t u) {
  int64_t v;
  std::memcpy(&v, &u, sizeof v);
  return v;
}

enum class Op { kAdd, kMul, kDiv, kMod, kShl, kShr };

// One operation per element over the whole operand set per iteration.
template <Op op>
void BM_ObInt64(benchmark::State& state) {
  const Operands& o = Ops();
  std::vector<ObInt64> a(kPairs), b(kPairs), out(kPairs);
  for (size_t i = 0; i < kPairs; ++i) {
    a[i] = ObInt64(o.a[i]);
    b[i] = ObInt64(o.b[i]);
  }
  for (auto _ : state) {
    for (size_t i = 0; i < kPairs; ++i) {
      if constexpr (op == Op::kAdd) out[i] = a[i] + b[i];
      if constexpr (op == Op::kMul) out[i] = a[i] * b[i];
      if constexpr (op == Op::kDiv) out[i] = a[i] / b[i];
      if constexpr (op == Op::kMod) out[i] = a[i] % b[i];
      if constexpr (op == Op::kShl) out[i] = a[i] << o.shift[i];
      if constexpr (op == Op::kShr) out[i] = a[i] >> o.shift[i];
    }
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kPairs);
}

// Native: wrapping operations on the unsigned bits, division and the
// arithmetic right shift on the signed value.
template <Op op>
void BM_Native(benchmark::State& state) {
  const Operands& o = Ops();
  std::vector<int64_t> a(kPairs), b(kPairs), out(kPairs);
  for (size_t i = 0; i < kPairs; ++i) {
    a[i] = Signed(o.a[i]);
    b[i] = Signed(o.b[i]);
  }
  for (auto _ : state) {
    for (size_t i = 0; i < kPairs; ++i) {
      const uint64_t ua = static_cast<uint64_t>(a[i]);
      const uint64_t ub = static_cast<uint64_t>(b[i]);
      if constexpr (op == Op::kAdd) out[i] = Signed(ua + ub);
      if constexpr (op == Op::kMul) out[i] = Signed(ua * ub);
      if constexpr (op == Op::kDiv) out[i] = a[i] / b[i];
      if constexpr (op == Op::kMod) out[i] = a[i] % b[i];
      if constexpr (op == Op::kShl) out[i] = Signed(ua << o.shift[i]);
      if constexpr (op == Op::kShr) out[i] = a[i] >> o.shift[i];
    }
    benchmark::DoNotOptimize(out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * kPairs);
}

#define QS_ARITH(op)                      \
  BENCHMARK_TEMPLATE(BM_ObInt64, Op::op); \
  BENCHMARK_TEMPLATE(BM_Native, Op::op)
QS_ARITH(kAdd);
QS_ARITH(kMul);
QS_ARITH(kDiv);
QS_ARITH(kMod);
QS_ARITH(kShl);
QS_ARITH(kShr);

// ---- Identity comparators.

// kPairs operand pairs of n elements, back to back, in memory form and in
// stored format 1. Pairs agree on the first n-1 elements so that the
// comparator visits them all; the last elements differ in the fields the
// comparator reads.
template <class T>
struct Keys {
  uint32_t n;
  std::vector<T> a, b;
  std::vector<uint8_t> stored_a, stored_b;
  uint32_t stored_width;

  Keys(uint32_t count, T (*make)(std::mt19937_64&)) : n(count) {
    std::mt19937_64 rng(kSeed);
    a.resize(kPairs * n);
    b.resize(kPairs * n);
    for (size_t i = 0; i < a.size(); ++i) {
      a[i] = b[i] = make(rng);
      if (i % n == n - 1) {
        while ((a[i] != b[i]) == 0) b[i] = make(rng);
      }
    }
    stored_width = T::SizeGet(nullptr, 8, 1, 1);
    stored_a.resize(a.size() * stored_width);
    stored_b.resize(b.size() * stored_width);
    T::Store(stored_a.data(), a.data(), 1, static_cast<uint32_t>(a.size()));
    T::Store(stored_b.data(), b.data(), 1, static_cast<uint32_t>(b.size()));
  }
};

ObObjId MakeObjId(std::mt19937_64& rng) {
  const uint64_t r = rng();
  return ObObjId(static_cast<uint32_t>(rng()), static_cast<uint32_t>(r),
                 static_cast<uint16_t>(r >> 32));
}
ObClassId MakeClassId(std::mt19937_64& rng) {
  const uint64_t r = rng();
  return ObClassId(static_cast<uint16_t>(r), static_cast<uint16_t>(r >> 16));
}
ObRef MakeRef(std::mt19937_64& rng) {
  const uint64_t r = rng();
  ObRef ref;
  ref = MakeObjId(rng);
  ref = static_cast<uint16_t>(r);
  ref = MakeClassId(rng);
  return ref;
}
ObSeal MakeSeal(std::mt19937_64& rng) {
  const uint64_t r = rng();
  return ObSeal(static_cast<uint16_t>(r), static_cast<uint16_t>(r >> 16),
                static_cast<uint16_t>(r >> 32));
}

template <class T>
void BM_Identity(benchmark::State& state, ObKeyCompareFn fn,
                 std::shared_ptr<const Keys<T>> keys, bool stored) {
  const Keys<T>& k = *keys;
  const uint32_t n = k.n;
  const uint32_t bytes = n * (stored ? k.stored_width : sizeof(T));
  const uint8_t flags = stored ? 1 : 8;
  const uint8_t* a =
      stored ? k.stored_a.data() : reinterpret_cast<const uint8_t*>(k.a.data());
  const uint8_t* b =
      stored ? k.stored_b.data() : reinterpret_cast<const uint8_t*>(k.b.data());
  // The index layer reaches comparators through an ObKeyCompareFn; hiding
  // the pointer's value keeps the call indirect here too.
  benchmark::DoNotOptimize(fn);
  for (size_t i = 0; i < kPairs; ++i) {
    int32_t status = -1;
    if (fn(flags, bytes, a + i * bytes, bytes, b + i * bytes, 0, n, status) ==
            0 ||
        status != 0) {
      state.SkipWithError("pairs must differ in their last element");
      return;
    }
  }
  size_t i = 0;
  for (auto _ : state) {
    int32_t status;
    int32_t r =
        fn(flags, bytes, a + i * bytes, bytes, b + i * bytes, 0, n, status);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations() * n);
}

// A speed floor only: memcmp does not order these keys as the comparators do.
template <class T>
void BM_IdentityMemcmp(benchmark::State& state,
                       std::shared_ptr<const Keys<T>> keys, bool stored) {
  const Keys<T>& k = *keys;
  const size_t bytes = k.n * (stored ? k.stored_width : sizeof(T));
  const uint8_t* a =
      stored ? k.stored_a.data() : reinterpret_cast<const uint8_t*>(k.a.data());
  const uint8_t* b =
      stored ? k.stored_b.data() : reinterpret_cast<const uint8_t*>(k.b.data());
  size_t i = 0;
  for (auto _ : state) {
    int r = std::memcmp(a + i * bytes, b + i * bytes, bytes);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations() * k.n);
}

template <class T>
void RegisterIdentity(const char* type, T (*make)(std::mt19937_64&)) {
  for (uint32_t n : {1u, 64u}) {
    auto keys = std::make_shared<const Keys<T>>(n, make);
    for (bool stored : {false, true}) {
      const std::string pre =
          std::string("BM_") + type + (stored ? "_Stored" : "_Memory");
      benchmark::RegisterBenchmark(pre.c_str(), BM_Identity<T>, T::Compare,
                                   keys, stored)
          ->Arg(n);
      benchmark::RegisterBenchmark((pre + "_Memcmp").c_str(),
                                   BM_IdentityMemcmp<T>, keys, stored)
          ->Arg(n);
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  RegisterIdentity<ObObjId>("ObObjId", MakeObjId);
  RegisterIdentity<ObClassId>("ObClassId", MakeClassId);
  RegisterIdentity<ObRef>("ObRef", MakeRef);
  RegisterIdentity<ObSeal>("ObSeal", MakeSeal);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
