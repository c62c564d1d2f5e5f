// ObLocalRef: a reference without an origin number.
#ifndef QUILLSTORE_OBLOCALREF_H_
#define QUILLSTORE_OBLOCALREF_H_

#include <cstdint>

#include "obclassid.h"
#include "obdefs.h"
#include "obobjid.h"
#include "obref.h"

class ObString;

class QS_TM_API ObLocalRef {
 public:
  ObBlockId block;
  uint32_t low;
  uint16_t high;
  uint16_t classNumber;
  uint16_t version;

  ObLocalRef() : block(0), low(0), high(0), classNumber(0), version(0) {}

  ObLocalRef& operator=(const ObRef& ref) {
    block = ref.block;
    low = ref.low;
    high = ref.high;
    classNumber = ref.classNumber;
    version = ref.version;
    return *this;
  }
  ObLocalRef& operator=(const ObObjId& id) {
    block = id.block;
    low = id.low;
    high = id.high;
    return *this;
  }
  ObLocalRef& operator=(const ObClassId& id) {
    classNumber = id.classNumber;
    version = id.version;
    return *this;
  }

  // Object numbers only, as ObObjId.
  bool operator==(const ObLocalRef& other) const {
    return low == other.low && high == other.high;
  }
  int32_t operator!=(const ObLocalRef& other) const {
    return ObObjId(block, low, high) !=
           ObObjId(other.block, other.low, other.high);
  }
  // The same object number and a reference of origin 0.
  bool operator==(const ObRef& ref) const {
    return low == ref.low && high == ref.high && ref.origin == 0;
  }

  // Prints as the ObRef with origin number 0; a null format means
  // "(%H-%L#%B,%C)". Appends to `text`.
  ObString& PrintToObString(ObString& text, const char* format) const;
  // Scans as an ObRef (same default format) and takes all but the origin.
  void ScanFromObString(const ObString& text, const char* format);
};

#endif  // QUILLSTORE_OBLOCALREF_H_
