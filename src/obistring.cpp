// ObIString and ObCaseIString: editing, the folding order, the stored
// record, the key comparators and the rows' operations.
#include "obistring.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>

#include "obbs.h"
#include "obstrcmp.h"
#include "obstring.h"
#include "obtypes.h"
#include "obtyphash.h"
#include "typemgr/istringrows.h"
#include "typemgr/module.h"
#include "typemgr/printscan.h"
#include "typemgr/rowops.h"

namespace {

// ---- The folding order.
//
// Every byte has a base weight and a second value. A second value of
// kPendingFrom or more is a further weight delivered after the base (the
// two letters of a ligature or of the sharp s); a smaller one is an accent
// rank, ignored unless ObCaseIString is told to weigh accents. No byte
// but 0 weighs 0, and every weight fits a byte: a key of weights is again
// a zero-terminated text that sorts bytewise as its source folds.
struct Fold {
  uint8_t base;
  uint8_t second;
};
using FoldTable = std::array<Fold, 256>;
constexpr uint8_t kPendingFrom = 9;

// Bytes 64 to 127: letters sort as a A b B ..., each lower-case letter just
// before its upper-case one; the symbols among them go below the letters.
constexpr uint8_t kAsciiWeights[64] = {
    64,  84,  91,  94,  97,  105, 111, 113, 115, 121, 127, 129, 131,
    133, 135, 144, 151, 153, 155, 157, 159, 165, 171, 173, 175, 179,
    183, 66,  67,  68,  69,  70,  65,  78,  90,  92,  96,  100, 110,
    112, 114, 116, 126, 128, 130, 132, 134, 138, 150, 152, 154, 156,
    158, 160, 170, 172, 174, 176, 182, 71,  72,  73,  74,  75};

// Bytes 192 to 255: accented letters weigh as their base letter.
constexpr Fold kLatinWeights[64] = {
    {84, 3},  {84, 2},  {84, 4},  {84, 5},    {84, 1},  {189, 0}, {185, 0},
    {94, 1},  {105, 3}, {105, 2}, {105, 4},   {105, 1}, {121, 3}, {121, 2},
    {121, 4}, {121, 1}, {99, 0},  {137, 0},   {144, 3}, {144, 2}, {144, 4},
    {144, 5}, {144, 1}, {76, 0},  {187, 0},   {165, 3}, {165, 2}, {165, 4},
    {165, 1}, {179, 2}, {191, 0}, {156, 156}, {78, 3},  {78, 2},  {78, 4},
    {78, 5},  {78, 1},  {188, 0}, {184, 0},   {92, 1},  {100, 3}, {100, 2},
    {100, 4}, {100, 1}, {116, 3}, {116, 2},   {116, 4}, {116, 1}, {98, 0},
    {136, 0}, {138, 3}, {138, 2}, {138, 4},   {138, 5}, {138, 1}, {77, 0},
    {186, 0}, {160, 3}, {160, 2}, {160, 4},   {160, 1}, {176, 2}, {190, 0},
    {176, 1}};

constexpr FoldTable MakeFoldTable(bool caseless) {
  FoldTable t{};
  for (int b = 0; b < 256; ++b) {
    Fold f{static_cast<uint8_t>(b), 0};
    if (b >= 64 && b < 128) {
      f.base = kAsciiWeights[b - 64];
    } else if (b >= 128 && b < 160) {
      f.base = static_cast<uint8_t>(b + 96);
    } else if (b >= 160 && b < 192) {
      f.base = static_cast<uint8_t>(b + 16);
    } else if (b >= 192) {
      f = kLatinWeights[b - 192];
    }
    t[b] = f;
  }
  t[140] = {144, 105};  // OE
  t[156] = {138, 100};  // oe
  t[159] = {179, 1};    // Y diaeresis
  if (caseless) {
    for (int b = 'a'; b <= 'z'; ++b) t[b] = t[b - 32];
    for (int b = 224; b <= 254; ++b) {
      if (b != 247) t[b] = t[b - 32];  // the division sign is no letter
    }
    t[223] = {157, 157};  // SS
    t[255] = {179, 1};
    t[156] = {144, 105};
  }
  return t;
}

constexpr FoldTable kIStringFold = MakeFoldTable(false);
constexpr FoldTable kCaseIStringFold = MakeFoldTable(true);

template <class T>
constexpr bool kCaseless = std::is_same<T, ObCaseIString>::value;

template <class T>
constexpr const FoldTable& TableOf() {
  return kCaseless<T> ? kCaseIStringFold : kIStringFold;
}

// The weights of one zero-terminated text, then 0 for ever.
class Weights {
 public:
  Weights(const char* text, const FoldTable& table, bool raw, bool accents)
      : p_(reinterpret_cast<const uint8_t*>(text)),
        table_(table),
        raw_(raw),
        accents_(accents) {}

