// ObTypeMgr: folds the type identifier, takes the row of its table and calls
// the row's operation. An operation the row lacks answers with the
// operation's "nothing" result (0, null, the output unchanged) instead of
// being called.
#include <cstring>

#include "catalog.h"
#include "d_timestamp.h"
#include "module.h"
#include "obstring.h"
#include "obtypeconv.h"
#include "obtypemgr.h"
#include "printscan.h"

namespace {

ObTypeMgr* g_defaultMgr = nullptr;

struct FactoryChoice {
  ObTypeEntry* const* table;
  uint32_t level;
};

// 11 maps back to level 3 on purpose: managers of that level read the
// earlier string layout.
FactoryChoice ChooseTable(uint32_t factory) {
  if (factory <= 3) return {g_compatTable, factory};
  if (factory <= 10) return {g_currentTable, factory};
  if (factory == 11) return {g_compatTable, 3};
  return {g_currentTable, 4};
}

bool IdIn(char id, const char* list, size_t n) {
  return std::memchr(list, id, n) != nullptr;
}

}  // namespace

ObTypeMgr::ObTypeMgr(uint32_t factory) { SetFactory(factory); }

void ObTypeMgr::SetFactory(uint32_t factory) {
  FactoryChoice c = ChooseTable(factory);
  table_ = c.table;
  factory_ = c.level;
}

const ObTypeEntry& ObTypeMgr::Row(char id) const {
  return *table_[FoldTypeId(id)];
}

int32_t ObTypeMgr::Name2ObTypeId(const char* name, char& id) {
  id = 0;
  if (name == nullptr) {
    id = kObTypeCount;
    return 1;
  }
  for (; id < kObTypeCount; ++id) {
    if (std::strcmp(name, g_currentTable[static_cast<int>(id)]->displayName) ==
        0)
      return 0;
  }
  return 1;
}

const char* ObTypeMgr::NameGet(char id, char* buffer) const {
  const char* name = Row(id).displayName;
  return buffer != nullptr ? std::strcpy(buffer, name) : name;
}

const char* ObTypeMgr::TypeIdNameGet(char id, char* buffer) const {
  const char* name = Row(id).idName;
  return buffer != nullptr ? std::strcpy(buffer, name) : name;
}

// Negative identifiers pass this test; the asymmetry is kept because callers
// depend on it.
int32_t ObTypeMgr::IsValidType(char id) {
  int v = static_cast<signed char>(id);
  if (v >= 100) v = ObRES_T;
  return v < kObTypeCount;
}

uint16_t ObTypeMgr::MemLenGet(char id, uint32_t count) const {
  return static_cast<uint16_t>(Row(id).memLen * count);
}

uint16_t ObTypeMgr::IsFixed(char id) const { return Row(id).fixed; }

void* ObTypeMgr::GetArrayElement(char id, void* array, uint32_t index,
                                 uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  if (r.memLen == 0 || array == nullptr) return nullptr;
  if (count != 0 && index >= count) return nullptr;
  return static_cast<char*>(array) + size_t{index} * r.memLen;
}

uint16_t ObTypeMgr::SupportsCapability(char id, uint16_t code) const {
  // The counter and time-stamp lists test the identifier as given.
  static const char kCounters[] = {0, 1, 2, 5, 6, 7, 8, 9, 10, 15, 26, 42, 43};
  static const char kStamps[] = {12, 13, 19, 22, 23, 24, 40};
  switch (code) {
    case kObCapNull:
      return Row(id).setNull != nullptr;
    case kObCapCounter:
      return IdIn(id, kCounters, sizeof kCounters);
    case kObCapTimeStamp:
      return IdIn(id, kStamps, sizeof kStamps);
    default:
      return 0;
  }
}

void* ObTypeMgr::Create(char id, uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.create != nullptr ? r.create(count) : nullptr;
}

void* ObTypeMgr::Delete(char id, void* values, uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.del != nullptr ? r.del(values, count) : nullptr;
}

void* ObTypeMgr::DefaultValue(char id, uint32_t count, int32_t asNull) const {
  const ObTypeEntry& r = Row(id);
  return r.defaultValue != nullptr ? r.defaultValue(count, asNull) : nullptr;
}

uint32_t ObTypeMgr::Store(char id, void* dest, const void* src, uint8_t format,
                          uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.store != nullptr ? r.store(dest, src, format, count) : 0;
}

uint32_t ObTypeMgr::Load(char id, void* dest, const void* src, uint8_t format,
                         uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.load != nullptr ? r.load(dest, src, format, count) : 0;
}

uint32_t ObTypeMgr::DiskLenGet(char id, const void* values, uint8_t format,
                               uint32_t count, uint8_t form) const {
  const ObTypeEntry& r = Row(id);
  return r.sizeGet != nullptr ? r.sizeGet(values, form, format, count) : 0;
}

uint32_t ObTypeMgr::DiskLenGetFromMemFile(char id, MemFile* file,
                                          uint8_t format,
                                          uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.sizeGetFromMemFile != nullptr
             ? r.sizeGetFromMemFile(file, format, count)
             : 0;
}

