#include <atomic>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "obbs.h"

namespace {

void DefaultAssertHandler(const char* message, const char* source,
                          int32_t line) {
  std::fprintf(stderr, "%s(%" PRId32 "): %s\n", source ? source : "?", line,
               message ? message : "");
}

int32_t DefaultMemoryHandler(uint32_t size) {
  std::fprintf(stderr, "Quillstore: out of memory (%" PRIu32 " bytes)\n", size);
  return 0;
}

// Handlers may be swapped while other threads report, hence atomics. Null
// never gets stored, so a caller can always invoke what it loads.
std::atomic<ObAssertHandler> gAssertHandler{&DefaultAssertHandler};
std::atomic<ObMemoryHandler> gMemoryHandler{&DefaultMemoryHandler};

}  // namespace

extern "C" {

void ORLO_assert(const char* message, const char* source, int32_t line) {
  gAssertHandler.load(std::memory_order_acquire)(message, source, line);
}

ObAssertHandler ORLO_SetAssertHandler(ObAssertHandler handler) {
  return gAssertHandler.exchange(handler ? handler : &DefaultAssertHandler,
                                 std::memory_order_acq_rel);
}

int32_t ObCallMemoryHandler(uint32_t size) {
  return gMemoryHandler.load(std::memory_order_acquire)(size);
}

void* ObAllocate(size_t bytes, int32_t zeroed) {
  if (bytes == 0) bytes = 1;
  for (;;) {
    void* p = zeroed != 0 ? std::calloc(1, bytes) : std::malloc(bytes);
    if (p != nullptr) return p;
    const uint32_t asked =
        bytes > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(bytes);
    if (ObCallMemoryHandler(asked) == 0) return nullptr;
  }
}

ObMemoryHandler ObSetMemoryHandler(ObMemoryHandler handler) {
  return gMemoryHandler.exchange(handler ? handler : &DefaultMemoryHandler,
                                 std::memory_order_acq_rel);
}

}  // extern "C"
