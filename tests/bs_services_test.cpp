#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "obbs.h"

namespace {

TEST(MemFile, NeverLeavesTheBuffer) {
  const uint8_t data[10] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
  using M = MemFile;
  // From position 4: offset, origin, result, new position.
  // clang-format off
  const struct { int64_t offset; M::SeekOrigin origin; int32_t result; uint32_t position; } cases[] = {
      {10, M::kBegin, 0, 10},  {11, M::kBegin, -1, 4},   {-1, M::kBegin, -1, 4},
      {-4, M::kCurrent, 0, 0}, {-5, M::kCurrent, -1, 4}, {INT64_MAX, M::kCurrent, -1, 4},
      {-10, M::kEnd, 0, 0},    {1, M::kEnd, -1, 4},      {INT64_MIN, M::kEnd, -1, 4},
      {0, M::SeekOrigin(3), -1, 4}};
  // clang-format on
  for (const auto& c : cases) {
    MemFile file(data, sizeof data);
    ASSERT_EQ(file.Seek(4), 0);
    EXPECT_EQ(file.Seek(c.offset, c.origin), c.result) << c.offset;
    EXPECT_EQ(file.GetPosition(), c.position) << c.offset;
  }
  MemFile file(data, sizeof data);
  uint8_t out[8] = {};
  file.Seek(-3, MemFile::kEnd);
  EXPECT_EQ(file.Read(out, sizeof out), 3u);
  EXPECT_EQ(out[0], 7);
  EXPECT_EQ(file.Read(out, sizeof out), 0u);
  EXPECT_EQ(MemFile(nullptr, 5).Remaining(), 0u);
}

const std::string kLongName(ObConfig::kMaxName, 'n');  // one too long
const std::string kLongestName(ObConfig::kMaxName - 1, 'n');

TEST(ObConfig, ParsesTheFileFormat) {
  // clang-format off
  const std::string text =
      "top = 7\n[db]\npages = 0x10     ; comment\n\t neg=-42\r\n"
      "big = 2147483647\ntooBig = 2147483648\nmask = 0xFFFFFFFF\n"
      "bad = 12abc\nhexless = 0x\nnoEquals 5\n= 5\n# pages = 1\n"
      "long = 5 ;" + std::string(100000, 'x') + "\n" +
      kLongestName + " = 4\n" +
      kLongName + " = 9\n"
      "[ spaced name ]\n key with spaces = +3\n"
      "[" + kLongName + "]\nlost = 1\n"
      "[db]\npages = 32\n[unterminated\ngone = 2";
  // -5: the line was not taken.
  const struct { const char* section; std::string key; int32_t expected; } cases[] = {
      {"", "top", 7},           {"db", "pages", 32},        {"DB", "pages", -5},
      {"db", "neg", -42},       {"db", "big", 2147483647},  {"db", "tooBig", -5},
      {"db", "mask", -1},       {"db", "bad", -5},          {"db", "hexless", -5},
      {"db", "noEquals 5", -5}, {"db", "", -5},             {"db", "long", 5},
      {"db", kLongestName, 4},  {"db", kLongName, -5},      {"db", "gone", -5},
      {"spaced name", "key with spaces", 3},                {"spaced name", "lost", -5},
  };
  // clang-format on
  ObConfig config;
  config.ReadText(text.c_str());
  for (const auto& c : cases)
    EXPECT_EQ(config.GetInt(c.section, c.key.c_str(), -5), c.expected)
        << c.section << "/" << c.key;
}

TEST(ObConfig, SetLimitsAndFiles) {
  ObConfig config;
  EXPECT_EQ(config.Set("s", kLongName.c_str(), 1), -1);
  EXPECT_EQ(config.Set(kLongName.c_str(), "k", 1), -1);
  for (int i = 0; i < ObConfig::kMaxEntries; ++i)
    ASSERT_EQ(config.Set("s", std::to_string(i).c_str(), i), 0);
  EXPECT_EQ(config.Set("s", "one more", 1), -1);
  EXPECT_EQ(config.Set("s", "3", 33), 0);  // replacing needs no new slot
  EXPECT_EQ(config.GetInt("s", "3", 0), 33);

  EXPECT_EQ(config.ReadFile("/nonexistent/quillstore.cfg"), -1);
  EXPECT_EQ(config.ReadFile(testing::TempDir().c_str()), -1);  // a directory
  EXPECT_EQ(config.GetInt("s", "3", 0), 0);

  const std::string path = testing::TempDir() + "bs_test.cfg";
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr);
  std::fputs("[a]\r\nx = 0x7fffffff", f);  // no final newline
  std::fclose(f);
  EXPECT_EQ(config.ReadFile(path.c_str()), 0);
  EXPECT_EQ(config.GetInt("a", "x", 0), 0x7FFFFFFF);

