// The catalogue as the type manager exposes it.
#include <cstring>
#include <set>
#include <string>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

struct RowExpect {
  int id;
  const char* idName;
  const char* name;
  uint16_t mem;
  uint16_t fixed;
  const char* format;
  bool null, seq, stamp;
};

// clang-format off
const RowExpect kRows[] = {
  {0, "Ob1B_T", "o_char", 1, 1, "%c", false, true, false},
  {1, "Ob2B_T", "o_2b", 2, 1, "%hd", false, true, false},
  {2, "Ob4B_T", "o_4b", 4, 1, "%ld", false, true, false},
  {3, "ObDOUBLE_T", "o_double", 8, 1, "%.17g", false, false, false},
  {4, "ObFLOAT_T", "o_float", 4, 1, "%.17g", false, false, false},
  {5, "ObU2B_T", "o_u2b", 2, 1, "%hu", false, true, false},
  {6, "ObU4B_T", "o_u4b", 4, 1, "%lu", false, true, false},
  {7, "ObINT_T", "int", 4, 1, "%d", false, true, false},
  {8, "ObUNSIGNED_T", "unsigned", 4, 1, "%u", false, true, false},
  {9, "ObENUM_T", "enum", 4, 1, "%d", false, true, false},
  {10, "ObU1B_T", "o_u1b", 1, 1, "%c", false, true, false},
  {11, "ObSTRING_T", "ObString", 16, 0, "%s", true, false, false},
  {12, "ObDATE_T", "ObDate", 4, 1, "%a %e.%b %Y", true, false, true},
  {13, "ObTIME_T", "ObTime", 3, 1, "%I:%M:%S %p", true, false, true},
  {14, "ObBLOCKID_T", "BlockId", 4, 1, "#%lu", false, false, false},
  {15, "ObOBJID_T", "ObObjId", 12, 1, "(%H-%L#%B)", true, true, false},
  {16, "ObCLID_T", "ObClassId", 4, 1, "(%Cv%V)", true, false, false},
  {17, "ObREF_T", "ObRef", 16, 1, "(%D:%H-%L#%B, %C)", true, false, false},
  {18, "ObBLOB_T", "ObBlob", 8, 0, "[BLOB,len=%L]", true, false, false},
  {19, "ObDATIME_T", "ObDateTime", 8, 1, "%a %e.%b %Y %I:%M:%S %p", true, false, true},
  {20, "ObISTRING_T", "ObIString", 16, 0, "%s", false, false, false},
  {21, "ObCASEISTRING_T", "ObCaseIString", 16, 0, "%s", false, false, false},
  {22, "D_DATE_T", "d_Date", 4, 1, "%a %b %e", false, false, true},
  {23, "D_TIME_T", "d_Time", 6, 1, "%I:%M:%S %p", false, false, true},
  {24, "D_TIMESTAMP_T", "d_Timestamp", 10, 1, "%a %b %e %I:%M:%S %p", false, false, true},
  {25, "D_INTERVAL_T", "d_Interval", 4, 1, "%e days, %I hours, %M minutes, %S seconds", false, false, false},
  {26, "ObINT64_T", "ObInt64", 8, 1, "%S", false, true, false},
  {27, "ObBOOLEAN_T", "ObBoolean", 1, 1, "noop", true, false, false},
  {28, "ObNULL_1B_T", "ObNull_char", 2, 1, "%c", true, false, false},
  {29, "ObNULL_U1B_T", "ObNull_uchar", 2, 1, "%c", true, false, false},
  {30, "ObNULL_2B_T", "ObNull_short", 4, 1, "%hd", true, false, false},
  {31, "ObNULL_U2B_T", "ObNull_ushort", 4, 1, "%hu", true, false, false},
  {32, "ObNULL_INT_T", "ObNull_int", 8, 1, "%d", true, false, false},
  {33, "ObNULL_UNSIGNED_T", "ObNull_unsigned", 8, 1, "%u", true, false, false},
  {34, "ObNULL_4B_T", "ObNull_long", 8, 1, "%ld", true, false, false},
  {35, "ObNULL_U4B_T", "ObNull_ulong", 8, 1, "%lu", true, false, false},
  {36, "ObNULL_FLOAT_T", "ObNull_float", 8, 1, "%f", true, false, false},
  {37, "ObNULL_DOUBLE_T", "ObNull_double", 16, 1, "%lf", true, false, false},
  {38, "ObNULL_OBINT64_T", "ObNull_ObInt64", 12, 1, "%S", true, false, false},
  {39, "ObSEAL_T", "ObSeal", 6, 1, "noop", false, false, false},
  {40, "ObDATIME_N_T", "ObDateTimeN", 12, 1, "%X", true, false, true},
  {41, "ObTIMESPAN_T", "ObTimeSpan", 12, 1, "%V", true, false, false},
  {42, "Ob8B_T", "o_8b", 8, 1, "%I64d", false, true, false},
  {43, "ObU8B_T", "o_u8b", 8, 1, "%I64u", false, true, false},
  {44, "ObNULL_8B_T", "ObNull_8b", 16, 1, "%I64d", true, false, false},
  {45, "ObNULL_U8B_T", "ObNull_u8b", 16, 1, "%I64u", true, false, false},
  {46, "ObRES_T", "illegal", 0, 1, "illegal", false, false, false},
};
// clang-format on