  int Next() {
    if (pending_ != 0) {
      const int w = pending_;
      pending_ = 0;
      return w;
    }
    const uint8_t b = *p_;
    if (b == 0) {
      ended_ = true;
      return 0;
    }
    ++p_;
    if (raw_) return b;
    const Fold f = table_[b];
    if (accents_)
      return f.second < kPendingFrom ? f.base + f.second : f.base - 1;
    if (f.second >= kPendingFrom) pending_ = f.second;
    return f.base;
  }
  bool Ended() const { return ended_; }

 private:
  const uint8_t* p_;
  const FoldTable& table_;
  bool raw_;
  bool accents_;
  bool ended_ = false;
  int pending_ = 0;
};

constexpr uint64_t kUnlimited = std::numeric_limits<uint64_t>::max();

bool IsKeyForm(uint8_t flags) { return (flags & 0x80) != 0; }

// `limit` counts pairs of weights.
int32_t FoldCompare(const char* a, uint8_t flagsA, const char* b,
                    uint8_t flagsB, const FoldTable& table, bool caseless,
                    uint64_t limit) {
  if (a == nullptr || b == nullptr) return (a != nullptr) - (b != nullptr);
  const uint8_t a0 = static_cast<uint8_t>(a[0]);
  const uint8_t b0 = static_cast<uint8_t>(b[0]);
  if (a0 == 0 || b0 == 0) return a0 - b0;
  const bool accents = caseless && (flagsA & ObIString::kWeighAccents) != 0;
  Weights wa(a, table, IsKeyForm(flagsA), accents);
  Weights wb(b, table, IsKeyForm(flagsB), accents);
  for (uint64_t n = 0; n < limit; ++n) {
    const int x = wa.Next();
    const int y = wb.Next();
    if (x != y) return x - y;
    if (wa.Ended() || wb.Ended()) return 0;
  }
  return 0;
}

// Null first, then unsigned bytes over at most `limit` bytes.
int32_t ByteOrder(const char* a, const char* b, uint64_t limit) {
  if (a == nullptr || b == nullptr) return (a != nullptr) - (b != nullptr);
  for (uint64_t i = 0; i < limit; ++i) {
    const uint8_t x = static_cast<uint8_t>(a[i]);
    const uint8_t y = static_cast<uint8_t>(b[i]);
    if (x != y) return x - y;
    if (x == 0) return 0;
  }
  return 0;
}

template <class Put>
void ForEachWeight(const char* text, const FoldTable& table, bool raw,
                   Put put) {
  if (text == nullptr) return;
  Weights w(text, table, raw, false);
  for (int x; (x = w.Next()) != 0;) put(static_cast<uint8_t>(x));
}

// ---- Heap blocks.

// A zero-filled block of n + 1 bytes.
char* Zeroed(size_t n) {
  if (n >= UINT32_MAX) return nullptr;
  return static_cast<char*>(obrow::AllocArray(static_cast<uint32_t>(n + 1), 1));
}

// A zero-filled block of n + 1 bytes holding `n` bytes of `text`.
char* Block(const char* text, size_t n) {
  char* p = Zeroed(n);
  if (p != nullptr && n != 0) std::memcpy(p, text, n);
  return p;
}

char* Duplicate(const char* text) {
  return Block(text, text != nullptr ? std::strlen(text) : 0);
}

}  // namespace

// ---- ObIText members.

template <class Self>
void ObIText<Self>::Take(char* block) {
  obrow::FreeArray(text_);
  text_ = block;
}

template <class Self>
ObIText<Self>::ObIText(const ObIText& other) : text_(nullptr), flags_(0) {
  if (&other == this) return;
  text_ = Duplicate(other.text_);
  flags_ = other.flags_;
}

template <class Self>
ObIText<Self>::ObIText(char ch)
    : text_(ch != 0 ? Block(&ch, 1) : nullptr), flags_(0) {}

template <class Self>
ObIText<Self>::ObIText(const char* text)
    : text_(text != nullptr ? Duplicate(text) : nullptr), flags_(0) {}

template <class Self>
ObIText<Self>::ObIText(const char* text, uint32_t length)
    : text_(nullptr), flags_(0) {
  if (length == 0) return;
  // strncpy: up to the source's terminator, the rest zero.
  size_t n = 0;
  while (text != nullptr && n < length && text[n] != 0) ++n;
  text_ = Zeroed(length);
  if (text_ != nullptr && n != 0) std::memcpy(text_, text, n);
}

namespace {
template <class V>
char* Decimal(const char* format, V v) {
  char buffer[400];  // "%f" of the largest double needs 317
  std::snprintf(buffer, sizeof buffer, format, v);
  return Duplicate(buffer);
}
}  // namespace