  // The default configuration reads the file once, on first use.
  setenv("QUILLSTORE_CONFIG", path.c_str(), 1);
  EXPECT_EQ(DefaultConfig().GetInt("a", "x", 0), 0x7FFFFFFF);
  std::remove(path.c_str());
  EXPECT_EQ(DefaultConfig().GetInt("a", "x", 0), 0x7FFFFFFF);
}

TEST(Version, Flags) {
  // clang-format off
  const struct { uint32_t major, minor, v3, v4; int32_t flags, expected; } cases[] = {
      {11, 0, 3, 61, 7, 0},  {11, 0, 3, 62, 7, -1}, {11, 0, 4, 0, 4, -1},
      {11, 0, 2, 999, 4, 0}, {12, 0, 0, 0, 1, -1},  {12, 0, 0, 0, 6, 0},
      {11, 1, 0, 0, 2, -1},  {11, 1, 0, 0, 1, 0},   {99, 9, 99, 99, 0, 0}};
  // clang-format on
  for (const auto& c : cases)
    EXPECT_EQ(CheckObVersionNumber(c.major, c.minor, c.v3, c.v4, 77, c.flags),
              c.expected)
        << c.major << "." << c.minor << "." << c.v3 << "." << c.v4 << " / "
        << c.flags;
}

std::string Format(const bdate& d, const btime& t) {
  char s[64];
  std::snprintf(s, sizeof s, "%04d-%02d-%02d %02d:%02d:%02d.%09u/%02d", d.year,
                d.month, d.day, t.hour, t.minute, t.second,
                unsigned(t.fraction), t.hundredths);
  return s;
}

// Also checks that the nanoseconds output agrees with the time's fraction.
template <void (*Get)(bdate&, btime&, int32_t&)>
std::string Hires() {
  bdate d{};
  btime t{};
  int32_t nanos = -1;
  Get(d, t, nanos);
  return uint32_t(nanos) == t.fraction ? Format(d, t) : "nanoseconds differ";
}
std::string LocalHires() { return Hires<bksGetHiresTime>(); }
std::string UtcHires() { return Hires<bksGetHiresTimeUTC>(); }

class Clock : public testing::Test {
 protected:
  void TearDown() override {
    bksReleaseClock();
    bksReleaseTimeZone();
  }
};

