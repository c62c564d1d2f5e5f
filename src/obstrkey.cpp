// Key comparison and hashing of stored texts and blobs.
#include "obstrkey.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "obblob.h"
#include "obbs.h"
#include "obhash.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obtypes.h"
#include "obtyphash.h"

using oblayout::Read16;

namespace {

constexpr uint8_t kOrderCodeSet = 254;
constexpr int32_t kCutTooLong = -2999;  // ObCMP_KEY_CUT_TOO_LONG
constexpr uint32_t kStackBuffer = 256;
constexpr uint32_t kLongCut = 254;

// One operand of a string comparison.
struct Operand {
  const char* chars = nullptr;
  uint32_t bytes = 0;  // effective data length
  uint8_t codeSet = 0;
  uint8_t language = 0;
  int cut = 0;  // 1: only the closing 0xFF missing; 2: cut deeper
  uint32_t recordSize = 0;
  bool orderRecord = false;
};

uint32_t CharWidth(uint8_t codeSet) { return codeSet >= 225 ? 2 : 1; }

// Reads a stored record's fields; `legacy` reads a record cut by its length
// as an earlier-form record. Returns false when the record is unusable.
bool ReadRecord(const uint8_t* p, uint32_t len, uint8_t flags, bool legacy,
                Operand& op, int32_t& status) {
  if (len != 0 && len < 2) return false;
  const uint32_t length = Read16(p, flags);
  const bool cutByLen = len != 0 && len - 2 < length;
  bool current;
  if ((flags & 0x80) != 0) {
    current = true;
  } else if (cutByLen) {
    current = !legacy;  // the last byte lies beyond the length
  } else {
    current = p[length + 1] != 0;
  }
  uint32_t data;
  if (current) {
    if (len != 0 && len < 4) return false;
    op.codeSet = p[2];
    op.language = p[3];
    op.chars = reinterpret_cast<const char*>(p + 4);
    data = length >= 4 ? length - 4 : 0;
  } else {
    op.codeSet = 0;
    op.language = 0;
    op.chars = reinterpret_cast<const char*>(p + 2);
    data = length >= 1 ? length - 1 : 0;
  }
  op.orderRecord = op.codeSet == kOrderCodeSet;
  op.recordSize = length + 2;
  uint32_t usable = data;
  if (cutByLen) {
    op.cut = len - 1 == length ? 1 : 2;
    const uint32_t reduced = len - 2 - (current ? 2 : 0);
    usable = std::min(len >= 2 + (current ? 2u : 0u) ? reduced : 0u, data);
  }
  if (usable < data && usable >= kLongCut) {
    status = kCutTooLong;
    return false;
  }
  op.bytes = usable;
  return true;
}

// Characters to compare, followed by two 0 bytes: on the stack when short.
class TextCopy {
 public:
  TextCopy(const char* chars, uint32_t bytes) {
    const uint32_t size = bytes + 2;
    char* p = stack_;
    if (size > kStackBuffer) {
      heap_ = static_cast<char*>(ObAllocate(size, 0));
      if (heap_ == nullptr) {
        bytes = kStackBuffer - 2;
      } else {
        p = heap_;
      }
    }
    if (bytes != 0) std::memcpy(p, chars, bytes);
    p[bytes] = 0;
    p[bytes + 1] = 0;
    text_ = p;
  }
  ~TextCopy() { std::free(heap_); }
  TextCopy(const TextCopy&) = delete;
  TextCopy& operator=(const TextCopy&) = delete;
  const char* get() const { return text_; }

