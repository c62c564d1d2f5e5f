// The type catalogue: one row per type identifier.
//
// DO NOT CHANGE names, memory lengths or default formats: schemas, stored
// records and printed texts of existing databases depend on them.
#include "catalog.h"

#include <type_traits>

#include "hashrows.h"

#include "daterows.h"
#include "identityrows.h"
#include "int64row.h"
#include "istringrows.h"
#include "nullrows.h"
#include "obblob.h"
#include "obboolean.h"
#include "obbs.h"
#include "obstrkey.h"
#include "obtypes.h"
#include "printscan.h"
#include "rowbuild.h"
#include "rowops.h"
#include "stdrows.h"
#include "spanrows.h"

using namespace obrow;

namespace {

// The text form of a basic number: bytes print as characters.
template <class T>
constexpr void SetNumberText(ObTypeEntry& r) {
  if constexpr (sizeof(T) == 1) {
    r.print = obprint::CharPrint;
    r.scan = obprint::CharScan;
  } else if constexpr (std::is_same<T, float>::value) {
    r.print = obprint::FloatPrint;
    r.scan = obprint::FloatScan;
  } else if constexpr (std::is_same<T, double>::value) {
    r.print = obprint::DoublePrint;
    r.scan = obprint::DoubleScan;
  } else {
    r.print = obprint::IntegerPrint<T>;
    r.scan = obprint::IntegerScan<T>;
  }
}

// A basic numeric row. Store, Load, NullSizeGet and SizeGet come from the
// base-services library while the library loads (InitFixedWidthSlots).
template <class T>
constexpr ObTypeEntry Fixed(const char* name, const char* idName,
                            ObKeyCompareFn compare, ObTranslateFn translate,
                            const char* format, ObSequenceStepFn step) {
  ObTypeEntry r = Pending(name, idName, sizeof(T), 1, format);
  SetMemOps(r, kPlain<T>);
  r.sizeGetFromMemFile = FixedSizeFromMemFile<sizeof(T)>;
  r.compare = compare;
  r.translate = translate;
  r.isNull = IsNullNever;
  r.sequenceStep = step;
  r.hash = NumberHash<T>;
  SetNumberText<T>(r);
  return r;
}

template <class Row>
constexpr ObTypeEntry Nullable(const char* name, const char* idName,
                               const char* format) {
  using V = typename Row::Value;
  ObTypeEntry r = Pending(name, idName, sizeof(V), 1, format);
  SetMemOps(r, kPlain<V>);
  r.store = Row::Store;
  r.load = Row::Load;
  r.nullSizeGet = Row::NullSize;
  r.sizeGet = Row::SizeGet;
  r.sizeGetFromMemFile = FixedSizeFromMemFile<Row::kStored>;
  r.compare = Row::Compare;
  r.translate = Row::Translate;
  r.isNull = Row::IsNull;
  r.setNull = Row::SetNull;
  r.sequenceStep = Row::Step;
  r.hash = NullableHash<typename Row::Type>;
  r.print = obprint::NullablePrint<typename Row::Type>;
  r.scan = obprint::NullableScan<typename Row::Type>;
  return r;
}

// ObString rows. The compatibility table's row writes the earlier record
// form and has no null value and no counter step.
constexpr ObTypeEntry StringRow(bool current) {
  ObTypeEntry r = Pending("ObString", "ObSTRING_T", 16, 0, "%s");
  SetMemOps(r, kStringMem);
  r.load = StringLoad;
  r.hash = oblayout::StringHash;
  if (current) {
    r.store = StringStore;
    r.nullSizeGet = oblayout::StringNullSizeGet;
    r.sizeGet = StringSizeGet;
    r.sizeGetFromMemFile = oblayout::StringSizeFromMemFile;
    r.compare = StringCompare;
    r.translate = oblayout::StringTranslate;
  } else {
    r.store = oblayout::OldStringStore;
    r.nullSizeGet = oblayout::OldStringNullSizeGet;
    r.sizeGet = oblayout::OldStringSizeGet;
    r.sizeGetFromMemFile = oblayout::OldStringSizeFromMemFile;
    r.compare = StringCompareLegacy;
    r.translate = oblayout::OldStringTranslate;
  }
  const ObSetNullFn setNull = current ? StringSetNull : nullptr;
  const ObIsNullFn isNull = current ? StringIsNull : IsNullNever;
  const ObSequenceStepFn step =
      current ? oblayout::StringSequenceStep : StepUnsupported;
  r.isNull = isNull;
  r.setNull = setNull;
  r.sequenceStep = step;
  r.print = obprint::StringPrint;
  r.scan = obprint::StringScan;
  return r;
}

int32_t BlobIsNull(const void* value) {
  return static_cast<const ObBlob*>(value)->IsNullValue();
}
int32_t BlobSetNull(void* value) {
  return static_cast<ObBlob*>(value)->SetNullValue();
}

// ObBlob: a 32-bit length and the bytes when stored.
constexpr ObTypeEntry BlobRow() {
  ObTypeEntry r = Pending("ObBlob", "ObBLOB_T", 8, 0, "[BLOB,len=%L]");
  SetMemOps(r, kClass<ObBlob>);
  r.store = oblayout::BlobStore;
  r.load = oblayout::BlobLoad;
  r.nullSizeGet = oblayout::BlobNullSizeGet;
  r.sizeGet = oblayout::BlobSizeGet;
  r.sizeGetFromMemFile = oblayout::BlobSizeFromMemFile;
  r.compare = BlobCompare;
  r.hash = oblayout::BlobHash;
  r.translate = oblayout::BlobTranslate;
  r.isNull = BlobIsNull;
  r.setNull = BlobSetNull;
  r.print = obprint::BlobPrint;
  r.scan = obprint::BlobScan;
  r.sequenceStep = StepUnsupported;
  return r;
}

int32_t BooleanIsNull(const void* value) {
  return static_cast<const ObBoolean*>(value)->IsNullValue();
}
int32_t BooleanSetNull(void* value) {
  return static_cast<ObBoolean*>(value)->SetNullValue();
}

// Counter rule on false < true; a null boolean has no successor.
int32_t BooleanStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  if (format != kObFormatMemory) return kObNotSupported;
  ObBoolean& b = *static_cast<ObBoolean*>(value);
  switch (kind) {
    case kStepReset:
      b = 0;
      return 0;
    case kStepKeep:
      return 0;
    case kStepNext:
    case kStepNextM:
      if (b.IsNullValue() || b.GetValue() != 0) return kObCounterAtMax;
      b = 1;
      return 0;
    default:
      return kObNotSupported;
  }
}

