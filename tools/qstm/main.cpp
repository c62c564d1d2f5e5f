// qstm: inspect the type catalogue and check how values and stored keys
// compare, for engineers who work with stored data.
#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "quillstore.h"

namespace {

constexpr int kUsageError = 2;

const char kUsage[] =
    "usage: qstm <command> [arguments]\n"
    "  types                         list the type catalogue\n"
    "  compare TYPE A B [--format N] [--options HEX] [--count N] [--hex]\n"
    "                                compare two values (comma-separated\n"
    "                                lists for arrays; 'null' for null);\n"
    "                                --hex: A and B are stored forms\n"
    "  orders TEXT [--codeset N] [--language N]\n"
    "                                the collation elements of a UTF-8 text\n"
    "  strcmp A B [--op HEX] [--codeset N] [--language N]\n"
    "                                compare two UTF-8 texts with ObStrCmp\n"
    "  sort [--op HEX] [--codeset N] [--language N] < FILE\n"
    "                                sort UTF-8 lines by ObStrCmp\n"
    "  store TYPE VALUE [--format N] [--key]\n"
    "                                the stored form of a value, in hex\n"
    "  load TYPE HEX [--format N] [--count N] [--print-format F]\n"
    "                                decode a stored value and print it\n"
    "  hash TYPE VALUE [--format N]  the hash of a value (stored first when\n"
    "                                a format is given)\n"
    "  int64 EXPR                    one ObInt64 operation: A op B with op\n"
    "                                one of + - * / % << >>\n"
    "  date TEXT [--type T] [--in FORMAT] [--out FORMAT]\n"
    "                                scan a date or time value (ObDateTime\n"
    "                                unless --type) and print it again;\n"
    "                                both formats default to the ISO form\n"
    "                                of ObDate, ObTime and ObDateTime\n"
    "  daynumber YYYY-MM-DD          day number and weekday of a date\n"
    "  version                       print the module description\n"
    "TYPE is a display name (o_4b), an identifier name (Ob4B_T) or a number.\n"
    "Numbers are given as comma-separated lists; values of other types in\n"
    "their text form (\"(2:0-7#1, 12)\" for an ObRef), ';'-separated.\n";

int Fail(const std::string& message) {
  std::fprintf(stderr, "qstm: %s\n", message.c_str());
  return kUsageError;
}

// How the tool reads a value of a type from text.
enum class Kind { kNone, kSigned, kUnsigned, kFloat };
struct ValueForm {
  Kind kind = Kind::kNone;
  uint32_t width = 0;     // bytes of the number
  bool nullable = false;  // a null indicator follows the number
};

ValueForm FormOf(char id) {
  switch (id) {
    case Ob1B_T:
      return {Kind::kSigned, 1, false};
    case ObU1B_T:
      return {Kind::kUnsigned, 1, false};
    case Ob2B_T:
      return {Kind::kSigned, 2, false};
    case ObU2B_T:
      return {Kind::kUnsigned, 2, false};
    case Ob4B_T:
    case ObINT_T:
    case ObENUM_T:
      return {Kind::kSigned, 4, false};
    case ObU4B_T:
    case ObUNSIGNED_T:
    case ObBLOCKID_T:
      return {Kind::kUnsigned, 4, false};
    case Ob8B_T:
      return {Kind::kSigned, 8, false};
    case ObU8B_T:
      return {Kind::kUnsigned, 8, false};
    case ObFLOAT_T:
      return {Kind::kFloat, 4, false};
    case ObDOUBLE_T:
      return {Kind::kFloat, 8, false};
    case ObNULL_1B_T:
      return {Kind::kSigned, 1, true};
    case ObNULL_U1B_T:
      return {Kind::kUnsigned, 1, true};
    case ObNULL_2B_T:
      return {Kind::kSigned, 2, true};
    case ObNULL_U2B_T:
      return {Kind::kUnsigned, 2, true};
    case ObNULL_INT_T:
    case ObNULL_4B_T:
      return {Kind::kSigned, 4, true};
    case ObNULL_UNSIGNED_T:
    case ObNULL_U4B_T:
      return {Kind::kUnsigned, 4, true};
    case ObNULL_FLOAT_T:
      return {Kind::kFloat, 4, true};
    case ObNULL_DOUBLE_T:
      return {Kind::kFloat, 8, true};
    case ObNULL_8B_T:
      return {Kind::kSigned, 8, true};
    case ObNULL_U8B_T:
      return {Kind::kUnsigned, 8, true};
    default:
      return {};
  }
}

bool ParseUnsigned(const char* text, uint64_t max, uint64_t& out) {
  if (*text == '\0' || *text == '-') return false;
  errno = 0;
  char* end = nullptr;
  unsigned long long v = std::strtoull(text, &end, 0);
  if (errno != 0 || *end != '\0' || v > max) return false;
  out = v;
  return true;
}

bool ParseSigned(const char* text, int64_t min, int64_t max, int64_t& out) {
  if (*text == '\0') return false;
  errno = 0;
  char* end = nullptr;
  long long v = std::strtoll(text, &end, 0);
  if (errno != 0 || *end != '\0' || v < min || v > max) return false;
  out = v;
  return true;
}

bool ParseType(const char* text, char& id) {
  if (ObTypeMgr::Name2ObTypeId(text, id) == 0) return true;
  ObTypeMgr mgr(5);
  for (int i = 0; i < kObTypeCount; ++i) {
    if (std::strcmp(text, mgr.TypeIdNameGet(static_cast<char>(i), nullptr)) ==
        0) {
      id = static_cast<char>(i);
      return true;
    }
  }
  uint64_t n = 0;
  if (ParseUnsigned(text, 127, n) &&
      ObTypeMgr::IsValidType(static_cast<char>(n))) {
    id = static_cast<char>(n);
    return true;
  }
  return false;
}

// The TYPE argument of a command: 0, or the usage error reported.
int TypeArgument(const char* text, char& id) {
  if (ParseType(text, id)) return 0;
  return Fail(std::string("unknown type '") + text + "'");
}

// Appends one value in memory form (number, then null indicator).
bool AppendValue(const ValueForm& form, uint16_t memLen, const std::string& t,
                 std::vector<uint8_t>& out) {
  std::vector<uint8_t> elem(memLen, 0);
  if (form.nullable && t == "null") {
    elem[form.width] = 1;
    out.insert(out.end(), elem.begin(), elem.end());
    return true;
  }
  const uint64_t bits = form.width == 8 ? 64 : form.width * 8;
  if (form.kind == Kind::kFloat) {
    char* end = nullptr;
    double d = std::strtod(t.c_str(), &end);
    if (t.empty() || *end != '\0') return false;
    if (form.width == 4) {
      float f = static_cast<float>(d);
      std::memcpy(elem.data(), &f, 4);
    } else {
      std::memcpy(elem.data(), &d, 8);
    }
  } else if (form.kind == Kind::kSigned) {
    const int64_t max = bits == 64 ? INT64_MAX : (int64_t{1} << (bits - 1)) - 1;
    int64_t v = 0;
    if (!ParseSigned(t.c_str(), -max - 1, max, v)) return false;
    std::memcpy(elem.data(), &v, form.width);  // little-endian host
  } else {
    const uint64_t max = bits == 64 ? UINT64_MAX : (uint64_t{1} << bits) - 1;
    uint64_t v = 0;
    if (!ParseUnsigned(t.c_str(), max, v)) return false;
    std::memcpy(elem.data(), &v, form.width);
  }
  out.insert(out.end(), elem.begin(), elem.end());
  return true;
}

bool ParseList(const ValueForm& form, uint16_t memLen, const char* text,
               std::vector<uint8_t>& out, uint32_t& count) {
  count = 0;
  std::string s(text);
  size_t start = 0;
  for (;;) {
    size_t comma = s.find(',', start);
    std::string item = s.substr(start, comma - start);
    if (!AppendValue(form, memLen, item, out)) return false;
    ++count;
    if (comma == std::string::npos) return true;
    start = comma + 1;
  }
}

// The values of one operand in memory form: numbers parsed here, values of
// other types scanned from their text forms by the type's own scanner into
// an array the type manager creates.
class Values {
 public:
  Values(ObTypeMgr& mgr, char id) : mgr_(mgr), id_(id) {}
  ~Values() {
    if (created_ != nullptr) mgr_.Delete(id_, created_, count_);
  }
  Values(const Values&) = delete;
  Values& operator=(const Values&) = delete;

