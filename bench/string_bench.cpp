// Text comparison and UTF-8 conversion against native and ICU baselines on
// real words: ObStrCmp against strcmp (a floor that knows no collation) and
// a root collator at tertiary strength, and the multibyte conversions
// against ICU's UTF-8 ones (rates count UTF-8 bytes both ways). A summary
// after the table gives the time ratios of each pair, from medians when
// repetitions are run.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "obmbconv.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obstrkey.h"
#include "obtypemgr.h"

#if QS_BENCH_ICU
#include <unicode/ucol.h>
#include <unicode/ustring.h>
#endif

namespace {

constexpr size_t kWords = 10000;
constexpr size_t kPairs = 4096;  // power of two: the index wraps with a mask
constexpr uint64_t kSeed = 0x5eed'1234'abcdULL;
constexpr uint8_t kLanguage = 1;
constexpr uint16_t kDefaultOp = CmpNoWildcards;
constexpr uint16_t kWildcardOp = 0;
constexpr size_t kPatternTail = 3;  // characters after the leading '*'
// ObMBS2ObString stops at 32768 bytes; a code set 253 text holds at most
// 32765 characters.
constexpr int64_t kChunkBytes[] = {256, 4096, 30000};

const char* const kEnglishLists[] = {"/usr/share/dict/american-english",
                                     "/usr/share/dict/words"};
const char* const kGermanList = "/usr/share/dict/ngerman";
const char* const kNoWords =
    "no word list: install wamerican (and wngerman) or run bench/run";

// One word in every form a contender reads.
struct Word {
  std::string utf8;
  std::string cs1;       // code set 1; characters it lacks read as '?'
  std::u16string cs253;  // through ObMBS2ObString
#if QS_BENCH_ICU
  std::u16string icu;  // through u_strFromUTF8
#endif
};

std::vector<std::string> ReadLines(const char* path) {
  std::vector<std::string> lines;
  std::ifstream in(path);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

// Raw mt19937_64 output, whose sequence the standard fixes (unlike the
// distributions and std::shuffle), so every platform draws the same words.
size_t Draw(std::mt19937_64& rng, size_t n) {
  return static_cast<size_t>(rng() % n);
}

// `count` distinct lines by a partial Fisher-Yates shuffle.
void Sample(std::vector<std::string> lines, size_t count, std::mt19937_64& rng,
            std::vector<std::string>& out) {
  if (count > lines.size()) count = lines.size();
  for (size_t i = 0; i < count; ++i) {
    std::swap(lines[i], lines[i + Draw(rng, lines.size() - i)]);
    out.push_back(std::move(lines[i]));
  }
}

// The sample, in byte order so that neighbours share prefixes. Equal
// shares of the two lists when both are present: the German one, three
// times longer, would otherwise crowd the English words out.
std::vector<Word> LoadWords() {
  const char* english = nullptr;
  for (const char* path : kEnglishLists) {
    if (std::filesystem::exists(path)) {
      english = path;
      break;
    }
  }
  // "words" may be a link to the German list.
  std::error_code ec;
  const bool german = std::filesystem::exists(kGermanList) &&
                      (english == nullptr ||
                       !std::filesystem::equivalent(english, kGermanList, ec));
  std::mt19937_64 rng(kSeed);
  std::vector<std::string> utf8;
  const size_t share = english != nullptr && german ? kWords / 2 : kWords;
  if (english != nullptr) Sample(ReadLines(english), share, rng, utf8);
  if (german) Sample(ReadLines(kGermanList), kWords - utf8.size(), rng, utf8);
  std::sort(utf8.begin(), utf8.end());

  std::vector<Word> words;
  for (std::string& text : utf8) {
    ObString s;
    if (ObMBS2ObString(text.data(), s, static_cast<int32_t>(text.size())) < 0)
      continue;
    Word w;
    w.cs253.assign(reinterpret_cast<const char16_t*>(s.StrGet()), s.Len());
    s.MapToCodeSet(1);
    w.cs1 = s.StrGet();
#if QS_BENCH_ICU
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    w.icu.resize(text.size());
    u_strFromUTF8(w.icu.data(), static_cast<int32_t>(w.icu.size()), &units,
                  text.data(), static_cast<int32_t>(text.size()), &status);
    if (U_FAILURE(status)) continue;
    w.icu.resize(static_cast<size_t>(units));
#endif
    w.utf8 = std::move(text);
    words.push_back(std::move(w));
  }
  return words;
}

const std::vector<Word>& Words() {
  static const std::vector<Word> words = LoadWords();
  return words;
}

enum class PairKind { kNeighbour, kRandom };

// Index pairs into Words(); neighbours come in random order so that the
// sign of a result cannot be predicted.
std::vector<std::pair<uint32_t, uint32_t>> MakePairs(PairKind kind) {
  const size_t n = Words().size();
  std::mt19937_64 rng(kSeed + static_cast<uint64_t>(kind));
  std::vector<std::pair<uint32_t, uint32_t>> pairs(kPairs);
  for (auto& p : pairs) {
    if (kind == PairKind::kNeighbour) {
      const auto i = static_cast<uint32_t>(Draw(rng, n - 1));
      p = rng() & 1 ? std::make_pair(i, i + 1) : std::make_pair(i + 1, i);
    } else {
      p = {static_cast<uint32_t>(Draw(rng, n)),
           static_cast<uint32_t>(Draw(rng, n))};
    }
  }
  return pairs;
}

// Operands as the contender takes them, one pair per benchmark iteration.
template <class Ch>
using Operands = std::vector<std::pair<const Ch*, const Ch*>>;

template <class Ch, class Get>
Operands<Ch> Gather(PairKind kind, Get get) {
  Operands<Ch> out;
  for (const auto& p : MakePairs(kind))
    out.emplace_back(get(Words()[p.first]), get(Words()[p.second]));
  return out;
}

int Sign(int32_t r) { return (r > 0) - (r < 0); }

int32_t CallObStrCmp(uint8_t codeSet, const char* a, const char* b,
                     uint16_t op) {
  return ObStrCmp(codeSet, kLanguage, a, codeSet, kLanguage, b, op, -1, 1,
                  nullptr);
}

const char* Cs1(const Word& w) { return w.cs1.c_str(); }
const char* Cs253(const Word& w) {
  return reinterpret_cast<const char*>(w.cs253.c_str());
}

bool EnoughWords(benchmark::State& state) {
  if (Words().size() >= 2) return true;
  state.SkipWithError(kNoWords);
  return false;
}

void BM_ObStrCmp(benchmark::State& state, PairKind kind, uint8_t codeSet) {
  if (!EnoughWords(state)) return;
  const auto ops = Gather<char>(kind, codeSet == 1 ? Cs1 : Cs253);
  // An order that is not antisymmetric would be measuring a broken walk.
  for (const auto& [a, b] : ops) {
    if (CallObStrCmp(codeSet, a, a, kDefaultOp) != 0 ||
        Sign(CallObStrCmp(codeSet, a, b, kDefaultOp)) !=
            -Sign(CallObStrCmp(codeSet, b, a, kDefaultOp))) {
      state.SkipWithError("ObStrCmp is not an order on these words");
      return;
    }
  }
  size_t i = 0;
  for (auto _ : state) {
    int32_t r = CallObStrCmp(codeSet, ops[i].first, ops[i].second, kDefaultOp);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_Strcmp(benchmark::State& state, PairKind kind) {
  if (!EnoughWords(state)) return;
  const auto ops =
      Gather<char>(kind, [](const Word& w) { return w.utf8.c_str(); });
  size_t i = 0;
  for (auto _ : state) {
    int r = std::strcmp(ops[i].first, ops[i].second);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
}

#if QS_BENCH_ICU
struct CollatorCloser {
  void operator()(UCollator* c) const { ucol_close(c); }
};

// Root collation at tertiary strength: the levels ObStrCmp's default
// operator also compares.
UCollator* RootCollator() {
  static const std::unique_ptr<UCollator, CollatorCloser> collator = [] {
    UErrorCode status = U_ZERO_ERROR;
    UCollator* c = ucol_open("", &status);
    if (U_FAILURE(status)) return std::unique_ptr<UCollator, CollatorCloser>();
    ucol_setStrength(c, UCOL_TERTIARY);
    return std::unique_ptr<UCollator, CollatorCloser>(c);
  }();
  return collator.get();
}

void BM_IcuStrcoll(benchmark::State& state, PairKind kind) {
  if (!EnoughWords(state)) return;
  UCollator* collator = RootCollator();
  if (collator == nullptr) {
    state.SkipWithError("ucol_open failed");
    return;
  }
  const auto ops =
      Gather<UChar>(kind, [](const Word& w) { return w.icu.c_str(); });
  // How often the two collations agree: a check that both did real work.
  size_t agree = 0;
  for (const auto& [a, b] : ops) {
    agree += Sign(ucol_strcoll(collator, a, -1, b, -1)) ==
             Sign(CallObStrCmp(253, reinterpret_cast<const char*>(a),
                               reinterpret_cast<const char*>(b), kDefaultOp));
  }
  size_t i = 0;
  for (auto _ : state) {
    UCollationResult r =
        ucol_strcoll(collator, ops[i].first, -1, ops[i].second, -1);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["agree_ob"] = static_cast<double>(agree) / ops.size();
}
#endif

// Stored forms of the words: current records (format 1), collation-order
// keys built by Translate (format 0x81) and ICU sort keys.
struct StoredWord {
  std::vector<uint8_t> record, key, icuKey;
};

const std::vector<StoredWord>& StoredWords() {
  static const std::vector<StoredWord> stored = [] {
    std::vector<StoredWord> out;
    ObTypeMgr mgr(5);
    for (const Word& w : Words()) {
      ObString s(w.cs1.c_str());
      s.SetLanguage(kLanguage);
      StoredWord sw;
      sw.record.resize(StringSizeGet(&s, 8, 1, 1));
      StringStore(sw.record.data(), &s, 1, 1);
      sw.key.resize(256);
      sw.key.resize(
          mgr.Translate(ObSTRING_T, sw.key.data(), 0x81, 256, &s, 8, 0, 1));
#if QS_BENCH_ICU
      if (UCollator* c = RootCollator()) {
        sw.icuKey.resize(256);
        sw.icuKey.resize(static_cast<size_t>(
            ucol_getSortKey(c, w.icu.c_str(), -1, sw.icuKey.data(), 256)));
      }
#endif
      out.push_back(std::move(sw));
    }
    return out;
  }();
  return stored;
}

enum class StoredForm { kRecord, kKey, kIcuKey };

const std::vector<uint8_t>& FormOf(const StoredWord& w, StoredForm form) {
  return form == StoredForm::kRecord ? w.record
         : form == StoredForm::kKey  ? w.key
                                     : w.icuKey;
}

// StringCompare as the index layer calls it, on records or keys.
void BM_StringCompare(benchmark::State& state, PairKind kind, StoredForm form) {
  if (!EnoughWords(state)) return;
  const auto pairs = MakePairs(kind);
  const auto& stored = StoredWords();
  const uint8_t flags = form == StoredForm::kKey ? 0x81 : 1;
  size_t i = 0;
  for (auto _ : state) {
    const auto& a = FormOf(stored[pairs[i].first], form);
    const auto& b = FormOf(stored[pairs[i].second], form);
    int32_t status = 0;
    int32_t r = StringCompare(flags, static_cast<uint32_t>(a.size()), a.data(),
                              static_cast<uint32_t>(b.size()), b.data(),
                              kDefaultOp, 1, status);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
}

// The floor: memcmp over the same bytes.
void BM_MemcmpStored(benchmark::State& state, PairKind kind, StoredForm form) {
  if (!EnoughWords(state)) return;
  const auto pairs = MakePairs(kind);
  const auto& stored = StoredWords();
  size_t i = 0;
  for (auto _ : state) {
    const auto& a = FormOf(stored[pairs[i].first], form);
    const auto& b = FormOf(stored[pairs[i].second], form);
    int r = std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
}

// The text matched against "*" and the last characters of either the same
// word (a match found after trying every start) or another one (a miss
// after trying every start).
template <class Str>
std::vector<std::pair<Str, Str>> WildcardPairs(Str Word::*form) {
  const size_t n = Words().size();
  std::mt19937_64 rng(kSeed + 7);
  std::vector<std::pair<Str, Str>> pairs(kPairs);
  for (size_t k = 0; k < kPairs; ++k) {
    const Str& text = Words()[Draw(rng, n)].*form;
    const Str& from = k % 2 == 0 ? text : Words()[Draw(rng, n)].*form;
    const size_t tail = from.size() < kPatternTail ? from.size() : kPatternTail;
    Str pattern(1, '*');
    pattern += from.substr(from.size() - tail);
    pairs[k] = {text, pattern};
  }
  return pairs;
}

template <class Str>
void BM_ObStrCmpWildcard(benchmark::State& state, uint8_t codeSet,
                         Str Word::*form) {
  if (!EnoughWords(state)) return;
  const auto pairs = WildcardPairs(form);
  // Every even pair matches by construction.
  for (size_t k = 0; k < kPairs; k += 2) {
    if (CallObStrCmp(codeSet,
                     reinterpret_cast<const char*>(pairs[k].first.c_str()),
                     reinterpret_cast<const char*>(pairs[k].second.c_str()),
                     kWildcardOp) != 0) {
      state.SkipWithError("a leading-'*' pattern failed to match");
      return;
    }
  }
  size_t i = 0;
  for (auto _ : state) {
    int32_t r = CallObStrCmp(
        codeSet, reinterpret_cast<const char*>(pairs[i].first.c_str()),
        reinterpret_cast<const char*>(pairs[i].second.c_str()), kWildcardOp);
    benchmark::DoNotOptimize(r);
    i = (i + 1) & (kPairs - 1);
  }
  state.SetItemsProcessed(state.iterations());
}

// The sampled words joined by spaces, cut at word ends into chunks of at
// most `limit` bytes.
std::vector<std::string> Chunks(size_t limit) {
  std::vector<std::string> chunks(1);
  for (const Word& w : Words()) {
    if (w.utf8.size() + 1 > limit) continue;
    if (chunks.back().size() + 1 + w.utf8.size() > limit) chunks.emplace_back();
    if (!chunks.back().empty()) chunks.back() += ' ';
    chunks.back() += w.utf8;
  }
  return chunks;
}

bool Decode(const std::string& chunk, ObString& out) {
  return ObMBS2ObString(chunk.data(), out,
                        static_cast<int32_t>(chunk.size())) ==
         static_cast<int32_t>(chunk.size());
}

void BM_ObMBS2ObString(benchmark::State& state) {
  if (!EnoughWords(state)) return;
  const auto chunks = Chunks(static_cast<size_t>(state.range(0)));
  ObString out;
  for (const std::string& c : chunks) {
    if (!Decode(c, out)) {
      state.SkipWithError("ObMBS2ObString rejected a chunk");
      return;
    }
  }
  size_t i = 0, bytes = 0;
  for (auto _ : state) {
    const std::string& c = chunks[i];
    int32_t r = ObMBS2ObString(c.data(), out, static_cast<int32_t>(c.size()));
    benchmark::DoNotOptimize(r);
    bytes += c.size();
    i = i + 1 == chunks.size() ? 0 : i + 1;
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

void BM_ObString2ObMBS(benchmark::State& state) {
  if (!EnoughWords(state)) return;
  const auto chunks = Chunks(static_cast<size_t>(state.range(0)));
  std::vector<ObString> texts(chunks.size());
  std::string out(static_cast<size_t>(state.range(0)) + 1, '\0');
  for (size_t k = 0; k < chunks.size(); ++k) {
    const auto room = static_cast<int32_t>(out.size());
    if (!Decode(chunks[k], texts[k]) ||
        ObString2ObMBS(texts[k], out.data(), room) !=
            static_cast<int32_t>(chunks[k].size()) ||
        chunks[k] != out.c_str()) {
      state.SkipWithError("ObString2ObMBS does not give the UTF-8 back");
      return;
    }
  }
  size_t i = 0, bytes = 0;
  for (auto _ : state) {
    int32_t r =
        ObString2ObMBS(texts[i], out.data(), static_cast<int32_t>(out.size()));
    benchmark::DoNotOptimize(r);
    benchmark::ClobberMemory();
    bytes += chunks[i].size();
    i = i + 1 == chunks.size() ? 0 : i + 1;
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

#if QS_BENCH_ICU
void BM_IcuFromUTF8(benchmark::State& state) {
  if (!EnoughWords(state)) return;
  const auto chunks = Chunks(static_cast<size_t>(state.range(0)));
  std::u16string out(static_cast<size_t>(state.range(0)), u'\0');
  size_t i = 0, bytes = 0;
  for (auto _ : state) {
    const std::string& c = chunks[i];
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    u_strFromUTF8(out.data(), static_cast<int32_t>(out.size()), &units,
                  c.data(), static_cast<int32_t>(c.size()), &status);
    benchmark::DoNotOptimize(units);
    benchmark::ClobberMemory();
    if (U_FAILURE(status)) {
      state.SkipWithError("u_strFromUTF8 failed");
      break;
    }
    bytes += c.size();
    i = i + 1 == chunks.size() ? 0 : i + 1;
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

void BM_IcuToUTF8(benchmark::State& state) {
  if (!EnoughWords(state)) return;
  const auto chunks = Chunks(static_cast<size_t>(state.range(0)));
  std::vector<std::u16string> texts;
  for (const std::string& c : chunks) {
    std::u16string t(c.size(), u'\0');
    UErrorCode status = U_ZERO_ERROR;
    int32_t units = 0;
    u_strFromUTF8(t.data(), static_cast<int32_t>(t.size()), &units, c.data(),
                  static_cast<int32_t>(c.size()), &status);
    t.resize(static_cast<size_t>(units));
    texts.push_back(std::move(t));
  }
  std::string out(static_cast<size_t>(state.range(0)) + 1, '\0');
  size_t i = 0, bytes = 0;
  for (auto _ : state) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t written = 0;
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &written,
                texts[i].data(), static_cast<int32_t>(texts[i].size()),
                &status);
    benchmark::DoNotOptimize(written);
    benchmark::ClobberMemory();
    if (U_FAILURE(status)) {
      state.SkipWithError("u_strToUTF8 failed");
      break;
    }
    bytes += chunks[i].size();
    i = i + 1 == chunks.size() ? 0 : i + 1;
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}
#endif

// Forwards to the reporter --benchmark_format selects, then prints the
// time ratio of each registered pair of benchmarks. Aggregates leave only
// medians and means, so a median is preferred to a single run.
class RatioReporter : public benchmark::BenchmarkReporter {
 public:
  struct Pair {
    std::string ours, theirs;
  };

  explicit RatioReporter(std::vector<Pair> pairs)
      : inner_(benchmark::CreateDefaultDisplayReporter()),
        pairs_(std::move(pairs)) {}

  bool ReportContext(const Context& context) override {
    return inner_->ReportContext(context);
  }

  void ReportRuns(const std::vector<Run>& runs) override {
    inner_->ReportRuns(runs);
    for (const Run& run : runs) {
      const bool median =
          run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
      if (run.error_occurred || (run.run_type == Run::RT_Aggregate && !median))
        continue;
      Figure& f = figures_[Key(run)];
      if (f.median && !median) continue;
      const auto bytes = run.counters.find("bytes_per_second");
      f = {run.GetAdjustedCPUTime() * 1e9 /
               benchmark::GetTimeUnitMultiplier(run.time_unit),
           bytes != run.counters.end() ? bytes->second.value / (1024.0 * 1024.0)
                                       : 0,
           median, true};
    }
  }

  void Finalize() override {
    inner_->Finalize();
    // Text on standard output would corrupt a JSON or CSV report there.
    std::ostream& out =
        dynamic_cast<benchmark::ConsoleReporter*>(inner_) != nullptr
            ? inner_->GetOutputStream()
            : inner_->GetErrorStream();
    bool header = false;
    for (const Pair& p : pairs_) {
      const Figure& a = figures_[p.ours];
      const Figure& b = figures_[p.theirs];
      if (!a.present || !b.present) continue;
      if (!header) {
        out << "\nTime ratios (CPU time" << (a.median ? ", medians" : "")
            << ")\n";
        header = true;
      }
      char line[256];
      if (a.megabytes > 0 && b.megabytes > 0) {
        std::snprintf(line, sizeof line,
                      "%-36s / %-26s %9.4g / %9.4g MiB/s = %7.2f\n",
                      p.ours.c_str(), p.theirs.c_str(), a.megabytes,
                      b.megabytes, a.ns / b.ns);
      } else {
        std::snprintf(
            line, sizeof line, "%-36s / %-26s %9.4g / %9.4g ns    = %7.2f\n",
            p.ours.c_str(), p.theirs.c_str(), a.ns, b.ns, a.ns / b.ns);
      }
      out << line;
    }
  }

 private:
  struct Figure {
    double ns = 0;
    double megabytes = 0;  // MiB/s, as the table's bytes_per_second
    bool median = false;
    bool present = false;
  };

  static std::string Key(const Run& run) {
    const std::string& args = run.run_name.args;
    return run.run_name.function_name + (args.empty() ? "" : "/" + args);
  }

  benchmark::BenchmarkReporter* inner_;  // owned by the benchmark library
  std::vector<Pair> pairs_;
  std::map<std::string, Figure> figures_;
};

// Registration order is run order: each contender directly follows the
// others on the same pairs.
std::vector<RatioReporter::Pair> Register() {
  std::vector<RatioReporter::Pair> ratios;
  for (PairKind kind : {PairKind::kNeighbour, PairKind::kRandom}) {
    const std::string pre =
        kind == PairKind::kNeighbour ? "BM_Neighbour_" : "BM_Random_";
    for (uint8_t cs : {1, 253}) {
      const std::string name = pre + "ObStrCmp_cs" + std::to_string(cs);
      benchmark::RegisterBenchmark(name.c_str(), BM_ObStrCmp, kind, cs);
#if QS_BENCH_ICU
      ratios.push_back({name, pre + "IcuStrcoll"});
#endif
      ratios.push_back({name, pre + "Strcmp"});
    }
    benchmark::RegisterBenchmark((pre + "Strcmp").c_str(), BM_Strcmp, kind);
#if QS_BENCH_ICU
    benchmark::RegisterBenchmark((pre + "IcuStrcoll").c_str(), BM_IcuStrcoll,
                                 kind);
#endif
  }
  for (PairKind kind : {PairKind::kNeighbour, PairKind::kRandom}) {
    const std::string pre =
        kind == PairKind::kNeighbour ? "BM_Neighbour_" : "BM_Random_";
    benchmark::RegisterBenchmark((pre + "StringCompare_Record").c_str(),
                                 BM_StringCompare, kind, StoredForm::kRecord);
    benchmark::RegisterBenchmark((pre + "Memcmp_Record").c_str(),
                                 BM_MemcmpStored, kind, StoredForm::kRecord);
    benchmark::RegisterBenchmark((pre + "StringCompare_Key").c_str(),
                                 BM_StringCompare, kind, StoredForm::kKey);
    ratios.push_back({pre + "StringCompare_Record", pre + "Memcmp_Record"});
#if QS_BENCH_ICU
    benchmark::RegisterBenchmark((pre + "Memcmp_IcuSortKey").c_str(),
                                 BM_MemcmpStored, kind, StoredForm::kIcuKey);
    ratios.push_back({pre + "StringCompare_Record", pre + "IcuStrcoll"});
    ratios.push_back({pre + "StringCompare_Key", pre + "Memcmp_IcuSortKey"});
#endif
  }
  benchmark::RegisterBenchmark("BM_Wildcard_ObStrCmp_cs1",
                               BM_ObStrCmpWildcard<std::string>, uint8_t{1},
                               &Word::cs1);
  benchmark::RegisterBenchmark("BM_Wildcard_ObStrCmp_cs253",
                               BM_ObStrCmpWildcard<std::u16string>,
                               uint8_t{253}, &Word::cs253);
  for (int64_t bytes : kChunkBytes) {
    const std::string arg = "/" + std::to_string(bytes);
    benchmark::RegisterBenchmark("BM_Decode_ObMBS2ObString", BM_ObMBS2ObString)
        ->Arg(bytes)
        ->Unit(benchmark::kMicrosecond);
#if QS_BENCH_ICU
    benchmark::RegisterBenchmark("BM_Decode_IcuFromUTF8", BM_IcuFromUTF8)
        ->Arg(bytes)
        ->Unit(benchmark::kMicrosecond);
    ratios.push_back(
        {"BM_Decode_ObMBS2ObString" + arg, "BM_Decode_IcuFromUTF8" + arg});
#endif
    benchmark::RegisterBenchmark("BM_Encode_ObString2ObMBS", BM_ObString2ObMBS)
        ->Arg(bytes)
        ->Unit(benchmark::kMicrosecond);
#if QS_BENCH_ICU
    benchmark::RegisterBenchmark("BM_Encode_IcuToUTF8", BM_IcuToUTF8)
        ->Arg(bytes)
        ->Unit(benchmark::kMicrosecond);
    ratios.push_back(
        {"BM_Encode_ObString2ObMBS" + arg, "BM_Encode_IcuToUTF8" + arg});
#endif
  }
  return ratios;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<RatioReporter::Pair> ratios = Register();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter(std::move(ratios));
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
