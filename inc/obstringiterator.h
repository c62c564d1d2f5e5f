// ObStringIterator: walks a text in its code set and language and yields its
// characters or, per collation element, its 16-bit collation orders.
//
// Collation order classes: 0 end, 1-79 blanks (13: undefined ordering
// indicator), 80-16127 symbols, 16128-16383 digits, 16384-32767 letters
// (case, accent kind, letter number and extension in the bits), 32768 and
// above Han. Code set 254 marks a text that already is a sequence of
// orders, two bytes each, low byte first.
#ifndef QUILLSTORE_OBSTRINGITERATOR_H_
#define QUILLSTORE_OBSTRINGITERATOR_H_

#include <cstdint>

#include "obdefs.h"

class ObChar;
class ObStringIterator;
class ObCharTable;
class ObCodeSet;
class ObString;
class ObWCharList;
struct ObLanguage;

// A character transformation for ObStringIterator::Transform.
class QS_TM_API ObCharOperation {
 public:
  virtual ~ObCharOperation() = default;
  // `from` is the source iterator; the operation may set an overflow list
  // on it (an upper case of two characters).
  virtual ObChar Apply(const ObChar& ch, ObStringIterator* from) const = 0;
};

class QS_TM_API ObCharToLower : public ObCharOperation {
 public:
  ObChar Apply(const ObChar& ch, ObStringIterator* from) const override;
};
class QS_TM_API ObCharToUpper : public ObCharOperation {
 public:
  ObChar Apply(const ObChar& ch, ObStringIterator* from) const override;
};

class QS_TM_API ObStringIterator {
 public:
  static constexpr uint8_t kOrderCodeSet = 254;
  static constexpr uint8_t kUnknownCollationId = 20;

  explicit ObStringIterator(const ObString& s);
  // 255 in code set, language or format means the default 8-bit code set,
  // the default language and format 1.
  ObStringIterator(const char* text, uint8_t codeSet, uint8_t language,
                   uint8_t format);
  ObStringIterator(const unsigned short* text, uint8_t codeSet,
                   uint8_t language, uint8_t format);
  // Over a one-character copy of `ch`, which the iterator owns.
  explicit ObStringIterator(const ObChar& ch);
  // Copies share the position and overflow state and never own the text.
  ObStringIterator(const ObStringIterator& other) { CopyState(other); }
  ObStringIterator& operator=(const ObStringIterator& other) {
    if (this != &other) {
      Destroy();
      CopyState(other);
    }
    return *this;
  }
  ~ObStringIterator() { Destroy(); }
  void Destroy() {
    if (ownsText_ != 0) FreeText();
  }

  ObStringIterator& operator++();
  ObStringIterator operator++(int);
  ObStringIterator& operator--();
  ObStringIterator operator--(int);
  ObStringIterator& Step(int forward) {
    return forward != 0 ? ++*this : --*this;
  }
  // The current character: the next overflow entry while one is pending
  // (which advances the overflow), else a view of the text.
  ObChar operator*();
  bool operator==(const ObStringIterator& other) const {
    return position_ == other.position_;
  }
  bool IsEOS() const;

  void SetOverflow(const ObWCharList* list, uint8_t codeSet);
  // The order of the next collation element, advancing past it. `expand`
  // nonzero: unknown characters take collation identifier 20 and the
  // identifier follows the table entries.
  uint16_t GetNextOrder(int expand);
  // Writes the text transformed by `op` into `dest`, which must have room
  // for twice the source's bytes.
  void Transform(ObStringIterator& dest, const ObCharOperation& op);

  uint8_t GetCodeSet() const { return codeSet_; }
  uint8_t GetLanguage() const { return language_; }
  uint8_t GetCollationId() const { return collationId_; }
  uint8_t GetFormat() const { return format_; }
  const char* GetPosition() const { return position_; }
  bool OverflowPending() const {
    return overflow_ != nullptr && overflowIndex_ < OverflowCount();
  }

 private:
  void Init(const char* text, uint8_t codeSet, uint8_t language,
            uint8_t format);
  // Everything but ownership: a copy never frees the text.
  void CopyState(const ObStringIterator& o) {
    codeSetObject_ = o.codeSetObject_;
    codeSet_ = o.codeSet_;
    language_ = o.language_;
    collationId_ = o.collationId_;
    overflowCodeSet_ = o.overflowCodeSet_;
    overflowIndex_ = o.overflowIndex_;
    format_ = o.format_;
    ownsText_ = 0;
    position_ = o.position_;
    overflow_ = o.overflow_;
    languageRecord_ = o.languageRecord_;
    languageCollationId_ = o.languageCollationId_;
    table_ = o.table_;
    unicode_ = o.unicode_;
  }
  void FreeText();
  uint32_t Width() const { return codeSet_ < 225 ? 1 : 2; }
  // 16-bit characters are stored most significant byte first in format 2
  // and in machine order otherwise, as the base-services load reads them.
  uint16_t ReadAt(const char* at) const {
    const unsigned char* p = reinterpret_cast<const unsigned char*>(at);
    if (Width() == 1) return *p;
    if ((format_ & 0x0F) == 2) return static_cast<uint16_t>(p[0] << 8 | p[1]);
    return static_cast<uint16_t>(p[0] | p[1] << 8);
  }
  void Advance() { position_ += Width(); }  // ignoring the overflow list
  int32_t OverflowCount() const;

  const ObCodeSet* codeSetObject_;
  uint8_t codeSet_;
  uint8_t language_;
  uint8_t collationId_;
  uint8_t overflowCodeSet_;
  int16_t overflowIndex_;
  uint8_t format_;
  uint16_t ownsText_;
  const char* position_;
  const ObWCharList* overflow_;
  const ObLanguage* languageRecord_;  // looked up once per construction
  uint8_t languageCollationId_;       // the code set's identifier for it
  const ObCharTable* table_;          // the code set's, else code set 253's
  const ObCodeSet* unicode_;          // set when characters map into 253
};

// Order functions. Return 0, or kObBadArgument for an order outside the
// class.
QS_TM_API int32_t ObExtractSymbolFromOrder(uint16_t order, uint16_t& symbol);
QS_TM_API int32_t ObExtractDigitFromOrder(uint16_t order, uint16_t& digit,
                                          uint16_t& expand);
// A readable description ("lower letter a with accent acute"); returns 0.
QS_TM_API int32_t ObConvertOrderToString(uint16_t order, uint8_t collationId,
                                         ObString& text);
// A representative 8-bit character and, optionally, its accent notation
// ("\\'a"); returns 0.
QS_TM_API int32_t ObConvertOrderToChar(uint16_t order, uint8_t collationId,
                                       unsigned char& ch, int32_t findAccented,
                                       const char** name);

#endif  // QUILLSTORE_OBSTRINGITERATOR_H_
