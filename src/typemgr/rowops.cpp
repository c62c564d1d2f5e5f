#include "rowops.h"

#include <cstdlib>
#include <new>

#include "obstring.h"

namespace obrow {

void* AllocArray(uint32_t count, size_t size) {
  const uint64_t bytes = uint64_t{count} * size;
  if (bytes > UINT32_MAX) return nullptr;
  return ObAllocate(static_cast<size_t>(bytes), 1);
}

void FreeArray(void* p) { std::free(p); }

void* CreateNothing(uint32_t) { return nullptr; }
void* DeleteNothing(void*, uint32_t) { return nullptr; }
uint32_t StoreNothing(void*, const void*, uint8_t, uint32_t) { return 0; }
uint32_t NullSizeNothing(uint32_t) { return 0; }
uint32_t SizeGetNothing(const void*, uint8_t, uint8_t, uint32_t) { return 0; }
uint32_t SizeFromMemFileNothing(MemFile*, uint8_t, uint32_t) { return 0; }
int32_t CompareNothing(uint8_t, uint32_t, const void*, uint32_t, const void*,
                       uint16_t, uint32_t, int32_t& status) {
  status = 0;
  return 0;
}
float EvalNothing(ObIdxBounds*, uint16_t&, void*, uint8_t, uint32_t, void*) {
  return 0.0f;
}
uint32_t HashNothing(uint8_t, uint32_t, const void*, uint32_t, int32_t&) {
  return 0;
}
ObTypeConvertData* ConvertToNothing(void*, uint32_t) { return nullptr; }
void* ConvertFromNothing(ObTypeConvertData*, uint32_t) { return nullptr; }
void ConstructNothing(void*, uint32_t, uint32_t) {}
void AssignNothing(void*, const void*, uint32_t, int32_t) {}
uint32_t TranslateNothing(void*, uint8_t, uint32_t, const void*, uint8_t,
                          uint32_t, uint32_t) {
  return 0;
}
int32_t IsNullNever(const void*) { return 0; }
ObString& PrintNothing(ObString& out, const void*, const char*, uint32_t) {
  return out;
}
void* ScanNothing(void*, ObString&, const char*, uint32_t) { return nullptr; }
void* DefaultValueNothing(uint32_t, int32_t) { return nullptr; }
int32_t StepUnsupported(void*, uint32_t, uint8_t, uint8_t) {
  return kObNotSupported;
}

void* StringCreate(uint32_t count) {
  void* p = AllocArray(count, sizeof(ObString));
  if (p != nullptr) StringConstruct(p, count, 0);
  return p;
}

void* StringDelete(void* values, uint32_t count) {
  if (values != nullptr) StringDestruct(values, count, 0);
  FreeArray(values);
  return nullptr;
}

void StringConstruct(void* values, uint32_t count, uint32_t) {
  ObString* s = static_cast<ObString*>(values);
  for (uint32_t i = 0; i < count; ++i) new (&s[i]) ObString();
}

void StringDestruct(void* values, uint32_t count, uint32_t) {
  ObString* s = static_cast<ObString*>(values);
  for (uint32_t i = 0; i < count; ++i) s[i].~ObString();
}

void StringAssign(void* dest, const void* src, uint32_t count, int32_t) {
  ObString* d = static_cast<ObString*>(dest);
  const ObString* s = static_cast<const ObString*>(src);
  for (uint32_t i = 0; i < count; ++i) d[i] = s[i];
}

// Copy-constructs into raw storage.
void StringCopy(void* dest, const void* src, uint32_t count, int32_t) {
  ObString* d = static_cast<ObString*>(dest);
  const ObString* s = static_cast<const ObString*>(src);
  for (uint32_t i = 0; i < count; ++i) new (&d[i]) ObString(s[i]);
}

int32_t StringIsNull(const void* value) {
  return static_cast<const ObString*>(value)->IsNullValue();
}

int32_t StringSetNull(void* value) {
  return static_cast<ObString*>(value)->SetNullValue();
}

}  // namespace obrow