// Booleans that compare equal (all nonzero values, all nulls) hash alike.
uint32_t BooleanHash(uint8_t, uint32_t len, const void* value, uint32_t count,
                     int32_t& status) {
  return obhash::HashLoop<1>(len, value, count, status, [](const uint8_t* p) {
    return *p == ObBoolean::kNull ? uint32_t{ObBoolean::kNull}
                                  : uint32_t{*p != 0};
  });
}

// ObBoolean: one byte in memory and in every stored format.
constexpr ObTypeEntry BooleanRow() {
  ObTypeEntry r = Pending("ObBoolean", "ObBOOLEAN_T", 1, 1, "noop");
  SetMemOps(r, kPlain<ObBoolean>);
  r.store = CharStore;
  r.load = CharStore;
  r.nullSizeGet = CharNullSizeGet;
  r.sizeGet = CharSizeGet;
  r.sizeGetFromMemFile = FixedSizeFromMemFile<1>;
  r.compare = BooleanCompare;
  r.hash = BooleanHash;
  r.translate = FixedTranslate<1, CharStore, CharStore>;
  r.isNull = BooleanIsNull;
  r.setNull = BooleanSetNull;
  r.print = obprint::BooleanPrint;
  r.scan = obprint::BooleanScan;
  r.sequenceStep = BooleanStep;
  return r;
}

