// Building blocks of catalogue rows, for the tables of the catalogue and
// the row builders of each value class. Internal.
#ifndef QUILLSTORE_SRC_TYPEMGR_ROWBUILD_H_
#define QUILLSTORE_SRC_TYPEMGR_ROWBUILD_H_

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