 private:
  char stack_[kStackBuffer];
  char* heap_ = nullptr;
  const char* text_ = nullptr;
};

// Compares one pair of texts with the cut-key and wildcard rules.
int32_t CompareTexts(Operand& a, Operand& b, uint16_t options, uint8_t flags,
                     int32_t& status) {
  const bool exact = (options & (CmpNoWildcards | CmpBinaryOrder)) != 0;
  const bool handBack = (options & CmpIgnoreBlanks) != 0;
  // Keys closed where their collation changed.
  if (a.orderRecord && (a.language & 0x80) != 0) {
    a.language &= 0x7F;
    status = ObCMP_OPERAND_EXHAUSTED;
  }
  if (b.orderRecord && (b.language & 0x80) != 0) {
    b.language &= 0x7F;
    status = ObCMP_OPERAND_EXHAUSTED;
    if (!exact && b.cut == 0) b.cut = 1;
  }
  const int t = (a.cut != 0 ? 1 : 0) + (b.cut != 0 ? 2 : 0);
  const int32_t chars1 = static_cast<int32_t>(a.bytes / CharWidth(a.codeSet));
  const int32_t chars2 = static_cast<int32_t>(b.bytes / CharWidth(b.codeSet));
  int32_t limit = -1;
  bool decided = false;
  if (t > 0 && !exact) {
    const int32_t w =
        FindWildcard(b.codeSet, b.language, b.chars, 1, chars2, nullptr, 1);
    if (w >= 0) {
      limit = std::min(chars1, w);
      if (t > 1 || handBack || w + 1 != chars2 || chars1 < w)
        status = ObCMP_OPERAND_EXHAUSTED;
      decided = true;
    }
  }
  if (t > 0 && !decided) {
    if (t == 1) {
      limit = chars1;
      if (!(chars2 < chars1 && !handBack)) status = ObCMP_OPERAND_EXHAUSTED;
    } else if (t == 2) {
      limit = chars2;
      if (!(chars1 < chars2 && !handBack)) status = ObCMP_OPERAND_EXHAUSTED;
    } else {
      limit = std::min(chars1, chars2);
      status = ObCMP_OPERAND_EXHAUSTED;
    }
  }
  int32_t aux = 0;
  const int16_t max = static_cast<int16_t>(std::min<int32_t>(limit, 32767));
  int32_t r =
      ObStrCmp(a.codeSet, a.language, a.chars, b.codeSet, b.language, b.chars,
               options, limit < 0 ? -1 : max, flags & 0x0F, &aux);
  if (r == 0 && (t == 1 || t == 2) && chars1 != chars2) {
    if (t == 1 && limit == chars2) r = 1;
    if (t == 2 && limit == chars1) r = -1;
  }
  if (t > 0 && handBack) r = aux;
  return r;
}

int32_t StringCompareImpl(uint8_t flags, uint32_t len1, const void* p1,
                          uint32_t len2, const void* p2, uint16_t options,
                          uint32_t count, int32_t& status, bool legacy) {
  status = 0;
  if (count == 0) return 0;
  int32_t result = 0;
  if (flags == 8) {
    const ObString* a = static_cast<const ObString*>(p1);
    const ObString* b = static_cast<const ObString*>(p2);
    for (uint32_t i = 0; i < count && result == 0; ++i) {
      Operand x, y;
      x.chars = a[i].GetSize() != 0 ? a[i].StrGet() : nullptr;
      y.chars = b[i].GetSize() != 0 ? b[i].StrGet() : nullptr;
      if (x.chars == nullptr || y.chars == nullptr) {
        result = (x.chars != nullptr) - (y.chars != nullptr);
        continue;
      }
      x.bytes = a[i].GetSize() - a[i].CharWidth();
      y.bytes = b[i].GetSize() - b[i].CharWidth();
      x.codeSet = a[i].GetCodeSet();
      y.codeSet = b[i].GetCodeSet();
      x.language = a[i].GetLanguage();
      y.language = b[i].GetLanguage();
      result = CompareTexts(x, y, options, flags, status);
    }
    return result;
  }
  const uint8_t* a = static_cast<const uint8_t*>(p1);
  const uint8_t* b = static_cast<const uint8_t*>(p2);
  uint64_t left1 = len1 != 0 ? len1 : UINT64_MAX;
  uint64_t left2 = len2 != 0 ? len2 : UINT64_MAX;
  for (uint32_t i = 0; i < count && result == 0; ++i) {
    Operand x, y;
    const uint32_t l1 = len1 != 0 ? static_cast<uint32_t>(left1) : 0;
    const uint32_t l2 = len2 != 0 ? static_cast<uint32_t>(left2) : 0;
    if (!ReadRecord(a, l1, flags, legacy, x, status) ||
        !ReadRecord(b, l2, flags, legacy, y, status)) {
      if (status == kCutTooLong) return -1;
      status = ObCMP_OPERAND_EXHAUSTED;
      return result;
    }
    TextCopy t1(x.chars, x.bytes), t2(y.chars, y.bytes);
    x.chars = t1.get();
    y.chars = t2.get();
    result = CompareTexts(x, y, options, flags, status);
    if (left1 <= x.recordSize || left2 <= y.recordSize) {
      if (i + 1 < count) status = ObCMP_OPERAND_EXHAUSTED;
      break;
    }
    left1 -= x.recordSize;
    left2 -= y.recordSize;
    a += x.recordSize;
    b += y.recordSize;
    if ((len1 != 0 && left1 < 5) || (len2 != 0 && left2 < 5)) {
      if (i + 1 < count) status = ObCMP_OPERAND_EXHAUSTED;
      break;
    }
  }
  return result;
}

}  // namespace