template <class Self>
ObIText<Self>::ObIText(short value)
    : text_(Decimal("%d", static_cast<int>(value))), flags_(0) {}
template <class Self>
ObIText<Self>::ObIText(int value) : text_(Decimal("%d", value)), flags_(0) {}
template <class Self>
ObIText<Self>::ObIText(unsigned int value)
    : text_(Decimal("%u", value)), flags_(0) {}
template <class Self>
ObIText<Self>::ObIText(int64_t value)
    : text_(Decimal("%lld", static_cast<long long>(value))), flags_(0) {}
template <class Self>
ObIText<Self>::ObIText(uint64_t value)
    : text_(Decimal("%llu", static_cast<unsigned long long>(value))),
      flags_(0) {}
template <class Self>
ObIText<Self>::ObIText(double value) : text_(Decimal("%f", value)), flags_(0) {}

template <class Self>
ObIText<Self>::~ObIText() {
  obrow::FreeArray(text_);
}

template <class Self>
ObIText<Self>& ObIText<Self>::operator=(const ObIText& other) {
  if (&other == this) return *this;
  Take(Duplicate(other.text_));
  flags_ = other.flags_;
  return *this;
}

template <class Self>
Self& ObIText<Self>::operator=(const char* text) {
  // Duplicated before the old block goes: `text` may lie inside it.
  Take(text != nullptr && text[0] != 0 ? Duplicate(text) : nullptr);
  flags_ = 0;
  return Me();
}

// strtol rather than atol: the same reading without undefined overflow.
template <class Self>
ObIText<Self>::operator int() const {
  return text_ != nullptr ? static_cast<int>(std::strtol(text_, nullptr, 10))
                          : 0;
}
template <class Self>
ObIText<Self>::operator short() const {
  return text_ != nullptr ? static_cast<short>(std::strtol(text_, nullptr, 10))
                          : 0;
}
template <class Self>
ObIText<Self>::operator double() const {
  return text_ != nullptr ? std::strtod(text_, nullptr) : 0.0;
}

template <class Self>
char& ObIText<Self>::operator[](uint32_t i) {
  thread_local char scratch;
  if (text_ != nullptr && i <= std::strlen(text_)) return text_[i];
  scratch = 0;
  return scratch;
}

template <class Self>
uint32_t ObIText<Self>::Len() const {
  return text_ != nullptr ? static_cast<uint32_t>(std::strlen(text_)) : 0;
}

template <class Self>
Self& ObIText<Self>::SpaceToZero() {
  for (char* p = text_; p != nullptr && *p != 0; ++p) {
    if (*p == ' ') *p = '0';
  }
  return Me();
}

template <class Self>
Self& ObIText<Self>::ZeroToSpace() {
  for (char* p = text_; p != nullptr && *p != 0; ++p) {
    if (*p == '0') *p = ' ';
  }
  return Me();
}

template <class Self>
int32_t ObIText<Self>::SubStringPos(const Self& pattern) const {
  const uint32_t n = pattern.Len();
  const uint32_t len = Len();
  if (n > len) return -1;
  if (n == 0) return static_cast<int32_t>(len);
  const char* at = std::strstr(text_, pattern.text_);
  return at != nullptr ? static_cast<int32_t>(at - text_) : -1;
}

template <class Self>
Self& ObIText<Self>::Cut(uint32_t pos, uint32_t count) {
  const uint32_t len = Len();
  if (pos > len || count == 0) return Me();
  const uint32_t n = std::min(count, len - pos);
  if (n == 0) return Me();
  if (n == len) {
    Take(nullptr);
    return Me();
  }
  std::memmove(text_ + pos, text_ + pos + n, len - pos - n + 1);
  return Me();
}

template <class Self>
Self ObIText<Self>::Copy(uint32_t pos, uint32_t count) const {
  const uint32_t len = Len();
  Self r;
  if (pos <= len && count != 0) {
    r.text_ =
        Block(text_ != nullptr ? text_ + pos : "", std::min(count, len - pos));
  } else {
    r.text_ = Zeroed(0);
  }
  return r;
}

template <class Self>
Self& ObIText<Self>::operator+=(const Self& s) {
  if (s.text_ == nullptr) return Me();
  if (text_ == nullptr) {
    Take(Duplicate(s.text_));
    return Me();
  }
  return Insert(s, UINT32_MAX);
}

template <class Self>
Self& ObIText<Self>::Insert(const Self& s, uint32_t pos) {
  const uint32_t n = s.Len();
  if (n == 0) return Me();
  if (text_ == nullptr) {
    Take(Duplicate(s.text_));
    return Me();
  }
  const uint32_t len = Len();
  pos = std::min(pos, len);
  char* grown = Zeroed(size_t{len} + n);
  if (grown == nullptr) return Me();
  std::memcpy(grown, text_, pos);
  std::memcpy(grown + pos, s.text_, n);  // s may be this text: still intact
  std::memcpy(grown + pos + n, text_ + pos, len - pos);
  Take(grown);
  return Me();
}

