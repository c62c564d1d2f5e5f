#include "obmbconv.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "obbs.h"
#include "obstring.h"

namespace {

// DO NOT CHANGE: stored multibyte texts were written by these rows.
struct CodecRow {
  uint8_t mask;
  uint8_t lead;
  uint8_t shift;
  uint32_t largest;
  uint32_t smallest;
};
constexpr CodecRow kRows[] = {
    {0x80, 0x00, 0, 0x7F, 0},
    {0xE0, 0xC0, 6, 0x7FF, 0x80},
    {0xF0, 0xE0, 12, 0xFFFF, 0x800},
    {0xF8, 0xF0, 18, 0x1FFFFF, 0x10000},
    {0xFC, 0xF8, 24, 0x3FFFFFF, 0x200000},
    {0xFE, 0xFC, 30, 0x7FFFFFFF, 0x4000000},
};
constexpr uint8_t kUnicode = 253;
constexpr uint32_t kMaxInput = 32768;
constexpr uint8_t kFirstNonAscii8CodeSet = 27;

// Decodes one character of at most `n` bytes; -1 on any fault. Reads only
// the bytes it needs, and never beyond `n`.
int32_t Decode(const uint8_t* in, size_t n, uint32_t& value) {
  if (n == 0) return -1;
  const uint8_t lead = in[0];
  uint64_t v = lead;
  for (size_t k = 0; k < sizeof kRows / sizeof kRows[0]; ++k) {
    const CodecRow& row = kRows[k];
    if ((lead & row.mask) == row.lead) {
      v &= row.largest;
      if (v < row.smallest) return -1;
      value = static_cast<uint32_t>(v);
      return static_cast<int32_t>(k + 1);
    }
    if (k + 1 >= n) return -1;
    const uint8_t bits = in[k + 1] ^ 0x80;
    if (bits >= 64) return -1;
    v = v * 64 + bits;
  }
  return -1;
}

int32_t Encode(uint32_t ch, uint8_t* out) {
  for (const CodecRow& row : kRows) {
    if (row.largest < ch) continue;
    int32_t n = 0;
    int shift = row.shift;
    out[n++] = static_cast<uint8_t>((ch >> shift) | row.lead);
    while (shift > 0) {
      shift -= 6;
      out[n++] = static_cast<uint8_t>(((ch >> shift) & 63) | 0x80);
    }
    return n;
  }
  return -1;
}

}  // namespace

int32_t ObMultiByte2WChar(unsigned short* out, const char* in, size_t n) {
  if (in == nullptr) return -1;
  uint32_t v = 0;
  int32_t used = Decode(reinterpret_cast<const uint8_t*>(in), n, v);
  if (used > 0 && out != nullptr) *out = static_cast<unsigned short>(v);
  return used;
}

int32_t ObMultiByteStr2WCharStr(unsigned short* out, int32_t outCount,
                                const char* in, int32_t inBytes) {
  if (in == nullptr || inBytes <= 0) return 0;
  const uint8_t* p = reinterpret_cast<const uint8_t*>(in);
  int32_t chars = 0;
  for (int32_t pos = 0; pos < inBytes;) {
    uint32_t v = 0;
    int32_t used = Decode(p + pos, static_cast<size_t>(inBytes - pos), v);
    if (used < 0) return -1;
    if (out != nullptr && chars < outCount)
      out[chars] = static_cast<unsigned short>(v);
    ++chars;
    pos += used;
  }
  return chars;
}

int32_t ObWChar2MultiByte(char* out, wchar_t ch) {
  if (out == nullptr) return 0;
  uint8_t bytes[6];
  int32_t n = Encode(static_cast<uint32_t>(ch), bytes);
  if (n > 0) std::memcpy(out, bytes, static_cast<size_t>(n));
  return n;
}

