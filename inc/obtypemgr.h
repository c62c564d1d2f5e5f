// The type catalogue and ObTypeMgr, which dispatches every per-type
// operation by type identifier to the catalogue row of that type.
#ifndef QUILLSTORE_OBTYPEMGR_H_
#define QUILLSTORE_OBTYPEMGR_H_

#include <cstdint>

#include "obdefs.h"
#include "obkeycmp.h"

class MemFile;
class ObString;
struct ObTypeConvertData;
struct ObIdxBounds;
struct ObEvalData;

// Type identifiers. DO NOT CHANGE: they are stored in schemas and records.
// Identifiers 100 to 127 all mean the "illegal" row ObRES_T; 47 to 99 and
// negative identifiers have no row (test with ObTypeMgr::IsValidType).
constexpr char Ob1B_T = 0;
constexpr char Ob2B_T = 1;
constexpr char Ob4B_T = 2;
constexpr char ObDOUBLE_T = 3;
constexpr char ObFLOAT_T = 4;
constexpr char ObU2B_T = 5;
constexpr char ObU4B_T = 6;
constexpr char ObINT_T = 7;
constexpr char ObUNSIGNED_T = 8;
constexpr char ObENUM_T = 9;
constexpr char ObU1B_T = 10;
constexpr char ObSTRING_T = 11;
constexpr char ObDATE_T = 12;
constexpr char ObTIME_T = 13;
constexpr char ObBLOCKID_T = 14;
constexpr char ObOBJID_T = 15;
constexpr char ObCLID_T = 16;
constexpr char ObREF_T = 17;
constexpr char ObBLOB_T = 18;
constexpr char ObDATIME_T = 19;
constexpr char ObISTRING_T = 20;
constexpr char ObCASEISTRING_T = 21;
constexpr char D_DATE_T = 22;
constexpr char D_TIME_T = 23;
constexpr char D_TIMESTAMP_T = 24;
constexpr char D_INTERVAL_T = 25;
constexpr char ObINT64_T = 26;
constexpr char ObBOOLEAN_T = 27;
constexpr char ObNULL_1B_T = 28;
constexpr char ObNULL_U1B_T = 29;
constexpr char ObNULL_2B_T = 30;
constexpr char ObNULL_U2B_T = 31;
constexpr char ObNULL_INT_T = 32;
constexpr char ObNULL_UNSIGNED_T = 33;
constexpr char ObNULL_4B_T = 34;
constexpr char ObNULL_U4B_T = 35;
constexpr char ObNULL_FLOAT_T = 36;
constexpr char ObNULL_DOUBLE_T = 37;
constexpr char ObNULL_OBINT64_T = 38;
constexpr char ObSEAL_T = 39;
constexpr char ObDATIME_N_T = 40;
constexpr char ObTIMESPAN_T = 41;
constexpr char Ob8B_T = 42;
constexpr char ObU8B_T = 43;
constexpr char ObNULL_8B_T = 44;
constexpr char ObNULL_U8B_T = 45;
constexpr char ObRES_T = 46;
constexpr int kObTypeCount = 47;        // rows of the current table
constexpr int kObCompatTypeCount = 28;  // rows of the compatibility table

// Capability codes of SupportsCapability.
constexpr uint16_t kObCapNull = 1;
constexpr uint16_t kObCapCounter = 2;
constexpr uint16_t kObCapTimeStamp = 3;

// The operations of a catalogue row. An operation a row does not have is an
// empty pointer.
typedef void* (*ObCreateFn)(uint32_t count);
typedef void* (*ObDeleteFn)(void* values, uint32_t count);
typedef uint32_t (*ObStoreFn)(void* dest, const void* src, uint8_t format,
                              uint32_t count);
typedef uint32_t (*ObNullSizeGetFn)(uint32_t count);
typedef uint32_t (*ObSizeGetFn)(const void* value, uint8_t format,
                                uint8_t format2, uint32_t count);
typedef uint32_t (*ObSizeGetFromMemFileFn)(MemFile* file, uint8_t format,
                                           uint32_t count);
typedef float (*ObEvalAndBoundFn)(ObIdxBounds* bounds, uint16_t& op,
                                  void* value, uint8_t flags, uint32_t count,
                                  void* other);
typedef uint32_t (*ObHashFn)(uint8_t format, uint32_t len, const void* value,
                             uint32_t count, int32_t& status);
typedef ObTypeConvertData* (*ObConvertToFn)(void* values, uint32_t count);
typedef void* (*ObConvertFromFn)(ObTypeConvertData* data, uint32_t count);
typedef void (*ObConstructFn)(void* values, uint32_t count, uint32_t flags);
typedef void (*ObAssignFn)(void* dest, const void* src, uint32_t count,
                           int32_t flags);
typedef uint32_t (*ObTranslateFn)(void* dest, uint8_t destFormat,
                                  uint32_t destLen, const void* src,
                                  uint8_t srcFormat, uint32_t srcLen,
                                  uint32_t count);
typedef int32_t (*ObIsNullFn)(const void* value);
typedef int32_t (*ObSetNullFn)(void* value);
typedef ObString& (*ObPrintFn)(ObString& out, const void* values,
                               const char* format, uint32_t count);
typedef void* (*ObScanFn)(void* values, ObString& text, const char* format,
                          uint32_t count);
typedef void* (*ObDefaultValueFn)(uint32_t count, int32_t asNull);
typedef int32_t (*ObSequenceStepFn)(void* value, uint32_t len, uint8_t format,
                                    uint8_t kind);
