#include <new>

#include "obbs.h"
#include "obstring.h"
#include "obtypeconv.h"
#include "obtypemgr.h"

ObTypeConvertData* ObTypeConvertData::Make(char type, uint32_t count,
                                           void* values, ObTypeMgr* owner) {
  for (;;) {
    auto* p = new (std::nothrow) ObTypeConvertData{owner, values, count, type};
    if (p != nullptr) return p;
    if (ObCallMemoryHandler(sizeof(ObTypeConvertData)) == 0) return nullptr;
  }
}

ObString* ObTypeConvertData::GetString(int32_t i) {
  if (values == nullptr || type != ObSTRING_T) return nullptr;
  // A negative index would point before the array: refused like one past it.
  if (i < 0 || static_cast<uint32_t>(i) >= count) return nullptr;
  return static_cast<ObString*>(values) + i;
}

ObTypeConvertData::~ObTypeConvertData() {
  const bool freed = owner != nullptr && values != nullptr;
  if (freed) owner->Delete(type, values, count);
  type = 100;
  count = 0;
  if (freed) values = nullptr;
}