template <class Self>
Self& ObIText<Self>::Replace(const Self& s, uint32_t pos) {
  const uint32_t len = Len();
  if (pos > len) return Me();
  const uint32_t n = std::min(len - pos, s.Len());
  if (n != 0) std::memmove(text_ + pos, s.text_, n);
  return Me();
}

template <class Self>
Self& ObIText<Self>::Fill(uint32_t count, char ch) {
  if (count > Len()) {
    char* block = Zeroed(count);
    if (block == nullptr) return Me();
    Take(block);
  }
  if (count != 0) std::memset(text_, ch, count);
  return Me();
}

template <class Self>
Self& ObIText<Self>::Expand(uint32_t width, char ch) {
  const uint32_t len = Len();
  if (width <= len) return Me();
  char* block = Zeroed(width);
  if (block == nullptr) return Me();
  std::memset(block, ch, width);
  if (len != 0) std::memcpy(block, text_, len);
  Take(block);
  return Me();
}

template <class Self>
Self& ObIText<Self>::ToUpper() {
  for (char* p = text_; p != nullptr && *p != 0; ++p) {
    const uint8_t b = static_cast<uint8_t>(*p);
    if ((b >= 97 && b <= 122) || (b >= 224 && b <= 254 && b != 247)) {
      *p = static_cast<char>(b - 32);
    } else if (b == 159) {
      *p = static_cast<char>(255);
    } else if (b == 156) {
      *p = static_cast<char>(140);
    }
  }
  return Me();
}

template <class Self>
Self& ObIText<Self>::ToLower() {
  for (char* p = text_; p != nullptr && *p != 0; ++p) {
    const uint8_t b = static_cast<uint8_t>(*p);
    if ((b >= 65 && b <= 90) || (b >= 192 && b <= 222 && b != 215)) {
      *p = static_cast<char>(b + 32);
    } else if (b == 255) {
      *p = static_cast<char>(159);
    } else if (b == 140) {
      *p = static_cast<char>(156);
    }
  }
  return Me();
}

template <class Self>
int32_t ObIText<Self>::Compare(const char* a, uint8_t flagsA, const char* b,
                               uint8_t flagsB, uint32_t limit) {
  return FoldCompare(a, flagsA, b, flagsB, TableOf<Self>(), kCaseless<Self>,
                     limit != 0 ? limit : 65535);
}

template <class Self>
int32_t ObIText<Self>::Order(const Self& o) const {
  return FoldCompare(text_, flags_, o.text_, o.flags_, TableOf<Self>(),
                     kCaseless<Self>, kUnlimited);
}

template class ObIText<ObIString>;
template class ObIText<ObCaseIString>;

// ---- The stored record.

namespace {

constexpr uint8_t kMarkerPlain = 0x40;
constexpr uint8_t kMarkerKey = 1;
constexpr uint8_t kMarkerWeights = 0xC0;
constexpr uint32_t kHeader = 3;
constexpr uint32_t kMaxData = 0xFFFF;
constexpr uint32_t kCutTooLong = 254;  // a cut key this long is unusable

// ObCaseIString counts every option bit of the target as a key request.
template <class T>
bool IsKeyTarget(uint8_t flags) {
  return kCaseless<T> ? flags > 15 : (flags & kObFormatKey) != 0;
}

// Only ObIString keys made from memory form carry weights.
template <class T>
bool TransformsTo(uint8_t destFlags, const T& v) {
  return !kCaseless<T> && IsKeyTarget<T>(destFlags) && !IsKeyForm(v.GetFlags());
}

template <class T>
uint8_t MemoryMarker(uint8_t destFlags) {
  if (!IsKeyTarget<T>(destFlags)) return kMarkerPlain;
  return kCaseless<T> ? kMarkerKey : kMarkerWeights;
}

// A record copied between stored forms keeps weights it already holds.
template <class T>
uint8_t StoredMarker(uint8_t sourceMarker, uint8_t destFlags) {
  if (IsKeyForm(sourceMarker)) return sourceMarker;
  return IsKeyTarget<T>(destFlags) ? kMarkerKey : kMarkerPlain;
}

// One record as far as it lies inside the bytes given.
class Record {
 public:
  // `len` 0 trusts the record's own length. False when the header itself
  // is not there.
  bool Open(const void* p, uint32_t len, uint8_t flags) {
    if (p == nullptr || (len != 0 && len < kHeader)) return false;
    const uint8_t* b = static_cast<const uint8_t*>(p);
    marker_ = b[0];
    dataLen_ = oblayout::Read16(b + 1, flags);
    usable_ = len != 0 ? std::min(len - kHeader, dataLen_) : dataLen_;
    data_ = b + kHeader;
    Find();
    return true;
  }
  uint8_t Marker() const { return marker_; }
  uint32_t DataLength() const { return dataLen_; }
  uint32_t Usable() const { return usable_; }
  const uint8_t* Data() const { return data_; }
  bool IsCut() const { return usable_ < dataLen_; }

