// Stored layouts of texts and blobs, and their translation between memory
// form, stored form and index keys.
#include "obtypes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "obblob.h"
#include "obbs.h"
#include "obi18n.h"
#include "obstring.h"
#include "obstringiterator.h"
#include "obstrkey.h"
#include "obtyphash.h"

using oblayout::Read16;
using oblayout::Write16;

namespace {

constexpr uint8_t kMemoryFlag = 0x08;
constexpr uint8_t kKeyFlag = 0x80;
constexpr uint8_t kCodeSetZeroFlag = 0x20;
constexpr uint8_t kNativeCodeSetFlag = 0x40;
constexpr uint8_t kOrderCodeSet = 254;
constexpr uint8_t kUnicode = 253;
constexpr uint32_t kEmptyRecord = 6;  // 04 00 cs language 00 FF
constexpr uint32_t kLongKey = 257;    // keys this long end in 00 FF when cut

bool IsMemory(uint8_t flags) { return (flags & kMemoryFlag) != 0; }
bool IsKey(uint8_t flags) { return (flags & kKeyFlag) != 0; }
bool IsWide(uint8_t codeSet) { return codeSet >= 225; }

// The code set a target form writes: 0x20 drops a code set, 0x40 gives raw
// bytes the native one; collation-order keys keep theirs.
uint8_t TargetCodeSet(uint8_t codeSet, uint8_t flags) {
  if (codeSet == kOrderCodeSet) return codeSet;
  if ((flags & kCodeSetZeroFlag) != 0) codeSet = 0;
  if ((flags & kNativeCodeSetFlag) != 0 && codeSet == 0)
    codeSet = ObLanguageContext::GetNativeCodeSet();
  return codeSet;
}

// Bytes after the length field for a string of buffer size n.
uint32_t DataBytes(uint32_t n, uint8_t codeSet) {
  if (n == 0) return 2;
  return IsWide(codeSet) ? n : n + 1;
}

// Whether code-set-253 records are narrowed to one byte per character when
// copied into keys; read once per process.
bool NarrowUnicodeKeys() {
  static const bool narrow =
      DefaultConfig().GetInt("debug", "oldIndexUnicodeOrder", 0) == 0;
  return narrow;
}

// Bytes of `count` variable-length records at a memory file's position;
// `size` reads a record's size from its `header` leading bytes. A record
// that runs past the file's end gives (remaining count + 1) x 65535, which
// callers take as too large.
template <class Size>
uint32_t RecordsSizeFromMemFile(MemFile* file, uint32_t count, uint32_t header,
                                Size size) {
  const uint8_t* p = file->Current();
  uint64_t left = file->Remaining();
  uint64_t total = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint64_t bytes = left >= header ? size(p) : 0;
    if (left < header || bytes > left)
      return static_cast<uint32_t>((uint64_t{count - i} + 1) * 65535);
    total += bytes;
    p += bytes;
    left -= bytes;
  }
  return static_cast<uint32_t>(total);
}

uint32_t StoreOne(uint8_t* d, const ObString& s, uint8_t format) {
  const uint8_t cs = s.GetCodeSet();
  const uint32_t data = DataBytes(s.GetSize(), cs);
  Write16(d, format, static_cast<uint16_t>(data + 2));
  d[2] = cs;
  d[3] = s.GetLanguage();
  const uint8_t* chars = reinterpret_cast<const uint8_t*>(s.StrGet());
  const uint32_t bytes = data - 2;
  if (IsWide(cs) && (format & 0x0F) == 2) {
    for (uint32_t i = 0; i + 1 < bytes; i += 2) {
      uint16_t u;
      std::memcpy(&u, chars + i, 2);
      Write16(d + 4 + i, format, u);
    }
  } else if (bytes != 0) {
    std::memcpy(d + 4, chars, bytes);
  }
  d[data + 2] = 0x00;
  d[data + 3] = 0xFF;
  return data + 4;
}

