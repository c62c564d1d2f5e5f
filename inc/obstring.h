// ObString: a heap text that carries a code set and a language.
//
// Code sets below 225 hold one byte per character, the others one 16-bit
// unit. The buffer holds the characters and one terminating zero character;
// `size` counts its bytes (at most kMaxSize). Language 254 marks the null
// value.
#ifndef QUILLSTORE_OBSTRING_H_
#define QUILLSTORE_OBSTRING_H_

#include <cstdint>

#include "obdefs.h"

class QS_TM_API ObString {
 public:
  static constexpr uint16_t kMaxSize = 65532;  // bytes, terminator included
  static constexpr uint8_t kNullLanguage = 254;
  static constexpr uint8_t kOrderCodeSet = 254;

  ObString();
  ObString(uint8_t codeSet, uint8_t language);
  ObString(const ObString& other);
  ObString(const char* text);  // NOLINT: texts convert implicitly
  ~ObString();

  ObString& operator=(const ObString& other);
  ObString& operator=(const char* text);

  // Resets to the state of ObString() without freeing: for raw storage.
  void Init();
  // Frees the buffer and zeroes size, code set and language.
  void Destroy();

  uint32_t Len() const;
  bool IsEmpty() const { return buffer_ == nullptr || Len() == 0; }
  // The buffer, or a static empty text when there is none; never null.
  const char* StrGet() const;
  uint8_t GetCodeSet() const { return codeSet_; }
  uint8_t GetLanguage() const { return language_; }
  uint16_t GetSize() const { return size_; }  // buffer bytes

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
  void Assign8(const char* text, uint32_t bytes, uint8_t codeSet);

  char* buffer_;
  uint16_t size_;
  uint8_t codeSet_;
  uint8_t language_;
};
static_assert(sizeof(ObString) == 16, "ObString is 16 bytes in memory");

#endif  // QUILLSTORE_OBSTRING_H_
