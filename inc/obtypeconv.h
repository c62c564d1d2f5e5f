// ObTypeConvertData: an array of values handed between types. Values convert
// from one type to another through a record of ObString values.
#ifndef QUILLSTORE_OBTYPECONV_H_
#define QUILLSTORE_OBTYPECONV_H_

#include <cstdint>

#include "obdefs.h"

class ObString;
class ObTypeMgr;

struct QS_TM_API ObTypeConvertData {
  ObTypeMgr* owner;  // frees `values` through its table; may be empty
  void* values;
  uint32_t count;
  char type;

  // A new record with the four fields set; null when memory is exhausted.
  // The caller frees it with delete.
  static ObTypeConvertData* Make(char type, uint32_t count, void* values,
                                 ObTypeMgr* owner);
  // The i-th string, or null when i is negative or not below count, or the
  // record does not hold strings or holds no array.
  ObString* GetString(int32_t i);
  // Frees the array through the owner (when both are present) and leaves
  // the record as an empty record of the "illegal" type.
  ~ObTypeConvertData();
};

#endif  // QUILLSTORE_OBTYPECONV_H_
