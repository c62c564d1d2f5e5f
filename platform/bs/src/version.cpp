#include "obbs.h"

namespace {

constexpr uint32_t kMajor = 11;
constexpr uint32_t kMinor = 0;
constexpr uint32_t kVersion3 = 3;
constexpr uint32_t kVersion4 = 61;

constexpr int32_t kSameMajor = 0x1;
constexpr int32_t kSameMinor = 0x2;
constexpr int32_t kNotNewerBuild = 0x4;

}  // namespace

// The fifth number is a patch level that never affects compatibility.
extern "C" int32_t CheckObVersionNumber(uint32_t major, uint32_t minor,
                                        uint32_t version3, uint32_t version4,
                                        uint32_t /*version5*/, int32_t flags) {
  if ((flags & kSameMajor) && major != kMajor) return -1;
  if ((flags & kSameMinor) && minor != kMinor) return -1;
  if (flags & kNotNewerBuild) {
    const bool newer =
        version3 > kVersion3 || (version3 == kVersion3 && version4 > kVersion4);
    if (newer) return -1;
  }
  return 0;
}
