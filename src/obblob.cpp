#include "obblob.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "obbs.h"

namespace {

void* AllocBlock(int32_t size) {
  return size > 0 ? ObAllocate(static_cast<size_t>(size), 0) : nullptr;
}

ObBlobData* NewRecord() {
  for (;;) {
    if (auto* d = new (std::nothrow) ObBlobData()) return d;
    if (ObCallMemoryHandler(sizeof(ObBlobData)) == 0) return nullptr;
  }
}

void FreeRecord(ObBlobData* d) {
  if (d == nullptr) return;
  std::free(d->data);
  delete d;
}

// A record holding `size` bytes: `bytes` when given, else undefined.
ObBlobData* RecordOf(const void* bytes, int32_t size) {
  ObBlobData* d = NewRecord();
  if (d == nullptr) return nullptr;
  if (size > 0) {
    d->data = AllocBlock(size);
    if (d->data != nullptr) {
      d->length = size;
      if (bytes != nullptr)
        std::memcpy(d->data, bytes, static_cast<size_t>(size));
    }
  }
  return d;
}

}  // namespace

void ObBlobData::SetData(const void* bytes, int32_t size) {
  if (size < 0) size = 0;
  if (data == nullptr || length < size || length > size + 128) {
    std::free(data);
    data = AllocBlock(size);
    if (data == nullptr) size = 0;
  }
  if (size > 0 && bytes != nullptr)
    std::memmove(data, bytes, static_cast<size_t>(size));
  length = size;
}

ObBlob::ObBlob() : data_(NewRecord()) {}
ObBlob::ObBlob(int32_t size) : data_(RecordOf(nullptr, size)) {}
ObBlob::ObBlob(const void* bytes, int32_t size)
    : data_(RecordOf(bytes, size)) {}
ObBlob::ObBlob(const char* text)
    : data_(text != nullptr
                ? RecordOf(text, static_cast<int32_t>(std::strlen(text)) + 1)
                : NewRecord()) {}
ObBlob::ObBlob(const ObBlob& other)
    : data_(other.data_ != nullptr ? RecordOf(other.Data(), other.Length())
                                   : nullptr) {}
ObBlob::~ObBlob() { FreeRecord(data_); }

void ObBlob::Replace(ObBlobData* data) {
  if (data == data_) return;
  FreeRecord(data_);
  data_ = data;
}

ObBlob& ObBlob::operator=(const ObBlob& other) {
  if (this != &other)
    Replace(other.data_ != nullptr ? RecordOf(other.Data(), other.Length())
                                   : nullptr);
  return *this;
}

ObBlob& ObBlob::operator=(const char* text) {
  ObBlob copy(text);
  Destroy(copy);
  return *this;
}

ObBlobData* ObBlob::AllocData(int32_t n) { return RecordOf(nullptr, n + 1); }

void ObBlob::Destroy(ObBlob& other) {
  if (&other == this) return;
  const bool hadRecord = other.data_ != nullptr;
  Replace(other.data_);
  other.data_ = hadRecord ? NewRecord() : nullptr;
}

int32_t ObBlob::SetNullValue() {
  Replace(nullptr);
  return 0;
}

bool ObBlob::operator==(const ObBlob& b) const {
  if (data_ == nullptr || b.data_ == nullptr)
    return data_ == nullptr && b.data_ == nullptr;
  return Length() == b.Length() &&
         (Length() == 0 ||
          std::memcmp(Data(), b.Data(), static_cast<size_t>(Length())) == 0);
}

int32_t ObBlob::operator!=(const ObBlob& b) const {
  if (data_ == nullptr) return b.data_ == nullptr ? 0 : -2;
  if (b.data_ == nullptr) return 2;
  const int32_t n = std::min(Length(), b.Length());
  if (n > 0) {
    int r = std::memcmp(Data(), b.Data(), static_cast<size_t>(n));
    if (r != 0) return r;
  }
  return (Length() > b.Length()) - (Length() < b.Length());
}