// The in-memory two-argument compare; no row has one.
typedef int32_t (*ObCompareFn)(const void* a, const void* b);

struct ObTypeEntry;

class QS_TM_API ObTypeMgr {
 public:
  // Factory 0-3: compatibility table; 4-10: current table; 11: compatibility
  // table at level 3; 12 and above: current table at level 4.
  explicit ObTypeMgr(uint32_t factory);
  void SetFactory(uint32_t factory);
  uint32_t GetFactory() const { return factory_; }

  // Look-ups.
  static int32_t Name2ObTypeId(const char* name, char& id);
  const char* NameGet(char id, char* buffer) const;
  const char* TypeIdNameGet(char id, char* buffer) const;
  static int32_t IsValidType(char id);
  uint16_t MemLenGet(char id, uint32_t count) const;
  uint16_t IsFixed(char id) const;
  void* GetArrayElement(char id, void* array, uint32_t index,
                        uint32_t count) const;
  uint16_t SupportsCapability(char id, uint16_t code) const;
  uint16_t SupportsNullValue(char id) const {
    return SupportsCapability(id, kObCapNull);
  }

  // Operations passed to the row.
  void* Create(char id, uint32_t count) const;
  void* Delete(char id, void* values, uint32_t count) const;
  void* DefaultValue(char id, uint32_t count, int32_t asNull) const;
  uint32_t Store(char id, void* dest, const void* src, uint8_t format,
                 uint32_t count) const;
  uint32_t Load(char id, void* dest, const void* src, uint8_t format,
                uint32_t count) const;
  // `form` says how `values` are given: 8 memory form, else stored form.
  uint32_t DiskLenGet(char id, const void* values, uint8_t format,
                      uint32_t count, uint8_t form) const;
  uint32_t DiskLenGetFromMemFile(char id, MemFile* file, uint8_t format,
                                 uint32_t count) const;
  int32_t Cmp(char id, uint32_t len1, const void* p1, uint32_t len2,
              const void* p2, uint16_t options, uint32_t count, uint8_t flags,
              int32_t& status) const;
  // Both lengths 0; the status is dropped.
  int32_t Cmp(char id, const void* p1, const void* p2, uint16_t options,
              uint32_t count, uint8_t flags) const;
  float EvalAndBound(char id, ObIdxBounds* bounds, uint16_t& op, void* key,
                     uint8_t flags, uint32_t count, ObIdxBounds* other,
                     ObEvalData* data) const;
  uint32_t Hash(char id, uint32_t len, const void* value, uint32_t count,
                uint8_t format, int32_t& status) const;
  uint32_t Translate(char id, void* dest, uint8_t destFormat, uint32_t destLen,
                     const void* src, uint8_t srcFormat, uint32_t srcLen,
                     uint32_t count) const;
  int32_t IsNullValue(char id, const void* value) const;
  ObTypeConvertData* ConvertTo(char id, void* values, uint32_t count);
  void* ConvertFrom(char id, ObTypeConvertData* data, uint32_t count);

  // Null values and counters.
  int32_t SetNullValue(char id, void* value);
  int32_t DiskIsNullValue(char id, const void* stored) const;
  int32_t GetValue(char id, void* value, uint32_t len, uint8_t format,
                   uint8_t kind) const;
  // Stores `now`, laid out as an ObDateTimeN (date, time, 32-bit fraction
  // at byte 8), as a value of type `id` (12, 13, 19, 22, 23, 24, 40).
  // The row's Store result; -2999 for a null `now` or any other type.
  int32_t StoreTimeStamp(char id, void* dest, uint8_t format,
                         const void* now) const;

  // The row's operations themselves (empty where the row has none).
  ObConstructFn ConstructorPtrGet(char id) const;
  ObConstructFn DestructorPtrGet(char id) const;
  ObAssignFn AssignmentPtrGet(char id) const;
  ObAssignFn CopyPtrGet(char id) const;
  ObStoreFn LoadPtrGet(char id) const;
  ObStoreFn StorePtrGet(char id) const;
  ObIsNullFn IsNullPtrGet(char id) const;
  ObSetNullFn SetNullPtrGet(char id) const;
  ObKeyCompareFn CmpFuncPtrGet(char id) const;
  ObCompareFn ComparePtrGet(char id) const;  // always empty

  // Exchange hooks: install the entry when it is not null and return the
  // previous one. They change the shared row, seen by every manager.
  const char* ExchangeFormat(char id, const char* format);
  ObKeyCompareFn ExchangeObTypeCmpFunc(char id, ObKeyCompareFn fn);
  ObPrintFn ExchangePrintToObStringFunc(char id, ObPrintFn fn);
  ObScanFn ExchangeScanFromObStringFunc(char id, ObScanFn fn);

  // Text forms. A null format means the row's default format. Arrays print
  // as their elements' texts separated by "," and appended to `out`
  // (character arrays as one run); scanning is the row's.
  ObString& PrintToObString(char id, ObString& out, const void* values,
                            const char* format, uint32_t count) const;
  void* ScanFromObString(char id, void* values, ObString& text,
                         const char* format, uint32_t count) const;

  // The text every printer writes for a null value ("{NULL}" after loading).
  static const ObString& GetNullPrintString();
  static void SetNullPrintString(const ObString& text);

 private:
  const ObTypeEntry& Row(char id) const;

  ObTypeEntry* const* table_;
  uint32_t factory_;
};

// Returns the default manager as it was; installs `mgr` when not null.
QS_TM_API ObTypeMgr* DefaultTypeMgr(ObTypeMgr* mgr);

#endif  // QUILLSTORE_OBTYPEMGR_H_
