// Building blocks of catalogue rows, for the tables of the catalogue and
// the row builders of each value class. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_ROWBUILD_H_
#define QUILLSTORE_SRC_TYPEMGR_ROWBUILD_H_

#include <new>

#include "catalog.h"
#include "rowops.h"

namespace obrow {

struct MemOps {
  ObCreateFn create;
  ObDeleteFn del;
  ObConstructFn constructor;
  ObConstructFn destructor;
  ObAssignFn assignment;
  ObAssignFn copy;
};

template <class T>
inline constexpr MemOps kPlain = {PlainCreate<T>,    PlainDelete<T>,
                                  PlainConstruct<T>, ConstructNothing,
                                  PlainAssign<T>,    PlainAssign<T>};
// Class values: constructed, destroyed and assigned as objects.
template <class T>
void* ClassCreate(uint32_t count) {
  void* p = AllocArray(count, sizeof(T));
  T* v = static_cast<T*>(p);
  for (uint32_t i = 0; p != nullptr && i < count; ++i) new (&v[i]) T();
  return p;
}
template <class T>
void ClassConstruct(void* values, uint32_t count, uint32_t) {
  T* v = static_cast<T*>(values);
  for (uint32_t i = 0; i < count; ++i) new (&v[i]) T();
}
template <class T>
void ClassDestruct(void* values, uint32_t count, uint32_t) {
  T* v = static_cast<T*>(values);
  for (uint32_t i = 0; i < count; ++i) v[i].~T();
}
template <class T>
void* ClassDelete(void* values, uint32_t count) {
  if (values != nullptr) ClassDestruct<T>(values, count, 0);
  FreeArray(values);
  return nullptr;
}
template <class T>
void ClassAssign(void* dest, const void* src, uint32_t count, int32_t) {
  T* d = static_cast<T*>(dest);
  const T* s = static_cast<const T*>(src);
  for (uint32_t i = 0; i < count; ++i) d[i] = s[i];
}
// Copy-constructs into raw storage.
template <class T>
void ClassCopy(void* dest, const void* src, uint32_t count, int32_t) {
  T* d = static_cast<T*>(dest);
  const T* s = static_cast<const T*>(src);
  for (uint32_t i = 0; i < count; ++i) new (&d[i]) T(s[i]);
}
template <class T>
inline constexpr MemOps kClass = {ClassCreate<T>,    ClassDelete<T>,
                                  ClassConstruct<T>, ClassDestruct<T>,
                                  ClassAssign<T>,    ClassCopy<T>};

inline constexpr MemOps kStringMem = {StringCreate,    StringDelete,
                                      StringConstruct, StringDestruct,
                                      StringAssign,    StringCopy};

// A row with names, lengths and format only, every operation empty: the
// start of every other builder, and as it is for value classes that are
// not part of this build yet.
constexpr ObTypeEntry Pending(const char* name, const char* idName,
                              uint16_t len, uint16_t fixed,
                              const char* format) {
  ObTypeEntry r{};
  r.displayName = name;
  r.idName = idName;
  r.format = format;
  r.memLen = len;
  r.fixed = fixed;
  return r;
}

constexpr void SetMemOps(ObTypeEntry& r, const MemOps& m) {
  r.create = m.create;
  r.del = m.del;
  r.constructor = m.constructor;
  r.destructor = m.destructor;
  r.assignment = m.assignment;
  r.copy = m.copy;
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_ROWBUILD_H_
