// Catalogue rows of the identity types (ObObjId, ObClassId, ObRef, ObSeal):
// every operation is the class's own. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_IDENTITYROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_IDENTITYROWS_H_

#include <cstring>
#include <type_traits>

#include "obclassid.h"
#include "obobjid.h"
#include "obref.h"
#include "obseal.h"
#include "rowbuild.h"

namespace obrow {

template <class C, class = void>
struct HasNullValue : std::false_type {};
template <class C>
struct HasNullValue<C, std::void_t<decltype(&C::SetNullValue)>>
    : std::true_type {};

template <class C>
int32_t IdentityIsNull(const void* value) {
  return static_cast<const C*>(value)->IsNullValue();
}
template <class C>
int32_t IdentitySetNull(void* value) {
  return static_cast<C*>(value)->SetNullValue();
}

// The counter of a value that starts with an object identifier (ObObjId,
// ObRef): kind 2 clears it, 'O' keeps it, 'M'/'N' step the object number
// unless it is the highest one. Other fields are left alone.
template <class C>
int32_t ObjectIdStep(void* value, uint32_t, uint8_t format, uint8_t kind) {
  if (format != kObFormatMemory) return kObNotSupported;
  C v;
  std::memcpy(&v, value, sizeof v);
  const ObObjId id(v.block, v.low, v.high);
  ObObjId next = id;
  switch (kind) {
    case kStepReset:
      next = ObObjId();
      break;
    case kStepKeep:
      return 0;
    case kStepNext:
    case kStepNextM:
      if ((++next != id) <= 0) return kObCounterAtMax;
      break;
    default:
      return kObNotSupported;
  }
  v.block = next.block;
  v.low = next.low;
  v.high = next.high;
  std::memcpy(value, &v, sizeof v);
  return 0;
}

template <class C>
constexpr ObTypeEntry IdentityRow(const char* name, const char* idName,
                                  const char* format, ObSequenceStepFn step) {
  ObTypeEntry r = Pending(name, idName, sizeof(C), 1, format);
  SetMemOps(r, MemOps{C::Create, C::Delete, PlainConstruct<C>, ConstructNothing,
                      PlainAssign<C>, PlainAssign<C>});
  r.store = C::Store;
  r.load = C::Load;
  r.nullSizeGet = C::NullSizeGet;
  r.sizeGet = C::SizeGet;
  r.sizeGetFromMemFile = C::SizeGetFromMemFile;
  r.compare = C::Compare;
  r.evalAndBound = C::EvalAndBound;
  r.hash = C::Hash;
  r.translate = C::Translate;
  r.isNull = IsNullNever;
  if constexpr (HasNullValue<C>::value) {
    r.isNull = IdentityIsNull<C>;
    r.setNull = IdentitySetNull<C>;
  }
  r.print = C::PrintToString;
  r.scan = C::ScanFromString;
  r.sequenceStep = step;
  return r;
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_IDENTITYROWS_H_
