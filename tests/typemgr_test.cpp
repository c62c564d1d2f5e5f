// ObTypeMgr dispatch: tables, counters, exchange hooks, storage of the
// fixed-width and nullable rows, and the "illegal" row.
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

TEST(TypeMgr, FactoryChoosesTable) {
  struct Case {
    uint32_t factory, level;
    bool compat;
  } cases[] = {{0, 0, true},  {3, 3, true},   {4, 4, false},  {10, 10, false},
               {11, 3, true}, {12, 4, false}, {200, 4, false}};
  for (const Case& c : cases) {
    ObTypeMgr mgr(c.factory);
    EXPECT_EQ(mgr.GetFactory(), c.level) << c.factory;
    // Only the compatibility table's string row lacks a null value.
    EXPECT_EQ(mgr.SupportsNullValue(ObSTRING_T), c.compat ? 0 : 1) << c.factory;
    mgr.SetFactory(11);
    EXPECT_EQ(mgr.GetFactory(), 3u);
  }
}

TEST(TypeMgr, DefaultManagerAndContext) {
  ___ObTypemgrContext(1);
  ObTypeMgr* def = DefaultTypeMgr(nullptr);
  ASSERT_NE(def, nullptr);
  EXPECT_EQ(def->GetFactory(), 5u);
  EXPECT_EQ(DefaultTypeMgr(nullptr), def);  // asking changes nothing
  ObTypeMgr* mine = new ObTypeMgr(7);
  EXPECT_EQ(DefaultTypeMgr(mine), def);
  EXPECT_EQ(DefaultTypeMgr(nullptr), mine);
  delete def;
  ___ObTypemgrContext(0);  // deletes `mine`
  EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
  ___ObTypemgrContext(0);
  EXPECT_EQ(DefaultTypeMgr(nullptr), nullptr);
}

TEST(TypeMgr, CountersInMemoryForm) {
  ObTypeMgr mgr(5);
  struct Case {
    const char* what;
    char id;
    int64_t start;
    uint8_t kind;
    int32_t rc;
    int64_t after;
  } cases[] = {
      {"int advances", ObINT_T, 5, 'N', 0, 6},
      {"M advances too", ObINT_T, 5, 'M', 0, 6},
      {"O keeps", ObINT_T, 5, 'O', 0, 5},
      {"unknown kind", ObINT_T, 5, 'X', kObNotSupported, 5},
      {"kind 2 is not a GetValue kind", ObINT_T, 5, 2, kObNotSupported, 5},
      {"o_4b at its maximum", Ob4B_T, 0x7FFFFFFF, 'N', kObCounterAtMax,
       0x7FFFFFFF},
      {"o_u1b at 255", ObU1B_T, 255, 'N', kObCounterAtMax, 255},
      {"o_u2b", ObU2B_T, 65534, 'N', 0, 65535},
      {"enum never steps", ObENUM_T, 5, 'N', kObNotSupported, 5},
      {"BlockId steps like o_u4b", ObBLOCKID_T, 9, 'N', 0, 10},
      {"o_8b", Ob8B_T, -1, 'N', 0, 0},
      {"o_u8b at its maximum", ObU8B_T, -1, 'N', kObCounterAtMax, -1},
      {"illegal", ObRES_T, 0, 'N', kObNotSupported, 0},
  };
  for (const Case& c : cases) {
    int64_t value = c.start;  // little-endian host: narrow types use low bytes
    EXPECT_EQ(mgr.GetValue(c.id, &value, 0, 8, c.kind), c.rc) << c.what;
    int64_t masked = 0;
    std::memcpy(&masked, &value, mgr.MemLenGet(c.id, 1));
    int64_t expected = 0;
    std::memcpy(&expected, &c.after, mgr.MemLenGet(c.id, 1));
    EXPECT_EQ(masked, expected) << c.what;
  }
}

