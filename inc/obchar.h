// ObChar: one character of a code set and language. It either holds its
// value or views a character inside a text, so that assigning to a viewing
// ObChar writes into that text. Class tests come from the collation order.
#ifndef QUILLSTORE_OBCHAR_H_
#define QUILLSTORE_OBCHAR_H_

#include <cstdint>

#include "obdefs.h"

class ObString;
class ObStringIterator;

class QS_TM_API ObChar {
 public:
  ObChar() : ObChar(static_cast<unsigned short>(0), 255, 255) {}
  // Code set 255: the default 16-bit (8-bit) code set; language 255: the
  // default language.
  ObChar(unsigned short value, uint8_t codeSet, uint8_t language);
  ObChar(char value, uint8_t codeSet, uint8_t language);
  // A view of the character at `at`; 255 in code set, language or format
  // means the default 8-bit code set, the default language, format 1.
  ObChar(char* at, uint8_t codeSet, uint8_t language, uint8_t format);
  // A view of byte `offset` of the string's buffer. The string must have a
  // buffer reaching that far.
  ObChar(ObString& s, int32_t offset);
  // Always a held copy.
  ObChar(const ObChar& other);

  ObChar& operator=(char value);
  ObChar& operator=(unsigned short value);
  ObChar& operator=(const ObChar& c);

  uint16_t GetValue() const;
  uint8_t GetCodeSet() const { return codeSet_; }
  uint8_t GetLanguage() const { return language_; }
  uint8_t GetFormat() const { return format_; }
  bool IsView() const { return view_ != nullptr; }

  ObChar MapTo(uint8_t codeSet) const;
  int32_t Compare(const ObChar& other, uint16_t cmpOp) const;
  bool operator==(const ObChar& o) const { return Compare(o, 65535) == 0; }
  bool operator!=(const ObChar& o) const { return Compare(o, 65535) != 0; }
  bool operator<(const ObChar& o) const { return Compare(o, 65535) < 0; }
  bool operator>(const ObChar& o) const { return Compare(o, 65535) > 0; }
  bool operator<=(const ObChar& o) const { return Compare(o, 65535) <= 0; }
  bool operator>=(const ObChar& o) const { return Compare(o, 65535) >= 0; }
  bool operator==(char c) const { return *this == Held8(c); }
  bool operator!=(char c) const { return *this != Held8(c); }
  bool operator<(char c) const { return *this < Held8(c); }
  bool operator>(char c) const { return *this > Held8(c); }
  bool operator==(unsigned short c) const { return *this == Held16(c); }
  bool operator!=(unsigned short c) const { return *this != Held16(c); }
  bool operator<(unsigned short c) const { return *this < Held16(c); }
  bool operator>(unsigned short c) const { return *this > Held16(c); }

  // Case mapping. ToUpper queues the rest of a multi-character upper case
  // on `from`, when given, as its overflow list.
  ObChar ToLower(ObStringIterator* from) const;
  ObChar ToUpper(ObStringIterator* from) const;

  // The collation order of this one character.
  uint16_t Order() const;
  bool IsSpace() const { return Order() < 80; }  // so 0 is blank
  bool IsSymbol() const {
    uint16_t o = Order();
    return o >= 80 && o < 16128;
  }
  bool IsDigit() const {
    uint16_t o = Order();
    return o >= 16128 && o < 16384;
  }
  bool IsAlpha() const {
    uint16_t o = Order();
    return o >= 16384 && o < 32768;
  }
  bool IsHan() const { return Order() >= 32768; }

 private:
  static ObChar Held8(char c);
  static ObChar Held16(unsigned short c);
  bool IsWide() const { return codeSet_ >= 225; }
  void Write(uint16_t value);

  char* view_;
  uint16_t value_;
  uint8_t codeSet_;
  uint8_t language_;
  uint8_t format_;
};

#endif  // QUILLSTORE_OBCHAR_H_
