// Definitions shared by every public header of the Quillstore type manager.
#ifndef QUILLSTORE_OBDEFS_H_
#define QUILLSTORE_OBDEFS_H_

#include <cstdint>

#if defined(QS_TM_BUILD)
#define QS_TM_API __attribute__((visibility("default")))
#else
#define QS_TM_API
#endif

// Status and result codes. DO NOT CHANGE: callers and stored tools test them.
constexpr int32_t ObCMP_OPERAND_EXHAUSTED = 2101;  // an operand ended early
constexpr int32_t kObNotSupported = -2999;         // also: key cut too long
constexpr int32_t kObCounterAtMax = 2091;          // a counter cannot advance
constexpr int32_t kObBadArgument = -2002;
constexpr int32_t kObEndOfList = -2005;
constexpr int32_t kObZoneUnknownStatus = -2171;

// Format codes: the low four bits of a format byte.
constexpr uint8_t kObFormatMask = 0x0F;
constexpr uint8_t kObFormatMemory = 8;  // the value as the program holds it
constexpr uint8_t kObFormatLittle = 1;  // stored, least significant first
constexpr uint8_t kObFormatBig = 2;     // stored, most significant first
constexpr uint8_t kObFormatKey = 0x80;  // target is an index key

// Comparison options: unsigned 16-bit bit set.
constexpr uint16_t CmpNoWildcards = 0x10;  // also: exact date/time components
constexpr uint16_t CmpIgnoreCase = 0x20;
constexpr uint16_t CmpIgnoreAccents = 0x40;
constexpr uint16_t CmpIgnoreBlanks = 0x80;  // also: hand back cut-key result
constexpr uint16_t CmpBinaryOrder = 0x100;
constexpr uint16_t CmpIgnoreSymbols = 0x200;
// The relational operators of the value classes: always exact.
constexpr uint16_t kObCmpOperatorOptions = 0xFFFF;

#endif  // QUILLSTORE_OBDEFS_H_
