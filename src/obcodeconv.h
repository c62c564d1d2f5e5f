// Character conversion between code sets, shared by the text classes.
// Internal to the library.
#ifndef QUILLSTORE_SRC_OBCODECONV_H_
#define QUILLSTORE_SRC_OBCODECONV_H_

#include <cstdint>

// `ch` of code set `from` as a character of code set `to`; code set 0 means
// the native code set. A character the target lacks becomes '?'.
uint16_t ObMapChar(uint16_t ch, uint8_t from, uint8_t to);

#endif  // QUILLSTORE_SRC_OBCODECONV_H_
