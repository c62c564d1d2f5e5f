// Catalogue rows of ObIString and ObCaseIString. Internal.
//
// Stored form: one record for a whole array. DO NOT CHANGE: index keys and
// object records of existing databases hold it.
//   byte 0   marker: 0x40 plain; 1 an index key of untransformed bytes;
//            0xC0 an ObIString index key made from memory form, whose
//            bytes are folding weights
//   bytes 1-2  D, the data bytes that follow (format's byte order)
//   D bytes  each element's bytes and a 0, back to back
#ifndef QUILLSTORE_SRC_TYPEMGR_ISTRINGROWS_H_
#define QUILLSTORE_SRC_TYPEMGR_ISTRINGROWS_H_

#include "obistring.h"
#include "rowbuild.h"

namespace obrow {

template <class T>
uint32_t ITextStore(void* dest, const void* src, uint8_t format,
                    uint32_t count);
template <class T>
uint32_t ITextLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t ITextNullSize(uint32_t count);
template <class T>
uint32_t ITextSizeGet(const void* value, uint8_t srcFormat, uint8_t dstFormat,
                      uint32_t count);
uint32_t ITextSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count);
template <class T>
uint32_t ITextHash(uint8_t format, uint32_t len, const void* value,
                   uint32_t count, int32_t& status);
template <class T>
uint32_t ITextTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                        const void* src, uint8_t srcFormat, uint32_t srcLen,
                        uint32_t count);
template <class T>
ObString& ITextPrint(ObString& out, const void* value, const char* format,
                     uint32_t count);
template <class T>
void* ITextScan(void* value, ObString& text, const char* format,
                uint32_t count);

// No null value and no counter; conversion and range evaluation are not
// part of these rows yet.
template <class T>
constexpr ObTypeEntry ITextRow(const char* name, const char* idName,
                               ObKeyCompareFn compare) {
  ObTypeEntry r = Pending(name, idName, sizeof(T), 0, "%s");
  SetMemOps(r, kClass<T>);
  r.store = ITextStore<T>;
  r.load = ITextLoad<T>;
  r.nullSizeGet = ITextNullSize;
  r.sizeGet = ITextSizeGet<T>;
  r.sizeGetFromMemFile = ITextSizeFromMemFile;
  r.compare = compare;
  r.hash = ITextHash<T>;
  r.translate = ITextTranslate<T>;
  r.isNull = IsNullNever;
  r.print = ITextPrint<T>;
  r.scan = ITextScan<T>;
  r.sequenceStep = StepUnsupported;
  return r;
}

constexpr ObTypeEntry IStringRow() {
  return ITextRow<ObIString>("ObIString", "ObISTRING_T", ObIStringCompare);
}
constexpr ObTypeEntry CaseIStringRow() {
  return ITextRow<ObCaseIString>("ObCaseIString", "ObCASEISTRING_T",
                                 ObCaseIStringCompare);
}

}  // namespace obrow

#endif  // QUILLSTORE_SRC_TYPEMGR_ISTRINGROWS_H_