// Rows whose value classes are not built yet: they must not claim a null
// value they cannot set.
const std::set<int> kPendingNull = {};

TEST(Catalog, EveryRowAsListed) {
  ObTypeMgr mgr(5);
  ASSERT_EQ(sizeof kRows / sizeof kRows[0], size_t{kObTypeCount});
  for (const RowExpect& e : kRows) {
    const char id = static_cast<char>(e.id);
    SCOPED_TRACE(e.name);
    EXPECT_STREQ(mgr.NameGet(id, nullptr), e.name);
    EXPECT_STREQ(mgr.TypeIdNameGet(id, nullptr), e.idName);
    EXPECT_EQ(mgr.MemLenGet(id, 1), e.mem);
    EXPECT_EQ(mgr.IsFixed(id), e.fixed);
    EXPECT_STREQ(mgr.ExchangeFormat(id, nullptr), e.format);
    EXPECT_EQ(mgr.SupportsCapability(id, kObCapCounter), e.seq);
    EXPECT_EQ(mgr.SupportsCapability(id, kObCapTimeStamp), e.stamp);
    EXPECT_EQ(mgr.SupportsCapability(id, 4), 0);
    if (kPendingNull.count(e.id) == 0) {
      EXPECT_EQ(mgr.SupportsNullValue(id), e.null);
    } else {
      EXPECT_EQ(mgr.SupportsNullValue(id), 0);
    }
    char id2 = -1;
    EXPECT_EQ(ObTypeMgr::Name2ObTypeId(e.name, id2), 0);
    EXPECT_EQ(id2, id);
  }
}

TEST(Catalog, NameLookups) {
  char id = -1;
  EXPECT_EQ(ObTypeMgr::Name2ObTypeId("int", id), 0);
  EXPECT_EQ(id, ObINT_T);
  // Only display names are searched, case-sensitively.
  EXPECT_EQ(ObTypeMgr::Name2ObTypeId("Ob4B_T", id), 1);
  EXPECT_EQ(id, 47);
  EXPECT_EQ(ObTypeMgr::Name2ObTypeId("INT", id), 1);
  EXPECT_EQ(ObTypeMgr::Name2ObTypeId(nullptr, id), 1);

  ObTypeMgr mgr(5);
  char buffer[32];
  EXPECT_EQ(mgr.NameGet(ObU4B_T, buffer), buffer);
  EXPECT_STREQ(buffer, "o_u4b");
  EXPECT_STREQ(mgr.TypeIdNameGet(ObU4B_T, buffer), "ObU4B_T");
  EXPECT_STREQ(mgr.NameGet(static_cast<char>(127), nullptr), "illegal");
}

TEST(Catalog, ValidIdentifiers) {
  struct Case {
    int id, valid;
  } cases[] = {{0, 1},   {46, 1},  {47, 0}, {99, 0},
               {100, 1}, {127, 1}, {-1, 1}, {-128, 1}};
  for (const Case& c : cases) {
    EXPECT_EQ(ObTypeMgr::IsValidType(static_cast<char>(c.id)), c.valid) << c.id;
  }
}

TEST(Catalog, LengthsAndElements) {
  ObTypeMgr mgr(5);
  EXPECT_EQ(mgr.MemLenGet(ObTIME_T, 2), 6);
  EXPECT_EQ(mgr.MemLenGet(ObSTRING_T, 4096), 0);  // wraps at 16 bits
  int32_t values[8];
  EXPECT_EQ(mgr.GetArrayElement(Ob4B_T, values, 3, 3), nullptr);
  EXPECT_EQ(mgr.GetArrayElement(Ob4B_T, values, 2, 3), &values[2]);
  EXPECT_EQ(mgr.GetArrayElement(Ob4B_T, values, 7, 0), &values[7]);
  EXPECT_EQ(mgr.GetArrayElement(ObRES_T, values, 0, 0), nullptr);
}

TEST(Catalog, CapabilitiesTestTheIdentifierAsGiven) {
  ObTypeMgr mgr(5);
  EXPECT_EQ(mgr.SupportsCapability(ObTIMESPAN_T, kObCapTimeStamp), 0);
  EXPECT_EQ(mgr.SupportsCapability(ObDATIME_N_T, kObCapTimeStamp), 1);
  EXPECT_EQ(mgr.SupportsCapability(ObENUM_T, kObCapCounter), 1);
  EXPECT_EQ(mgr.SupportsCapability(ObBLOCKID_T, kObCapCounter), 0);
  EXPECT_EQ(mgr.SupportsCapability(static_cast<char>(100), kObCapNull), 0);
}

}  // namespace