TEST(TypeMgr, FloatCounters) {
  ObTypeMgr mgr(5);
  double d = 1.0;
  EXPECT_EQ(mgr.GetValue(ObDOUBLE_T, &d, 0, 8, 'N'), 0);
  EXPECT_EQ(d, std::nextafter(1.0, 2.0));
  EXPECT_EQ(mgr.GetValue(ObDOUBLE_T, &d, 0, 8, 'O'), kObNotSupported);
  d = std::numeric_limits<double>::infinity();
  EXPECT_EQ(mgr.GetValue(ObDOUBLE_T, &d, 0, 8, 'N'), kObCounterAtMax);
  float f = -std::numeric_limits<float>::infinity();
  EXPECT_EQ(mgr.GetValue(ObFLOAT_T, &f, 0, 8, 'M'), 0);
  EXPECT_EQ(f, -std::numeric_limits<float>::max());
}

TEST(TypeMgr, CountersInStoredForm) {
  ObTypeMgr mgr(5);
  // Only format bits 0x81 survive, so format 2 arrives as code 0 and the
  // counter is read least significant byte first; stored counters rely on it.
  uint8_t stored[4] = {0xFF, 0x01, 0x00, 0x00};  // 511
  EXPECT_EQ(mgr.GetValue(ObINT_T, stored, 4, 2, 'N'), 0);
  EXPECT_EQ(std::vector<uint8_t>(stored, stored + 4),
            (std::vector<uint8_t>{0x00, 0x02, 0x00, 0x00}));
  uint8_t top[2] = {0xFF, 0x7F};  // 32767, format 1
  EXPECT_EQ(mgr.GetValue(Ob2B_T, top, 2, 1, 'N'), kObCounterAtMax);
  EXPECT_EQ(top[0], 0xFF);
  uint8_t key[2] = {0xFF, 0x05};
  EXPECT_EQ(mgr.GetValue(ObU2B_T, key, 2, 0x81, 'M'), 0);
  EXPECT_EQ(key[0], 0x00);
  EXPECT_EQ(key[1], 0x06);
}

int32_t AlwaysBefore(uint8_t, uint32_t, const void*, uint32_t, const void*,
                     uint16_t, uint32_t, int32_t& status) {
  status = ObCMP_OPERAND_EXHAUSTED;
  return -7;
}

TEST(TypeMgr, ExchangeHooksAndShortCmp) {
  ObTypeMgr mgr(5);
  EXPECT_STREQ(mgr.ExchangeFormat(ObINT_T, nullptr), "%d");
  EXPECT_STREQ(mgr.ExchangeFormat(ObINT_T, "%x"), "%d");
  ObTypeMgr other(2);  // rows are shared between managers and tables
  EXPECT_STREQ(other.ExchangeFormat(ObINT_T, "%d"), "%x");

  EXPECT_EQ(mgr.CmpFuncPtrGet(ObINT_T), IntCompare);
  EXPECT_EQ(mgr.ExchangeObTypeCmpFunc(ObINT_T, AlwaysBefore), IntCompare);
  int a = 1, b = 1;
  // The short form returns the comparator's result whatever its status.
  EXPECT_EQ(mgr.Cmp(ObINT_T, &a, &b, 0, 1, 8), -7);
  EXPECT_EQ(mgr.ExchangeObTypeCmpFunc(ObINT_T, IntCompare), AlwaysBefore);
  EXPECT_EQ(mgr.Cmp(ObINT_T, &a, &b, 0, 1, 8), 0);
  EXPECT_EQ(mgr.ComparePtrGet(ObINT_T), nullptr);
}

