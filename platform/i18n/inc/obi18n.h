// Internationalisation services of Quillstore: the process-wide defaults for
// code set, language and comparison operator.
//
// Code-set codes: 0 raw bytes, 1-224 one byte per character, 225-253 two
// bytes per character, 254 a text of collation orders, 255 never a code set.
#ifndef QUILLSTORE_OBI18N_H_
#define QUILLSTORE_OBI18N_H_

#include <cstdint>

#if defined(QS_I18N_BUILD)
#define QS_I18N_API __attribute__((visibility("default")))
#else
#define QS_I18N_API
#endif

// Status of a setter given a value it does not accept.
constexpr int32_t kObI18nBadArgument = -2002;

// The defaults are constant-initialised, so they hold during other
// libraries' static initialisation. Setters return 0, or kObI18nBadArgument
// and change nothing. No locks: set them before other threads start.
class QS_I18N_API ObLanguageContext {
 public:
  ObLanguageContext() = delete;

  static uint8_t GetNativeCodeSet();

  static uint8_t GetDefaultCodeSet();
  static int32_t SetDefaultCodeSet(
      uint8_t code);  // a known code set, not 0/254
  static uint8_t GetDefault8CodeSet();
  static int32_t SetDefault8CodeSet(uint8_t code);  // a known code 1-224
  static uint8_t GetDefault16CodeSet();
  static int32_t SetDefault16CodeSet(uint8_t code);  // a known code 225-253
  static uint8_t GetDefaultLanguage();
  static int32_t SetDefaultLanguage(uint8_t code);  // a shipped language
  static uint16_t GetDefaultCmpOp();
  static int32_t SetDefaultCmpOp(uint16_t op);  // anything but 0xFFFF

  // True for the code sets this library has tables or rules for.
  static bool IsKnownCodeSet(uint8_t code);
  // True for the languages this library ships collation data for.
  static bool IsShippedLanguage(uint8_t code);
};

// Context switch, reference counted; returns 0. The defaults are left alone.
extern "C" QS_I18N_API int32_t ___ObI18NContext(int32_t on);

#endif  // QUILLSTORE_OBI18N_H_
