// Module description, version check, context switch and options of the
// Quillstore type manager (module "QS110Ktms90x64", version 11.0.3.61.0).
#ifndef QUILLSTORE_OBMODULE_H_
#define QUILLSTORE_OBMODULE_H_

#include <cstdint>

#include "obdefs.h"

extern "C" {

// Writes the version numbers 11, 0, 3, 61, 0, the module name, the build
// date and time, "unknown", the compiler version, the compiler text and an
// empty text; returns the description. No argument may be null.
QS_TM_API const char* ObDescribeDll(
    uint32_t* major, uint32_t* minor, uint32_t* version3, uint32_t* version4,
    uint32_t* version5, const char** moduleName, const char** buildDateTime,
    const char** unknownText, uint32_t* compilerVersion,
    const char** compilerText, const char** emptyText);

// Each argument may be null and is then skipped. The description-and-version
// text lives in one static buffer, rewritten on every call that asks for it.
QS_TM_API void GetObTypeMgrInfo(const char** compilerText,
                                uint32_t* compilerVersion,
                                const char** descriptionAndVersion,
                                const char** buildDate,
                                const char** moduleName);

// The base-services version check of this module, with bits 3 added to the
// caller's flags; 0 when compatible.
QS_TM_API int32_t ObCheckDll(int32_t flags);

// Non-zero: switches the internationalisation context on and installs a
// default type manager of factory 5. Zero: deletes the default manager.
QS_TM_API void ___ObTypemgrContext(int32_t on);

// Process-wide options, 0 after loading. Bit 0: texts convert to integers
// as decimal only (clear: C-style 0x and 0 prefixes are honoured).
QS_TM_API int32_t& ___ObTypeMgrOptions();

}  // extern "C"

#endif  // QUILLSTORE_OBMODULE_H_