TEST(TypeMgr, FixedWidthStorageThroughRows) {
  ObTypeMgr mgr(5);
  const int32_t values[2] = {0x01020304, -2};
  uint8_t out[8];
  EXPECT_EQ(mgr.Store(Ob4B_T, out, values, 2, 2), 8u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 8),
            (std::vector<uint8_t>{1, 2, 3, 4, 0xFF, 0xFF, 0xFF, 0xFE}));
  int32_t back[2] = {};
  EXPECT_EQ(mgr.Load(Ob4B_T, back, out, 2, 2), 8u);
  EXPECT_EQ(back[0], values[0]);
  EXPECT_EQ(back[1], values[1]);
  EXPECT_EQ(mgr.DiskLenGet(ObDOUBLE_T, nullptr, 2, 3, 8), 24u);
  EXPECT_EQ(mgr.DiskLenGet(D_INTERVAL_T, nullptr, 2, 3, 8), 12u);
  MemFile file(out, sizeof out);
  EXPECT_EQ(mgr.DiskLenGetFromMemFile(Ob2B_T, &file, 2, 3), 6u);
  for (char id : {Ob1B_T, Ob2B_T, Ob4B_T, ObDOUBLE_T, ObFLOAT_T, ObU2B_T,
                  ObU4B_T, ObINT_T, ObUNSIGNED_T, ObENUM_T, ObU1B_T,
                  ObBLOCKID_T, Ob8B_T, ObU8B_T}) {
    EXPECT_NE(mgr.StorePtrGet(id), nullptr) << int(id);
    EXPECT_NE(mgr.LoadPtrGet(id), nullptr) << int(id);
    EXPECT_EQ(mgr.IsNullValue(id, values), 0);
    EXPECT_EQ(mgr.SetNullPtrGet(id), nullptr);
  }
}

TEST(TypeMgr, TranslateRules) {
  ObTypeMgr mgr(5);
  const int16_t values[2] = {0x0102, 0x0304};
  uint8_t big[4];
  EXPECT_EQ(mgr.Translate(Ob2B_T, big, 2, 4, values, 8, 0, 2), 4u);
  EXPECT_EQ(std::vector<uint8_t>(big, big + 4),
            (std::vector<uint8_t>{1, 2, 3, 4}));
  // Stored to stored copies bytes unchanged, zero-filling a longer target.
  uint8_t copy[6];
  std::memset(copy, 0xAA, sizeof copy);
  EXPECT_EQ(mgr.Translate(Ob2B_T, copy, 1, 6, big, 2, 4, 2), 4u);
  EXPECT_EQ(std::vector<uint8_t>(copy, copy + 6),
            (std::vector<uint8_t>{1, 2, 3, 4, 0, 0}));
  EXPECT_EQ(mgr.Translate(Ob2B_T, copy, 1, 2, big, 2, 4, 2), 2u);
  int16_t back[2] = {};
  EXPECT_EQ(mgr.Translate(Ob2B_T, back, 8, 4, big, 2, 4, 2), 4u);
  EXPECT_EQ(back[1], 0x0304);
  int16_t mem[2] = {};
  EXPECT_EQ(mgr.Translate(Ob2B_T, mem, 8, 4, values, 8, 4, 2), 4u);
  EXPECT_EQ(mem[0], 0x0102);
}

TEST(TypeMgr, NullableRows) {
  ObTypeMgr mgr(5);
  ObNull_int v[2] = {{-3, 0}, {0, 0}};
  EXPECT_EQ(mgr.SetNullValue(ObNULL_INT_T, &v[1]), 0);
  EXPECT_EQ(mgr.IsNullValue(ObNULL_INT_T, &v[1]), 1);
  EXPECT_EQ(mgr.IsNullValue(ObNULL_INT_T, &v[0]), 0);
  ObNull_char negative = {1, -1};  // the indicator is sign-extended
  EXPECT_EQ(mgr.IsNullValue(ObNULL_1B_T, &negative), -1);

  uint8_t out[10];
  EXPECT_EQ(mgr.Store(ObNULL_INT_T, out, v, 2, 2), 10u);
  EXPECT_EQ(std::vector<uint8_t>(out, out + 10),
            (std::vector<uint8_t>{0xFF, 0xFF, 0xFF, 0xFD, 0, 0, 0, 0, 0, 1}));
  ObNull_int back[2] = {{7, 7}, {7, 7}};
  EXPECT_EQ(mgr.Load(ObNULL_INT_T, back, out, 2, 2), 10u);
  EXPECT_EQ(back[0].value, -3);
  EXPECT_EQ(back[0].isNull, 0);
  EXPECT_EQ(back[1].isNull, 1);
  EXPECT_EQ(mgr.DiskLenGet(ObNULL_DOUBLE_T, nullptr, 2, 2, 8), 18u);

  // Null orders first, in memory and stored form alike.
  int32_t status = 0;
  EXPECT_GT(mgr.Cmp(ObNULL_INT_T, 0, &v[0], 0, &v[1], 0, 1, 8, status), 0);
  EXPECT_GT(mgr.Cmp(ObNULL_INT_T, 5, out, 5, out + 5, 0, 1, 2, status), 0);
  EXPECT_EQ(mgr.Cmp(ObNULL_INT_T, 0, &v[1], 0, &v[1], 0, 1, 8, status), 0);

  ObNull_double d = {std::nan(""), 1};
  EXPECT_EQ(mgr.GetValue(ObNULL_DOUBLE_T, &d, 0, 8, 'N'), kObCounterAtMax);
  ObNull_u8b u = {5, 0};
  EXPECT_EQ(mgr.GetValue(ObNULL_U8B_T, &u, 0, 8, 'N'), 0);
  EXPECT_EQ(u.value, 6u);

  void* created = mgr.Create(ObNULL_OBINT64_T, 3);
  ASSERT_NE(created, nullptr);
  EXPECT_EQ(mgr.SetNullValue(ObNULL_OBINT64_T, created), 0);
  EXPECT_EQ(mgr.IsNullValue(ObNULL_OBINT64_T, created), 1);
  EXPECT_EQ(mgr.Delete(ObNULL_OBINT64_T, created, 3), nullptr);
}