// Loads one current-form record of at most `avail` bytes; returns its size,
// or 0 when it does not fit.
uint32_t LoadOne(ObString& s, const uint8_t* p, uint64_t avail,
                 uint8_t format) {
  if (avail < 4) return 0;
  const uint32_t length = Read16(p, format);
  if (uint64_t{length} + 2 > avail) return 0;
  const uint8_t cs = p[2];
  ObString loaded(cs, p[3]);
  const uint32_t bytes = length < 4 ? 0 : length - 4;
  if (IsWide(cs)) {
    std::vector<uint16_t> units(bytes / 2 + 1);
    for (uint32_t i = 0; i < bytes / 2; ++i)
      units[i] = Read16(p + 4 + 2 * i, format);
    loaded.AssignChars(units.data(), bytes / 2);
  } else {
    loaded.AssignChars(p + 4, bytes);
  }
  s.Destruct(loaded);
  return length + 2;
}

// Records of unknown length: elements beyond the data become empty strings
// of the last code set seen, counting 6 bytes each.
uint32_t LoadBounded(ObString* dest, const uint8_t* src, uint64_t srcLen,
                     uint8_t format, uint32_t count) {
  uint64_t at = 0;
  uint32_t total = 0;
  uint8_t lastCodeSet = ObString::GetDefaultCodeSet();
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t used =
        at < srcLen ? LoadOne(dest[i], src + at, srcLen - at, format) : 0;
    if (used == 0) {
      ObString empty(lastCodeSet, ObString::GetDefaultLanguage());
      empty.AssignChars("", 0);
      dest[i].Destruct(empty);
      total += kEmptyRecord;
      continue;
    }
    lastCodeSet = dest[i].GetCodeSet();
    at += used;
    total += used;
  }
  return total;
}

// A collation-order key of `s` in at most `room` bytes; returns its size.
uint32_t StoreKey(uint8_t* d, uint32_t room, const ObString& s,
                  uint8_t format) {
  ObStringIterator it(s);
  uint8_t mode =
      s.GetLanguage() == ObString::kNullLanguage ? 0 : it.GetCollationId();
  uint32_t at = 4;
  bool first = true, cut = false, changed = false;
  for (;;) {
    const uint16_t order = it.GetNextOrder(1);
    if (order == 0) break;
    if (first) {
      if (s.GetLanguage() != ObString::kNullLanguage)
        mode = it.GetCollationId();
      first = false;
    } else if (it.GetCollationId() != mode) {
      changed = true;  // the key ends where the collation changes
      break;
    }
    if (at + 2 > room) {
      cut = true;
      break;
    }
    // Orders are stored low byte first in every format.
    d[at] = static_cast<uint8_t>(order);
    d[at + 1] = static_cast<uint8_t>(order >> 8);
    at += 2;
  }
  if (!cut) {
    if (at + 2 <= room) {
      d[at] = 0x00;
      d[at + 1] = 0xFF;
      at += 2;
    } else {
      cut = true;
    }
  }
  if (cut && room >= kLongKey) {
    d[at - 2] = 0x00;
    d[at - 1] = 0xFF;
  }
  const uint32_t length = at - 2;
  if (length > 0xFFFF) ORLO_assert("(o_u4b)_nLen == nLen", "obtypes", 0);
  Write16(d, format, static_cast<uint16_t>(length));
  d[2] = kOrderCodeSet;
  d[3] = static_cast<uint8_t>(mode | (changed ? 0x80 : 0));
  return at;
}

