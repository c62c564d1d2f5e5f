// ObString: a heap text that carries a code set and a language.
//
// Code sets below 225 hold one byte per character, the others one 16-bit
// unit; code set 0 is raw bytes (the native code set where one is needed).
// The buffer holds the characters and one terminating zero character;
// `size` counts its bytes. A text never exceeds kMaxSize bytes: longer
// results are cut (and, with the "debug"/"stringOverflow" setting, reported
// through ORLO_assert). Language 254 marks the null value. Positions and
// counts are in characters; editing members never fail on positions out of
// range: they clip or do nothing.
#ifndef QUILLSTORE_OBSTRING_H_
#define QUILLSTORE_OBSTRING_H_

#include <cstdint>

#include "obdefs.h"

class ObChar;
class ObCharOperation;

class QS_TM_API ObString {
 public:
  static constexpr uint16_t kMaxSize = 65532;  // bytes, terminator included
  static constexpr uint8_t kNullLanguage = 254;
  static constexpr uint8_t kOrderCodeSet = 254;
  static constexpr uint8_t kFirstWideCodeSet = 225;
  static constexpr uint16_t kWholeText = 65535;  // length/count: to the end

  ObString();
  ObString(uint8_t codeSet, uint8_t language);
  ObString(const ObString& other);
  explicit ObString(char ch);
  explicit ObString(unsigned char ch);
  ObString(const char* text);  // NOLINT: texts convert implicitly
  ObString(const char* text, uint16_t length);
  explicit ObString(unsigned short ch);
  explicit ObString(const unsigned short* text);
  ObString(const unsigned short* text, uint16_t length);
  explicit ObString(short value);
  explicit ObString(int value);
  // Printed as a signed value on purpose: 4294967295 gives "-1".
  explicit ObString(unsigned int value);
  explicit ObString(int64_t value);
  explicit ObString(uint64_t value);
  explicit ObString(double value);  // "%.17g"
  ~ObString();

  // Resets to the state of ObString() without freeing: for raw storage.
  void Init();
  // Free the buffer and zero size, code set and language.
  void Destroy();
  void d_deactivate() { Destroy(); }
  // Takes over `from`'s text, code set and language; `from` keeps its code
  // set and language but loses its buffer.
  void Destruct(ObString& from);

  // Code set. Return 0, or kObBadArgument.
  int32_t SetCodeSetCode(uint8_t code);  // relabel; widths must agree
  int32_t SetCodeSet(uint8_t code);      // convert when the width changes
  int32_t MapToCodeSet(uint8_t code);    // always convert
  int32_t CopyMapped(const ObString& source, uint8_t codeSet,
                     uint16_t length = kWholeText);

  // Replaces the text by `count` characters of this string's own code set
  // (16-bit characters in machine order), without conversion.
  ObString& AssignChars(const void* chars, uint32_t count);

  // Access.
  uint32_t Len() const;
  bool IsEmpty() const;
  bool operator!() const { return IsEmpty(); }
  // The buffer, or a static empty text when there is none; never null.
  const char* StrGet() const;
  uint8_t GetCodeSet() const { return codeSet_; }
  uint8_t GetLanguage() const { return language_; }
  void SetLanguage(uint8_t language) { language_ = language; }
  uint16_t GetSize() const { return size_; }  // buffer bytes
  bool IsWide() const { return codeSet_ >= kFirstWideCodeSet; }
  uint32_t CharWidth() const { return IsWide() ? 2 : 1; }
  // The character at `index` (16-bit units for wide code sets); 0 beyond.
  uint16_t CharAt(uint32_t index) const;

  // A view of character `index` (the terminator at Len()); a default ObChar
  // of value 0 beyond.
  ObChar operator[](uint32_t index);

  // Comparison through ObStrCmp with the default operator (Compare: with
  // `cmpOp`, 65535 meaning the default; `length` characters, -1 for all).
  bool operator==(const ObString& other) const;
  bool operator!=(const ObString& other) const { return !(*this == other); }
  bool operator<(const ObString& other) const;
  bool operator>(const ObString& other) const;
  bool operator<=(const ObString& other) const;
  bool operator>=(const ObString& other) const;
  int32_t Compare(const ObString& other, int16_t length = -1,
                  uint16_t cmpOp = 65535) const;
  // Binary order under one language; 1 when equal.
  int32_t EqualsIgnoreLanguage(const ObString& other) const;
  // Replace the wildcard orders with the first order of `ch`; return 0.
  static int32_t SetAsterisk(const ObChar& ch);
  static int32_t SetQuestion(const ObChar& ch);
  static int32_t SetEscape(const ObChar& ch);