  // The current element: false when no byte of it is left. `whole` is
  // false when its terminator lies beyond the bytes given.
  bool Element(const char*& text, uint32_t& n, bool& whole) const {
    if (pos_ >= usable_) return false;
    text = reinterpret_cast<const char*>(data_ + pos_);
    n = length_;
    whole = whole_;
    return true;
  }
  // Moves to the next element; false when no byte is left for it.
  bool Advance() {
    pos_ = whole_ ? pos_ + length_ + 1 : usable_;
    Find();
    return pos_ < usable_;
  }

 private:
  void Find() {
    if (pos_ >= usable_) return;
    const void* zero = std::memchr(data_ + pos_, 0, usable_ - pos_);
    whole_ = zero != nullptr;
    length_ = whole_ ? static_cast<uint32_t>(static_cast<const uint8_t*>(zero) -
                                             (data_ + pos_))
                     : usable_ - pos_;
  }

  const uint8_t* data_ = nullptr;
  uint8_t marker_ = 0;
  uint32_t dataLen_ = 0;
  uint32_t usable_ = 0;
  uint32_t pos_ = 0;
  uint32_t length_ = 0;
  bool whole_ = false;
};

// Writes what fits in `cap` bytes; `n` counts every byte put.
struct Writer {
  uint8_t* out;
  uint64_t cap;
  uint64_t n = 0;

  void Put(uint8_t b) {
    if (n < cap) out[n] = b;
    ++n;
  }
  void Put(const void* p, uint64_t k) {
    if (n < cap && k != 0)
      std::memcpy(out + n, p, static_cast<size_t>(std::min(k, cap - n)));
    n += k;
  }
};

template <class T>
uint64_t ElementBytes(const T& v, uint8_t destFlags) {
  if (!TransformsTo(destFlags, v)) return v.Len();
  uint64_t n = 0;
  ForEachWeight(v.GetText(), TableOf<T>(), false, [&n](uint8_t) { ++n; });
  return n;
}

template <class T>
uint64_t DataBytes(const T* v, uint8_t destFlags, uint32_t count) {
  uint64_t total = 0;
  for (uint32_t i = 0; i < count; ++i)
    total += ElementBytes(v[i], destFlags) + 1;
  return total;
}

// The record of `count` values in memory form, cut at `cap` bytes. D does
// not fit 16 bits for more than 65535 data bytes: they are cut there and
// the writer is told.
template <class T>
uint64_t WriteRecord(void* dest, uint64_t cap, const T* v, uint8_t destFlags,
                     uint32_t count) {
  uint64_t total = DataBytes(v, destFlags, count);
  if (total > kMaxData) {
    ORLO_assert("(o_u4b)_nLen == nLen", "obtypes", __LINE__);
    total = kMaxData;
  }
  Writer w{static_cast<uint8_t*>(dest), std::min(cap, kHeader + total)};
  w.Put(MemoryMarker<T>(destFlags));
  uint8_t field[2];
  oblayout::Write16(field, destFlags, static_cast<uint16_t>(total));
  w.Put(field, 2);
  for (uint32_t i = 0; i < count && w.n < w.cap; ++i) {
    if (TransformsTo(destFlags, v[i])) {
      ForEachWeight(v[i].GetText(), TableOf<T>(), false,
                    [&w](uint8_t x) { w.Put(x); });
    } else {
      w.Put(v[i].GetText(), v[i].Len());
    }
    w.Put(0);
  }
  return std::min(w.n, w.cap);
}

// A loaded key keeps the key-form flag: its bytes are weights. Assignment
// makes an empty element, and one beyond the data, the empty text.
template <class T>
uint32_t LoadRecord(T* dest, const void* src, uint32_t srcLen, uint8_t flags,
                    uint32_t count) {
  Record r;
  const bool open = r.Open(src, srcLen, flags);
  for (uint32_t i = 0; i < count; ++i) {
    const char* text = nullptr;
    uint32_t n = 0;
    bool whole = false;
    if (open && r.Element(text, n, whole)) {
      dest[i] = T(text, n);
      dest[i].SetFlags(r.Marker() & ObIString::kKeyForm);
      r.Advance();
    } else {
      dest[i] = T();
    }
  }
  return open ? kHeader + r.Usable() : 0;
}

// ---- Operands of the comparators and the hash.

struct Operand {
  const char* text;
  uint32_t len;
  bool cut;
  uint8_t marker;
};

template <class T>
class MemoryOperand {
 public:
  MemoryOperand(uint32_t len, const void* p, uint32_t count)
      : base_(static_cast<const uint8_t*>(p)),
        end_(len != 0 ? len : uint64_t{count} * sizeof(T)) {}
  // An element that does not lie wholly inside the length reads as one
  // without text: its pointer bytes are not all there.
  bool Get(Operand& op, int32_t&) const {
    if ((index_ + 1) * sizeof(T) > end_) {
      op = Operand{nullptr, 0, false, 0};
      return true;
    }
    const T& v = reinterpret_cast<const T*>(base_)[index_];
    op = Operand{v.GetText(), v.Len(), false, v.GetFlags()};
    return true;
  }
  bool Advance() {
    if ((index_ + 1) * sizeof(T) >= end_) return false;
    ++index_;
    return true;
  }
  bool Stored() const { return false; }