// Copies one stored record (current or earlier form) into `room` bytes of
// the target, cutting it there. Returns the bytes written and sets `used`
// to the record's size, 0 when the source holds no whole record.
uint32_t CopyRecord(uint8_t* d, uint32_t room, const uint8_t* p, uint64_t avail,
                    uint8_t srcFormat, uint8_t destFlags, uint32_t& used) {
  used = 0;
  if (avail < 2) return 0;
  const uint32_t length = Read16(p, srcFormat);
  if (uint64_t{length} + 2 > avail || length < 1) return 0;
  used = length + 2;
  std::vector<uint8_t> rec;
  if (p[length + 1] == 0) {
    // Earlier form: rewritten as a current record without a language.
    rec.resize(length + 5);
    Write16(rec.data(), destFlags, static_cast<uint16_t>(length + 3));
    rec[2] = TargetCodeSet(0, destFlags);
    rec[3] = 0;
    std::memcpy(rec.data() + 4, p + 2, length);
    rec[length + 4] = 0xFF;
  } else {
    rec.assign(p, p + length + 2);
    if (length >= 2) rec[2] = TargetCodeSet(p[2], destFlags);
    const bool narrow = p[2] == kUnicode && length >= 4 &&
                        (IsKey(destFlags) || rec[2] != kUnicode) &&
                        NarrowUnicodeKeys();
    if (narrow) {
      // One byte of every 16-bit character: the earlier key order.
      const uint32_t chars = (length - 4) / 2;
      std::vector<uint8_t> n(chars + 6);
      Write16(n.data(), destFlags, static_cast<uint16_t>(chars + 4));
      n[2] = rec[2];
      n[3] = p[3];
      for (uint32_t i = 0; i < chars; ++i) n[4 + i] = p[4 + 2 * i];
      n[chars + 4] = 0x00;
      n[chars + 5] = 0xFF;
      rec.swap(n);
    }
  }
  const uint32_t n =
      std::min<uint32_t>(room, static_cast<uint32_t>(rec.size()));
  std::memcpy(d, rec.data(), n);
  return n;
}

}  // namespace

// ---- ObString records.

uint32_t StringStore(void* dest, const void* src, uint8_t format,
                     uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const ObString* s = static_cast<const ObString*>(src);
  uint32_t total = 0;
  for (uint32_t i = 0; i < count; ++i)
    total += StoreOne(d + total, s[i], format);
  return total;
}

uint32_t StringLoad(void* dest, const void* src, uint8_t format,
                    uint32_t count) {
  ObString* d = static_cast<ObString*>(dest);
  const uint8_t* p = static_cast<const uint8_t*>(src);
  if (count == 0) return 0;
  const uint32_t length = Read16(p, format);
  if (p[length + 1] == 0) {
    // Earlier form: 0-terminated 8-bit texts; the size is the first one's.
    const char* text = reinterpret_cast<const char*>(p + 2);
    for (uint32_t i = 0; i < count; ++i) {
      ObString s(uint8_t{0}, uint8_t{0});
      const uint32_t n = static_cast<uint32_t>(std::strlen(text));
      s.AssignChars(text, n);
      d[i].Destruct(s);
      text += n + 1;
    }
    return length + 2;
  }
  uint32_t total = 0;
  for (uint32_t i = 0; i < count; ++i)
    total += LoadOne(d[i], p + total, UINT32_MAX, format);
  return total;
}

uint32_t StringSizeGet(const void* value, uint8_t srcFlags, uint8_t targetFlags,
                       uint32_t count) {
  uint64_t total = 0;
  const bool key = IsKey(targetFlags);
  auto grow = [&](uint32_t bytes, uint8_t sourceCs) -> uint64_t {
    const uint8_t cs = TargetCodeSet(sourceCs, targetFlags);
    if (key && cs != 0 && cs != kOrderCodeSet)
      return uint64_t{bytes} * (IsWide(sourceCs) ? 2 : 4);
    return bytes;
  };
  if (IsMemory(srcFlags)) {
    const ObString* s = static_cast<const ObString*>(value);
    for (uint32_t i = 0; i < count; ++i)
      total += grow(DataBytes(s[i].GetSize(), s[i].GetCodeSet()),
                    s[i].GetCodeSet()) +
               4;
    return static_cast<uint32_t>(total);
  }
  const uint8_t* p = static_cast<const uint8_t*>(value);
  for (uint32_t i = 0; i < count; ++i) {
    // The length is read in the target's byte order, as it always was.
    const uint32_t length = Read16(p, targetFlags);
    if (!key && p[length + 1] == 0) return static_cast<uint32_t>(length + 2);
    total += grow(length, p[2]) + 2;
    p += length + 2;
  }
  return static_cast<uint32_t>(total);
}

