#include <cstring>

#include "obbs.h"

// A null buffer is treated as empty so that Current() + Remaining() is
// always a valid range.
MemFile::MemFile(const void* data, uint32_t size) noexcept
    : data_(static_cast<const uint8_t*>(data)),
      size_(data != nullptr ? size : 0),
      pos_(0) {}

int32_t MemFile::Seek(int64_t offset, SeekOrigin origin) noexcept {
  int64_t base;
  switch (origin) {
    case kBegin:
      base = 0;
      break;
    case kCurrent:
      base = pos_;
      break;
    case kEnd:
      base = size_;
      break;
    default:
      return -1;
  }
  // Compare against the distances to either end instead of forming
  // base + offset, which could overflow for extreme offsets.
  if (offset < -base || offset > static_cast<int64_t>(size_) - base) return -1;
  pos_ = static_cast<uint32_t>(base + offset);
  return 0;
}

uint32_t MemFile::Read(void* dest, uint32_t n) noexcept {
  if (dest == nullptr) return 0;
  if (n > Remaining()) n = Remaining();
  if (n != 0) std::memcpy(dest, data_ + pos_, n);
  pos_ += n;
  return n;
}
