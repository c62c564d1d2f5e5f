// Identity types: ObObjId, ObClassId, ObRef, ObLocalRef, ObSeal. Operators,
// stored forms byte by byte, key comparison in memory and stored form,
// hashing, text forms with their odd old formats, counters and ranges.
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

int Sign(int32_t v) { return (v > 0) - (v < 0); }

std::vector<uint8_t> Stored(char id, const void* value, uint8_t format,
                            uint32_t count = 1) {
  ObTypeMgr mgr(5);
  std::vector<uint8_t> out(mgr.DiskLenGet(id, value, format, count, 8));
  EXPECT_EQ(mgr.Store(id, out.data(), value, format, count), out.size());
  return out;
}

ObRef MakeRef(uint32_t block, uint32_t low, uint16_t high, uint16_t origin,
              uint16_t classNumber, uint16_t version = 0) {
  ObRef r;
  r.block = block;
  r.low = low;
  r.high = high;
  r.origin = origin;
  r.classNumber = classNumber;
  r.version = version;
  return r;
}

TEST(ObObjId, Arithmetic) {
  struct Case {
    const char* what;
    ObObjId start;
    int step;  // 1: ++, -1: --, else += step
    uint32_t low;
    uint16_t high;
  } cases[] = {
      {"++ carries", ObObjId(9, 0xFFFFFFFF, 1), 1, 0, 2},
      {"++ past the highest wraps", ObObjId(0, 0xFFFFFFFF, 0xFFFF), 1, 0, 0},
      {"-- borrows", ObObjId(9, 0, 2), -1, 0xFFFFFFFF, 1},
      {"+= positive carries", ObObjId(0, 0xFFFFFFFE, 0), 5, 3, 1},
      {"+= negative borrows", ObObjId(0, 2, 1), -5, 0xFFFFFFFD, 0},
      {"+= negative without borrow", ObObjId(0, 9, 1), -5, 4, 1},
  };
  for (const Case& c : cases) {
    ObObjId v = c.start;
    if (c.step == 1) {
      ++v;
    } else if (c.step == -1) {
      --v;
    } else {
      v += static_cast<int16_t>(c.step);
    }
    EXPECT_EQ(v.low, c.low) << c.what;
    EXPECT_EQ(v.high, c.high) << c.what;
    EXPECT_EQ(v.block, c.start.block) << c.what;
  }
  ObObjId highest;
  highest.SetHighestValue();
  EXPECT_EQ(highest.block, 0u);
  // Equality ignores the block; != orders by high difference, then low.
  EXPECT_TRUE(ObObjId(1, 5, 2) == ObObjId(7, 5, 2));
  EXPECT_EQ(ObObjId(1, 5, 2) != ObObjId(7, 5, 2), 0);
  EXPECT_EQ(ObObjId(0, 1, 9) != ObObjId(0, 7, 2), 7);
  EXPECT_EQ(ObObjId(0, 9, 2) != ObObjId(0, 1, 2), 1);
  EXPECT_EQ(ObObjId(0, 1, 2) != ObObjId(0, 9, 2), -1);
  EXPECT_TRUE(ObObjId(4, 0, 0).IsNullValue());
}

TEST(ObClassId, NullOrdersFirst) {
  ObClassId null;
  null.SetNullValue();
  EXPECT_EQ(null != ObClassId(0, 0), -1);
  EXPECT_EQ(ObClassId(0, 0) != null, 1);
  EXPECT_EQ(null != null, 0);
  EXPECT_EQ(ObClassId(5, 1) != ObClassId(3, 9), 2);
  EXPECT_EQ(ObClassId(5, 1) != ObClassId(5, 4), -3);
  EXPECT_TRUE(ObClassId(5, 4) > ObClassId(5, 1));
  EXPECT_FALSE(null > ObClassId(0, 0));
}