TEST(TypeMgr, SetNullValueWithoutNullOrConversion) {
  ObTypeMgr mgr(5);
  int32_t v = 9;
  // No null value and no conversion from text yet: nothing is claimed.
  EXPECT_EQ(mgr.SetNullValue(ObINT_T, &v), kObNotSupported);
  EXPECT_EQ(v, 9);
  EXPECT_EQ(mgr.DiskIsNullValue(ObNULL_INT_T, &v), kObNotSupported);
}

TEST(TypeMgr, IllegalRowDoesNothing) {
  ObTypeMgr mgr(5);
  for (int id : {46, 100, 127}) {
    const char c = static_cast<char>(id);
    uint8_t buf[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    int32_t status = 5;
    EXPECT_EQ(mgr.Create(c, 4), nullptr);
    EXPECT_EQ(mgr.Store(c, buf, buf, 2, 1), 0u);
    EXPECT_EQ(mgr.Cmp(c, 1, buf, 1, buf + 1, 0, 1, 8, status), 0);
    EXPECT_EQ(mgr.Hash(c, 8, buf, 1, 2, status), 0u);
    EXPECT_EQ(mgr.Translate(c, buf, 2, 8, buf, 8, 8, 1), 0u);
    EXPECT_EQ(mgr.IsNullValue(c, buf), 0);
    EXPECT_EQ(mgr.SupportsNullValue(c), 0);
    uint16_t op = 1;
    EXPECT_EQ(mgr.EvalAndBound(c, nullptr, op, buf, 2, 1, nullptr, nullptr),
              0.0f);
    EXPECT_EQ(mgr.DefaultValue(c, 2, 0), nullptr);
  }
}

TEST(TypeMgr, StringRowMemoryOperations) {
  ObTypeMgr mgr(5);
  auto* s = static_cast<ObString*>(mgr.Create(ObSTRING_T, 2));
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s[0].GetSize(), 0);
  ObString src[2] = {ObString("ab"), ObString("cde")};
  mgr.AssignmentPtrGet(ObSTRING_T)(s, src, 2, 1);
  EXPECT_STREQ(s[1].StrGet(), "cde");
  EXPECT_EQ(mgr.SetNullValue(ObSTRING_T, &s[0]), 0);
  EXPECT_EQ(mgr.IsNullValue(ObSTRING_T, &s[0]), 1);
  mgr.Delete(ObSTRING_T, s, 2);

  ObTypeConvertData* data =
      ObTypeConvertData::Make(ObSTRING_T, 1, mgr.Create(ObSTRING_T, 1), &mgr);
  ASSERT_NE(data, nullptr);
  EXPECT_NE(data->GetString(0), nullptr);
  EXPECT_EQ(data->GetString(1), nullptr);
  EXPECT_EQ(data->GetString(-1), nullptr);
  delete data;  // frees the strings through the manager
}

}  // namespace
