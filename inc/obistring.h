// ObIString and ObCaseIString: light 8-bit heap texts without code set or
// language, compared by a built-in Latin-1 folding order.
//
// ObIString folds accents and orders each lower-case letter just before its
// upper-case letter; ObCaseIString also folds case and, when bit 5 of the
// first operand's flags is set, weighs accents. Ligatures and the sharp s
// weigh as their two letters (ß as "ss").
//
// The object is a text pointer (a heap block holding the bytes and a zero;
// null means "no text", which differs from the empty text) and a flags
// byte. Constructors and text assignments set the flags to 0; copies copy
// them. Flags bit 7 makes comparisons take the text's bytes as folding
// weights already (an index key), bit 5 is the accent switch above.
// Positions and counts are bytes; editing members clip or do nothing when
// they are out of range. Heap blocks come from the C heap, through the
// memory handler when the heap is exhausted; an edit that cannot get its
// block leaves the text as it was.
#ifndef QUILLSTORE_OBISTRING_H_
#define QUILLSTORE_OBISTRING_H_

#include <cstdint>

#include "obdefs.h"
#include "obkeycmp.h"

template <class Self>
class QS_TM_API ObIText {
 public:
  static constexpr uint8_t kKeyForm = 0x80;       // flags: bytes are weights
  static constexpr uint8_t kWeighAccents = 0x20;  // flags: ObCaseIString only

  ObIText() : text_(nullptr), flags_(0) {}
  ObIText(const ObIText& other);
  explicit ObIText(char ch);  // 0 gives no text
  ObIText(const char* text);  // NOLINT: null gives no text
  // Length 0 gives no text; otherwise `length` bytes filled like strncpy.
  ObIText(const char* text, uint32_t length);
  explicit ObIText(short value);
  explicit ObIText(int value);
  explicit ObIText(unsigned int value);
  explicit ObIText(int64_t value);
  explicit ObIText(uint64_t value);
  explicit ObIText(double value);  // "%f"
  ~ObIText();

  ObIText& operator=(const ObIText& other);  // copies the flags
  Self& operator=(const char* text);         // null or empty: no text

  // Decimal value of the text (0 without text).
  operator int() const;     // NOLINT
  operator short() const;   // NOLINT
  operator double() const;  // NOLINT

  bool operator!() const { return text_ == nullptr; }
  // Byte `i`, the terminator at Len(); a scratch byte beyond it or without
  // text, so that a stray index never reaches outside the block.
  char& operator[](uint32_t i);
  uint32_t Len() const;
  const char* GetText() const { return text_; }  // null without text
  uint8_t GetFlags() const { return flags_; }
  void SetFlags(uint8_t flags) { flags_ = flags; }

  Self& SpaceToZero();  // every blank becomes '0'
  Self& ZeroToSpace();  // every '0' becomes a blank
  // First position where the text continues with the pattern's exact
  // bytes; -1 when none or the pattern is longer; Len() for an empty one.
  int32_t SubStringPos(const Self& pattern) const;
  // Removing the whole text leaves no text.
  Self& Cut(uint32_t pos, uint32_t count);
  // The clipped range; the empty text when pos > Len() or count is 0.
  Self Copy(uint32_t pos, uint32_t count) const;
  Self& operator+=(const Self& s);
  // A position beyond the end appends.
  Self& Insert(const Self& s, uint32_t pos);
  // Overwrites in place; never grows.
  Self& Replace(const Self& s, uint32_t pos);
  // Sets the first `count` bytes to `ch`, growing the text to `count` bytes
  // when it is shorter; the rest of a longer text stays.
  Self& Fill(uint32_t count, char ch);
  // Pads the text with `ch` to `width` bytes.
  Self& Expand(uint32_t width, char ch);
  Self& ToUpper();  // Latin-1; 159 becomes 255, 156 becomes 140
  Self& ToLower();  // Latin-1; 255 becomes 159, 140 becomes 156

  // The folding comparison of two texts with their flags: null first, an
  // empty text against another gives the difference of their first bytes,
  // else the first difference of weights. `limit` weights at most, 0
  // meaning 65535.
  static int32_t Compare(const char* a, uint8_t flagsA, const char* b,
                         uint8_t flagsB, uint32_t limit);

  // The folding comparison, without a limit.
  bool operator==(const Self& o) const { return Order(o) == 0; }
  bool operator!=(const Self& o) const { return Order(o) != 0; }
  bool operator<(const Self& o) const { return Order(o) < 0; }
  bool operator>(const Self& o) const { return Order(o) > 0; }
  bool operator<=(const Self& o) const { return Order(o) <= 0; }
  bool operator>=(const Self& o) const { return Order(o) >= 0; }

  friend Self operator+(const Self& a, const Self& b) {
    Self r(a);
    r += b;
    return r;
  }

 protected:
  int32_t Order(const Self& o) const;
  Self& Me() { return static_cast<Self&>(*this); }
  void Take(char* block);

  char* text_;
  uint8_t flags_;
};

class QS_TM_API ObIString : public ObIText<ObIString> {
 public:
  using ObIText<ObIString>::ObIText;
  using ObIText<ObIString>::operator=;
};

class QS_TM_API ObCaseIString : public ObIText<ObCaseIString> {
 public:
  using ObIText<ObCaseIString>::ObIText;
  using ObIText<ObCaseIString>::operator=;
};

extern template class ObIText<ObIString>;
extern template class ObIText<ObCaseIString>;

// The memory layout is part of the catalogue: a text pointer and a flags
// byte in 16 bytes.
static_assert(sizeof(ObIString) == 16, "ObIString is 16 bytes in memory");
static_assert(sizeof(ObCaseIString) == 16, "ObCaseIString is 16 bytes");

// Key comparators of the two types (memory form or their stored records),
// with cut keys, trailing-"*" searches and key-form (transformed) operands.
QS_DECLARE_KEY_COMPARE(ObIStringCompare);
QS_DECLARE_KEY_COMPARE(ObCaseIStringCompare);

#endif  // QUILLSTORE_OBISTRING_H_