// Every operation does nothing and reports nothing; there is no SetNull.
constexpr ObTypeEntry IllegalRow() {
  ObTypeEntry r = Pending("illegal", "ObRES_T", 0, 1, "illegal");
  r.create = CreateNothing;
  r.del = DeleteNothing;
  r.store = StoreNothing;
  r.load = StoreNothing;
  r.nullSizeGet = NullSizeNothing;
  r.sizeGet = SizeGetNothing;
  r.sizeGetFromMemFile = SizeFromMemFileNothing;
  r.compare = CompareNothing;
  r.evalAndBound = EvalNothing;
  r.hash = HashNothing;
  r.convertTo = ConvertToNothing;
  r.convertFrom = ConvertFromNothing;
  r.constructor = ConstructNothing;
  r.destructor = ConstructNothing;
  r.assignment = AssignNothing;
  r.copy = AssignNothing;
  r.translate = TranslateNothing;
  r.isNull = IsNullNever;
  r.print = PrintNothing;
  r.scan = ScanNothing;
  r.defaultValue = DefaultValueNothing;
  r.sequenceStep = StepUnsupported;
  return r;
}

using Tr8 = decltype(&FixedTranslate<1, CharStore, CharStore>);
constexpr Tr8 kTranslate8 = FixedTranslate<1, CharStore, CharStore>;
constexpr Tr8 kTranslate16 = FixedTranslate<2, ShortStore, ShortStore>;
constexpr Tr8 kTranslate32 = FixedTranslate<4, LongStore, LongStore>;
constexpr Tr8 kTranslate64 = FixedTranslate<8, O_8BStore, O_8BStore>;
constexpr Tr8 kTranslateInt = FixedTranslate<4, IntStore, IntLoad>;
constexpr Tr8 kTranslateUnsigned =
    FixedTranslate<4, UnsignedStore, UnsignedLoad>;
constexpr Tr8 kTranslateFloat = FixedTranslate<4, FloatStore, FloatStore>;
constexpr Tr8 kTranslateDouble = FixedTranslate<8, DoubleStore, DoubleStore>;

using NullChar = NullableRow<int8_t, CharStore>;
using NullUChar = NullableRow<uint8_t, CharStore>;
using NullShort = NullableRow<int16_t, ShortStore>;
using NullUShort = NullableRow<uint16_t, ShortStore>;
using NullInt = NullableRow<int32_t, IntStore>;
using NullUnsigned = NullableRow<uint32_t, UnsignedStore>;
using NullLong = NullableRow<int32_t, LongStore>;
using NullULong = NullableRow<uint32_t, LongStore>;
using NullFloat = NullableRow<float, FloatStore>;
using NullDouble = NullableRow<double, DoubleStore>;
using Null8B = NullableRow<int64_t, O_8BStore>;
using NullU8B = NullableRow<uint64_t, O_8BStore>;