TEST(ObRef, ValidityAndAssignment) {
  struct Case {
    ObRef r;
    bool valid, invalid, validOrigin, invalidOrigin;
  } cases[] = {
      {MakeRef(0, 1, 0, 0xFFFF, 5), false, true, true, false},
      {MakeRef(0, 1, 0, 3, 5), true, false, true, false},
      {MakeRef(0, 0, 0, 3, 5), false, true, false, true},
      {MakeRef(0, 0, 1, 3, 0), false, true, false, true},
      {MakeRef(0, 0, 1, 0xFFFF, 0), false, true, true, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.r.IsValid(), c.valid);
    EXPECT_EQ(c.r.IsInvalid(), c.invalid);
    EXPECT_EQ(c.r.IsValidOriginId(), c.validOrigin);
    EXPECT_EQ(c.r.IsInvalidOriginId(), c.invalidOrigin);
  }
  ObRef r = MakeRef(1, 2, 3, 4, 5, 6);
  ObLocalRef local;
  local = r;
  EXPECT_EQ(local.version, 6);
  r = local;
  EXPECT_EQ(r.origin, 0);  // a local reference has origin 0
  EXPECT_EQ(r.classNumber, 5);
  EXPECT_TRUE(local == r);
  r = static_cast<uint16_t>(7);
  EXPECT_FALSE(local == r);
  r = ObObjId(9, 8, 7);
  r = ObClassId(11, 12);
  EXPECT_EQ(r.block + r.low + r.high + r.classNumber + r.version,
            9u + 8 + 7 + 11 + 12);
  // Block, class and version never take part in ordering.
  EXPECT_EQ(MakeRef(1, 2, 3, 4, 5) != MakeRef(9, 2, 3, 4, 9, 9), 0);
  EXPECT_EQ(MakeRef(0, 2, 3, 5, 0) != MakeRef(0, 2, 3, 4, 0), 1);
  EXPECT_EQ(MakeRef(0, 1, 3, 9, 0) != MakeRef(0, 2, 3, 4, 0), -1);
}

TEST(ObSeal, Conversions) {
  ObSeal s;
  s.ConvertFrom(ObObjId(0, 0x00020003, 1));
  EXPECT_TRUE(s == ObSeal(1, 2, 3));
  s.ConvertFrom(ObInt64(0x00040005u, 0x12340006));
  EXPECT_TRUE(s == ObSeal(6, 4, 5));  // the high half cut to 16 bits
  s.ConvertFrom(int64_t{0x7FFF000100020003});
  EXPECT_TRUE(s == ObSeal(1, 2, 3));
  int64_t v = 0;
  s.ConvertTo(v);
  EXPECT_EQ(v, 0x000100020003);
  ObInt64 i;
  s.ConvertTo(i);
  EXPECT_EQ(i.Get8b(), 0x000100020003);
  EXPECT_EQ(ObSeal(1, 2, 3) != ObSeal(1, 2, 9), -6);
  EXPECT_EQ(ObSeal(2, 0, 0) != ObSeal(1, 9, 9), 1);
}