int32_t ObMBS2ObString(const char* in, ObString& out, int32_t inBytes) {
  const uint8_t language = out.GetLanguage();
  out = ObString(kUnicode, language);
  if (inBytes == 0) return 0;
  if (in == nullptr) return -1;
  const uint8_t* p = reinterpret_cast<const uint8_t*>(in);
  // A negative count decodes to the terminating 0; a cut sequence stops at
  // the 0, whose continuation test fails, so no byte beyond it is read.
  const size_t limit = inBytes < 0 ? SIZE_MAX : static_cast<size_t>(inBytes);
  // Decoded in one piece: the same text as appending 256-unit pieces.
  std::vector<unsigned short> units;
  units.reserve(std::min<size_t>(limit, kMaxInput));
  size_t pos = 0;
  int32_t result = 0;
  while (pos < limit) {
    uint32_t v = p[pos];
    int32_t used = 1;
    if (v >= 0x80) used = Decode(p + pos, limit - pos, v);
    if (used < 0) {
      result = -1;
      break;
    }
    if (v == 0) break;
    pos += static_cast<size_t>(used);
    units.push_back(static_cast<unsigned short>(v));
    if (pos >= kMaxInput) {
      result = -2;
      break;
    }
  }
  out.AssignChars(units.data(), static_cast<uint32_t>(units.size()));
  out.SetLanguage(language);
  return result < 0 ? result : static_cast<int32_t>(pos);
}

int32_t ObMultiByteString2ObString(const ObString& in, ObString& out) {
  const ObString source(in);  // `out` may be `in`
  return ObMBS2ObString(source.StrGet(), out,
                        static_cast<int32_t>(source.Len()));
}

int32_t ObMultiByteString2ObString(const char* in, ObString& out,
                                   int32_t inBytes) {
  return ObMBS2ObString(in, out, inBytes);
}

int32_t ObString2ObMBS(const ObString& in, char* out, int32_t outBytes) {
  if (out == nullptr) outBytes = 0;
  const int32_t room = outBytes > 0 ? outBytes : 0;
  if (in.GetCodeSet() < kFirstNonAscii8CodeSet) {
    const uint8_t* text = reinterpret_cast<const uint8_t*>(in.StrGet());
    int32_t i = 0;
    for (;; ++i) {
      if (text[i] == 0) {
        if (i < room) std::memset(out + i, 0, static_cast<size_t>(room - i));
        return i;
      }
      if (text[i] >= 128) break;
      if (i >= room) return -static_cast<int32_t>(in.Len());
      out[i] = static_cast<char>(text[i]);
    }
  }
  ObString converted(kUnicode, in.GetLanguage());
  const ObString* unicode = &in;
  if (in.GetCodeSet() != kUnicode) {
    converted += in;
    unicode = &converted;
  }
  const uint32_t len = unicode->Len();
  if (len == 0) {
    if (room > 0) out[0] = 0;
    return 0;
  }
  const unsigned char* text =
      reinterpret_cast<const unsigned char*>(unicode->StrGet());
  int32_t written = 0;
  for (uint32_t i = 0; i < len; ++i) {
    uint16_t ch;
    std::memcpy(&ch, text + 2 * i, 2);
    if (ch < 127) {
      if (written >= room) break;
      out[written++] = static_cast<char>(ch);
      continue;
    }
    uint8_t bytes[6];
    const int32_t n = Encode(ch, bytes);
    if (n < 0) return -1;
    if (written + n > room) break;
    std::memcpy(out + written, bytes, static_cast<size_t>(n));
    written += n;
  }
  if (written < room) out[written] = 0;
  return written;
}

int32_t ObMBSLength(const ObString& s, unsigned short n) {
  ObString unicode(kUnicode, s.GetLanguage());
  unicode += s;
  uint32_t len = unicode.Len();
  if (n != ObString::kWholeText && n < len) len = n;
  int32_t bytes = 0;
  for (uint32_t i = 0; i < len; ++i) {
    uint8_t buf[6];
    bytes += Encode(unicode.CharAt(i), buf);
  }
  return bytes;
}

int32_t ObString2MultiByteString(const ObString& in, char*& out,
                                 int32_t& outBytes) {
  const int32_t size = ObMBSLength(in, ObString::kWholeText);
  out = static_cast<char*>(ObAllocate(static_cast<size_t>(size) + 1, 1));
  if (out == nullptr) {
    outBytes = 0;
    return 0;
  }
  outBytes = size;
  return ObString2ObMBS(in, out, size + 1);
}