int32_t ObTypeMgr::Cmp(char id, uint32_t len1, const void* p1, uint32_t len2,
                       const void* p2, uint16_t options, uint32_t count,
                       uint8_t flags, int32_t& status) const {
  const ObTypeEntry& r = Row(id);
  if (r.compare == nullptr) {
    status = 0;
    return 0;
  }
  return r.compare(flags, len1, p1, len2, p2, options, count, status);
}

int32_t ObTypeMgr::Cmp(char id, const void* p1, const void* p2,
                       uint16_t options, uint32_t count, uint8_t flags) const {
  int32_t status = 0;
  return Cmp(id, 0, p1, 0, p2, options, count, flags, status);
}

float ObTypeMgr::EvalAndBound(char id, ObIdxBounds* bounds, uint16_t& op,
                              void* key, uint8_t flags, uint32_t count,
                              ObIdxBounds* other, ObEvalData*) const {
  const ObTypeEntry& r = Row(id);
  return r.evalAndBound != nullptr
             ? r.evalAndBound(bounds, op, key, flags, count, other)
             : 0.0f;
}

uint32_t ObTypeMgr::Hash(char id, uint32_t len, const void* value,
                         uint32_t count, uint8_t format,
                         int32_t& status) const {
  const ObTypeEntry& r = Row(id);
  if (r.hash == nullptr) {
    status = kObNotSupported;
    return 0;
  }
  return r.hash(format, len, value, count, status);
}

uint32_t ObTypeMgr::Translate(char id, void* dest, uint8_t destFormat,
                              uint32_t destLen, const void* src,
                              uint8_t srcFormat, uint32_t srcLen,
                              uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  return r.translate != nullptr ? r.translate(dest, destFormat, destLen, src,
                                              srcFormat, srcLen, count)
                                : 0;
}

int32_t ObTypeMgr::IsNullValue(char id, const void* value) const {
  const ObTypeEntry& r = Row(id);
  return r.isNull != nullptr ? r.isNull(value) : 0;
}

ObTypeConvertData* ObTypeMgr::ConvertTo(char id, void* values, uint32_t count) {
  const ObTypeEntry& r = Row(id);
  if (r.convertTo == nullptr) return nullptr;
  ObTypeConvertData* data = r.convertTo(values, count);
  if (data != nullptr) data->owner = this;
  return data;
}

void* ObTypeMgr::ConvertFrom(char id, ObTypeConvertData* data, uint32_t count) {
  if (data != nullptr) data->owner = this;
  const ObTypeEntry& r = Row(id);
  return r.convertFrom != nullptr ? r.convertFrom(data, count) : nullptr;
}

int32_t ObTypeMgr::SetNullValue(char id, void* value) {
  const ObTypeEntry& r = Row(id);
  if (r.setNull != nullptr) {
    int32_t rc = r.setNull(value);
    if (rc != kObNotSupported) return rc;
  }
  if (r.assignment != nullptr) {
    // The value becomes what an empty text converts to.
    if (r.convertFrom == nullptr) return kObNotSupported;
    void* text = Create(ObSTRING_T, 1);
    ObTypeConvertData* data =
        ObTypeConvertData::Make(ObSTRING_T, 1, text, this);
    if (data == nullptr) {
      Delete(ObSTRING_T, text, 1);
      return kObNotSupported;
    }
    void* converted = r.convertFrom(data, 1);
    delete data;
    if (converted == nullptr) return kObNotSupported;
    r.assignment(value, converted, 1, 1);
    if (r.del != nullptr) r.del(converted, 1);
    return 0;
  }
  if (r.scan != nullptr) {
    r.scan(value, const_cast<ObString&>(ObString::EmptyString()), r.format, 1);
    return 0;
  }
  return kObNotSupported;
}

int32_t ObTypeMgr::DiskIsNullValue(char, const void*) const {
  return kObNotSupported;
}

int32_t ObTypeMgr::GetValue(char id, void* value, uint32_t len, uint8_t format,
                            uint8_t kind) const {
  if (kind != 'M' && kind != 'N' && kind != 'O') return kObNotSupported;
  const ObTypeEntry& r = Row(id);
  if (r.sequenceStep == nullptr) return kObNotSupported;
  if (id == ObSTRING_T) return r.sequenceStep(value, len, format, kind);
  if (format == kObFormatMemory)
    return r.sequenceStep(value, len, kObFormatMemory, kind);
  // A stored counter: load, step in memory form, store back.
  if (r.create == nullptr || r.load == nullptr) return kObNotSupported;
  void* temp = r.create(1);
  if (temp == nullptr) return kObNotSupported;
  const uint8_t stored = format & 0x81;
  int32_t result = kObNotSupported;
  if (r.load(temp, value, stored, 1) != 0) {
    result = r.sequenceStep(temp, 0, kObFormatMemory, kind);
    if (result == 0 && Store(id, value, temp, stored, 1) == 0)
      result = kObNotSupported;
  }
  if (r.del != nullptr) r.del(temp, 1);
  return result;
}