// Every byte of every stored form, in both byte orders.
TEST(Identity, StoredForms) {
  const ObObjId id(0x0708090A, 0x03040506, 0x0102);
  const ObClassId cls(0x0102, 0x0304);
  const ObRef ref = MakeRef(0x0708090A, 0x03040506, 0x0102, 0x0B0C, 0x0D0E, 3);
  const ObSeal seal(1, 2, 3);
  struct Case {
    const char* what;
    char id;
    const void* value;
    uint8_t format;
    std::vector<uint8_t> bytes;
  } cases[] = {
      {"ObObjId big", ObOBJID_T, &id, 2, {7, 8, 9, 10, 3, 4, 5, 6, 1, 2}},
      {"ObObjId little", ObOBJID_T, &id, 1, {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
      {"ObObjId other formats are little",
       ObOBJID_T,
       &id,
       0x85,
       {10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
      {"ObClassId big", ObCLID_T, &cls, 2, {1, 2, 3, 4}},
      {"ObClassId little", ObCLID_T, &cls, 1, {2, 1, 4, 3}},
      {"ObRef big, no version",
       ObREF_T,
       &ref,
       2,
       {7, 8, 9, 10, 3, 4, 5, 6, 1, 2, 11, 12, 13, 14}},
      {"ObRef little",
       ObREF_T,
       &ref,
       1,
       {10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 12, 11, 14, 13}},
      {"ObSeal big", ObSEAL_T, &seal, 2, {0, 1, 0, 2, 0, 3}},
      {"ObSeal big in format 1 too", ObSEAL_T, &seal, 1, {0, 1, 0, 2, 0, 3}},
  };
  ObTypeMgr mgr(5);
  for (const Case& c : cases) {
    EXPECT_EQ(Stored(c.id, c.value, c.format), c.bytes) << c.what;
    EXPECT_EQ(mgr.DiskLenGet(c.id, c.bytes.data(), c.format, 3, c.format),
              3 * c.bytes.size())
        << c.what;
    // Load gives the value back (an ObRef without its version).
    uint8_t back[16] = {};
    EXPECT_EQ(mgr.Load(c.id, back, c.bytes.data(), c.format, 1),
              c.bytes.size());
    EXPECT_EQ(Stored(c.id, back, c.format), c.bytes) << c.what;
    if (c.id == ObREF_T) {
      EXPECT_EQ(reinterpret_cast<ObRef*>(back)->version, 0);
    }
  }
}

// The stored comparison must order like the memory comparison (ObRef
// excepted: stored keys rank the origin number first), and return byte
// differences.
TEST(Identity, StoredKeysOrderLikeValues) {
  std::mt19937 rng(11);
  auto pick16 = [&] {
    return static_cast<uint16_t>(rng() % 3 == 0 ? rng() : rng() % 3);
  };
  auto pick32 = [&] {
    return rng() % 3 == 0 ? static_cast<uint32_t>(rng()) : rng() % 3;
  };
  ObTypeMgr mgr(5);
  for (int i = 0; i < 3000; ++i) {
    const ObObjId ids[2] = {ObObjId(pick32(), pick32(), pick16()),
                            ObObjId(pick32(), pick32(), pick16())};
    ObClassId cls[2] = {ObClassId(pick16(), pick16()),
                        ObClassId(pick16(), pick16())};
    if (i % 7 == 0) cls[i % 2].SetNullValue();
    const ObSeal seals[2] = {ObSeal(pick16(), pick16(), pick16()),
                             ObSeal(pick16(), pick16(), pick16())};
    struct Pair {
      char id;
      const void *a, *b;
    } pairs[] = {{ObOBJID_T, &ids[0], &ids[1]},
                 {ObCLID_T, &cls[0], &cls[1]},
                 {ObSEAL_T, &seals[0], &seals[1]}};
    for (const Pair& p : pairs) {
      int32_t status = -1;
      const int memory = Sign(mgr.Cmp(p.id, 0, p.a, 0, p.b, 0, 1, 8, status));
      for (uint8_t format : {1, 2}) {
        const auto a = Stored(p.id, p.a, format), b = Stored(p.id, p.b, format);
        const int stored =
            Sign(mgr.Cmp(p.id, 0, a.data(), 0, b.data(), 0, 1, format, status));
        // The stored byte order of the comparison is the little-endian one
        // whatever the format; seals are big-endian in every format.
        if (p.id == ObSEAL_T || format == 1) {
          ASSERT_EQ(stored, memory) << int(p.id) << " format " << int(format);
        }
        ASSERT_EQ(status, 0);
      }
    }
  }
  // The stored result is the difference of the first differing byte.
  const ObObjId x(0, 0x10, 0), y(0, 0x03, 0);
  int32_t status = 0;
  EXPECT_EQ(ObObjId::Compare(1, 0, Stored(ObOBJID_T, &x, 1).data(), 0,
                             Stored(ObOBJID_T, &y, 1).data(), 0, 1, status),
            0x0D);
  // In stored form a reference ranks its origin number first, in memory
  // last.
  const ObRef r1 = MakeRef(0, 9, 0, 1, 0), r2 = MakeRef(0, 1, 0, 2, 0);
  EXPECT_GT(ObRef::Compare(8, 0, &r1, 0, &r2, 0, 1, status), 0);
  EXPECT_LT(ObRef::Compare(1, 0, Stored(ObREF_T, &r1, 1).data(), 0,
                           Stored(ObREF_T, &r2, 1).data(), 0, 1, status),
            0);
  // The block and the class number are not part of a stored key.
  const ObRef r3 = MakeRef(5, 9, 0, 1, 7);
  EXPECT_EQ(ObRef::Compare(2, 0, Stored(ObREF_T, &r1, 2).data(), 0,
                           Stored(ObREF_T, &r3, 2).data(), 0, 1, status),
            0);
}

// Operands shorter than count elements: status 2101 and nothing read beyond
// the lengths (the buffers are exactly as long as the lengths given).
TEST(Identity, ShortOperands) {
  struct Case {
    char id;
    uint32_t width;
  } cases[] = {{ObOBJID_T, 10}, {ObCLID_T, 4}, {ObREF_T, 14}, {ObSEAL_T, 6}};
  ObTypeMgr mgr(5);
  for (const Case& c : cases) {
    for (uint32_t len1 = 1; len1 <= 3 * c.width; ++len1) {
      std::vector<uint8_t> a(len1, 0), b(3 * c.width, 0);
      int32_t status = -1;
      const int32_t r =
          mgr.Cmp(c.id, len1, a.data(), 3 * c.width, b.data(), 0, 3, 2, status);
      // The last element is reached when it starts inside the operand; it
      // is then read zero-padded.
      const int32_t want = len1 > 2 * c.width ? 0 : ObCMP_OPERAND_EXHAUSTED;
      EXPECT_EQ(r, 0);
      EXPECT_EQ(status, want) << int(c.id) << " len " << len1;
      mgr.Hash(c.id, len1, a.data(), 3, 2, status);
      EXPECT_EQ(status, want);
    }
  }
}

TEST(Identity, EqualValuesHashAlike) {
  ObTypeMgr mgr(5);
  int32_t status = -1;
  // Values equal for their comparators (they differ only in fields the
  // comparators ignore), in every form.
  const ObObjId ids[2] = {ObObjId(1, 0x12345678, 9), ObObjId(2, 0x12345678, 9)};
  const ObRef refs[2] = {MakeRef(1, 5, 6, 7, 8, 9),
                         MakeRef(2, 5, 6, 7, 10, 11)};
  const uint32_t idHash = mgr.Hash(ObOBJID_T, 0, &ids[0], 1, 8, status);
  EXPECT_EQ(idHash, (0x12345678u ^ 9u) * 1103515245u);
  EXPECT_EQ(mgr.Hash(ObOBJID_T, 0, &ids[1], 1, 8, status), idHash);
  const uint32_t refHash = mgr.Hash(ObREF_T, 0, &refs[0], 1, 8, status);
  EXPECT_EQ(mgr.Hash(ObREF_T, 0, &refs[1], 1, 8, status), refHash);
  for (uint8_t format : {1, 2}) {
    EXPECT_EQ(mgr.Hash(ObOBJID_T, 0, Stored(ObOBJID_T, &ids[1], format).data(),
                       1, format, status),
              idHash);
    EXPECT_EQ(mgr.Hash(ObREF_T, 0, Stored(ObREF_T, &refs[1], format).data(), 1,
                       format, status),
              refHash);
    const ObClassId cls(3, 4);
    EXPECT_EQ(mgr.Hash(ObCLID_T, 0, Stored(ObCLID_T, &cls, format).data(), 1,
                       format, status),
              mgr.Hash(ObCLID_T, 0, &cls, 1, 8, status));
    const ObSeal seal(1, 2, 4);
    EXPECT_EQ(mgr.Hash(ObSEAL_T, 0, Stored(ObSEAL_T, &seal, format).data(), 1,
                       format, status),
              7u * 1103515245u);
  }
  EXPECT_EQ(status, 0);
}

TEST(Identity, Translate) {
  ObTypeMgr mgr(5);
  const ObObjId id(1, 2, 3);
  uint8_t stored[10];
  EXPECT_EQ(mgr.Translate(ObOBJID_T, stored, 2, 10, &id, 8, 12, 1), 10u);
  EXPECT_EQ(std::vector<uint8_t>(stored, stored + 10),
            Stored(ObOBJID_T, &id, 2));
  ObObjId back;
  EXPECT_EQ(mgr.Translate(ObOBJID_T, &back, 8, 12, stored, 2, 10, 1), 10u);
  EXPECT_TRUE(back == id && back.block == 1);
  // Stored to stored copies the bytes unchanged, zero-filling a longer
  // destination.
  uint8_t wide[12];
  std::memset(wide, 0xEE, sizeof wide);
  EXPECT_EQ(mgr.Translate(ObOBJID_T, wide, 1, 12, stored, 2, 10, 1), 10u);
  EXPECT_EQ(std::memcmp(wide, stored, 10), 0);
  EXPECT_EQ(wide[10] + wide[11], 0);
  ObObjId copy;
  EXPECT_EQ(mgr.Translate(ObOBJID_T, &copy, 8, 12, &id, 8, 12, 1), 12u);
  EXPECT_EQ(copy.block, 1u);
}

std::string PrintRow(char id, const void* value, const char* format) {
  ObTypeMgr mgr(5);
  ObString out("old text");
  mgr.PrintToObString(id, out, const_cast<void*>(value), format, 1);
  return out.StrGet();
}

TEST(Identity, Printing) {
  const ObObjId id(3, 2, 1);
  const ObClassId cls(12, 3);
  const ObRef ref = MakeRef(1, 7, 0, 2, 12, 4);
  ObClassId nullClass;
  nullClass.SetNullValue();
  const ObObjId nullId(5, 0, 0);
  struct Case {
    char id;
    const void* value;
    const char* format;
    const char* want;
  } cases[] = {
      {ObOBJID_T, &id, nullptr, "(1-2#3)"},
      {ObOBJID_T, &id, "%H/%L", "1/2"},
      {ObOBJID_T, &id, "%hu-%lu#%lu", "1-2#3"},
      {ObOBJID_T, &id, "%hu %hu %lu %lu %lu", "1 0 2 3 0"},
      {ObOBJID_T, &id, "100%% %x %", "100% x "},
      {ObOBJID_T, &id, "", ""},
      {ObOBJID_T, &id, "%h", "1"},
      {ObOBJID_T, &nullId, nullptr, "{NULL}"},
      {ObCLID_T, &cls, nullptr, "(12v3)"},
      {ObCLID_T, &cls, "%hu.%hu.%hu %l", "12.3.0 l"},
      {ObCLID_T, &nullClass, nullptr, "{NULL}"},
      {ObREF_T, &ref, nullptr, "(2:0-7#1, 12)"},
      {ObREF_T, &ref, "%V", "4"},
      {ObREF_T, &ref, "%hu:%hu-%lu#%lu,%hu", "2:0-7#1,12"},
      // Each positional code takes its slot only with its own letter.
      {ObREF_T, &ref, "%lu %hu %hu %lu %lu %hu", "0 0 0 1 0 0"},
      {ObSEAL_T, nullptr, "noop", "8590131203"},
  };
  const ObSeal seal(2, 3, 3);
  for (const Case& c : cases) {
    const void* value = c.id == ObSEAL_T ? &seal : c.value;
    EXPECT_EQ(PrintRow(c.id, value, c.format), c.want) << c.want;
  }
  // The static printer's own default for references; a local reference
  // prints as a reference of origin 0.
  ObString out;
  ObRef::PrintToString(out, &ref, nullptr, 1);
  EXPECT_STREQ(out.StrGet(), "(2:0-7#1,12v4)");
  ObLocalRef local;
  local = ref;
  ObString text("<");
  local.PrintToObString(text, nullptr);
  EXPECT_STREQ(text.StrGet(), "<(0-7#1,12)");
}

TEST(Identity, Scanning) {
  struct Case {
    const char* text;
    const char* format;  // null: the default
    uint32_t block, low;
    uint16_t high;
  } cases[] = {
      {"(1-2#3)", nullptr, 3, 2, 1},
      {"{NULL}", nullptr, 0, 0, 0},
      {"7#3", nullptr, 3, 7, 0},  // no high part: the format skips to '-'
      {"1-2", nullptr, 99, 2, 1},
      {"  (  1 - 2 # 3 )", nullptr, 3, 2, 1},
      {"garbage", nullptr, 99, 0, 0},
      {"(99999999999-4294967297#3)", nullptr, 3, 1, 0xE7FF},  // wraps
      {"1-2#3", "%hu-%lu#%lu", 3, 2, 1},
      {"5/6", "%H/%L", 99, 6, 5},
      {"5", "%", 99, 0, 0},
      {"5", "%q%H", 99, 0, 0},  // an unknown code skips a text character
      {"", nullptr, 99, 0, 0},
  };
  for (const Case& c : cases) {
    ObObjId v(99, 99, 99);
    ObString text(c.text);
    ObTypeMgr mgr(5);
    mgr.ScanFromObString(ObOBJID_T, &v, text, c.format, 1);
    EXPECT_EQ(v.block, c.block) << c.text;
    EXPECT_EQ(v.low, c.low) << c.text;
    EXPECT_EQ(v.high, c.high) << c.text;
  }
  ObTypeMgr mgr(5);
  ObRef ref;
  ObString refText("(2:0-7#1, 12)");
  mgr.ScanFromObString(ObREF_T, &ref, refText, nullptr, 1);
  EXPECT_EQ(ref.origin, 2);
  EXPECT_EQ(ref.low, 7u);
  EXPECT_EQ(ref.block, 1u);
  EXPECT_EQ(ref.classNumber, 12);
  ObString oldText("2:0-7#1,12");
  ObRef old;
  old.ScanFromObString(oldText, "%hu:%hu-%lu#%lu,%hu");
  EXPECT_TRUE(old == ref && old.block == 1 && old.classNumber == 12);

  ObClassId cls;
  ObString clsText("(12v3)");
  mgr.ScanFromObString(ObCLID_T, &cls, clsText, nullptr, 1);
  EXPECT_EQ(cls.classNumber, 12);
  EXPECT_EQ(cls.version, 3);
  ObString nullText("{NULL}");
  mgr.ScanFromObString(ObCLID_T, &cls, nullText, nullptr, 1);
  EXPECT_TRUE(cls.IsNullValue());

  ObSeal seal(1, 1, 1);
  ObString empty, number("8590131203");
  mgr.ScanFromObString(ObSEAL_T, &seal, empty, nullptr, 1);
  EXPECT_TRUE(seal == ObSeal(0, 0, 0));
  mgr.ScanFromObString(ObSEAL_T, &seal, number, "ignored", 1);
  EXPECT_TRUE(seal == ObSeal(2, 3, 3));

  ObLocalRef local;
  ObString localText("(5-6#7,8)");
  local.ScanFromObString(localText, nullptr);
  EXPECT_EQ(local.high + local.low + local.block + local.classNumber,
            5u + 6 + 7 + 8);
}

// Any text under any format stays inside both (checked by the sanitizer
// build) and ends.
TEST(Identity, ScannersTakeAnyInput) {
  std::mt19937 rng(3);
  const char alphabet[] = "%hlHLBDCVS0123456789-#:,() x\xff";
  ObTypeMgr mgr(5);
  for (int i = 0; i < 3000; ++i) {
    std::string format, text;
    for (uint32_t n = rng() % 12; n > 0; --n)
      format += alphabet[rng() % (sizeof alphabet - 1)];
    for (uint32_t n = rng() % 24; n > 0; --n)
      text += alphabet[rng() % (sizeof alphabet - 1)];
    ObString t(text.c_str());
    uint8_t value[16] = {};
    for (char id : {ObOBJID_T, ObCLID_T, ObREF_T, ObSEAL_T, ObINT64_T}) {
      mgr.ScanFromObString(id, value, t, format.c_str(), 1);
      ObString out;
      mgr.PrintToObString(id, out, value, format.c_str(), 1);
    }
  }
}

TEST(Identity, Counters) {
  ObTypeMgr mgr(5);
  ObObjId id(4, 0xFFFFFFFF, 0);
  EXPECT_EQ(mgr.GetValue(ObOBJID_T, &id, 0, 8, 'N'), 0);
  EXPECT_TRUE(id == ObObjId(4, 0, 1) && id.block == 4);
  id.SetHighestValue();
  EXPECT_EQ(mgr.GetValue(ObOBJID_T, &id, 0, 8, 'M'), kObCounterAtMax);
  EXPECT_EQ(id.low, 0xFFFFFFFF);
  EXPECT_EQ(mgr.GetValue(ObOBJID_T, &id, 0, 8, 'O'), 0);
  ObRef ref = MakeRef(1, 41, 0, 3, 4);
  EXPECT_EQ(mgr.GetValue(ObREF_T, &ref, 0, 8, 'N'), 0);
  EXPECT_EQ(ref.low, 42u);
  EXPECT_EQ(ref.origin, 3);
  ObClassId cls(1, 1);
  EXPECT_EQ(mgr.GetValue(ObCLID_T, &cls, 0, 8, 'N'), kObNotSupported);
  ObSeal seal;
  EXPECT_EQ(mgr.GetValue(ObSEAL_T, &seal, 0, 8, 'N'), kObNotSupported);
  // A stored counter is loaded, stepped and stored back.
  const ObObjId start(0, 9, 0);
  std::vector<uint8_t> key = Stored(ObOBJID_T, &start, 1);
  EXPECT_EQ(mgr.GetValue(ObOBJID_T, key.data(), 10, 1, 'N'), 0);
  EXPECT_EQ(key[4], 10);
  EXPECT_EQ(mgr.SupportsNullValue(ObSEAL_T), 0);
  EXPECT_EQ(mgr.SetNullValue(ObREF_T, &ref), 0);
  EXPECT_EQ(mgr.IsNullValue(ObREF_T, &ref), 1);
  EXPECT_EQ(ref.origin, 3);
}

TEST(Identity, RangeEvaluation) {
  ObIdxBounds bounds;
  const ObObjId lo(0, 0, 0), hi(0, 99, 0);
  bounds.SetLower(&lo, sizeof lo);
  bounds.SetUpper(&hi, sizeof hi);
  ObObjId key(7, 50, 0);
  struct Case {
    uint16_t op;
    float fraction;
    bool lower, upper;
  } cases[] = {
      {kObOpEqual, 0.01f, true, true},
      {kObOpLess, 0.5f, false, true},
      {kObOpGreater, 0.49f, true, false},
      {kObOpLess | kObOpGreater, 0.99f, false, false},
  };
  for (const Case& c : cases) {
    ObIdxBounds narrow;
    uint16_t op = c.op;
    EXPECT_FLOAT_EQ(ObObjId::EvalAndBound(&bounds, op, &key, 8, 1, &narrow),
                    c.fraction);
    EXPECT_EQ(narrow.lower != nullptr, c.lower);
    EXPECT_EQ(narrow.upper != nullptr, c.upper);
    if (narrow.lower != nullptr) {
      EXPECT_EQ(narrow.lowerSize, sizeof key);
      EXPECT_EQ(std::memcmp(narrow.lower, &key, sizeof key), 0);
    }
  }
  // Without a current range: 0, and the narrowing still happens. Stored
  // keys are evaluated in their own form.
  ObIdxBounds narrow;
  uint16_t op = kObOpEqual;
  auto stored = Stored(ObOBJID_T, &key, 2);
  EXPECT_EQ(ObObjId::EvalAndBound(nullptr, op, stored.data(), 2, 1, &narrow),
            0.0f);
  EXPECT_EQ(narrow.lowerSize, 10);
  ObIdxBounds storedBounds;
  ObClassId c1(1, 0), c2(1, 9), probe(1, 5);
  storedBounds.SetLower(Stored(ObCLID_T, &c1, 2).data(), 4);
  storedBounds.SetUpper(Stored(ObCLID_T, &c2, 2).data(), 4);
  auto sprobe = Stored(ObCLID_T, &probe, 2);
  op = kObOpEqual;
  EXPECT_FLOAT_EQ(
      ObClassId::EvalAndBound(&storedBounds, op, sprobe.data(), 2, 1, nullptr),
      0.1f);
}

}  // namespace