  // False when the text is not a value of the type.
  bool Parse(const char* text) {
    const ValueForm form = FormOf(id_);
    if (form.kind != Kind::kNone)
      return ParseList(form, mgr_.MemLenGet(id_, 1), text, bytes_, count_);
    if (!HasTextForm(mgr_, id_)) return false;
    std::vector<std::string> items;
    std::string s(text);
    for (size_t start = 0;;) {
      const size_t end = s.find(';', start);
      items.push_back(s.substr(start, end - start));
      if (end == std::string::npos) break;
      start = end + 1;
    }
    if (!Create(static_cast<uint32_t>(items.size()))) return false;
    for (uint32_t i = 0; i < count_; ++i) {
      ObString item(items[i].c_str());
      mgr_.ScanFromObString(id_, Element(i), item, nullptr, 1);
    }
    return true;
  }

  // `count` values loaded from a stored form.
  bool Load(const std::vector<uint8_t>& stored, uint8_t format,
            uint32_t count) {
    if (!Create(count)) return false;
    return mgr_.Load(id_, created_, stored.data(), format, count) != 0;
  }

  static bool HasTextForm(ObTypeMgr& mgr, char id) {
    return mgr.ExchangeScanFromObStringFunc(id, nullptr) != nullptr &&
           mgr.ExchangePrintToObStringFunc(id, nullptr) != nullptr;
  }

