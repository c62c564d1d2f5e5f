// Stored layouts of texts and blobs. Internal to the library.
#ifndef QUILLSTORE_SRC_OBTYPES_H_
#define QUILLSTORE_SRC_OBTYPES_H_

#include <cstdint>

class MemFile;

namespace oblayout {

// 16-bit fields and characters: most significant byte first in format 2,
// least significant first in every other format.
inline uint16_t Read16(const uint8_t* p, uint8_t format) {
  return (format & 0x0F) == 2 ? static_cast<uint16_t>(p[0] << 8 | p[1])
                              : static_cast<uint16_t>(p[1] << 8 | p[0]);
}
inline void Write16(uint8_t* p, uint8_t format, uint16_t v) {
  if ((format & 0x0F) == 2) {
    p[0] = static_cast<uint8_t>(v >> 8);
    p[1] = static_cast<uint8_t>(v);
  } else {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
  }
}

// Row operations of ObString (current table) and of the earlier string
// layout (compatibility table).
uint32_t StringNullSizeGet(uint32_t count);
uint32_t StringSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count);
uint32_t StringTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                         const void* src, uint8_t srcFormat, uint32_t srcLen,
                         uint32_t count);
int32_t StringSequenceStep(void* value, uint32_t len, uint8_t format,
                           uint8_t kind);
uint32_t OldStringStore(void* dest, const void* src, uint8_t format,
                        uint32_t count);
uint32_t OldStringNullSizeGet(uint32_t count);
uint32_t OldStringSizeGet(const void* value, uint8_t format, uint8_t format2,
                          uint32_t count);
uint32_t OldStringSizeFromMemFile(MemFile* file, uint8_t format,
                                  uint32_t count);
uint32_t OldStringTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                            const void* src, uint8_t srcFormat, uint32_t srcLen,
                            uint32_t count);

// Blobs: a 32-bit length (0xFFFFFFFF for null) and the bytes.
uint32_t BlobStore(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t BlobLoad(void* dest, const void* src, uint8_t format, uint32_t count);
uint32_t BlobNullSizeGet(uint32_t count);
uint32_t BlobSizeGet(const void* value, uint8_t format, uint8_t format2,
                     uint32_t count);
uint32_t BlobSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count);
uint32_t BlobTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                       const void* src, uint8_t srcFormat, uint32_t srcLen,
                       uint32_t count);
uint32_t BlobHash(uint8_t format, uint32_t len, const void* value,
                  uint32_t count, int32_t& status);

}  // namespace oblayout

#endif  // QUILLSTORE_SRC_OBTYPES_H_

namespace oblayout {
uint32_t StringHash(uint8_t flags, uint32_t len, const void* value,
                    uint32_t count, int32_t& status);
}  // namespace oblayout
