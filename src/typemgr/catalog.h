// The catalogue row and the two tables of rows. Internal to the library.
#ifndef QUILLSTORE_SRC_TYPEMGR_CATALOG_H_
#define QUILLSTORE_SRC_TYPEMGR_CATALOG_H_

#include "obtypemgr.h"

// One row per type, fields in the order of the stored catalogue. Only the
// compare, print and scan functions and the default format change after
// loading (exchange hooks); the fixed-width Store, Load, NullSizeGet and
// SizeGet fields are filled while the library loads.
struct ObTypeEntry {
  const char* displayName;
  const char* idName;
  ObCreateFn create;
  ObDeleteFn del;
  ObStoreFn store;
  ObStoreFn load;
  ObNullSizeGetFn nullSizeGet;
  ObSizeGetFn sizeGet;
  ObSizeGetFromMemFileFn sizeGetFromMemFile;
  ObKeyCompareFn compare;
  ObEvalAndBoundFn evalAndBound;
  ObHashFn hash;
  ObConvertToFn convertTo;
  ObConvertFromFn convertFrom;
  ObConstructFn constructor;
  ObConstructFn destructor;
  ObAssignFn assignment;
  ObAssignFn copy;
  ObTranslateFn translate;
  ObIsNullFn isNull;
  ObSetNullFn setNull;
  const char* format;
  ObPrintFn print;
  ObScanFn scan;
  uint16_t memLen;
  uint16_t fixed;
  ObDefaultValueFn defaultValue;
  ObSequenceStepFn sequenceStep;
  void* reserved;
};

extern ObTypeEntry* const g_currentTable[kObTypeCount];
// Identifiers from kObCompatTypeCount on reach the "illegal" row here.
extern ObTypeEntry* const g_compatTable[kObTypeCount];

// The row index of an identifier: 100 and above fold to the "illegal" row.
// Identifiers without a row (47 to 99, negative) are the caller's fault;
// they reach the "illegal" row too rather than memory outside the table.
inline int FoldTypeId(char id) {
  uint8_t v = static_cast<uint8_t>(id);
  return v < kObTypeCount ? v : ObRES_T;
}

// Fills the fixed-width storage slots of the basic rows from the
// base-services library; run once while the library loads.
void InitFixedWidthSlots();

#endif  // QUILLSTORE_SRC_TYPEMGR_CATALOG_H_
