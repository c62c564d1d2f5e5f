// Module description, version check, options and the load-time state.
#include <string>

#include "gtest/gtest.h"
#include "quillstore.h"

namespace {

TEST(Module, Describe) {
  uint32_t major = 9, minor = 9, v3 = 9, v4 = 9, v5 = 9, compiler = 0;
  const char *name = nullptr, *built = nullptr, *unknown = nullptr,
             *compilerText = nullptr, *empty = nullptr;
  EXPECT_STREQ(ObDescribeDll(&major, &minor, &v3, &v4, &v5, &name, &built,
                             &unknown, &compiler, &compilerText, &empty),
               "Quillstore Typemanager");
  EXPECT_EQ(std::to_string(major) + "." + std::to_string(minor) + "." +
                std::to_string(v3) + "." + std::to_string(v4) + "." +
                std::to_string(v5),
            "11.0.3.61.0");
  EXPECT_STREQ(name, "QS110Ktms90x64");
  EXPECT_STREQ(built, "Nov 13 2009 22:56:30");
  EXPECT_STREQ(unknown, "unknown");
  EXPECT_EQ(compiler, 1500u);
  EXPECT_NE(compilerText, nullptr);
  EXPECT_STREQ(empty, "");
}

TEST(Module, InfoSkipsNullArguments) {
  GetObTypeMgrInfo(nullptr, nullptr, nullptr, nullptr, nullptr);
  const char *text = nullptr, *date = nullptr;
  GetObTypeMgrInfo(nullptr, nullptr, &text, &date, nullptr);
  EXPECT_STREQ(text, "Quillstore Typemanager 11.0.3.61.0");
  EXPECT_STREQ(date, "Nov 13 2009");
}

TEST(Module, VersionCheckAndOptions) {
  EXPECT_EQ(ObCheckDll(0), 0);
  EXPECT_EQ(___ObTypeMgrOptions(), 0);
  ___ObTypeMgrOptions() = 1;
  EXPECT_EQ(___ObTypeMgrOptions(), 1);
  ___ObTypeMgrOptions() = 0;
}

TEST(Module, LoadTimeState) {
  EXPECT_STREQ(ObTypeMgr::GetNullPrintString().StrGet(), "{NULL}");
  ObTypeMgr::SetNullPrintString(ObString("<null>"));
  EXPECT_STREQ(ObTypeMgr::GetNullPrintString().StrGet(), "<null>");
  ObTypeMgr::SetNullPrintString(ObString("{NULL}"));
  const ObString& empty = ObString::EmptyString();
  EXPECT_EQ(empty.GetSize(), 0);
  EXPECT_EQ(empty.GetCodeSet(), ObLanguageContext::GetDefaultCodeSet());
  EXPECT_EQ(empty.GetLanguage(), ObLanguageContext::GetDefaultLanguage());
}

TEST(LanguageContext, DefaultsAndSetters) {
  EXPECT_EQ(ObLanguageContext::GetNativeCodeSet(), 1);
  EXPECT_EQ(ObLanguageContext::GetDefaultCodeSet(), 1);
  EXPECT_EQ(ObLanguageContext::GetDefault8CodeSet(), 1);
  EXPECT_EQ(ObLanguageContext::GetDefault16CodeSet(), 253);
  EXPECT_EQ(ObLanguageContext::GetDefaultLanguage(), 1);
  EXPECT_EQ(ObLanguageContext::GetDefaultCmpOp(), 0x0010);
  struct Case {
    int32_t (*set)(uint8_t);
    uint8_t (*get)();
    uint8_t value;
    int32_t rc;
  } cases[] = {
      {ObLanguageContext::SetDefaultCodeSet,
       ObLanguageContext::GetDefaultCodeSet, 253, 0},
      {ObLanguageContext::SetDefaultCodeSet,
       ObLanguageContext::GetDefaultCodeSet, 0, -2002},
      {ObLanguageContext::SetDefaultCodeSet,
       ObLanguageContext::GetDefaultCodeSet, 254, -2002},
      {ObLanguageContext::SetDefaultCodeSet,
       ObLanguageContext::GetDefaultCodeSet, 77, -2002},
      {ObLanguageContext::SetDefault8CodeSet,
       ObLanguageContext::GetDefault8CodeSet, 2, 0},
      {ObLanguageContext::SetDefault8CodeSet,
       ObLanguageContext::GetDefault8CodeSet, 253, -2002},
      {ObLanguageContext::SetDefault16CodeSet,
       ObLanguageContext::GetDefault16CodeSet, 1, -2002},
      {ObLanguageContext::SetDefault16CodeSet,
       ObLanguageContext::GetDefault16CodeSet, 254, -2002},
      {ObLanguageContext::SetDefaultLanguage,
       ObLanguageContext::GetDefaultLanguage, 6, 0},
      {ObLanguageContext::SetDefaultLanguage,
       ObLanguageContext::GetDefaultLanguage, 7, -2002},
  };
  for (const Case& c : cases) {
    const uint8_t before = c.get();
    EXPECT_EQ(c.set(c.value), c.rc) << int(c.value);
    EXPECT_EQ(c.get(), c.rc == 0 ? c.value : before) << int(c.value);
    c.set(before);
  }
  EXPECT_EQ(ObLanguageContext::SetDefaultCmpOp(0xFFFF), -2002);
  EXPECT_EQ(ObLanguageContext::SetDefaultCmpOp(0x30), 0);
  EXPECT_EQ(ObLanguageContext::SetDefaultCmpOp(0x10), 0);
  EXPECT_EQ(___ObI18NContext(1), 0);
  EXPECT_EQ(___ObI18NContext(0), 0);
}

}  // namespace
