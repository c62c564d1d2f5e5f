// The %-code text forms of ObInt64 and the identity types: one printer and
// one scanner driven by a table of codes per type. Internal to the library.
#ifndef QUILLSTORE_SRC_OBCODETEXT_H_
#define QUILLSTORE_SRC_OBCODETEXT_H_

#include <cstddef>
#include <cstdint>
#include <string>

class ObString;

namespace obtext {

// A code and the field it prints and reads. Fields are held as uint64_t
// slots; `bits` 16 and 32 are unsigned fields ("%hu", "%lu"), 64 a signed
// one. A positional entry with kNoSlot prints 0 and reads into nothing.
struct CodeField {
  char code;
  uint8_t slot;
  uint8_t bits;
};
constexpr uint8_t kNoSlot = 0xFF;

// The codes of one type. Named codes ("%H") stand for their field wherever
// they appear. Positional codes ('h', 'l') stand for the entries of
// `positional` in the order they are met, and swallow the character after
// them (the 'u' of an old "%hu"): with `sharedCounter` the n-th positional
// code of either letter takes entry n when that entry has its letter (else
// 0); without it the n-th code of a letter takes the n-th entry of that
// letter. Codes beyond the entries print 0.
struct CodeForm {
  const CodeField* named;
  size_t namedCount;
  const CodeField* positional;
  size_t positionalCount;
  bool sharedCounter;
};

// Expands `format`: codes print their fields in decimal, "%%" prints '%',
// '%' and any other character prints that character, a '%' at the end
// prints nothing.
void PrintCodes(const CodeForm& form, const char* format, const uint64_t* slots,
                std::string& out);

// Walks `format` and the `len` characters of `text` together. A literal
// that equals the current text character consumes it. One that does not is
// skipped when the text character is a digit (and then, when the rest of
// the format has a '-' and the rest of the text has none, the format goes
// on after that '-', so that a text without the part before '-' still
// fills the parts after it); a non-digit text character that matches
// nothing is skipped. A code reads blanks, an optional sign and decimal
// digits into its field, modulo the field's width; with no digits the field
// keeps its value. "%%" and unknown codes skip one text character.
void ScanCodes(const CodeForm& form, const char* format, const char* text,
               size_t len, uint64_t* slots);

// The text a scanner reads: a text of a two-byte code set is converted to
// an 8-bit copy first.
ObString NarrowText(const ObString& text);

}  // namespace obtext

#endif  // QUILLSTORE_SRC_OBCODETEXT_H_