// clang-format off
ObTypeEntry g_rows[kObTypeCount] = {
  /*  0 */ Fixed<int8_t>("o_char", "Ob1B_T", CharCompare, kTranslate8, "%c", IntegerStep<int8_t>),
  /*  1 */ Fixed<int16_t>("o_2b", "Ob2B_T", ShortCompare, kTranslate16, "%hd", IntegerStep<int16_t>),
  /*  2 */ Fixed<int32_t>("o_4b", "Ob4B_T", LongCompare, kTranslate32, "%ld", IntegerStep<int32_t>),
  /*  3 */ Fixed<double>("o_double", "ObDOUBLE_T", DoubleCompare, kTranslateDouble, "%.17g", FloatStep<double>),
  /*  4 */ Fixed<float>("o_float", "ObFLOAT_T", FloatCompare, kTranslateFloat, "%.17g", FloatStep<float>),
  /*  5 */ Fixed<uint16_t>("o_u2b", "ObU2B_T", WordCompare, kTranslate16, "%hu", IntegerStep<uint16_t>),
  /*  6 */ Fixed<uint32_t>("o_u4b", "ObU4B_T", DwordCompare, kTranslate32, "%lu", IntegerStep<uint32_t>),
  /*  7 */ Fixed<int32_t>("int", "ObINT_T", IntCompare, kTranslateInt, "%d", IntegerStep<int32_t>),
  /*  8 */ Fixed<uint32_t>("unsigned", "ObUNSIGNED_T", UnsignedCompare, kTranslateUnsigned, "%u", IntegerStep<uint32_t>),
  /*  9 */ Fixed<int32_t>("enum", "ObENUM_T", IntCompare, kTranslateInt, "%d", StepUnsupported),
  /* 10 */ Fixed<uint8_t>("o_u1b", "ObU1B_T", ByteCompare, kTranslate8, "%c", IntegerStep<uint8_t>),
  /* 11 */ StringRow(true),
  /* 12 */ obdaterow::DateRow(),
  /* 13 */ obdaterow::TimeRow(),
  /* 14 */ Fixed<uint32_t>("BlockId", "ObBLOCKID_T", DwordCompare, kTranslate32, "#%lu", IntegerStep<uint32_t>),
  /* 15 */ IdentityRow<ObObjId>("ObObjId", "ObOBJID_T", "(%H-%L#%B)", ObjectIdStep<ObObjId>),
  /* 16 */ IdentityRow<ObClassId>("ObClassId", "ObCLID_T", "(%Cv%V)", StepUnsupported),
  /* 17 */ IdentityRow<ObRef>("ObRef", "ObREF_T", "(%D:%H-%L#%B, %C)", ObjectIdStep<ObRef>),
  /* 18 */ BlobRow(),
  /* 19 */ obdaterow::DateTimeRow(),
  /* 20 */ IStringRow(),
  /* 21 */ CaseIStringRow(),
  /* 22 */ obstdrow::StdDateRow(),
  /* 23 */ obstdrow::StdTimeRow(),
  /* 24 */ obstdrow::StdTimestampRow(),
  /* 25 */ obstdrow::StdIntervalRow(kTranslateFloat),
  /* 26 */ Int64Row("ObInt64", "ObINT64_T", "%S"),
  /* 27 */ BooleanRow(),
  /* 28 */ Nullable<NullChar>("ObNull_char", "ObNULL_1B_T", "%c"),
  /* 29 */ Nullable<NullUChar>("ObNull_uchar", "ObNULL_U1B_T", "%c"),
  /* 30 */ Nullable<NullShort>("ObNull_short", "ObNULL_2B_T", "%hd"),
  /* 31 */ Nullable<NullUShort>("ObNull_ushort", "ObNULL_U2B_T", "%hu"),
  /* 32 */ Nullable<NullInt>("ObNull_int", "ObNULL_INT_T", "%d"),
  /* 33 */ Nullable<NullUnsigned>("ObNull_unsigned", "ObNULL_UNSIGNED_T", "%u"),
  /* 34 */ Nullable<NullLong>("ObNull_long", "ObNULL_4B_T", "%ld"),
  /* 35 */ Nullable<NullULong>("ObNull_ulong", "ObNULL_U4B_T", "%lu"),
  /* 36 */ Nullable<NullFloat>("ObNull_float", "ObNULL_FLOAT_T", "%f"),
  /* 37 */ Nullable<NullDouble>("ObNull_double", "ObNULL_DOUBLE_T", "%lf"),
  /* 38 */ NullInt64Row("ObNull_ObInt64", "ObNULL_OBINT64_T", "%S"),
  /* 39 */ IdentityRow<ObSeal>("ObSeal", "ObSEAL_T", "noop", StepUnsupported),
  /* 40 */ obspanrow::DateTimeNRow(),
  /* 41 */ obspanrow::TimeSpanRow(),
  /* 42 */ Fixed<int64_t>("o_8b", "Ob8B_T", O_8BCompare, kTranslate64, "%I64d", IntegerStep<int64_t>),
  /* 43 */ Fixed<uint64_t>("o_u8b", "ObU8B_T", O_U8BCompare, kTranslate64, "%I64u", IntegerStep<uint64_t>),
  /* 44 */ Nullable<Null8B>("ObNull_8b", "ObNULL_8B_T", "%I64d"),
  /* 45 */ Nullable<NullU8B>("ObNull_u8b", "ObNULL_U8B_T", "%I64u"),
  /* 46 */ IllegalRow(),
};
// clang-format on

// The earlier ObString row: no null value and no counter step.
ObTypeEntry g_compatStringRow =
    StringRow(false);

}  // namespace