  void* data() { return created_ != nullptr ? created_ : bytes_.data(); }
  uint32_t count() const { return count_; }

 private:
  bool Create(uint32_t count) {
    created_ = mgr_.Create(id_, count);
    if (created_ == nullptr) return false;
    count_ = count;
    return true;
  }
  void* Element(uint32_t i) {
    return mgr_.GetArrayElement(id_, created_, i, count_);
  }

  ObTypeMgr& mgr_;
  char id_;
  std::vector<uint8_t> bytes_;
  void* created_ = nullptr;
  uint32_t count_ = 0;
};

std::string Hex(const uint8_t* p, size_t n) {
  std::string out;
  char byte[4];
  for (size_t i = 0; i < n; ++i) {
    std::snprintf(byte, sizeof byte, i == 0 ? "%02X" : " %02X", p[i]);
    out += byte;
  }
  return out;
}

// Hex digits, blanks between bytes allowed.
bool ParseHex(const char* text, std::vector<uint8_t>& out) {
  int high = -1;
  for (const char* p = text; *p != '\0'; ++p) {
    if (*p == ' ' || *p == ':') {
      if (high >= 0) return false;
      continue;
    }
    int v;
    if (*p >= '0' && *p <= '9') {
      v = *p - '0';
    } else if (*p >= 'a' && *p <= 'f') {
      v = *p - 'a' + 10;
    } else if (*p >= 'A' && *p <= 'F') {
      v = *p - 'A' + 10;
    } else {
      return false;
    }
    if (high < 0) {
      high = v;
    } else {
      out.push_back(static_cast<uint8_t>(high << 4 | v));
      high = -1;
    }
  }
  return high < 0 && !out.empty();
}

std::string Capabilities(const ObTypeMgr& mgr, char id) {
  std::string caps;
  if (mgr.SupportsCapability(id, kObCapNull)) caps += "null ";
  if (mgr.SupportsCapability(id, kObCapCounter)) caps += "counter ";
  if (mgr.SupportsCapability(id, kObCapTimeStamp)) caps += "timestamp ";
  if (caps.empty()) return "-";
  caps.pop_back();
  return caps;
}

int Types() {
  ObTypeMgr mgr(5);
  std::printf("%-3s  %-18s  %-15s  %3s  %-5s  %-42s  %s\n", "id", "identifier",
              "name", "mem", "fixed", "format", "capabilities");
  for (int i = 0; i < kObTypeCount; ++i) {
    const char id = static_cast<char>(i);
    std::printf("%-3d  %-18s  %-15s  %3u  %-5s  %-42s  %s\n", i,
                mgr.TypeIdNameGet(id, nullptr), mgr.NameGet(id, nullptr),
                mgr.MemLenGet(id, 1), mgr.IsFixed(id) ? "yes" : "no",
                mgr.ExchangeFormat(id, nullptr), Capabilities(mgr, id).c_str());
  }
  return 0;
}

// 0, or the exit status after a message when values of the type cannot be
// given as text.
int CheckGivenAsText(ObTypeMgr& mgr, char id) {
  if (FormOf(id).kind != Kind::kNone || Values::HasTextForm(mgr, id)) return 0;
  return Fail(std::string("values of type ") + mgr.NameGet(id, nullptr) +
              " cannot be given as text yet");
}

int ParseValue(ObTypeMgr& mgr, char id, const char* text, Values& out) {
  if (out.Parse(text)) return 0;
  return Fail(std::string("malformed value '") + text + "' for type " +
              mgr.NameGet(id, nullptr));
}

std::vector<uint8_t> StoredForm(ObTypeMgr& mgr, char id, Values& values,
                                uint8_t format) {
  // Translate writes index keys (flag 0x80) as well as plain stored forms.
  std::vector<uint8_t> out(
      mgr.DiskLenGet(id, values.data(), format, values.count(), 8));
  out.resize(mgr.Translate(id, out.data(), format,
                           static_cast<uint32_t>(out.size()), values.data(),
                           kObFormatMemory, 0, values.count()));
  return out;
}

// Options of store, load and hash.
struct StoreOptions {
  uint8_t format = kObFormatLittle;
  bool formatGiven = false;
  uint32_t count = 1;
  const char* printFormat = nullptr;
};

// Parses the options from argv[first] on, of those named in `allowed`.
int ParseStoreOptions(int argc, char** argv, int first, const char* allowed,
                      StoreOptions& o) {
  for (int i = first; i < argc; ++i) {
    const std::string opt = argv[i];
    if (opt.rfind("--", 0) != 0 ||
        std::strstr(allowed, (opt + " ").c_str()) == nullptr)
      return Fail("unknown option " + opt);
    if (opt == "--key") {
      o.format |= kObFormatKey;
      continue;
    }
    if (i + 1 >= argc) return Fail("option " + opt + " needs a value");
    const char* value = argv[++i];
    uint64_t n = 0;
    if (opt == "--format") {
      if (!ParseUnsigned(value, 255, n) || (n & kObFormatMask) == 0)
        return Fail(std::string("bad format '") + value +
                    "' (a format code 1-15, optionally with flag bits)");
      o.format = static_cast<uint8_t>(n | (o.format & kObFormatKey));
      o.formatGiven = true;
    } else if (opt == "--count") {
      if (!ParseUnsigned(value, 65535, n) || n == 0)
        return Fail(std::string("bad count '") + value + "'");
      o.count = static_cast<uint32_t>(n);
    } else {
      o.printFormat = value;
    }
  }
  return 0;
}

int Store(int argc, char** argv) {
  if (argc < 2) return Fail("store needs TYPE VALUE");
  char id = 0;
  if (int rc = TypeArgument(argv[0], id)) return rc;
  StoreOptions o;
  if (int rc = ParseStoreOptions(argc, argv, 2, "--format --key ", o))
    return rc;
  if ((o.format & kObFormatMask) == kObFormatMemory)
    return Fail("format 8 is the memory form, not a stored one");
  ObTypeMgr mgr(5);
  if (int rc = CheckGivenAsText(mgr, id)) return rc;
  Values values(mgr, id);
  if (int rc = ParseValue(mgr, id, argv[1], values)) return rc;
  const std::vector<uint8_t> stored = StoredForm(mgr, id, values, o.format);
  std::printf("%s\n", Hex(stored.data(), stored.size()).c_str());
  return 0;
}

int Load(int argc, char** argv) {
  if (argc < 2) return Fail("load needs TYPE HEX");
  char id = 0;
  if (int rc = TypeArgument(argv[0], id)) return rc;
  StoreOptions o;
  if (int rc = ParseStoreOptions(argc, argv, 2,
                                 "--format --count --print-format ", o))
    return rc;
  if ((o.format & kObFormatMask) == kObFormatMemory)
    return Fail("format 8 is the memory form, not a stored one");
  ObTypeMgr mgr(5);
  if (!Values::HasTextForm(mgr, id))
    return Fail(std::string("values of type ") + mgr.NameGet(id, nullptr) +
                " have no text form yet");
  std::vector<uint8_t> stored;
  if (!ParseHex(argv[1], stored))
    return Fail(std::string("malformed hex '") + argv[1] + "'");
  // Sizes of variable records are read from the data: give them room to
  // read a corrupt length without leaving the buffer, then insist that the
  // records lie within the bytes given.
  const size_t given = stored.size();
  stored.resize(given + 65536, 0);
  const uint32_t needed =
      mgr.DiskLenGet(id, stored.data(), o.format, o.count, o.format);
  if (needed == 0 || needed > given) {
    return Fail("truncated: " + std::to_string(o.count) + " value(s) of type " +
                mgr.NameGet(id, nullptr) + " need " + std::to_string(needed) +
                " bytes, " + std::to_string(given) + " given");
  }
  Values values(mgr, id);
  if (!values.Load(stored, o.format, o.count))
    return Fail("the stored form cannot be loaded");
  ObString text;
  mgr.PrintToObString(id, text, values.data(), o.printFormat, o.count);
  std::printf("%s\n", text.StrGet());
  return 0;
}

int Hash(int argc, char** argv) {
  if (argc < 2) return Fail("hash needs TYPE VALUE");
  char id = 0;
  if (int rc = TypeArgument(argv[0], id)) return rc;
  StoreOptions o;
  if (int rc = ParseStoreOptions(argc, argv, 2, "--format --key ", o))
    return rc;
  ObTypeMgr mgr(5);
  if (int rc = CheckGivenAsText(mgr, id)) return rc;
  Values values(mgr, id);
  if (int rc = ParseValue(mgr, id, argv[1], values)) return rc;
  int32_t status = 0;
  uint32_t hash;
  if (!o.formatGiven || (o.format & kObFormatMask) == kObFormatMemory) {
    hash =
        mgr.Hash(id, 0, values.data(), values.count(), kObFormatMemory, status);
  } else {
    const std::vector<uint8_t> stored = StoredForm(mgr, id, values, o.format);
    hash = mgr.Hash(id, static_cast<uint32_t>(stored.size()), stored.data(),
                    values.count(), o.format, status);
  }
  std::printf("hash 0x%08X (%u), status %d\n", hash, hash, status);
  return status == kObNotSupported ? kUsageError : 0;
}

// "A op B": decimal operands with an optional sign, blanks anywhere
// between the three parts.
int Int64(int argc, char** argv) {
  std::string expr;
  for (int i = 0; i < argc; ++i) expr += std::string(i ? " " : "") + argv[i];
  const char* p = expr.c_str();
  auto blanks = [&p] {
    while (*p == ' ' || *p == '\t') ++p;
  };
  auto operand = [&p, &blanks](int64_t& v) {
    blanks();
    const char* start = p;
    if (*p == '+' || *p == '-') ++p;
    if (*p < '0' || *p > '9') return false;
    while (*p >= '0' && *p <= '9') ++p;
    return ParseSigned(std::string(start, p).c_str(), INT64_MIN, INT64_MAX, v);
  };
  int64_t a = 0, b = 0;
  std::string op;
  bool ok = operand(a);
  if (ok) {
    blanks();
    for (const char* o : {"<<", ">>", "+", "-", "*", "/", "%"}) {
      if (std::strncmp(p, o, std::strlen(o)) == 0) {
        op = o;
        p += op.size();
        break;
      }
    }
    ok = !op.empty() && operand(b);
    blanks();
    ok = ok && *p == '\0';
  }
  if (!ok)
    return Fail(
        "malformed expression '" + expr +
        "' (A op B: decimal 64-bit operands, op one of + - * / % << >>)");
  const ObInt64 x(a), y(b);
  const uint32_t shift = b < 0            ? UINT32_MAX
                         : b > UINT32_MAX ? UINT32_MAX
                                          : static_cast<uint32_t>(b);
  ObInt64 r;
  if (op == "+") r = x + y;
  if (op == "-") r = x - y;
  if (op == "*") r = x * y;
  if (op == "/") r = x / y;
  if (op == "%") r = x % y;
  if (op == "<<") r = x << shift;
  if (op == ">>") r = x >> shift;
  ObString text;
  r.PrintToObString(text, "%S");
  std::printf("%s\n", text.StrGet());
  return 0;
}

// Two stored operands given in hex, compared with their own lengths.
int CompareStored(ObTypeMgr& mgr, char id, const char* a, const char* b,
                  uint8_t format, uint16_t options, uint32_t count) {
  if ((format & kObFormatMask) == kObFormatMemory)
    return Fail("--hex operands are stored forms: give --format");
  std::vector<uint8_t> op[2];
  if (!ParseHex(a, op[0]) || !ParseHex(b, op[1]))
    return Fail("malformed hex operand (pairs of hex digits)");
  if (op[0].empty() || op[1].empty()) return Fail("empty hex operand");
  int32_t status = 0;
  const int32_t r = mgr.Cmp(id, static_cast<uint32_t>(op[0].size()),
                            op[0].data(), static_cast<uint32_t>(op[1].size()),
                            op[1].data(), options, count, format, status);
  std::printf("result %d (%s), status %d\n", r,
              r < 0   ? "A < B"
              : r > 0 ? "A > B"
                      : "A = B",
              status);
  return 0;
}

int Compare(int argc, char** argv) {
  if (argc < 3) return Fail("compare needs TYPE A B");
  char id = 0;
  if (int rc = TypeArgument(argv[0], id)) return rc;
  uint8_t format = kObFormatMemory;
  uint16_t options = 0;
  uint32_t count = 0;
  bool hex = false;
  for (int i = 3; i < argc; ++i) {
    std::string opt = argv[i];
    if (opt == "--hex") {
      hex = true;
      continue;
    }
    if (i + 1 >= argc) return Fail("option " + opt + " needs a value");
    const char* value = argv[++i];
    uint64_t n = 0;
    if (opt == "--format") {
      if (!ParseUnsigned(value, 255, n) || (n & kObFormatMask) == 0)
        return Fail(std::string("bad format '") + value +
                    "' (a format code 1-15, optionally with flag bits)");
      format = static_cast<uint8_t>(n);
    } else if (opt == "--options") {
      std::string hex = std::string("0x") + value;
      if (std::strncmp(value, "0x", 2) == 0 ||
          std::strncmp(value, "0X", 2) == 0)
        hex = value;
      if (!ParseUnsigned(hex.c_str(), 0xFFFF, n))
        return Fail(std::string("bad options '") + value + "' (hex, 0-FFFF)");
      options = static_cast<uint16_t>(n);
    } else if (opt == "--count") {
      if (!ParseUnsigned(value, UINT32_MAX, n))
        return Fail(std::string("bad count '") + value + "'");
      count = static_cast<uint32_t>(n);
    } else {
      return Fail("unknown option " + opt);
    }
  }
  ObTypeMgr mgr(5);
  if (hex)
    return CompareStored(mgr, id, argv[1], argv[2], format, options,
                         count == 0 ? 1 : count);
  if (int rc = CheckGivenAsText(mgr, id)) return rc;
  Values mem[2] = {Values(mgr, id), Values(mgr, id)};
  uint32_t n[2] = {0, 0};
  for (int k = 0; k < 2; ++k) {
    if (int rc = ParseValue(mgr, id, argv[1 + k], mem[k])) return rc;
    n[k] = mem[k].count();
  }
  if (count == 0) count = n[0] > n[1] ? n[0] : n[1];

  // Operands go in with their own lengths, so a shorter list shows how the
  // comparator treats an operand that ends early.
  std::vector<uint8_t> op[2];
  uint32_t len[2];
  for (int k = 0; k < 2; ++k) {
    if ((format & kObFormatMask) == kObFormatMemory) {
      const uint8_t* p = static_cast<const uint8_t*>(mem[k].data());
      op[k].assign(p, p + mgr.MemLenGet(id, 1) * n[k]);
    } else {
      op[k] = StoredForm(mgr, id, mem[k], format);
    }
    len[k] = static_cast<uint32_t>(op[k].size());
  }
  int32_t status = 0;
  const int32_t r = mgr.Cmp(id, len[0], op[0].data(), len[1], op[1].data(),
                            options, count, format, status);
  const char* order = r < 0 ? "A < B" : r > 0 ? "A > B" : "A = B";
  std::printf("result %d (%s), status %d\n", r, order, status);
  if ((format & kObFormatMask) != kObFormatMemory) {
    for (int k = 0; k < 2; ++k) {
      std::printf("%c stored:", 'A' + k);
      for (uint8_t b : op[k]) std::printf(" %02X", b);
      std::printf("\n");
    }
  }
  return 0;
}

// Options of the text commands.
struct TextOptions {
  uint8_t codeSet = 253;
  uint8_t language = 1;
  uint16_t op = 0;
  bool opGiven = false;
};

bool ParseHex16(const char* value, uint16_t& out) {
  std::string hex = value;
  if (hex.rfind("0x", 0) != 0 && hex.rfind("0X", 0) != 0) hex = "0x" + hex;
  uint64_t n = 0;
  if (!ParseUnsigned(hex.c_str(), 0xFFFF, n)) return false;
  out = static_cast<uint16_t>(n);
  return true;
}

// Parses the options from argv[first] on; the rest are positional texts.
int ParseTextOptions(int argc, char** argv, int first, TextOptions& o,
                     std::vector<const char*>& texts) {
  for (int i = first; i < argc; ++i) {
    std::string opt = argv[i];
    if (opt.rfind("--", 0) != 0) {
      texts.push_back(argv[i]);
      continue;
    }
    if (i + 1 >= argc) return Fail("option " + opt + " needs a value");
    const char* value = argv[++i];
    uint64_t n = 0;
    if (opt == "--codeset") {
      if (!ParseUnsigned(value, 255, n) ||
          !ObLanguageContext::IsKnownCodeSet(static_cast<uint8_t>(n)) ||
          n == 0 || n == 254)
        return Fail(std::string("unknown code set '") + value + "'");
      o.codeSet = static_cast<uint8_t>(n);
    } else if (opt == "--language") {
      if (!ParseUnsigned(value, 255, n) ||
          !ObLanguageContext::IsShippedLanguage(static_cast<uint8_t>(n)))
        return Fail(std::string("unknown language '") + value + "'");
      o.language = static_cast<uint8_t>(n);
    } else if (opt == "--op") {
      if (!ParseHex16(value, o.op))
        return Fail(std::string("bad operator '") + value + "' (hex, 0-FFFF)");
      o.opGiven = true;
    } else {
      return Fail("unknown option " + opt);
    }
  }
  return 0;
}

// A UTF-8 text as an ObString of the chosen code set and language.
bool FromUtf8(const char* text, const TextOptions& o, ObString& out) {
  out.SetLanguage(o.language);
  if (ObMBS2ObString(text, out, -1) < 0) return false;
  out.SetLanguage(o.language);
  if (o.codeSet != 253) out.MapToCodeSet(o.codeSet);
  return true;
}

std::string ToUtf8(uint16_t unicode) {
  char bytes[8] = {};
  int32_t n = ObWChar2MultiByte(bytes, static_cast<wchar_t>(unicode));
  return n > 0 ? std::string(bytes, static_cast<size_t>(n)) : "?";
}

int Orders(int argc, char** argv) {
  TextOptions o;
  std::vector<const char*> texts;
  if (int rc = ParseTextOptions(argc, argv, 0, o, texts)) return rc;
  if (texts.size() != 1) return Fail("orders needs one TEXT");
  ObString s;
  if (!FromUtf8(texts[0], o, s)) return Fail("TEXT is not valid UTF-8");
  ObStringIterator it(s);
  const uint32_t w = s.CharWidth();
  for (;;) {
    const char* at = it.GetPosition();
    const uint16_t order = it.GetNextOrder(1);
    if (order == 0) break;
    const uint32_t index = static_cast<uint32_t>(at - s.StrGet()) / w;
    ObString name;
    ObConvertOrderToString(order, it.GetCollationId(), name);
    std::string text = name.StrGet();
    if (!text.empty() && text.back() == '\n') text.pop_back();
    const ObChar ch(s.CharAt(index), s.GetCodeSet(), s.GetLanguage());
    std::printf("%s   0x%04X  id %-3u %s\n",
                ToUtf8(ch.MapTo(253).GetValue()).c_str(), order,
                it.GetCollationId(), text.c_str());
  }
  return 0;
}

int StrCmp(int argc, char** argv) {
  TextOptions o;
  std::vector<const char*> texts;
  if (int rc = ParseTextOptions(argc, argv, 0, o, texts)) return rc;
  if (texts.size() != 2) return Fail("strcmp needs two texts A B");
  ObString a, b;
  if (!FromUtf8(texts[0], o, a) || !FromUtf8(texts[1], o, b))
    return Fail("texts must be valid UTF-8");
  const uint16_t op = o.opGiven ? o.op : ObLanguageContext::GetDefaultCmpOp();
  const int32_t r =
      ObStrCmp(a.GetCodeSet(), a.GetLanguage(), a.StrGet(), b.GetCodeSet(),
               b.GetLanguage(), b.StrGet(), op, -1, 1, nullptr);
  std::printf("%d (%s)\n", r, r < 0 ? "A < B" : r > 0 ? "A > B" : "A = B");
  return 0;
}

int Sort(int argc, char** argv) {
  TextOptions o;
  std::vector<const char*> texts;
  if (int rc = ParseTextOptions(argc, argv, 0, o, texts)) return rc;
  if (!texts.empty()) return Fail("sort reads its lines from standard input");
  const uint16_t op = o.opGiven ? o.op : ObLanguageContext::GetDefaultCmpOp();
  struct Line {
    std::string utf8;
    ObString text;
  };
  std::vector<Line> lines;
  char buffer[8192];
  while (std::fgets(buffer, sizeof buffer, stdin) != nullptr) {
    std::string line = buffer;
    while (!line.empty() && (line.back() == '\n' || line.back() == '\r'))
      line.pop_back();
    Line l{line, ObString()};
    if (!FromUtf8(line.c_str(), o, l.text))
      return Fail("line " + std::to_string(lines.size() + 1) +
                  " is not valid UTF-8");
    lines.push_back(std::move(l));
  }
  std::stable_sort(lines.begin(), lines.end(),
                   [op](const Line& x, const Line& y) {
                     return ObStrCmp(x.text.GetCodeSet(), x.text.GetLanguage(),
                                     x.text.StrGet(), y.text.GetCodeSet(),
                                     y.text.GetLanguage(), y.text.StrGet(), op,
                                     -1, 1, nullptr) < 0;
                   });
  for (const Line& l : lines) std::printf("%s\n", l.utf8.c_str());
  return 0;
}

// ---- Date and time texts.

bool IsDateTimeType(char id) {
  return id == ObDATE_T || id == ObTIME_T || id == ObDATIME_T ||
         (id >= 22 && id <= 25) || id == 40 || id == 41;
}

// The ISO forms that the value classes use; other types keep their rows'
// defaults (null).
const char* IsoFormat(char id) {
  switch (id) {
    case ObDATE_T:
      return "%Y-%m-%d";
    case ObTIME_T:
      return "%H:%M:%S";
    case ObDATIME_T:
      return "%Y-%m-%dT%H:%M:%S";
    default:
      return nullptr;
  }
}

int Date(int argc, char** argv) {
  if (argc < 1) return Fail("date needs TEXT");
  char id = ObDATIME_T;
  const char* in = nullptr;
  const char* out = nullptr;
  for (int i = 1; i < argc; i += 2) {
    if (i + 1 >= argc) return Fail(std::string(argv[i]) + " needs a value");
    if (std::strcmp(argv[i], "--type") == 0) {
      if (int rc = TypeArgument(argv[i + 1], id)) return rc;
    } else if (std::strcmp(argv[i], "--in") == 0) {
      in = argv[i + 1];
    } else if (std::strcmp(argv[i], "--out") == 0) {
      out = argv[i + 1];
    } else {
      return Fail(std::string("unknown option '") + argv[i] + "'");
    }
  }
  ObTypeMgr mgr(5);
  if (!IsDateTimeType(id))
    return Fail(std::string("type ") + mgr.NameGet(id, nullptr) +
                " is not a date or time type");
  if (!Values::HasTextForm(mgr, id))
    return Fail(std::string("values of type ") + mgr.NameGet(id, nullptr) +
                " have no text form yet");
  if (in == nullptr) in = IsoFormat(id);
  if (out == nullptr) out = in;
  void* value = mgr.Create(id, 1);
  if (value == nullptr) return Fail("out of memory");
  ObString text(argv[0]);
  const bool complete = mgr.ScanFromObString(id, value, text, in, 1) != nullptr;
  ObString printed;
  mgr.PrintToObString(id, printed, value, out, 1);
  mgr.Delete(id, value, 1);
  std::printf("%s\n", printed.StrGet());
  if (complete) return 0;
  std::fprintf(stderr, "qstm: the text ended before the format\n");
  return 1;
}

int DayNumber(int argc, char** argv) {
  if (argc != 1) return Fail("daynumber needs YYYY-MM-DD");
  // The year may carry a sign: split at the last two '-'.
  std::string t(argv[0]);
  const size_t b = t.rfind('-');
  const size_t a = b == std::string::npos || b == 0 ? std::string::npos
                                                    : t.rfind('-', b - 1);
  // Decimal: "08" is a month, not a bad octal number.
  auto decimal = [](const std::string& p, long lo, long hi, long& v) {
    if (p.empty() || p[0] == '+' || p[0] == ' ') return false;
    char* end = nullptr;
    errno = 0;
    v = std::strtol(p.c_str(), &end, 10);
    return errno == 0 && *end == '\0' && v >= lo && v <= hi;
  };
  long y = 0, m = 0, d = 0;
  if (a == std::string::npos || a == 0 ||
      !decimal(t.substr(0, a), INT16_MIN, INT16_MAX, y) ||
      !decimal(t.substr(a + 1, b - a - 1), 1, 12, m) ||
      !decimal(t.substr(b + 1), 1, 31, d))
    return Fail(std::string("malformed date '") + argv[0] + "'");
  const ObDate date(static_cast<int16_t>(y), static_cast<int8_t>(m),
                    static_cast<int8_t>(d));
  const ObDaysOfTheWeek w = date.GetDayOfTheDate();
  std::printf("dayabs %d\nweekday %d %s\n", date.dayabs(), static_cast<int>(w),
              kObDayNames[w]);
  // The standard date counts days on the Julian calendar before 1582-10-15.
  std::printf("d_Date %d\n", static_cast<int>(d_Date(date).DayNumber()));
  if (!date.IsDate()) std::printf("not a calendar date\n");
  return 0;
}

int Version() {
  const char *info = nullptr, *date = nullptr, *name = nullptr,
             *compiler = nullptr;
  uint32_t compilerVersion = 0;
  GetObTypeMgrInfo(&compiler, &compilerVersion, &info, &date, &name);
  std::printf("%s\nmodule %s, built %s, compiler %u (%s)\n", info, name, date,
              compilerVersion, compiler);
  return 0;
}

// Commands that take arguments after their name.
struct Command {
  const char* name;
  int (*run)(int argc, char** argv);
};
constexpr Command kCommands[] = {
    {"compare", Compare},     {"store", Store}, {"load", Load},
    {"hash", Hash},           {"int64", Int64}, {"orders", Orders},
    {"strcmp", StrCmp},       {"sort", Sort},   {"date", Date},
    {"daynumber", DayNumber},
};

const Command* FindCommand(const char* name) {
  for (const Command& c : kCommands) {
    if (std::strcmp(c.name, name) == 0) return &c;
  }
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  ___ObTypemgrContext(1);
  int rc;
  if (argc < 2) {
    std::fputs(kUsage, stderr);
    rc = kUsageError;
  } else if (std::strcmp(argv[1], "types") == 0 && argc == 2) {
    rc = Types();
  } else if (const Command* c = FindCommand(argv[1])) {
    rc = c->run(argc - 2, argv + 2);
  } else if (std::strcmp(argv[1], "version") == 0 && argc == 2) {
    rc = Version();
  } else if (std::strcmp(argv[1], "--help") == 0 ||
             std::strcmp(argv[1], "help") == 0) {
    std::fputs(kUsage, stdout);
    rc = 0;
  } else {
    rc = Fail(std::string("unknown command '") + argv[1] +
              "' (try 'qstm help')");
  }
  ___ObTypemgrContext(0);
  return rc;
}