 private:
  const uint8_t* base_;
  uint64_t end_;
  uint64_t index_ = 0;
};

// A stored element whose terminator is missing (a cut key, or a corrupt
// record) is compared from a terminated copy.
class StoredOperand {
 public:
  explicit StoredOperand(const Record& r) : r_(r) {}
  bool Get(Operand& op, int32_t& status) {
    const char* text = nullptr;
    uint32_t n = 0;
    bool whole = false;
    if (!r_.Element(text, n, whole)) {
      status = ObCMP_OPERAND_EXHAUSTED;
      return false;
    }
    if (!whole) {
      if (n >= kCutTooLong) {
        status = kObNotSupported;
        return false;
      }
      std::memcpy(copy_, text, n);
      copy_[n] = 0;
      text = copy_;
    }
    op = Operand{text, n, !whole, r_.Marker()};
    return true;
  }
  bool Advance() { return r_.Advance(); }
  bool Stored() const { return true; }

 private:
  Record r_;
  char copy_[kCutTooLong];
};

template <class T>
int32_t Fold(const Operand& a, const Operand& b, uint64_t limit) {
  return FoldCompare(a.text, a.marker, b.text, b.marker, TableOf<T>(),
                     kCaseless<T>, limit);
}

// A comparison limited to a prefix; a prefix of nothing is equal.
template <class T>
int32_t FoldPrefix(const Operand& a, const Operand& b, uint64_t limit) {
  return limit != 0 ? Fold<T>(a, b, limit) : 0;
}

template <class T>
int32_t CompareElements(const Operand& a, const Operand& b, uint16_t options,
                        bool stored, int32_t& status) {
  const bool key1 = IsKeyForm(a.marker);
  const bool key2 = IsKeyForm(b.marker);
  const bool cut = a.cut || b.cut;
  const uint64_t cutLen =
      a.cut && b.cut ? std::min(a.len, b.len) : (a.cut ? a.len : b.len);
  if ((options & (CmpNoWildcards | CmpBinaryOrder)) != 0) {
    int32_t r = key1 ? ByteOrder(a.text, b.text, kUnlimited)
                     : Fold<T>(a, b, kUnlimited);
    if (r != 0 && cut) {
      r = key1 ? ByteOrder(a.text, b.text, cutLen)
               : FoldPrefix<T>(a, b, cutLen);
      status = ObCMP_OPERAND_EXHAUSTED;
    }
    return r;
  }
  const int32_t w = FindWildcard(
      0, 0, b.text, 1,
      static_cast<int32_t>(std::min<uint32_t>(b.len, INT32_MAX)), nullptr, 1);
  if (w >= 0) {
    if (key1) {
      if (!(w == 0 && b.len == 1)) status = ObCMP_OPERAND_EXHAUSTED;
      return 0;
    }
    if (ObStrCmp(0, 0, a.text, 0, 0, b.text, options, -1, 1, nullptr) == 0)
      return 0;
    if (w == 0) return 1;
    const int32_t r = Fold<T>(a, b, static_cast<uint64_t>(w));
    return r != 0 ? r : 1;
  }
  if (!key1) {
    int32_t r = Fold<T>(a, b, kUnlimited);
    if (r != 0 && cut) {
      r = FoldPrefix<T>(a, b, cutLen);
      status = ObCMP_OPERAND_EXHAUSTED;
    }
    // Texts that fold alike still have one fixed order.
    if (r == 0 && status == 0) r = ByteOrder(a.text, b.text, kUnlimited);
    return r;
  }
  if (key2) {
    int32_t r = ByteOrder(a.text, b.text, kUnlimited);
    if (r != 0 && stored && a.len <= b.len) {
      r = ByteOrder(a.text, b.text, a.len);
      status = ObCMP_OPERAND_EXHAUSTED;
    }
    return r;
  }
  status = ObCMP_OPERAND_EXHAUSTED;
  return FoldPrefix<T>(a, b, a.len);
}

// The element loop of every comparator: a difference or a status ends it;
// each further element must be there in both operands.
template <class T, class Op>
int32_t CompareLoop(Op& op1, Op& op2, uint16_t options, uint32_t count,
                    int32_t& status) {
  for (;;) {
    Operand a{}, b{};
    if (!op1.Get(a, status) || !op2.Get(b, status))
      return status == kObNotSupported ? -1 : 0;
    const int32_t r = CompareElements<T>(a, b, options, op1.Stored(), status);
    if (r != 0 || status != 0 || --count == 0) return r;
    if (!op1.Advance() || !op2.Advance()) {
      status = ObCMP_OPERAND_EXHAUSTED;
      return r;
    }
  }
}

template <class T>
int32_t KeyCompare(uint8_t flags, uint32_t len1, const void* p1, uint32_t len2,
                   const void* p2, uint16_t options, uint32_t count,
                   int32_t& status) {
  status = 0;
  if (count == 0) return 0;
  if ((flags & kObFormatMask) == kObFormatMemory) {
    MemoryOperand<T> op1(len1, p1, count), op2(len2, p2, count);
    return CompareLoop<T>(op1, op2, options, count, status);
  }
  Record r1, r2;
  if (!r1.Open(p1, len1, flags) || !r2.Open(p2, len2, flags)) {
    status = ObCMP_OPERAND_EXHAUSTED;
    return 0;
  }
  if ((r1.IsCut() && r1.Usable() >= kCutTooLong) ||
      (r2.IsCut() && r2.Usable() >= kCutTooLong)) {
    status = kObNotSupported;
    return -1;
  }
  StoredOperand op1(r1), op2(r2);
  return CompareLoop<T>(op1, op2, options, count, status);
}

// The hash of one element: its weights, as they fold for the comparators.
template <class T>
uint32_t Term(const Operand& op) {
  uint32_t h = 0;
  ForEachWeight(op.text, TableOf<T>(), IsKeyForm(op.marker),
                [&h](uint8_t x) { h = h * obhash::kStringStep + x; });
  return h;
}

template <class T, class Op>
uint32_t HashElements(Op& op, uint32_t count, int32_t& status) {
  uint32_t acc = 0;
  for (;;) {
    Operand e{};
    if (!op.Get(e, status)) break;
    acc ^= Term<T>(e);
    if (--count == 0) break;
    if (!op.Advance()) {
      status = ObCMP_OPERAND_EXHAUSTED;
      break;
    }
  }
  return acc * obhash::kFinalMultiplier;
}

}  // namespace

