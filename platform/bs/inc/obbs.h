// Base services used by the Quillstore type manager: fixed-width stored
// forms, an in-memory file, the assertion and memory handlers, the default
// configuration, the version check and the clock.
//
// Format codes (low four bits of a format byte) as these routines read them:
//   8      memory form: values are copied as the machine holds them;
//   2      stored, most significant byte first;
//   other  stored, least significant byte first (1 is the machine order of
//          every supported host; unknown codes fall back to the same order so
//          that a stored value never decodes differently on another host).
// Bits 4-7 of a format byte are ignored here.
//
// DO NOT CHANGE the stored widths or byte orders: they are embedded in the
// records and index keys of existing databases.
#ifndef QUILLSTORE_OBBS_H_
#define QUILLSTORE_OBBS_H_

#include <cstddef>
#include <cstdint>

#if defined(QS_BS_BUILD)
#define QS_BS_API __attribute__((visibility("default")))
#else
#define QS_BS_API
#endif

// ---------------------------------------------------------------------------
// Fixed-width stored forms.
//
// Store and Load routines take (destination, source, format, count), convert
// `count` elements between memory form and the stored form of `format`, and
// return the number of bytes of the stored side. The conversion is a byte
// reordering, so a Store routine also serves as its own Load. Source and
// destination may be unaligned; they must not overlap unless they are equal.
// The ...StoreOne routines convert exactly one element.
// SizeGet routines take (value or null, source format, target format, count)
// and return the stored width times count; NullSizeGet routines take the count.
extern "C" {
QS_BS_API uint32_t CharStore(void* dest, const void* src, uint8_t format,
                             uint32_t count);
QS_BS_API uint32_t ShortStore(void* dest, const void* src, uint8_t format,
                              uint32_t count);
QS_BS_API uint32_t IntStore(void* dest, const void* src, uint8_t format,
                            uint32_t count);
QS_BS_API uint32_t IntLoad(void* dest, const void* src, uint8_t format,
                           uint32_t count);
QS_BS_API uint32_t UnsignedStore(void* dest, const void* src, uint8_t format,
                                 uint32_t count);
QS_BS_API uint32_t UnsignedLoad(void* dest, const void* src, uint8_t format,
                                uint32_t count);
QS_BS_API uint32_t LongStore(void* dest, const void* src, uint8_t format,
                             uint32_t count);
QS_BS_API uint32_t O_8BStore(void* dest, const void* src, uint8_t format,
                             uint32_t count);
QS_BS_API uint32_t FloatStore(void* dest, const void* src, uint8_t format,
                              uint32_t count);
QS_BS_API uint32_t DoubleStore(void* dest, const void* src, uint8_t format,
                               uint32_t count);

QS_BS_API uint32_t ShortStoreOne(void* dest, const void* src, uint8_t format);
QS_BS_API uint32_t LongStoreOne(void* dest, const void* src, uint8_t format);
QS_BS_API uint32_t O_8BStoreOne(void* dest, const void* src, uint8_t format);

QS_BS_API uint32_t CharSizeGet(const void* value, uint8_t srcFormat,
                               uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t ShortSizeGet(const void* value, uint8_t srcFormat,
                                uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t IntSizeGet(const void* value, uint8_t srcFormat,
                              uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t LongSizeGet(const void* value, uint8_t srcFormat,
                               uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t O_8BSizeGet(const void* value, uint8_t srcFormat,
                               uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t FloatSizeGet(const void* value, uint8_t srcFormat,
                                uint8_t dstFormat, uint32_t count);
QS_BS_API uint32_t DoubleSizeGet(const void* value, uint8_t srcFormat,
                                 uint8_t dstFormat, uint32_t count);

QS_BS_API uint32_t CharNullSizeGet(uint32_t count);
QS_BS_API uint32_t ShortNullSizeGet(uint32_t count);
QS_BS_API uint32_t IntNullSizeGet(uint32_t count);
QS_BS_API uint32_t LongNullSizeGet(uint32_t count);
QS_BS_API uint32_t O_8BNullSizeGet(uint32_t count);
QS_BS_API uint32_t FloatNullSizeGet(uint32_t count);
QS_BS_API uint32_t DoubleNullSizeGet(uint32_t count);
}  // extern "C"

// ---------------------------------------------------------------------------
// MemFile: a read cursor over a caller's byte buffer. It never owns or
// writes the buffer and never moves outside [0, size]. A null buffer is
// treated as empty.
class QS_BS_API MemFile {
 public:
  enum SeekOrigin { kBegin = 0, kCurrent = 1, kEnd = 2 };

  MemFile(const void* data, uint32_t size) noexcept;

  uint32_t GetPosition() const noexcept { return pos_; }
  uint32_t GetSize() const noexcept { return size_; }
  uint32_t Remaining() const noexcept { return size_ - pos_; }
  // Bytes at the current position; valid for Remaining() bytes.
  const uint8_t* Current() const noexcept { return data_ + pos_; }

  // Moves the position; returns 0, or -1 (position unchanged) when the
  // target lies outside [0, size].
  int32_t Seek(int64_t offset, SeekOrigin origin = kBegin) noexcept;
  // Copies up to n bytes and advances; returns the bytes copied (0 when
  // dest is null).
  uint32_t Read(void* dest, uint32_t n) noexcept;

 private:
  const uint8_t* data_;
  uint32_t size_;
  uint32_t pos_;
};

// ---------------------------------------------------------------------------
// Assertions: reports an internal inconsistency and returns; the caller goes
// on. The default handler writes "<source>(<line>): <message>" to stderr.
typedef void (*ObAssertHandler)(const char* message, const char* source,
                                int32_t line);
extern "C" {
QS_BS_API void ORLO_assert(const char* message, const char* source,
                           int32_t line);
// Installs a handler (null restores the default); returns the previous one,
// never null, so that it can be chained or reinstalled.
QS_BS_API ObAssertHandler ORLO_SetAssertHandler(ObAssertHandler handler);

// Called when a heap block of `size` bytes cannot be obtained. The handler
// may free memory; it returns non-zero when the caller should try again.
// The default handler reports on stderr and returns 0. ObSetMemoryHandler
// works like ORLO_SetAssertHandler.
typedef int32_t (*ObMemoryHandler)(uint32_t size);
QS_BS_API int32_t ObCallMemoryHandler(uint32_t size);
// A block of the C heap (free it with free()), zero-filled when `zeroed`;
// calls the memory handler while it asks for another try. Null on failure.
QS_BS_API void* ObAllocate(size_t bytes, int32_t zeroed);
QS_BS_API ObMemoryHandler ObSetMemoryHandler(ObMemoryHandler handler);
}  // extern "C"

// ---------------------------------------------------------------------------
// Configuration: integer values by section and key. The default
// configuration is read once, on first use, from the file that the
// environment variable QUILLSTORE_CONFIG names; no variable or no file means
// every look-up returns its default. File format, one item per line:
//   [section]
//   key = value        ; value: decimal or 0x-hex integer
// '#' and ';' start comments anywhere on a line; blanks around names and
// values are ignored; names are case-sensitive and shorter than kMaxName.
// Keys before the first header belong to section "". Decimal values must fit
// int32_t; hex values may use all 32 bits (0xFFFFFFFF is -1); an optional
// sign comes first. A malformed line is ignored, and after a malformed
// section header so are the keys up to the next good one. A repeated key
// replaces the earlier value. At most kMaxEntries values are kept.
class QS_BS_API ObConfig {
 public:
  static constexpr int kMaxEntries = 64;
  static constexpr int kMaxName = 48;

  ObConfig() noexcept = default;
  // Replaces the contents with those of the file; returns 0, or -1 when the
  // file cannot be read (the configuration is then empty).
  int32_t ReadFile(const char* path) noexcept;
  // Replaces the contents with those of a text in the file format.
  void ReadText(const char* text) noexcept;
  // Sets or replaces one value; returns 0, or -1 when the table is full or a
  // name is too long.
  int32_t Set(const char* section, const char* key, int32_t value) noexcept;
  void Clear() noexcept { count_ = 0; }

  int32_t GetInt(const char* section, const char* key,
                 int32_t defaultValue) const noexcept;

 private:
  struct Entry {
    char section[kMaxName];
    char key[kMaxName];
    int32_t value;
  };
  Entry entries_[kMaxEntries];
  int count_ = 0;
};

// The process-wide default configuration (read on first call). Tests and
// embedders may change it through the returned reference.
QS_BS_API ObConfig& DefaultConfig();

// ---------------------------------------------------------------------------
// Version check of a module of the product against this base-services
// library's version 11.0.3.61.0. Flag bits: 0x1 the majors must be equal,
// 0x2 the minors must be equal, 0x4 the module's build (third and fourth
// numbers) must not be newer than this library's. Returns 0 when every
// requested test passes, else -1.
extern "C" QS_BS_API int32_t
CheckObVersionNumber(uint32_t major, uint32_t minor, uint32_t version3,
                     uint32_t version4, uint32_t version5, int32_t flags);

// ---------------------------------------------------------------------------
// Clock and time zone.
struct bdate {
  int16_t year;
  int8_t month;  // 1-12
  int8_t day;    // 1-31
};
struct btime {
  uint8_t hour;
  uint8_t minute;
  uint8_t second;
  uint8_t hundredths;
  uint32_t fraction;  // nanoseconds within the second
};
static_assert(sizeof(bdate) == 4, "bdate is year, month, day");
static_assert(sizeof(btime) == 8, "btime is four bytes and a 32-bit field");

// Local-time offset from UTC in minutes when the zone is unknown.
constexpr int32_t kObZoneUnknown = -2171;

extern "C" {
QS_BS_API void bksgetdate(bdate* date);                     // local date
QS_BS_API void bksgettime(btime* time);                     // local time
QS_BS_API void bksgetsystemtime(btime* time, bdate* date);  // UTC
// Minutes east of Greenwich (local = UTC + offset), or kObZoneUnknown.
QS_BS_API int32_t bksgettimezone();
}
QS_BS_API void bksGetHiresTime(bdate& date, btime& time, int32_t& nanoseconds);
QS_BS_API void bksGetHiresTimeUTC(bdate& date, btime& time,
                                  int32_t& nanoseconds);

// Test hooks. A fixed clock is nanoseconds since 1970-01-01T00:00:00 UTC;
// a fixed zone is minutes east of UTC (kObZoneUnknown allowed). While the
// zone is fixed, local time is UTC plus that offset (UTC when unknown);
// otherwise the operating system's zone rules apply.
QS_BS_API void bksFixClock(int64_t utcNanoseconds);
QS_BS_API void bksReleaseClock();
QS_BS_API void bksFixTimeZone(int32_t minutesEast);
QS_BS_API void bksReleaseTimeZone();

#endif  // QUILLSTORE_OBBS_H_