namespace oblayout {

uint32_t StringNullSizeGet(uint32_t count) { return kEmptyRecord * count; }

uint32_t StringSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count) {
  return RecordsSizeFromMemFile(file, count, 2, [format](const uint8_t* p) {
    return uint64_t{Read16(p, format)} + 2;
  });
}

uint32_t StringTranslate(void* dest, uint8_t destFlags, uint32_t destLen,
                         const void* src, uint8_t srcFlags, uint32_t srcLen,
                         uint32_t count) {
  if (IsMemory(destFlags)) {
    ObString* d = static_cast<ObString*>(dest);
    if (IsMemory(srcFlags)) {
      const ObString* s = static_cast<const ObString*>(src);
      for (uint32_t i = 0; i < count; ++i) d[i] = s[i];
      return count * sizeof(ObString);
    }
    // A private copy: the destination may overlap the source.
    std::vector<uint8_t> copy(static_cast<const uint8_t*>(src),
                              static_cast<const uint8_t*>(src) + srcLen);
    return LoadBounded(d, copy.data(), srcLen, srcFlags, count);
  }
  uint8_t* d = static_cast<uint8_t*>(dest);
  if (!IsMemory(srcFlags) && !IsKey(destFlags) && srcFlags != destFlags) {
    ORLO_assert("format combination not supported", "obtypes", 0);
    return 0;
  }
  if (IsMemory(srcFlags) && !IsKey(destFlags)) {
    std::memset(d, 0, destLen);
    const uint32_t need = StringSizeGet(src, srcFlags, destFlags, count);
    if (need <= destLen) return StringStore(d, src, destFlags, count);
    std::vector<uint8_t> temp(need);
    StringStore(temp.data(), src, destFlags, count);
    std::memcpy(d, temp.data(), destLen);
    return destLen;
  }
  // A key, or records copied between equal stored formats.
  uint32_t written = 0;
  uint64_t at = 0;
  for (uint32_t i = 0; i < count && destLen - written >= 5; ++i) {
    const uint32_t room = destLen - written;
    if (IsMemory(srcFlags)) {
      const ObString& s = static_cast<const ObString*>(src)[i];
      const uint8_t cs = TargetCodeSet(s.GetCodeSet(), destFlags);
      if (cs != 0 && cs != kOrderCodeSet) {
        written += StoreKey(d + written, room, s, destFlags);
        continue;
      }
      std::vector<uint8_t> rec(StringSizeGet(&s, srcFlags, destFlags, 1));
      StoreOne(rec.data(), s, destFlags);
      uint32_t used = 0;
      written += CopyRecord(d + written, room, rec.data(), rec.size(),
                            destFlags, destFlags, used);
      continue;
    }
    const uint8_t* p = static_cast<const uint8_t*>(src) + at;
    const uint64_t avail = srcLen > at ? srcLen - at : 0;
    if (IsKey(destFlags) && avail >= 4) {
      const uint32_t length = Read16(p, srcFlags);
      const bool current = length + 2 <= avail && p[length + 1] != 0;
      const uint8_t cs = TargetCodeSet(p[2], destFlags);
      if (current && cs != 0 && cs != kOrderCodeSet) {
        ObString s;
        LoadOne(s, p, avail, srcFlags);
        written += StoreKey(d + written, room, s, destFlags);
        at += length + 2;
        continue;
      }
    }
    uint32_t used = 0;
    written +=
        CopyRecord(d + written, room, p, avail, srcFlags, destFlags, used);
    if (used == 0) break;
    at += used;
  }
  return written;
}

// The string counter steps a stored key: the highest code unit of its code
// set behind its text bounds every key that begins with that text.
int32_t StringSequenceStep(void* value, uint32_t len, uint8_t format,
                           uint8_t kind) {
  if (format != 0x81 || (kind != 'M' && kind != 'N')) return kObNotSupported;
  uint8_t* p = static_cast<uint8_t*>(value);
  if (len < 5) return kObNotSupported;
  const uint32_t length = Read16(p, format);
  const bool wide = IsWide(p[2]);
  uint32_t end = std::min<uint32_t>(length + 2, len);
  // The text ends at the closing 00 FF, or at the cut.
  if (end >= 6 && p[end - 1] == 0xFF && p[end - 2] == 0x00) end -= 2;
  if (wide) {
    if (end + 2 > len) return kObCounterAtMax;
    p[end] = 0xFE;
    p[end + 1] = 0xFF;
  } else {
    if (end + 1 > len) return kObCounterAtMax;
    p[end] = 0xFF;
  }
  return 0;
}

