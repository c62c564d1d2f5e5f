// Stored forms and key comparison of texts and blobs.
//
// A stored ObString record (DO NOT CHANGE: records and index keys of
// existing databases use it): a 2-byte length L of the bytes that follow
// it (format 2: most significant byte first; other formats least
// significant first), the code set, the language, the characters (16-bit
// ones in the record's byte order) and the closing bytes 0x00 0xFF. An
// index key holds collation orders instead (code set 254, the collation
// mode in the language byte). Records of earlier versions are a length and
// 0-terminated 8-bit characters; they are read still.
#ifndef QUILLSTORE_OBSTRKEY_H_
#define QUILLSTORE_OBSTRKEY_H_

#include <cstdint>

#include "obdefs.h"
#include "obkeycmp.h"

// Store and load `count` strings; return the bytes written or consumed.
// StringLoad trusts its records: use ObTypeMgr::Translate for records of
// unknown length.
QS_TM_API uint32_t StringStore(void* dest, const void* src, uint8_t format,
                               uint32_t count);
QS_TM_API uint32_t StringLoad(void* dest, const void* src, uint8_t format,
                              uint32_t count);
// Bytes the target form needs: `value` is an ObString array when bit 0x08
// of srcFlags is set, else stored records.
QS_TM_API uint32_t StringSizeGet(const void* value, uint8_t srcFlags,
                                 uint8_t targetFlags, uint32_t count);

// Texts: cut keys, trailing-"*" prefix searches, collation-order keys.
// Status ObCMP_OPERAND_EXHAUSTED when the result is only as good as a cut
// or shorter operand allows; kObNotSupported (result -1) for a key cut at
// 254 bytes or more.
QS_DECLARE_KEY_COMPARE(StringCompare);
// As StringCompare, but a current record cut by its length is read as an
// earlier-version record.
QS_DECLARE_KEY_COMPARE(StringCompareLegacy);
// Blobs: in memory only equality (0 or 1); stored, by bytes then length,
// null first (-2/+2).
QS_DECLARE_KEY_COMPARE(BlobCompare);

#endif  // QUILLSTORE_OBSTRKEY_H_
