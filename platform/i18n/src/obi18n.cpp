#include "obi18n.h"

namespace {

constexpr uint8_t kNativeCodeSet = 1;  // windows-1252
constexpr uint8_t kUnicodeCodeSet = 253;
constexpr uint8_t kOrderCodeSet = 254;
constexpr uint8_t kLastShippedLanguage = 6;
// Wildcards stay off by default: with them on, equal values would no longer
// hash alike and a text holding '*' would act as a pattern in operator==.
constexpr uint16_t kCmpNoWildcards = 0x0010;

uint8_t g_codeSet = kNativeCodeSet;
uint8_t g_codeSet8 = kNativeCodeSet;
uint8_t g_codeSet16 = kUnicodeCodeSet;
uint8_t g_language = 1;  // English
uint16_t g_cmpOp = kCmpNoWildcards;
int32_t g_contextCount = 0;

int32_t Accept(bool ok, uint8_t code, uint8_t& slot) {
  if (!ok) return kObI18nBadArgument;
  slot = code;
  return 0;
}

}  // namespace

bool ObLanguageContext::IsKnownCodeSet(uint8_t code) {
  return code <= 2 || code == kUnicodeCodeSet || code == kOrderCodeSet;
}

bool ObLanguageContext::IsShippedLanguage(uint8_t code) {
  return code <= kLastShippedLanguage;
}

uint8_t ObLanguageContext::GetNativeCodeSet() { return kNativeCodeSet; }

uint8_t ObLanguageContext::GetDefaultCodeSet() { return g_codeSet; }
int32_t ObLanguageContext::SetDefaultCodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code != 0 && code != kOrderCodeSet,
                code, g_codeSet);
}

uint8_t ObLanguageContext::GetDefault8CodeSet() { return g_codeSet8; }
int32_t ObLanguageContext::SetDefault8CodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code >= 1 && code < 225, code,
                g_codeSet8);
}

uint8_t ObLanguageContext::GetDefault16CodeSet() { return g_codeSet16; }
int32_t ObLanguageContext::SetDefault16CodeSet(uint8_t code) {
  return Accept(IsKnownCodeSet(code) && code >= 225 && code <= 253, code,
                g_codeSet16);
}

uint8_t ObLanguageContext::GetDefaultLanguage() { return g_language; }
int32_t ObLanguageContext::SetDefaultLanguage(uint8_t code) {
  return Accept(IsShippedLanguage(code), code, g_language);
}

uint16_t ObLanguageContext::GetDefaultCmpOp() { return g_cmpOp; }
int32_t ObLanguageContext::SetDefaultCmpOp(uint16_t op) {
  if (op == 0xFFFF) return kObI18nBadArgument;
  g_cmpOp = op;
  return 0;
}

extern "C" int32_t ___ObI18NContext(int32_t on) {
  if (on != 0) {
    ++g_contextCount;
  } else if (g_contextCount > 0) {
    --g_contextCount;
  }
  return 0;
}
