// Catalogue rows of ObInt64 and ObNull_ObInt64. Internal.
//
// Stored form: the 64-bit value in the byte order of the format (the
// base-services 64-bit routines), followed for ObNull_ObInt64 by the null
// indicator byte.
#ifndef QUILLSTORE_SRC_TYPEMGR_INT64ROW_H_
#define QUILLSTORE_SRC_TYPEMGR_INT64ROW_H_

#include "hashrows.h"
#include "nullrows.h"
#include "obint64.h"
#include "obnulty.h"
#include "rowbuild.h"

using ObNull_ObInt64 = ObNullable<ObInt64>;
static_assert(sizeof(ObNull_ObInt64) == 12, "ObNull_ObInt64 is 12 bytes");

namespace obrow {

using NullInt64 = NullableRow<ObInt64, O_8BStore>;

// ObInt64: counters reset to 0, not to the lowest value.
int32_t Int64Step(void* value, uint32_t len, uint8_t format, uint8_t kind);
float Int64EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                        uint8_t flags, uint32_t count, void* narrow);
ObString& Int64Print(ObString& out, const void* value, const char* format,
                     uint32_t count);
void* Int64Scan(void* value, ObString& text, const char* format,
                uint32_t count);

// ObNull_ObInt64: a null value hashes as one term and orders first.
uint32_t NullInt64Hash(uint8_t format, uint32_t len, const void* value,
                       uint32_t count, int32_t& status);
float NullInt64EvalAndBound(ObIdxBounds* bounds, uint16_t& op, void* value,
                            uint8_t flags, uint32_t count, void* narrow);
ObString& NullInt64Print(ObString& out, const void* value, const char* format,
                         uint32_t count);
void* NullInt64Scan(void* value, ObString& text, const char* format,
                    uint32_t count);

constexpr ObTypeEntry Int64Row(const char* name, const char* idName,
                               const char* format) {
  ObTypeEntry r = Pending(name, idName, sizeof(ObInt64), 1, format);
  SetMemOps(r, kPlain<ObInt64>);
  r.store = O_8BStore;
  r.load = O_8BStore;
  r.nullSizeGet = O_8BNullSizeGet;
  r.sizeGet = O_8BSizeGet;
  r.sizeGetFromMemFile = FixedSizeFromMemFile<8>;
  r.compare = Int64Compare;
  r.evalAndBound = Int64EvalAndBound;
  r.hash = NumberHash<int64_t>;  // the layout is that of int64_t
  r.translate = FixedTranslate<8, O_8BStore, O_8BStore>;
  r.isNull = IsNullNever;
  r.print = Int64Print;
  r.scan = Int64Scan;
  r.sequenceStep = Int64Step;
  return r;
}

constexpr ObTypeEntry NullInt64Row(const char* name, const char* idName,
                                   const char* format) {
  ObTypeEntry r = Pending(name, idName, sizeof(ObNull_ObInt64), 1, format);
  SetMemOps(r, kPlain<ObNull_ObInt64>);
  r.store = NullInt64::Store;
  r.load = NullInt64::Load;
  r.nullSizeGet = NullInt64::NullSize;
  r.sizeGet = NullInt64::SizeGet;
  r.sizeGetFromMemFile = FixedSizeFromMemFile<NullInt64::kStored>;
  r.compare = NullInt64::Compare;
  r.evalAndBound = NullInt64EvalAndBound;
  r.hash = NullInt64Hash;
  r.translate = NullInt64::Translate;
  r.isNull = NullInt64::IsNull;
  r.setNull = NullInt64::SetNull;
  r.print = NullInt64Print;
  r.scan = NullInt64Scan;
  r.sequenceStep = NullInt64::Step;
  return r;
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_INT64ROW_H_
