// ObBlob: a binary large object, a handle to an ObBlobData record; no record
// is the null value. Blocks come from the C heap; when one cannot be had
// the memory handler is called and the operation goes on with what it left.
#ifndef QUILLSTORE_OBBLOB_H_
#define QUILLSTORE_OBBLOB_H_

#include <cstdint>

#include "obdefs.h"

struct QS_TM_API ObBlobData {
  void* data = nullptr;  // malloc'ed, owned
  int32_t length = 0;

  // Copies `size` bytes in, reusing the block when it is at least `size`
  // and at most `size` + 128 bytes long.
  void SetData(const void* bytes, int32_t size);
};

class QS_TM_API ObBlob {
 public:
  static constexpr uint16_t kNotFound = 65535;

  ObBlob();
  explicit ObBlob(int32_t size);  // contents undefined
  ObBlob(const void* bytes, int32_t size);
  explicit ObBlob(const char* text);  // the text and its terminator
  ObBlob(const ObBlob& other);
  ~ObBlob();
  ObBlob& operator=(const ObBlob& other);
  ObBlob& operator=(const char* text);

  int32_t Length() const { return data_ != nullptr ? data_->length : 0; }
  const void* Data() const { return data_ != nullptr ? data_->data : nullptr; }
  // A new record with a block of n + 1 bytes and length n + 1.
  static ObBlobData* AllocData(int32_t n);
  // Frees this blob's data and takes over `other`'s record; `other` gets a
  // new empty record when it had one.
  void Destroy(ObBlob& other);
  bool IsNullValue() const { return data_ == nullptr; }
  int32_t SetNullValue();

  bool operator==(const ObBlob& b) const;
  // An ordering: 0 both null, 2 only `b` null, -2 only this null, else the
  // memcmp result over the shorter length, else the length comparison.
  int32_t operator!=(const ObBlob& b) const;

  void Expand(int32_t n);
  void Resize(int32_t n);
  void Append(const void* bytes, int32_t n);
  void Append(const ObBlob& b) { Append(b.Data(), b.Length()); }
  ObBlob& operator+=(const ObBlob& b) {
    Append(b);
    return *this;
  }
  // Byte `offset` when [offset, offset + n) lies in the blob and n != 0.
  void* Seek(int32_t offset, int32_t n);
  void CopyTo(const void* source, int32_t offset, int32_t n);
  void SetTo(const void* bytes, int32_t n);
  void Cut(int32_t offset, int32_t n);
  uint16_t Search(const ObBlob& pattern) const;  // kNotFound when absent
  ObBlob CopyFrom(int32_t offset, int32_t n) const;

  operator int() const;     // NOLINT: atoi of the bytes as text
  operator short() const;   // NOLINT
  operator double() const;  // NOLINT: atof of the bytes as text

 private:
  void Replace(ObBlobData* data);
  ObBlobData* data_;
};
static_assert(sizeof(ObBlob) == sizeof(void*), "ObBlob is one pointer");

#endif  // QUILLSTORE_OBBLOB_H_