int32_t ObTypeMgr::StoreTimeStamp(char id, void* dest, uint8_t format,
                                  const void* now) const {
  if (now == nullptr) return kObNotSupported;
  const uint8_t* p = static_cast<const uint8_t*>(now);
  int16_t year;
  std::memcpy(&year, p, sizeof year);
  uint32_t fraction;
  std::memcpy(&fraction, p + 8, sizeof fraction);
  // The fraction is added to the seconds unscaled: stamps written this way
  // already exist.
  const float sec = static_cast<float>(p[6]) + static_cast<float>(fraction);
  const d_Date date(year, p[2], p[3]);
  const d_Time time(p[4], p[5], sec);
  const d_Timestamp stamp(date, time);
  const void* source = nullptr;
  switch (id) {
    case ObDATE_T:
    case ObDATIME_T:
    case ObDATIME_N_T:
      source = now;
      break;
    case ObTIME_T:
      source = p + 4;
      break;
    case D_DATE_T:
      source = &date;
      break;
    case D_TIME_T:
      source = &time;
      break;
    case D_TIMESTAMP_T:
      source = &stamp;
      break;
    default:
      return kObNotSupported;  // no time-stamp form
  }
  const ObTypeEntry& r = Row(id);
  if (r.store == nullptr) return kObNotSupported;
  return static_cast<int32_t>(r.store(dest, source, format, 1));
}

ObConstructFn ObTypeMgr::ConstructorPtrGet(char id) const {
  return Row(id).constructor;
}
ObConstructFn ObTypeMgr::DestructorPtrGet(char id) const {
  return Row(id).destructor;
}
ObAssignFn ObTypeMgr::AssignmentPtrGet(char id) const {
  return Row(id).assignment;
}
ObAssignFn ObTypeMgr::CopyPtrGet(char id) const { return Row(id).copy; }
ObStoreFn ObTypeMgr::LoadPtrGet(char id) const { return Row(id).load; }
ObStoreFn ObTypeMgr::StorePtrGet(char id) const { return Row(id).store; }
ObIsNullFn ObTypeMgr::IsNullPtrGet(char id) const { return Row(id).isNull; }
ObSetNullFn ObTypeMgr::SetNullPtrGet(char id) const { return Row(id).setNull; }
ObKeyCompareFn ObTypeMgr::CmpFuncPtrGet(char id) const {
  return Row(id).compare;
}
ObCompareFn ObTypeMgr::ComparePtrGet(char) const { return nullptr; }

namespace {
template <class T>
T Exchange(T& slot, T replacement) {
  T previous = slot;
  if (replacement != nullptr) slot = replacement;
  return previous;
}
}  // namespace

const char* ObTypeMgr::ExchangeFormat(char id, const char* format) {
  return Exchange(table_[FoldTypeId(id)]->format, format);
}
ObKeyCompareFn ObTypeMgr::ExchangeObTypeCmpFunc(char id, ObKeyCompareFn fn) {
  return Exchange(table_[FoldTypeId(id)]->compare, fn);
}
ObPrintFn ObTypeMgr::ExchangePrintToObStringFunc(char id, ObPrintFn fn) {
  return Exchange(table_[FoldTypeId(id)]->print, fn);
}
ObScanFn ObTypeMgr::ExchangeScanFromObStringFunc(char id, ObScanFn fn) {
  return Exchange(table_[FoldTypeId(id)]->scan, fn);
}

ObString& ObTypeMgr::PrintToObString(char id, ObString& out, const void* values,
                                     const char* format, uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  if (r.print == nullptr) return out;
  if (format == nullptr) format = r.format;
  if (count < 2 || r.print == obprint::CharPrint)
    return r.print(out, values, format, count);
  const ObString separator(",");
  for (uint32_t i = 0; i < count; ++i) {
    ObString element;
    r.print(element, static_cast<const char*>(values) + size_t{i} * r.memLen,
            format, 1);
    out += element;
    if (i + 1 < count) out += separator;
  }
  return out;
}

void* ObTypeMgr::ScanFromObString(char id, void* values, ObString& text,
                                  const char* format, uint32_t count) const {
  const ObTypeEntry& r = Row(id);
  if (r.scan == nullptr) return values;
  return r.scan(values, text, format != nullptr ? format : r.format, count);
}

const ObString& ObTypeMgr::GetNullPrintString() { return NullPrintText(); }
void ObTypeMgr::SetNullPrintString(const ObString& text) {
  NullPrintText() = text;
}

ObTypeMgr* DefaultTypeMgr(ObTypeMgr* mgr) {
  ObTypeMgr* previous = g_defaultMgr;
  if (mgr != nullptr) g_defaultMgr = mgr;
  return previous;
}

void ResetDefaultTypeMgr(ObTypeMgr* mgr) { g_defaultMgr = mgr; }