TEST_F(Clock, FixedClockAndZone) {
  // clang-format off
  // utc null: same as local.
  const struct { int64_t nanos; int32_t zone; const char* local; const char* utc; } cases[] = {
      {0, 0, "1970-01-01 00:00:00.000000000/00", nullptr},
      {-1, 0, "1969-12-31 23:59:59.999999999/99", nullptr},
      {INT64_MIN, 0, "1677-09-21 00:12:43.145224192/14", nullptr},
      {4107587696000000000, kObZoneUnknown, "2100-03-01 12:34:56.000000000/00", nullptr},
      {1709150400123456789, 330, "2024-02-29 01:30:00.123456789/12", "2024-02-28 20:00:00.123456789/12"},
      {946692000000000000, -300, "1999-12-31 21:00:00.000000000/00", "2000-01-01 02:00:00.000000000/00"},
      {-2203891200000000000 + 500000000, -60, "1900-02-28 23:00:00.500000000/50", "1900-03-01 00:00:00.500000000/50"},
  };
  // clang-format on
  for (const auto& c : cases) {
    SCOPED_TRACE(c.local);
    bksFixClock(c.nanos);
    bksFixTimeZone(c.zone);
    EXPECT_EQ(bksgettimezone(), c.zone);
    EXPECT_EQ(LocalHires(), c.local);
    EXPECT_EQ(UtcHires(), c.utc ? c.utc : c.local);
    bdate d{};
    btime t{};
    bksgetdate(&d);
    bksgettime(&t);
    EXPECT_EQ(Format(d, t), c.local);
    bksgetsystemtime(&t, &d);
    EXPECT_EQ(Format(d, t), c.utc ? c.utc : c.local);
  }
}

// Only the clock fixed: the OS zone rules (here a TZ string) apply.
TEST_F(Clock, FixedClockUsesOsZoneRules) {
  const char* saved = std::getenv("TZ");
  const std::string savedTz = saved ? saved : "";
  setenv("TZ", "QST-5:30", 1);
  tzset();
  bksFixClock(1709150400123456789);
  EXPECT_EQ(LocalHires(), "2024-02-29 01:30:00.123456789/12");
  EXPECT_EQ(bksgettimezone(), 330);
  saved ? setenv("TZ", savedTz.c_str(), 1) : unsetenv("TZ");
  tzset();
  bksReleaseClock();
  EXPECT_GE(UtcHires(), "2024");
}

std::string gAsserted;
void RecordAssert(const char* message, const char* source, int32_t line) {
  gAsserted = std::string(source) + ":" + std::to_string(line) + ":" + message;
}
int32_t RetryOnce(uint32_t size) { return int32_t(size); }

TEST(Handlers, InstallCallAndRestore) {
  testing::internal::CaptureStderr();
  ORLO_assert("bad page", "heap.cpp", 12);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "heap.cpp(12): bad page\n");

  const ObAssertHandler previous = ORLO_SetAssertHandler(RecordAssert);
  ASSERT_NE(previous, nullptr);
  ORLO_assert("m", "s.cpp", 3);
  EXPECT_EQ(gAsserted, "s.cpp:3:m");
  EXPECT_EQ(ORLO_SetAssertHandler(nullptr), &RecordAssert);
  EXPECT_EQ(ORLO_SetAssertHandler(previous), previous);

  testing::internal::CaptureStderr();
  EXPECT_EQ(ObCallMemoryHandler(4096), 0);
  EXPECT_NE(testing::internal::GetCapturedStderr().find("4096"),
            std::string::npos);
  const ObMemoryHandler defaultHandler = ObSetMemoryHandler(RetryOnce);
  EXPECT_EQ(ObCallMemoryHandler(64), 64);
  EXPECT_EQ(ObSetMemoryHandler(nullptr), &RetryOnce);
  EXPECT_EQ(ObSetMemoryHandler(defaultHandler), defaultHandler);
}

}  // namespace

namespace {

// A block that cannot be had asks the handler; a handler that gives up
// ends the attempt with null.
TEST(Allocate, AsksTheMemoryHandler) {
  static uint32_t asked = 0;
  static int calls = 0;
  ObMemoryHandler previous = ObSetMemoryHandler([](uint32_t size) -> int32_t {
    asked = size;
    return ++calls < 2;  // one more try, then give up
  });
  EXPECT_EQ(ObAllocate(SIZE_MAX / 2, 1), nullptr);
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(asked, UINT32_MAX);
  ObSetMemoryHandler(previous);
  void* p = ObAllocate(0, 1);
  EXPECT_NE(p, nullptr);
  std::free(p);
}

}  // namespace