// ---- The earlier string form: a length and 0-terminated 8-bit text.

uint32_t OldStringStore(void* dest, const void* src, uint8_t format,
                        uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const ObString* s = static_cast<const ObString*>(src);
  uint32_t total = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t n = s[i].Len() * s[i].CharWidth();
    Write16(d + total, format, static_cast<uint16_t>(n + 1));
    if (n != 0) std::memcpy(d + total + 2, s[i].StrGet(), n);
    d[total + 2 + n] = 0;
    total += n + 3;
  }
  return total;
}

uint32_t OldStringNullSizeGet(uint32_t count) { return 3 * count; }

uint32_t OldStringSizeGet(const void* value, uint8_t srcFlags,
                          uint8_t targetFlags, uint32_t count) {
  uint64_t total = 0;
  if (IsMemory(srcFlags)) {
    const ObString* s = static_cast<const ObString*>(value);
    for (uint32_t i = 0; i < count; ++i)
      total += s[i].Len() * s[i].CharWidth() + 3;
    return static_cast<uint32_t>(total);
  }
  const uint8_t* p = static_cast<const uint8_t*>(value);
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t length = Read16(p, targetFlags);
    total += length + 2;
    p += length + 2;
  }
  return static_cast<uint32_t>(total);
}

uint32_t OldStringSizeFromMemFile(MemFile* file, uint8_t format,
                                  uint32_t count) {
  return StringSizeFromMemFile(file, format, count);
}

uint32_t OldStringTranslate(void* dest, uint8_t destFlags, uint32_t destLen,
                            const void* src, uint8_t srcFlags, uint32_t srcLen,
                            uint32_t count) {
  if (!IsMemory(destFlags) && IsMemory(srcFlags)) {
    const uint32_t need = OldStringSizeGet(src, srcFlags, destFlags, count);
    std::vector<uint8_t> temp(need);
    OldStringStore(temp.data(), src, destFlags, count);
    std::memset(dest, 0, destLen);
    const uint32_t n = std::min(need, destLen);
    std::memcpy(dest, temp.data(), n);
    return n;
  }
  return StringTranslate(dest, destFlags, destLen, src, srcFlags, srcLen,
                         count);
}

// ---- Blobs.

namespace {
constexpr uint32_t kNullBlob = 0xFFFFFFFFu;
}

uint32_t BlobStore(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  uint8_t* d = static_cast<uint8_t*>(dest);
  const ObBlob* b = static_cast<const ObBlob*>(src);
  uint32_t total = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t length =
        b[i].IsNullValue() ? kNullBlob : static_cast<uint32_t>(b[i].Length());
    total += LongStoreOne(d + total, &length, format);
    if (length != kNullBlob && length != 0) {
      std::memcpy(d + total, b[i].Data(), length);
      total += length;
    }
  }
  return total;
}

uint32_t BlobLoad(void* dest, const void* src, uint8_t format, uint32_t count) {
  ObBlob* b = static_cast<ObBlob*>(dest);
  const uint8_t* p = static_cast<const uint8_t*>(src);
  uint32_t total = 0;
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t length = 0;
    total += LongStoreOne(&length, p + total, format);
    if (length == kNullBlob) {
      b[i].SetNullValue();
      continue;
    }
    b[i].SetTo(p + total, static_cast<int32_t>(length));
    total += length;
  }
  return total;
}

uint32_t BlobNullSizeGet(uint32_t count) { return 4 * count; }

