#include "oblocalref.h"

#include "obstring.h"

namespace {

constexpr char kDefaultFormat[] = "(%H-%L#%B,%C)";

ObRef AsRef(const ObLocalRef& local) {
  ObRef ref;
  ref = local;
  return ref;
}

}  // namespace

ObString& ObLocalRef::PrintToObString(ObString& text,
                                      const char* format) const {
  return AsRef(*this).PrintToObString(
      text, format != nullptr ? format : kDefaultFormat);
}

void ObLocalRef::ScanFromObString(const ObString& text, const char* format) {
  ObRef ref = AsRef(*this);
  ref.ScanFromObString(text, format != nullptr ? format : kDefaultFormat);
  *this = ref;
}