QS_TM_API int32_t ObIStringCompare(uint8_t flags, uint32_t len1, const void* p1,
                                   uint32_t len2, const void* p2,
                                   uint16_t options, uint32_t count,
                                   int32_t& status) {
  return KeyCompare<ObIString>(flags, len1, p1, len2, p2, options, count,
                               status);
}

QS_TM_API int32_t ObCaseIStringCompare(uint8_t flags, uint32_t len1,
                                       const void* p1, uint32_t len2,
                                       const void* p2, uint16_t options,
                                       uint32_t count, int32_t& status) {
  return KeyCompare<ObCaseIString>(flags, len1, p1, len2, p2, options, count,
                                   status);
}

// ---- Row operations.

namespace obrow {

template <class T>
uint32_t ITextStore(void* dest, const void* src, uint8_t format,
                    uint32_t count) {
  if (IsMemoryForm(format)) {
    ClassAssign<T>(dest, src, count, 0);
    return static_cast<uint32_t>(count * sizeof(T));
  }
  return static_cast<uint32_t>(
      WriteRecord(dest, kUnlimited, static_cast<const T*>(src), format, count));
}

template <class T>
uint32_t ITextLoad(void* dest, const void* src, uint8_t format,
                   uint32_t count) {
  if (IsMemoryForm(format)) {
    ClassAssign<T>(dest, src, count, 0);
    return static_cast<uint32_t>(count * sizeof(T));
  }
  return LoadRecord(static_cast<T*>(dest), src, 0, format, count);
}

// Empty elements: a 0 byte each.
uint32_t ITextNullSize(uint32_t count) {
  return kHeader + std::min(count, kMaxData);
}

// Stored records are read in the target's byte order, as for ObString.
template <class T>
uint32_t ITextSizeGet(const void* value, uint8_t srcFormat, uint8_t dstFormat,
                      uint32_t count) {
  if (!IsMemoryForm(srcFormat)) {
    if (value == nullptr) return 0;
    return kHeader +
           oblayout::Read16(static_cast<const uint8_t*>(value) + 1, dstFormat);
  }
  if (value == nullptr) return kHeader;
  const uint64_t data =
      DataBytes(static_cast<const T*>(value), dstFormat, count);
  return kHeader + static_cast<uint32_t>(std::min<uint64_t>(data, kMaxData));
}

// One record holds all elements; one that runs past the end of the file
// gives a size the caller treats as too large.
uint32_t ITextSizeFromMemFile(MemFile* file, uint8_t format, uint32_t count) {
  const uint64_t tooLarge =
      std::min<uint64_t>((uint64_t{count} + 1) * kMaxData, UINT32_MAX);
  if (file == nullptr || file->Remaining() < kHeader)
    return static_cast<uint32_t>(tooLarge);
  const uint32_t size = kHeader + oblayout::Read16(file->Current() + 1, format);
  return size <= file->Remaining() ? size : static_cast<uint32_t>(tooLarge);
}

template <class T>
uint32_t ITextHash(uint8_t format, uint32_t len, const void* value,
                   uint32_t count, int32_t& status) {
  status = 0;
  if (count == 0) return 0;
  if ((format & kObFormatMask) == kObFormatMemory) {
    MemoryOperand<T> op(len, value, count);
    return HashElements<T>(op, count, status);
  }
  Record r;
  if (!r.Open(value, len, format)) {
    status = ObCMP_OPERAND_EXHAUSTED;
    return 0;
  }
  StoredOperand op(r);
  return HashElements<T>(op, count, status);
}

// Stored targets are zeroed first and never written beyond destLen; a
// record that does not fit is cut, and D still tells its full length.
template <class T>
uint32_t ITextTranslate(void* dest, uint8_t destFormat, uint32_t destLen,
                        const void* src, uint8_t srcFormat, uint32_t srcLen,
                        uint32_t count) {
  const bool destMem = IsMemoryForm(destFormat);
  const bool srcMem = IsMemoryForm(srcFormat);
  if (destMem && srcMem) {
    ClassAssign<T>(dest, src, count, 0);
    return static_cast<uint32_t>(count * sizeof(T));
  }
  if (destMem)
    return LoadRecord(static_cast<T*>(dest), src, srcLen, srcFormat, count);
  if (destLen != 0) std::memset(dest, 0, destLen);
  if (srcMem)
    return static_cast<uint32_t>(WriteRecord(
        dest, destLen, static_cast<const T*>(src), destFormat, count));
  Record r;
  if (!r.Open(src, srcLen, srcFormat)) return 0;
  Writer w{static_cast<uint8_t*>(dest), destLen};
  w.Put(StoredMarker<T>(r.Marker(), destFormat));
  uint8_t field[2];
  oblayout::Write16(field, destFormat, static_cast<uint16_t>(r.DataLength()));
  w.Put(field, 2);
  w.Put(r.Data(), r.Usable());
  return static_cast<uint32_t>(std::min(w.n, w.cap));
}

// Without text the value prints as null; otherwise as a string of code
// set 0 under the format.
template <class T>
ObString& ITextPrint(ObString& out, const void* value, const char* format,
                     uint32_t) {
  const T& v = *static_cast<const T*>(value);
  if (!v) {
    out = NullPrintText();
    return out;
  }
  ObString text(v.GetText());
  text.SetCodeSetCode(0);
  text.SetLanguage(0);
  return obprint::StringPrint(out, &text, format, 1);
}

// The null print text gives no text; any other text is taken as it is.
template <class T>
void* ITextScan(void* value, ObString& text, const char*, uint32_t) {
  if (value == nullptr) return nullptr;
  ObString narrow;
  if (text.IsWide()) narrow += text;
  const ObString& t = text.IsWide() ? narrow : text;
  T& v = *static_cast<T*>(value);
  v = obprint::IsNullText(t) ? nullptr : t.StrGet();
  return value;
}

#define QS_ITEXT_ROW_OPS(T)                                                   \
  template uint32_t ITextStore<T>(void*, const void*, uint8_t, uint32_t);     \
  template uint32_t ITextLoad<T>(void*, const void*, uint8_t, uint32_t);      \
  template uint32_t ITextSizeGet<T>(const void*, uint8_t, uint8_t, uint32_t); \
  template uint32_t ITextHash<T>(uint8_t, uint32_t, const void*, uint32_t,    \
                                 int32_t&);                                   \
  template uint32_t ITextTranslate<T>(void*, uint8_t, uint32_t, const void*,  \
                                      uint8_t, uint32_t, uint32_t);           \
  template ObString& ITextPrint<T>(ObString&, const void*, const char*,       \
                                   uint32_t);                                 \
  template void* ITextScan<T>(void*, ObString&, const char*, uint32_t);
QS_ITEXT_ROW_OPS(ObIString)
QS_ITEXT_ROW_OPS(ObCaseIString)
#undef QS_ITEXT_ROW_OPS

}  // namespace obrow