// clang-format off
ObTypeEntry* const g_currentTable[kObTypeCount] = {
  &g_rows[0],  &g_rows[1],  &g_rows[2],  &g_rows[3],  &g_rows[4],  &g_rows[5],
  &g_rows[6],  &g_rows[7],  &g_rows[8],  &g_rows[9],  &g_rows[10], &g_rows[11],
  &g_rows[12], &g_rows[13], &g_rows[14], &g_rows[15], &g_rows[16], &g_rows[17],
  &g_rows[18], &g_rows[19], &g_rows[20], &g_rows[21], &g_rows[22], &g_rows[23],
  &g_rows[24], &g_rows[25], &g_rows[26], &g_rows[27], &g_rows[28], &g_rows[29],
  &g_rows[30], &g_rows[31], &g_rows[32], &g_rows[33], &g_rows[34], &g_rows[35],
  &g_rows[36], &g_rows[37], &g_rows[38], &g_rows[39], &g_rows[40], &g_rows[41],
  &g_rows[42], &g_rows[43], &g_rows[44], &g_rows[45], &g_rows[46],
};
// Identifiers 28 and above are not part of the compatibility table; they
// reach the "illegal" row there.
ObTypeEntry* const g_compatTable[kObTypeCount] = {
  &g_rows[0],  &g_rows[1],  &g_rows[2],  &g_rows[3],  &g_rows[4],  &g_rows[5],
  &g_rows[6],  &g_rows[7],  &g_rows[8],  &g_rows[9],  &g_rows[10], &g_compatStringRow,
  &g_rows[12], &g_rows[13], &g_rows[14], &g_rows[15], &g_rows[16], &g_rows[17],
  &g_rows[18], &g_rows[19], &g_rows[20], &g_rows[21], &g_rows[22], &g_rows[23],
  &g_rows[24], &g_rows[25], &g_rows[26], &g_rows[27], &g_rows[46], &g_rows[46],
  &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46],
  &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46],
  &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46], &g_rows[46],
};
// clang-format on

void InitFixedWidthSlots() {
  struct Slots {
    int id;
    ObStoreFn store, load;
    ObNullSizeGetFn nullSize;
    ObSizeGetFn size;
  };
  // Store also serves as Load where both only reorder bytes.
  static const Slots kSlots[] = {
      {Ob1B_T, CharStore, CharStore, CharNullSizeGet, CharSizeGet},
      {ObU1B_T, CharStore, CharStore, CharNullSizeGet, CharSizeGet},
      {Ob2B_T, ShortStore, ShortStore, ShortNullSizeGet, ShortSizeGet},
      {ObU2B_T, ShortStore, ShortStore, ShortNullSizeGet, ShortSizeGet},
      {Ob4B_T, LongStore, LongStore, LongNullSizeGet, LongSizeGet},
      {ObU4B_T, LongStore, LongStore, LongNullSizeGet, LongSizeGet},
      {ObBLOCKID_T, LongStore, LongStore, LongNullSizeGet, LongSizeGet},
      {Ob8B_T, O_8BStore, O_8BStore, O_8BNullSizeGet, O_8BSizeGet},
      {ObU8B_T, O_8BStore, O_8BStore, O_8BNullSizeGet, O_8BSizeGet},
      {ObFLOAT_T, FloatStore, FloatStore, FloatNullSizeGet, FloatSizeGet},
      {ObDOUBLE_T, DoubleStore, DoubleStore, DoubleNullSizeGet, DoubleSizeGet},
      {ObINT_T, IntStore, IntLoad, IntNullSizeGet, IntSizeGet},
      {ObENUM_T, IntStore, IntLoad, IntNullSizeGet, IntSizeGet},
      {ObUNSIGNED_T, UnsignedStore, UnsignedLoad, IntNullSizeGet, IntSizeGet},
  };
  for (const Slots& s : kSlots) {
    ObTypeEntry* r = &g_rows[s.id];
    r->store = s.store;
    r->load = s.load;
    r->nullSizeGet = s.nullSize;
    r->sizeGet = s.size;
  }
  ObTypeEntry* interval = &g_rows[static_cast<int>(D_INTERVAL_T)];
  interval->nullSizeGet = FloatNullSizeGet;
  interval->sizeGet = FloatSizeGet;
}