  // Search. Positions in characters; -1 when nothing matches.
  int32_t Find(const ObString& pattern, uint32_t start = 0,
               uint16_t cmpOp = 65535) const;
  int32_t Find(char ch, uint32_t start = 0, uint16_t cmpOp = 65535) const;
  int32_t Find(unsigned short ch, uint32_t start = 0,
               uint16_t cmpOp = 65535) const;
  int32_t SubStringPos(const ObString& pattern, uint16_t cmpOp = 65535) const {
    return Find(pattern, 0, cmpOp);
  }
  ObString& ReplaceAll(const ObString& from, const ObString& to,
                       uint16_t cmpOp = 65535);
  ObString& ReplaceAll(char from, char to, uint16_t cmpOp = 65535);
  ObString& ReplaceAll(unsigned short from, unsigned short to,
                       uint16_t cmpOp = 65535);

  // Trimming of blank characters (collation order below 80) and case.
  ObString& LeftTrim();
  ObString& RightTrim();
  ObString& Trim() { return LeftTrim().RightTrim(); }
  ObString& ToLower();
  ObString& ToUpper();
  ObString& Transform(const ObCharOperation& op);

  // Editing.
  ObString& operator=(const ObString& other);
  ObString& operator=(const char* text);
  ObString& operator=(const unsigned short* text);
  ObString& operator+=(const ObString& s);
  ObString& operator<<(const ObString& s) { return *this += s; }
  ObString& operator<<(const char* s);
  ObString& operator<<(char ch);
  ObString& operator<<(short v);
  ObString& operator<<(int v);
  ObString& operator<<(unsigned int v);
  ObString& operator<<(int64_t v);
  ObString& operator<<(uint64_t v);
  ObString& operator<<(float v);
  ObString& operator<<(double v);
  ObString& Insert(const ObString& s, uint32_t pos);
  ObString& Replace(const ObString& s, uint32_t pos);
  ObString& Cut(uint32_t pos, int32_t count);
  ObString& Fill(uint32_t count, char ch);
  ObString& Fill(uint32_t count, unsigned short ch);
  ObString& Expand(uint32_t width, char ch);
  ObString& Expand(uint32_t width, unsigned short ch);
  ObString Copy(uint32_t pos, uint32_t count) const;
  ObString Left(uint32_t n) const;
  ObString Right(uint32_t n) const;

  // Conversions to numbers. 8-bit texts: decimal only when bit 0 of
  // ___ObTypeMgrOptions() is set, else C-style prefixes (0x1F, 017); 16-bit
  // texts: every unit is taken as a digit, without sign or validation.
  operator int() const;      // NOLINT
  operator short() const;    // NOLINT
  operator int64_t() const;  // NOLINT
  operator double() const;   // NOLINT: scanned as "%.17g"
  // 0, or -1 (output 0) when the text does not start with a digit or '-'.
  int32_t Atol(int32_t& out) const;
  int32_t Strtol(int32_t& out) const;
  int32_t Atoll(int64_t& out) const;
  int32_t Strtoll(int64_t& out) const;

  int32_t IsNullValue() const {
    return language_ == kNullLanguage ||
           (codeSet_ == kOrderCodeSet && language_ == 0);
  }
  int32_t SetNullValue();

  static uint8_t GetDefaultCodeSet();
  static uint8_t GetDefault8CodeSet();
  static uint8_t GetDefault16CodeSet();
  static uint8_t GetDefaultLanguage();
  static uint16_t GetDefaultCmpOp();
  static void SetDefaultCodeSet(uint8_t code);
  static void SetDefaultLanguage(uint8_t code);
  static void SetDefaultCmpOp(uint16_t op);

  // The process-wide string with no buffer, the default code set and the
  // default language.
  static const ObString& EmptyString();

 private:
  enum class SpliceMode { kOverwrite, kInsert, kTruncateAppend };
  // The one edit primitive: `count` characters of `src` (in `srcCodeSet`)
  // from `srcPos`, repeated `repeat` times (repeat != 1: copies of the
  // first character), placed at character `destPos` by `mode`.
  void Splice(const void* src, uint8_t srcCodeSet, uint32_t destPos,
              uint32_t srcPos, uint32_t count, uint32_t repeat,
              SpliceMode mode);
  void AssignText(const void* text, uint8_t codeSet, uint32_t count);
  void AssignNumber(const char* text);
  void Append(const void* text, uint8_t codeSet, uint32_t count);
  void ReplaceBuffer(char* buffer, uint16_t size);
  template <class T>
  int32_t ParseLeading(T& out, bool cStyle) const;

  char* buffer_;
  uint16_t size_;
  uint8_t codeSet_;
  uint8_t language_;
};
static_assert(sizeof(ObString) == 16, "ObString is 16 bytes in memory");

QS_TM_API ObString operator+(const ObString& a, const ObString& b);

// The next item of a `separator`-delimited list from `position`, trimmed;
// `position` moves past the separator. Returns 0, or kObEndOfList.
QS_TM_API int32_t ObSplitList(ObString& list, ObString& item,
                              const ObString& separator,
                              unsigned short& position);

#endif  // QUILLSTORE_OBSTRING_H_