int32_t StringCompare(uint8_t flags, uint32_t len1, const void* p1,
                      uint32_t len2, const void* p2, uint16_t options,
                      uint32_t count, int32_t& status) {
  return StringCompareImpl(flags, len1, p1, len2, p2, options, count, status,
                           false);
}

int32_t StringCompareLegacy(uint8_t flags, uint32_t len1, const void* p1,
                            uint32_t len2, const void* p2, uint16_t options,
                            uint32_t count, int32_t& status) {
  return StringCompareImpl(flags, len1, p1, len2, p2, options, count, status,
                           true);
}

int32_t BlobCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                    const void* p2, uint16_t, uint32_t count, int32_t& status) {
  status = 0;
  if (count == 0) return 0;
  if ((flags & 0x0F) == 8) {
    const ObBlob* a = static_cast<const ObBlob*>(p1);
    const ObBlob* b = static_cast<const ObBlob*>(p2);
    for (uint32_t i = 0; i < count; ++i) {
      if (!(a[i] == b[i])) return 1;  // in memory blobs only test equality
    }
    return 0;
  }
  constexpr uint32_t kNull = 0xFFFFFFFFu;
  const uint8_t* a = static_cast<const uint8_t*>(p1);
  const uint8_t* b = static_cast<const uint8_t*>(p2);
  uint64_t left1 = len1 != 0 ? len1 : UINT64_MAX;
  uint64_t left2 = len2 != 0 ? len2 : UINT64_MAX;
  for (uint32_t i = 0; i < count; ++i) {
    if (left1 < 4 || left2 < 4) {
      status = ObCMP_OPERAND_EXHAUSTED;
      return 0;
    }
    uint32_t n1 = 0, n2 = 0;
    LongStoreOne(&n1, a, flags);
    LongStoreOne(&n2, b, flags);
    a += 4;
    b += 4;
    left1 -= 4;
    left2 -= 4;
    if (n1 == kNull || n2 == kNull) {
      if (n1 != n2) return n1 == kNull ? -2 : 2;
    } else {
      const uint64_t n = std::min<uint64_t>({n1, n2, left1, left2});
      if (n != 0) {
        const int r = std::memcmp(a, b, static_cast<size_t>(n));
        if (r != 0) return r;
      }
      if (n1 != n2) return n1 < n2 ? -1 : 1;
      const uint64_t skip1 = std::min<uint64_t>(n1, left1);
      const uint64_t skip2 = std::min<uint64_t>(n2, left2);
      a += skip1;
      b += skip2;
      left1 -= skip1;
      left2 -= skip2;
    }
    if (left1 == 0 || left2 == 0) {
      if (i + 1 < count) status = ObCMP_OPERAND_EXHAUSTED;
      return 0;
    }
  }
  return 0;
}

namespace oblayout {

// Texts hash by their collation orders; a cut record hashes its whole
// characters only, and a long cut ends the hashing.
uint32_t StringHash(uint8_t flags, uint32_t len, const void* value,
                    uint32_t count, int32_t& status) {
  status = 0;
  if (count == 0) return 0;
  uint32_t acc = 0;
  if ((flags & 0x0F) == 8) {
    const ObString* s = static_cast<const ObString*>(value);
    for (uint32_t i = 0; i < count; ++i)
      acc ^= HashString(s[i].GetCodeSet(), s[i].GetLanguage(), s[i].StrGet(),
                        -1, 8);
    return acc * obhash::kFinalMultiplier;
  }
  const uint8_t* p = static_cast<const uint8_t*>(value);
  uint64_t left = len != 0 ? len : UINT64_MAX;
  for (uint32_t i = 0; i < count; ++i) {
    Operand op;
    const uint32_t l = len != 0 ? static_cast<uint32_t>(left) : 0;
    if (!ReadRecord(p, l, flags, false, op, status)) {
      if (status == kCutTooLong) status = 0;
      break;
    }
    TextCopy text(op.chars, op.bytes);
    const uint8_t language = op.orderRecord ? op.language & 0x7F : op.language;
    const int16_t max =
        op.cut != 0 ? static_cast<int16_t>(op.bytes / CharWidth(op.codeSet))
                    : -1;
    acc ^= HashString(op.codeSet, language, text.get(), max, flags & 0x0F);
    if (left <= op.recordSize) break;
    left -= op.recordSize;
    p += op.recordSize;
  }
  return acc * obhash::kFinalMultiplier;
}

}  // namespace oblayout
