// Module identity, context switch and the initialisation that runs while
// the library loads.
#include "module.h"

#include <cstdio>
#include <new>

#include "catalog.h"
#include "obbs.h"
#include "obi18n.h"
#include "obmodule.h"
#include "obstring.h"
#include "obtypemgr.h"

namespace {

constexpr uint32_t kVersion[5] = {11, 0, 3, 61, 0};
constexpr char kModuleName[] = "QS110Ktms90x64";
constexpr char kDescription[] = "Quillstore Typemanager";
constexpr char kBuildDate[] = "Nov 13 2009";
constexpr char kBuildDateTime[] = "Nov 13 2009 22:56:30";
constexpr char kUnknown[] = "unknown";
constexpr uint32_t kCompilerVersion = 1500;
#if defined(__clang__)
constexpr char kCompilerText[] = "clang " __clang_version__;
#elif defined(__GNUC__)
constexpr char kCompilerText[] = "g++ " __VERSION__;
#else
constexpr char kCompilerText[] = "C++ compiler";
#endif
constexpr int kDefaultFactory = 5;

char g_descriptionAndVersion[64];
int32_t g_options = 0;

// Everything below is set while the library loads, in this order, before
// any export can be called.
// The default date and time text formats come before all of it: they are
// constant data (obtimetext.h), in place before any code of the library runs.
struct LoadTimeState {
  // The catalogue's fixed-width slots come first: a caller reaching the
  // catalogue must never see them empty.
  LoadTimeState() {
    InitFixedWidthSlots();
    nullPrintText = "{NULL}";
  }
  ObString nullPrintText;
  ObString emptyString;
};
LoadTimeState g_state;

}  // namespace

ObString& NullPrintText() { return g_state.nullPrintText; }

const ObString& ObString::EmptyString() { return g_state.emptyString; }

extern "C" {

const char* ObDescribeDll(uint32_t* major, uint32_t* minor, uint32_t* version3,
                          uint32_t* version4, uint32_t* version5,
                          const char** moduleName, const char** buildDateTime,
                          const char** unknownText, uint32_t* compilerVersion,
                          const char** compilerText, const char** emptyText) {
  *major = kVersion[0];
  *minor = kVersion[1];
  *version3 = kVersion[2];
  *version4 = kVersion[3];
  *version5 = kVersion[4];
  *moduleName = kModuleName;
  *buildDateTime = kBuildDateTime;
  *unknownText = kUnknown;
  *compilerVersion = kCompilerVersion;
  *compilerText = kCompilerText;
  *emptyText = "";
  return kDescription;
}

void GetObTypeMgrInfo(const char** compilerText, uint32_t* compilerVersion,
                      const char** descriptionAndVersion,
                      const char** buildDate, const char** moduleName) {
  if (compilerText != nullptr) *compilerText = kCompilerText;
  if (compilerVersion != nullptr) *compilerVersion = kCompilerVersion;
  if (descriptionAndVersion != nullptr) {
    std::snprintf(g_descriptionAndVersion, sizeof g_descriptionAndVersion,
                  "%s %u.%u.%u.%u.%u", kDescription, kVersion[0], kVersion[1],
                  kVersion[2], kVersion[3], kVersion[4]);
    *descriptionAndVersion = g_descriptionAndVersion;
  }
  if (buildDate != nullptr) *buildDate = kBuildDate;
  if (moduleName != nullptr) *moduleName = kModuleName;
}

int32_t ObCheckDll(int32_t flags) {
  return CheckObVersionNumber(kVersion[0], kVersion[1], kVersion[2],
                              kVersion[3], kVersion[4], flags | 3);
}

void ___ObTypemgrContext(int32_t on) {
  ___ObI18NContext(on);
  if (on != 0) {
    ResetDefaultTypeMgr(new (std::nothrow) ObTypeMgr(kDefaultFactory));
  } else {
    delete DefaultTypeMgr(nullptr);
    ResetDefaultTypeMgr(nullptr);
  }
}

int32_t& ___ObTypeMgrOptions() { return g_options; }

}  // extern "C"