void ObBlob::Expand(int32_t n) {
  ObBlobData* d = RecordOf(nullptr, n);
  if (d != nullptr && d->data != nullptr && Length() > 0)
    std::memcpy(d->data, Data(), static_cast<size_t>(std::min(n, Length())));
  Replace(d);
}

void ObBlob::Resize(int32_t n) { Expand(std::max(n, 0)); }

void ObBlob::Append(const void* bytes, int32_t n) {
  if (n < 1 || bytes == nullptr) return;
  if (data_ == nullptr) {
    Replace(RecordOf(bytes, n));
    return;
  }
  const int32_t old = Length();
  ObBlobData* d = RecordOf(nullptr, old + n);
  if (d == nullptr || d->data == nullptr) {
    FreeRecord(d);
    return;
  }
  if (old > 0) std::memcpy(d->data, Data(), static_cast<size_t>(old));
  std::memcpy(static_cast<char*>(d->data) + old, bytes, static_cast<size_t>(n));
  Replace(d);
}

void* ObBlob::Seek(int32_t offset, int32_t n) {
  if (data_ == nullptr || offset < 0 || n == 0 || offset > Length() ||
      static_cast<int64_t>(offset) + n > Length())
    return nullptr;
  return static_cast<char*>(data_->data) + offset;
}

void ObBlob::CopyTo(const void* source, int32_t offset, int32_t n) {
  if (data_ == nullptr || source == nullptr || offset < 0) return;
  const int32_t count = std::min<int64_t>(n, int64_t{Length()} - offset);
  if (count < 1) return;
  std::memmove(static_cast<char*>(data_->data) + offset, source,
               static_cast<size_t>(count));
}

void ObBlob::SetTo(const void* bytes, int32_t n) {
  if (data_ == nullptr) data_ = NewRecord();
  if (data_ != nullptr) data_->SetData(bytes, n);
}

void ObBlob::Cut(int32_t offset, int32_t n) {
  if (data_ == nullptr || offset < 0 || offset > Length() || n < 1) return;
  const int32_t count = std::min(n, Length() - offset);
  const int32_t rest = Length() - offset - count;
  ObBlobData* d = RecordOf(nullptr, offset + rest);
  if (d == nullptr) return;
  if (d->data != nullptr) {
    const char* old = static_cast<const char*>(Data());
    std::memcpy(d->data, old, static_cast<size_t>(offset));
    std::memcpy(static_cast<char*>(d->data) + offset, old + offset + count,
                static_cast<size_t>(rest));
  }
  Replace(d);
}

uint16_t ObBlob::Search(const ObBlob& pattern) const {
  if (data_ == nullptr || pattern.Length() > Length()) return kNotFound;
  const char* hay = static_cast<const char*>(Data());
  const char* needle = static_cast<const char*>(pattern.Data());
  const int32_t n = pattern.Length();
  for (int32_t i = 0; i + n <= Length() && i < kNotFound; ++i) {
    if (n == 0 || std::memcmp(hay + i, needle, static_cast<size_t>(n)) == 0)
      return static_cast<uint16_t>(i);
  }
  return kNotFound;
}

// An offset beyond the end or a count below 1 gives an empty blob.
ObBlob ObBlob::CopyFrom(int32_t offset, int32_t n) const {
  if (data_ == nullptr || offset < 0 || offset >= Length() || n < 1)
    return ObBlob();
  const int32_t count = std::min(n, Length() - offset);
  return ObBlob(static_cast<const char*>(Data()) + offset, count);
}

namespace {
// The bytes as a terminated text, whatever the blob holds.
std::string TextOf(const ObBlob& b) {
  if (b.Data() == nullptr) return std::string();
  const char* p = static_cast<const char*>(b.Data());
  return std::string(p, strnlen(p, static_cast<size_t>(b.Length())));
}
}  // namespace

ObBlob::operator int() const { return std::atoi(TextOf(*this).c_str()); }
ObBlob::operator short() const {
  return static_cast<short>(std::atoi(TextOf(*this).c_str()));
}
ObBlob::operator double() const { return std::atof(TextOf(*this).c_str()); }