uint32_t BlobSizeGet(const void* value, uint8_t srcFlags, uint8_t targetFlags,
                     uint32_t count) {
  uint64_t total = 0;
  if (IsMemory(srcFlags)) {
    const ObBlob* b = static_cast<const ObBlob*>(value);
    for (uint32_t i = 0; i < count; ++i) total += 4 + uint32_t(b[i].Length());
    return static_cast<uint32_t>(total);
  }
  const uint8_t* p = static_cast<const uint8_t*>(value);
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t length = 0;
    LongStoreOne(&length, p + total, targetFlags);
    total += 4 + (length == kNullBlob ? 0 : length);
  }
  return static_cast<uint32_t>(total);
}

uint32_t BlobSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count) {
  return RecordsSizeFromMemFile(file, count, 4, [format](const uint8_t* p) {
    uint32_t length = 0;
    LongStoreOne(&length, p, format);
    return 4 + uint64_t{length == kNullBlob ? 0 : length};
  });
}

uint32_t BlobTranslate(void* dest, uint8_t destFlags, uint32_t destLen,
                       const void* src, uint8_t srcFlags, uint32_t srcLen,
                       uint32_t count) {
  if (IsMemory(destFlags) && IsMemory(srcFlags)) {
    ObBlob* d = static_cast<ObBlob*>(dest);
    const ObBlob* s = static_cast<const ObBlob*>(src);
    for (uint32_t i = 0; i < count; ++i) d[i] = s[i];
    return count * sizeof(ObBlob);
  }
  if (IsMemory(srcFlags)) {
    const uint32_t need = BlobSizeGet(src, srcFlags, destFlags, count);
    std::vector<uint8_t> temp(need);
    BlobStore(temp.data(), src, destFlags, count);
    std::memset(dest, 0, destLen);
    const uint32_t n = std::min(need, destLen);
    std::memcpy(dest, temp.data(), n);
    return n;
  }
  if (IsMemory(destFlags)) {
    // Only whole elements inside the source are loaded.
    ObBlob* d = static_cast<ObBlob*>(dest);
    const uint8_t* p = static_cast<const uint8_t*>(src);
    uint64_t at = 0;
    for (uint32_t i = 0; i < count && at + 4 <= srcLen; ++i) {
      uint32_t length = 0;
      LongStoreOne(&length, p + at, srcFlags);
      const uint64_t size = 4 + uint64_t{length == kNullBlob ? 0 : length};
      if (at + size > srcLen) break;
      BlobLoad(&d[i], p + at, srcFlags, 1);
      at += size;
    }
    return static_cast<uint32_t>(at);
  }
  const uint32_t n = std::min(srcLen, destLen);
  if (srcLen < destLen) std::memset(dest, 0, destLen);
  std::memmove(dest, src, n);
  return n;
}

// Blobs hash by length only: equal contents always hash alike and the hash
// never reads blob data.
uint32_t BlobHash(uint8_t flags, uint32_t len, const void* value,
                  uint32_t count, int32_t& status) {
  status = 0;
  if (count == 0) return 0;
  uint32_t acc = 0;
  if ((flags & 0x0F) == 8) {
    const ObBlob* b = static_cast<const ObBlob*>(value);
    for (uint32_t i = 0; i < count; ++i) acc ^= uint32_t(b[i].Length());
    return acc * obhash::kFinalMultiplier;
  }
  const uint8_t* p = static_cast<const uint8_t*>(value);
  const uint64_t end = len != 0 ? len : UINT64_MAX;  // 0: trusted elements
  uint64_t at = 0;
  for (uint32_t i = 0; i < count; ++i) {
    if (at + 4 > end) {
      status = ObCMP_OPERAND_EXHAUSTED;
      break;
    }
    uint32_t length = 0;
    LongStoreOne(&length, p + at, flags);
    const uint64_t after = end - at - 4;
    const uint32_t term =
        length == kNullBlob
            ? kNullBlob
            : static_cast<uint32_t>(std::min<uint64_t>(length, after));
    acc ^= term;
    at += 4 + (length == kNullBlob ? 0 : std::min<uint64_t>(length, after));
  }
  return acc * obhash::kFinalMultiplier;
}

}  // namespace oblayout
