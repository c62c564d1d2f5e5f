#!/usr/bin/env python3
"""Builds the collation, conversion and case tables of the i18n library.

Inputs: UnicodeData.txt and SpecialCasing.txt (--ucd, default
/usr/share/unicode), tailoring.txt and orders.lock beside this script, and the
standard library's cp1252 and iso8859_2 codecs. Outputs:
src/obi18n_tables.gen.cpp (--out) and orders.lock.

Index keys store collation orders, so orders must never move under existing
data: every lock line is authoritative, new code points are derived, new
ranked symbols are appended, and --relock (a full rebuild, bumping the table
version) is the only way to renumber. Output depends on the inputs alone.
"""

import argparse
import codecs
import hashlib
import os
import re
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
TAILORING = os.path.join(HERE, "tailoring.txt")
LOCK = os.path.join(HERE, "orders.lock")
DEFAULT_OUT = os.path.join(HERE, os.pardir, "src", "obi18n_tables.gen.cpp")
DEFAULT_UCD = "/usr/share/unicode"

# Collation order classes.
RANKED_FIRST, DIGIT_FIRST = 220, 16128
LETTER_FIRST, HAN_FIRST = 0x4000, 0x8000
MAX_ORDERS = 2  # key sizing allows four bytes per character

# Accent kinds of combining marks.
MARK_KINDS = {
    0x0327: 1, 0x0301: 2, 0x0300: 3, 0x0302: 4, 0x0303: 5, 0x0308: 6,
    0x030A: 7, 0x030C: 9, 0x0304: 10, 0x0306: 11, 0x0307: 12, 0x0328: 13,
    0x030B: 14, 0x0323: 18, 0x0309: 19, 0x031B: 20, 0x0326: 21, 0x0313: 26,
    0x0314: 27, 0x0342: 28, 0x0345: 29,
}
# Accent kinds of "LATIN ... LETTER X WITH <feature>" names; others get 30.
NAME_KINDS = {
    "CEDILLA": 1, "ACUTE": 2, "GRAVE": 3, "CIRCUMFLEX": 4, "TILDE": 5,
    "DIAERESIS": 6, "RING ABOVE": 7, "STROKE": 8, "CARON": 9, "MACRON": 10,
    "BREVE": 11, "DOT ABOVE": 12, "OGONEK": 13, "DOUBLE ACUTE": 14,
    "DOT BELOW": 18, "HOOK ABOVE": 19, "HORN": 20, "COMMA BELOW": 21,
    "HOOK": 22, "RETROFLEX HOOK": 31,
}
KIND_LIGATURE, KIND_SUPER, KIND_COMPAT, KIND_OTHER_WITH = 15, 16, 17, 30
NAME_RULE = re.compile(r"LATIN (?:CAPITAL|SMALL) LETTER ([A-Z]) WITH (.+)")
# Blocks whose combining marks rank as symbols.
RANKED_MARK_BLOCKS = ((0x0300, 0x036F), (0x0483, 0x0489), (0x1AB0, 0x1AFF),
                      (0x1DC0, 0x1DFF), (0x20D0, 0x20FF), (0xFE20, 0xFE2F))
CODE_PAGES = ((1, "cp1252"), (2, "iso8859_2"))


class GenError(Exception):
    pass


# --- Orders ------------------------------------------------------------------

def letter_order(case, kind, n, ext):
    if not (0 <= kind < 32 and 0 <= n < 32 and 0 <= ext < 4):
        raise GenError("letter out of range: kind %d n %d ext %d"
                       % (kind, n, ext))
    return LETTER_FIRST | case << 12 | kind << 7 | n << 2 | ext


def is_letter(order):
    return LETTER_FIRST <= order < HAN_FIRST


def is_digit(order):
    return DIGIT_FIRST <= order < LETTER_FIRST


def kind_of(order):
    return order >> 7 & 31


def with_kind(order, kind):
    return order & ~(31 << 7) | kind << 7


class Entry:
    """Orders (one or two) and own collation identifier (0 = none)."""
    __slots__ = ("orders", "ident")

    def __init__(self, orders, ident=0):
        self.orders = tuple(orders)
        self.ident = ident

    def key(self):
        return (self.orders, self.ident)

    def __eq__(self, other):
        return isinstance(other, Entry) and self.key() == other.key()

    def __hash__(self):
        return hash(self.key())


# --- Unicode data ------------------------------------------------------------

class Char:
    __slots__ = ("cp", "name", "gc", "ccc", "tag", "decomp", "decimal",
                 "upper", "lower")


def read_unicode_data(path):
    chars = {}
    first = None
    with open(path, encoding="utf-8") as f:
        for line in f:
            fields = line.rstrip("\n").split(";")
            if len(fields) < 15:
                continue
            cp = int(fields[0], 16)
            if fields[1].endswith(", First>"):
                first = cp
                continue
            start = first if fields[1].endswith(", Last>") else cp
            first = None
            for c in range(start, min(cp, 0xFFFF) + 1):
                chars[c] = make_char(c, fields)
    return chars


def make_char(cp, fields):
    c = Char()
    c.cp = cp
    c.name = fields[1]
    c.gc = fields[2]
    c.ccc = int(fields[3])
    dec = fields[5].split()
    c.tag = None
    if dec and dec[0].startswith("<"):
        c.tag = dec.pop(0)[1:-1]
    c.decomp = [int(x, 16) for x in dec]
    c.decimal = int(fields[6]) if fields[6] else None
    c.upper = int(fields[12], 16) if fields[12] else 0
    c.lower = int(fields[13], 16) if fields[13] else 0
    return c


def read_special_casing(path):
    """Unconditional upper-case mappings to exactly two BMP characters."""
    version = None
    two = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            m = re.match(r"#\s*SpecialCasing-(\d+\.\d+\.\d+)\.txt", line)
            if m and version is None:
                version = m.group(1)
            data = line.split("#", 1)[0].strip()
            if not data:
                continue
            fields = [x.strip() for x in data.split(";")]
            if len(fields) > 4 and fields[4]:
                continue  # conditional (Final_Sigma, tr, az, lt, ...)
            cp = int(fields[0], 16)
            upper = [int(x, 16) for x in fields[3].split()]
            if cp <= 0xFFFF and len(upper) == 2 and max(upper) <= 0xFFFF:
                two[cp] = tuple(upper)
    return version or "unknown", two


class Ucd:
    def __init__(self, directory):
        self.chars = read_unicode_data(
            os.path.join(directory, "UnicodeData.txt"))
        self.version, self.special_upper = read_special_casing(
            os.path.join(directory, "SpecialCasing.txt"))
        self._nfkd = {}

    def get(self, cp):
        return self.chars.get(cp)

    def case_of(self, cp):
        c = self.chars.get(cp)
        return 0 if c is not None and c.gc in ("Lu", "Lt") else 1

    def decompose(self, cp, compat):
        c = self.chars.get(cp)
        if c is None or not c.decomp or (c.tag and not compat):
            return [cp]
        out = []
        for d in c.decomp:
            out.extend(self.decompose(d, compat))
        return out

    def normalized(self, cp, compat):
        seq = self.decompose(cp, compat)
        # Canonical ordering: stable sort of each run of non-starters.
        i = 0
        while i < len(seq):
            if self.ccc(seq[i]) == 0:
                i += 1
                continue
            j = i
            while j < len(seq) and self.ccc(seq[j]) != 0:
                j += 1
            seq[i:j] = sorted(seq[i:j], key=self.ccc)
            i = j
        return tuple(seq)

    def nfkd(self, cp):
        if cp not in self._nfkd:
            self._nfkd[cp] = self.normalized(cp, True)
        return self._nfkd[cp]

    def ccc(self, cp):
        c = self.chars.get(cp)
        return c.ccc if c else 0


# --- Tailoring ---------------------------------------------------------------

def strip_comment(toks):
    """Tokens before the first '#' that is not a letter number (#n)."""
    for i, tok in enumerate(toks):
        if tok.startswith("#") and not re.fullmatch(r"#\d+", tok):
            return toks[:i]
    return toks


def parse_cp(tok):
    if not re.fullmatch(r"U\+[0-9A-Fa-f]{4}", tok):
        raise GenError("bad code point %r" % tok)
    return int(tok[2:], 16)


def parse_range(tok):
    if ".." in tok:
        a, b = tok.split("..")
        return parse_cp(a), parse_cp(b)
    cp = parse_cp(tok)
    return cp, cp


class Tailoring:
    """Root entries, languages and language variants from tailoring.txt."""

    def __init__(self, path, ucd):
        self.ucd = ucd
        self.root = {}          # cp -> Entry
        self.languages = []     # (code, tag, ident, variants)
        self.variant_lines = []  # (line number, tokens), resolved later
        self.line = 0
        deferred = []
        with open(path, encoding="utf-8") as f:
            for number, line in enumerate(f, 1):
                toks = strip_comment(line.split())
                if not toks:
                    continue
                try:
                    self.line = number
                    self.directive(toks, deferred)
                except (GenError, ValueError, IndexError, KeyError) as e:
                    raise GenError("tailoring.txt:%d: %s" % (number, e))
        for order, gc in deferred:
            for cp in sorted(ucd.chars):
                if ucd.chars[cp].gc == gc and cp not in self.root:
                    self.root[cp] = Entry((order,))

    def define(self, cp, entry):
        if cp in self.root:
            raise GenError("U+%04X defined twice" % cp)
        if cp not in self.ucd.chars:
            raise GenError("U+%04X is not assigned" % cp)
        self.root[cp] = entry

    def items(self, toks):
        for tok in toks:
            a, b = parse_range(tok)
            for cp in range(a, b + 1):
                yield cp

    def base(self, tok, table):
        """(letter number, extension, identifier) named by BASE."""
        if re.fullmatch(r"[A-Z]", tok):
            return ord(tok) - 62, 0, 0
        if re.fullmatch(r"#\d+", tok):
            return int(tok[1:]), 0, 0
        entry = table[parse_cp(tok)]
        if len(entry.orders) != 1 or not is_letter(entry.orders[0]):
            raise GenError("base %s is not a single letter" % tok)
        o = entry.orders[0]
        return o >> 2 & 31, o & 3, entry.ident

    def letter(self, cp, toks, table):
        """BASE KIND EXT [+ CP...] as an Entry for cp."""
        n, ext, ident = self.base(toks[0], table)
        orders = [letter_order(self.ucd.case_of(cp), int(toks[1]), n,
                               ext | int(toks[2]))]
        rest = toks[3:]
        if rest:
            if rest[0] != "+":
                raise GenError("expected '+' before %s" % rest[0])
            for tok in rest[1:]:
                orders.extend(table[parse_cp(tok)].orders)
        return Entry(orders, ident)

    def directive(self, toks, deferred):
        op, args = toks[0], toks[1:]
        if op in ("blank", "symbol"):
            order = int(args[0])
            for cp in self.items(args[1:]):
                self.define(cp, Entry((order,)))
                order += 1
        elif op == "blankset":
            order = int(args[0])
            for tok in args[1:]:
                if tok.startswith("gc:"):
                    deferred.append((order, tok[3:]))
                else:
                    for cp in self.items([tok]):
                        self.define(cp, Entry((order,)))
        elif op == "han":
            order = int(args[0])
            first, last = parse_range(args[1])
            nodecomp = args[2:] == ["nodecomp"]
            for cp in range(first, last + 1):
                c = self.ucd.get(cp)
                if c and c.gc[0] == "L" and not (nodecomp and c.decomp):
                    self.define(cp, Entry((order + cp - first,)))
        elif op == "alphabet":
            ident, n, ext = int(args[0]), int(args[1]), int(args[2])
            for cp in self.items(args[3:]):
                for c in (cp, self.ucd.get(cp).lower):
                    order = letter_order(self.ucd.case_of(c), 0, n, ext)
                    self.define(c, Entry((order,), ident))
                n += 1
        elif op == "letter":
            cp = parse_cp(args[0])
            self.define(cp, self.letter(cp, args[1:], self.root))
        elif op == "language":
            code, tag, ident = int(args[0]), args[1], int(args[2])
            if (code != len(self.languages)
                    or not re.fullmatch(r"[a-z0-9-]+", tag)):
                raise GenError("languages must be numbered 0, 1, ... "
                               "and tagged [a-z0-9-]")
            self.languages.append((code, tag, ident, args[3:] == ["variants"]))
        elif op in ("variant", "contract"):
            self.variant_lines.append((self.line, toks))
        else:
            raise GenError("unknown directive %r" % op)

    def variants(self, table):
        """cp -> {language: (orders, [(follower cp, orders)])}."""
        langs = {code: variants for code, _, _, variants in self.languages}
        result = {}
        for number, toks in self.variant_lines:
            try:
                lang = int(toks[1])
                if not langs.get(lang):
                    raise GenError("language %d takes no variants" % lang)
                cp = parse_cp(toks[2])
                per_cp = result.setdefault(cp, {})
                if toks[0] == "variant":
                    if lang in per_cp and per_cp[lang][0] != table[cp].orders:
                        raise GenError("second variant of U+%04X" % cp)
                    entry = self.letter(cp, toks[3:], table)
                    old = per_cp.get(lang, (None, []))
                    per_cp[lang] = (entry.orders, old[1])
                else:
                    if len(toks) != 7:
                        raise GenError("contract takes LANG LEAD FOLLOWER "
                                       "BASE KIND EXT")
                    follower = parse_cp(toks[3])
                    entry = self.letter(cp, toks[4:7], table)
                    per_cp.setdefault(lang, (table[cp].orders, []))[1].append(
                        (follower, entry.orders))
            except (GenError, ValueError, IndexError, KeyError) as e:
                raise GenError("tailoring.txt:%d: %s" % (number, e))
        for per_cp in result.values():
            for orders, _ in per_cp.values():
                if len(orders) > MAX_ORDERS:
                    raise GenError("variant with more than two orders")
        return result


# --- Derivation of the root table --------------------------------------------

def is_ranked_candidate(c):
    if c.decomp and not c.tag and len(c.decomp) == 1:
        return False  # canonical singletons take their target's entry
    if c.gc[0] in "PS":
        return True
    if c.gc in ("Mn", "Mc", "Me"):
        return any(a <= c.cp <= b for a, b in RANKED_MARK_BLOCKS)
    return c.gc == "Lm" and 0x02B0 <= c.cp <= 0x02FF and not c.decomp


class Derivation:
    """The root table: tailoring, lock (seed), ranked symbols, derived rest."""

    def __init__(self, ucd, tailoring, seed):
        self.ucd = ucd
        self.fixed = dict(tailoring.root)
        for cp, c in ucd.chars.items():
            if c.gc == "Nd" and cp not in self.fixed:
                self.fixed[cp] = Entry((DIGIT_FIRST + 10 * c.decimal,))
        self.seed = seed or {}
        self.table = dict(self.fixed)
        self.table.update(self.seed)
        self.rank_symbols(tailoring)
        self.memo = {}
        self.left_out = {}
        self.derive_rest()

    def rank_symbols(self, tailoring):
        highest = RANKED_FIRST - 1
        for e in self.seed.values():
            for o in e.orders:
                if RANKED_FIRST <= o < DIGIT_FIRST:
                    highest = max(highest, o)
        self.ranked = 0
        for cp in sorted(self.ucd.chars):
            if cp in tailoring.root or cp in self.seed:
                continue
            if is_ranked_candidate(self.ucd.chars[cp]):
                highest += 1
                self.table[cp] = Entry((highest,))
                self.ranked += 1
        if highest >= DIGIT_FIRST:
            raise GenError("ranked symbols overflow into the digits")
        self.highest_symbol = highest

    def get(self, cp):
        """Entry before the limits, or None when no rule gives one."""
        if cp in self.table:
            return self.table[cp]
        if cp not in self.memo:
            self.memo[cp] = None  # guards the case-partner cycle
            self.memo[cp] = self.rules(cp)
        return self.memo[cp]

    def rules(self, cp):
        c = self.ucd.get(cp)
        if c is None or c.gc in ("Cs", "Co", "Cn"):
            return None
        if c.decomp and not c.tag:
            if len(c.decomp) == 1:
                return self.get(c.decomp[0])
            return self.canonical(cp)
        if c.decomp and c.gc[0] in "LN":
            return self.compatibility(c)
        if c.gc[0] != "L":
            return None
        m = NAME_RULE.fullmatch(c.name)
        if m:
            kind = NAME_KINDS.get(m.group(2), KIND_OTHER_WITH)
            return Entry((letter_order(self.ucd.case_of(cp), kind,
                                       ord(m.group(1)) - 62, 0),))
        partner = c.lower or c.upper
        p = self.get(partner) if partner else None
        if p and len(p.orders) == 1 and is_letter(p.orders[0]):
            return Entry((p.orders[0] ^ 1 << 12,), p.ident)
        return None

    def canonical(self, cp):
        seq = self.ucd.normalized(cp, False)
        base = self.get(seq[0])
        if base is None:
            return None
        orders = list(base.orders)
        for mark in seq[1:]:
            kind = MARK_KINDS.get(mark)
            last = orders[-1]
            if kind and is_letter(last) and kind_of(last) == 0:
                orders[-1] = with_kind(last, kind)
                continue
            m = self.get(mark)
            if m is None:
                return None
            orders.extend(m.orders)
        return Entry(orders, base.ident)

    def compatibility(self, c):
        parts = [self.get(p) for p in c.decomp if not (
            c.tag == "fraction" and p == 0x2044)]
        if any(p is None for p in parts):
            return None
        if c.tag == "fraction":
            if not all(len(p.orders) == 1 and is_digit(p.orders[0])
                       for p in parts):
                return None
            orders = [p.orders[0] for p in parts]
            orders[0] |= 1
            return Entry(orders)
        orders = [o for p in parts for o in p.orders]
        first = orders[0]
        if len(parts) == 1:
            if is_letter(first) and kind_of(first) == 0:
                kind = KIND_SUPER if c.tag in ("super", "sub") else KIND_COMPAT
                orders[0] = with_kind(first, kind)
            elif is_digit(first):
                orders = [first | 1]
        elif is_letter(first) and kind_of(first) == 0:
            orders[0] = with_kind(first, KIND_LIGATURE)
        elif is_digit(first):
            orders[0] = first | 1
        return Entry(orders, parts[0].ident)

    def derive_rest(self):
        by_key = {}
        for cp in sorted(self.table):
            e = self.table[cp]
            if is_letter(e.orders[0]):
                by_key.setdefault(e.key(), []).append(cp)
        for cp in sorted(self.ucd.chars):
            if cp in self.table or cp == 0:
                continue
            e = self.get(cp)
            if e is None:
                continue
            if len(e.orders) > MAX_ORDERS:
                self.left_out[cp] = "more than two orders"
                continue
            if cp >= 0x200 and is_letter(e.orders[0]):
                clash = [o for o in by_key.get(e.key(), [])
                         if self.ucd.nfkd(o) != self.ucd.nfkd(cp)]
                if clash:
                    self.left_out[cp] = "same orders as U+%04X" % clash[0]
                    continue
            if is_letter(e.orders[0]):
                by_key.setdefault(e.key(), []).append(cp)
            self.table[cp] = e
        self.table.pop(0, None)


# --- Lock file ---------------------------------------------------------------

def read_lock(path):
    """(version, tailoring sha, {cp: Entry}) or None without a lock."""
    if not os.path.exists(path):
        return None
    version, tail_sha, table = 0, "", {}
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            toks = line.split("#", 1)[0].split()
            if not toks:
                continue
            try:
                if toks[0] == "version":
                    version = int(toks[1])
                elif toks[0] == "tailoring":
                    tail_sha = toks[1]
                elif toks[0] == "unicode":
                    pass
                else:
                    ident = int(toks[2]) if len(toks) > 2 else 0
                    if ".." in toks[0]:
                        a, b = (int(x, 16) for x in toks[0].split(".."))
                        if not toks[1].endswith("+"):
                            raise GenError("run without '+'")
                        o = int(toks[1][:-1], 16)
                        for cp in range(a, b + 1):
                            table[cp] = Entry((o + cp - a,), ident)
                    else:
                        orders = [int(x, 16) for x in toks[1].split(",")]
                        table[int(toks[0], 16)] = Entry(orders, ident)
            except (GenError, ValueError, IndexError) as e:
                raise GenError("%s:%d: %s"
                               % (os.path.basename(path), number, e))
    return version, tail_sha, table


def format_lock(version, tail_sha, unicode_version, table):
    out = [
        "# Collation orders of every known BMP code point: cp orders [id].",
        "# Written by gen_i18n_tables.py. Index keys store these orders,",
        "# so the lines are authoritative; --relock rebuilds them and bumps",
        "# the version. A run A..B O+ gives A the order O, the next code",
        "# point O+1, and so on.",
        "version %d" % version,
        "tailoring %s" % tail_sha,
        "unicode %s" % unicode_version,
    ]
    cps = sorted(table)
    i = 0
    while i < len(cps):
        cp, e = cps[i], table[cps[i]]
        j = i
        if len(e.orders) == 1:
            while (j + 1 < len(cps) and cps[j + 1] == cps[j] + 1
                   and table[cps[j + 1]].ident == e.ident
                   and table[cps[j + 1]].orders == (e.orders[0] + j + 1 - i,)):
                j += 1
        suffix = " %d" % e.ident if e.ident else ""
        if j > i:
            out.append("%04X..%04X %04X+%s"
                       % (cp, cps[j], e.orders[0], suffix))
        else:
            orders = ",".join("%04X" % o for o in e.orders)
            out.append("%04X %s%s" % (cp, orders, suffix))
        i = j + 1
    return "\n".join(out) + "\n"


# --- Code pages and case mappings --------------------------------------------

def code_page(name):
    """Byte -> Unicode; an undefined byte stands for the C1 control of its
    value, so that conversions round-trip."""
    decoder = codecs.getdecoder(name)
    table = []
    for b in range(256):
        try:
            table.append(ord(decoder(bytes([b]))[0]))
        except UnicodeDecodeError:
            table.append(b)
    return table


def case_props(ucd, cp, encode):
    """(lower, upper, encoded second upper-case character or None) of cp,
    offering only mappings whose targets `encode` knows."""
    c = ucd.get(cp)
    if c is None:
        return 0, 0, None
    lower = c.lower if encode(c.lower) is not None else 0
    upper = c.upper if encode(c.upper) is not None else 0
    extra = None
    two = ucd.special_upper.get(cp)
    if two and encode(two[0]) is not None and encode(two[1]) is not None:
        upper, extra = two[0], encode(two[1])
    return lower, upper, extra


# --- Table building ----------------------------------------------------------

class Pools:
    """Variant, contraction, language list and expansion records, shared by
    all tables; each record names an entry of its own table."""

    def __init__(self):
        self.variants = []       # (language list index, count, entry index)
        self.contractions = []   # (follower, entry index)
        self.language_lists = []
        self.expansions = []     # tuples of orders
        self._expansion_index = {}
        self._list_index = {}

    def expansion(self, orders):
        if not orders:
            return 0
        if orders not in self._expansion_index:
            self._expansion_index[orders] = len(self.expansions)
            self.expansions.append(orders)
        return 1 + self._expansion_index[orders]

    def language_list(self, langs):
        langs = tuple(langs)
        if langs not in self._list_index:
            n = len(self.language_lists)
            for i in range(n - len(langs) + 1):
                if tuple(self.language_lists[i:i + len(langs)]) == langs:
                    self._list_index[langs] = i
                    break
            else:
                self._list_index[langs] = n
                self.language_lists.extend(langs)
        return self._list_index[langs]


class TableBuilder:
    def __init__(self, pools, encode):
        self.pools = pools
        self.encode = encode    # Unicode -> table code, or None
        self.entries = []
        self._index = {}

    def add(self, orders, ident=0, variants=(), contractions=()):
        """Index of the entry; variants: [(langs, orders, contractions)]."""
        var_records = []
        for langs, v_orders, v_contr in variants:
            var_records.append((self.pools.language_list(langs), len(langs),
                                self.add(v_orders, 0, (), v_contr)))
        con_records = []
        for follower, c_orders in contractions:
            code = self.encode(follower)
            if code is not None:
                con_records.append((code, self.add(c_orders)))
        first_v = self._append(self.pools.variants, var_records)
        first_c = self._append(self.pools.contractions, con_records)
        record = (orders[0], ident, len(var_records), len(con_records),
                  first_v, first_c, self.pools.expansion(tuple(orders[1:])))
        if max(record[2:4]) > 0xFF or max(record[4:]) > 0xFFFF:
            raise GenError("entry fields overflow: %r" % (record,))
        if record not in self._index:
            if len(self.entries) >= 0xFFFF:
                raise GenError("too many entries for 16-bit indices")
            self._index[record] = len(self.entries)
            self.entries.append(record)
        return self._index[record]

    @staticmethod
    def _append(pool, records):
        if not records:
            return 0
        for i in range(len(pool) - len(records) + 1):
            if pool[i:i + len(records)] == records:
                return i
        pool.extend(records)
        return len(pool) - len(records)


def variant_groups(per_lang):
    """{lang: (orders, contractions)} -> [(langs, orders, contractions)]."""
    groups = []
    for lang in sorted(per_lang):
        orders, contractions = per_lang[lang]
        for g in groups:
            if g[1] == orders and g[2] == contractions:
                g[0].append(lang)
                break
        else:
            groups.append(([lang], orders, list(contractions)))
    return groups


class Tables:
    def __init__(self, ucd, tailoring, table, variants, version):
        self.version = version
        self.languages = tailoring.languages
        self.pools = Pools()
        self.pages = {code: code_page(name) for code, name in CODE_PAGES}
        self.encoders = {code: {u: b for b, u in enumerate(p)}
                         for code, p in self.pages.items()}

        # Code set 253.
        b253 = TableBuilder(self.pools, lambda u: u)
        self.orders253 = [0] * 65536
        special = {}
        for cp in sorted(table):
            e = table[cp]
            self.orders253[cp] = e.orders[0]
            if len(e.orders) > 1 or e.ident or cp in variants:
                groups = variant_groups(variants.get(cp, {}))
                special[cp] = 1 + b253.add(e.orders, e.ident, groups)
        self.entries253 = b253.entries
        self.special_pages = []
        self.special_page_of = [0] * 256
        for hi in range(256):
            page = [special.get(hi << 8 | lo, 0) for lo in range(256)]
            if any(page):
                self.special_pages.append(page)
                self.special_page_of[hi] = len(self.special_pages)

        # Code set 1 comes from 253, followers re-encoded.
        enc1 = self.encoders[1]
        b1 = TableBuilder(self.pools, enc1.get)
        self.orders1, self.special1 = [], []
        for b in range(256):
            u = self.pages[1][b]
            e = table[u] if u else Entry((0,))
            self.orders1.append(e.orders[0])
            s = 0
            if len(e.orders) > 1 or e.ident or u in variants:
                s = 1 + b1.add(e.orders, e.ident,
                               variant_groups(variants.get(u, {})))
            self.special1.append(s)
        self.entries1 = b1.entries

        # Case mappings: 253 two-stage, 8-bit code sets per byte.
        self.upper_lists = []
        props = {}
        for cp in sorted(ucd.chars):
            p = case_props(ucd, cp, lambda u: u)
            if p != (0, 0, None):
                props[cp] = p
        self.props253 = sorted(set(props.values()), key=self.props_key)
        index_of = {p: i + 1 for i, p in enumerate(self.props253)}
        self.props_pages, self.props_page_of = [], [0] * 256
        for hi in range(256):
            page = [index_of.get(props.get(hi << 8 | lo), 0)
                    for lo in range(256)]
            if any(page):
                self.props_pages.append(page)
                self.props_page_of[hi] = len(self.props_pages)
        self.props8 = {}
        for code, page in self.pages.items():
            enc = self.encoders[code]
            self.props8[code] = [case_props(ucd, page[b], enc.get)
                                 for b in range(256)]
        for p in self.props253 + [p for v in self.props8.values() for p in v]:
            if p[2] is not None and p[2] not in self.upper_lists:
                self.upper_lists.append(p[2])
        self.upper_lists.sort()

        # Unicode -> 8-bit, two-stage.
        self.from_pages = {}
        for code, enc in self.encoders.items():
            pages, page_of = [], [0] * 256
            for hi in range(256):
                page = [enc.get(hi << 8 | lo, 0) for lo in range(256)]
                if any(page) or hi == 0:
                    pages.append(page)
                    page_of[hi] = len(pages)
            self.from_pages[code] = (page_of, pages)

    @staticmethod
    def props_key(p):
        return (p[0], p[1], -1 if p[2] is None else p[2])


# --- Self-checks -------------------------------------------------------------

def self_check(ucd, derivation, tables, variants):
    table = derivation.table
    problems = []

    def check(ok, message):
        if not ok:
            problems.append(message)

    for cp in range(1, 0x200):
        check(cp in table, "U+%04X below U+0200 is unknown" % cp)
    for cp, e in table.items():
        check(0 < len(e.orders) <= MAX_ORDERS and e.orders[0] != 0,
              "U+%04X has bad orders %s" % (cp, e.orders))
        if e.ident == 0 and is_letter(e.orders[0]):
            for o in e.orders:
                n, ext = o >> 2 & 31, o & 3
                reserved = n >= 29 or (ext == 1 and n >= 3)
                check(not is_letter(o) or not reserved,
                      "root letter U+%04X uses a tailoring slot" % cp)
    first = {}
    for b in range(128, 256):
        o = tables.orders1[b]
        if is_letter(o):
            check(o not in first, "code set 1 bytes %02X and %02X share "
                  "order %04X" % (first.get(o, 0), b, o))
            first[o] = b
    for text, order in (("*", 159), ("?", 122), ("\\", 160),
                        ("\u00e1", 0x510C)):
        check(table[ord(text)].orders == (order,), "order of %r" % text)
    for cp in range(0x21, 0x100):
        c = ucd.get(cp)
        if c.gc[0] in "PS":
            check(112 <= table[cp].orders[0] <= 219,
                  "U+%04X missing from the named symbols" % cp)
    check(all(len(x) <= 1 for x in tables.pools.expansions),
          "expansion longer than one order")
    for per_cp in variants.values():
        for orders, contractions in per_cp.values():
            check(len(orders) <= MAX_ORDERS, "variant too long")
    if problems:
        raise GenError("self-check failed:\n  " + "\n  ".join(problems[:40]))


# --- C++ output --------------------------------------------------------------

def c_array(out, ctype, name, values, fmt, per_line, label=None):
    """A constexpr array, per_line values a line, optionally labelled with
    the code of the line's first value."""
    out.append("constexpr %s %s[%d] = {" % (ctype, name, len(values)))
    for i in range(0, len(values), per_line):
        chunk = ", ".join(fmt(v) for v in values[i:i + per_line])
        prefix = "/* %04X */ " % label(i) if label else ""
        out.append("    %s%s," % (prefix, chunk))
    out.append("};")


def c_records(out, ctype, name, rows, fmt, empty):
    """A constexpr array of records, one a line; `empty` pads an empty one
    (C++ has no zero-length arrays; the record counts stay exact)."""
    out.append("constexpr %s %s[%d] = {" % (ctype, name, max(1, len(rows))))
    for row in rows or [empty]:
        out.append("    %s," % fmt(row))
    out.append("};")


def hex4(v):
    return "0x%04X" % v


def emit_cpp(ucd, tables, hashes):
    t, p = tables, tables.pools
    for pool in (p.variants, p.contractions, p.language_lists, p.expansions):
        if len(pool) > 0xFFFF:
            raise GenError("pool too large for 16-bit indices")
    out = ["// Generated by platform/i18n/tools/gen_i18n_tables.py; "
           "DO NOT EDIT.",
           "// Unicode %s, kTableVersion %d. SHA-256 of the inputs:"
           % (ucd.version, t.version)]
    for name, digest in hashes:
        out += ["//   %s" % name, "//     %s" % digest]
    out += ["// clang-format off",
            '#include "obi18n_tables.h"',
            "",
            "namespace obi18n {",
            "",
            "constexpr uint32_t kTableVersion = %d;" % t.version]

    c_records(out, "ObLanguage", "kLanguages", t.languages,
              lambda r: '{%d, "%s", %d, %s, true}'
              % (r[0], r[1], r[2], "true" if r[3] else "false"), None)
    out.append("constexpr uint32_t kLanguageCount = %d;" % len(t.languages))

    # Pools shared by the collation tables.
    exp_orders, exp_views = [], []
    for x in p.expansions:
        exp_views.append((len(exp_orders), len(x)))
        exp_orders.extend(x)
    c_array(out, "uint16_t", "kExpansionOrders", exp_orders or [0], hex4, 12)
    c_records(out, "ObWCharList", "kExpansions", exp_views,
              lambda r: "ObWCharList(kExpansionOrders + %d, %d)" % r, (0, 0))
    c_array(out, "uint8_t", "kLanguageLists", p.language_lists or [0], str, 16)
    c_records(out, "ObCollVariant", "kVariants", p.variants,
              lambda r: "{%d, %d, %d}" % r, (0, 0, 0))
    c_records(out, "ObCollContraction", "kContractions", p.contractions,
              lambda r: "{0x%04X, %d}" % r, (0, 0))

    def entry(r):
        return "{0x%04X, %d, %d, %d, %d, %d, %d}" % r

    def table(name, size, suffix, page, special_n, entries_n):
        out.append("constexpr ObCharTableData %s = {" % name)
        out.append("    kOrders%s, %d, %s, kSpecial%s, %d, kEntries%s, %d,"
                   % (suffix, size, page, suffix, special_n, suffix,
                      entries_n))
        out.append("    kVariants, %d, kContractions, %d, kLanguageLists, %d,"
                   % (len(p.variants), len(p.contractions),
                      len(p.language_lists)))
        out.append("    kExpansions, %d};" % len(p.expansions))

    # Code set 253.
    out.append("")
    c_array(out, "uint16_t", "kOrders253", t.orders253, hex4, 16, lambda i: i)
    c_array(out, "uint8_t", "kSpecialPage253", t.special_page_of, str, 32)
    flat = [v for page in t.special_pages for v in page]
    his = [hi for hi in range(256) if t.special_page_of[hi]]
    c_array(out, "uint16_t", "kSpecial253", flat, str, 16,
            lambda i: his[i // 256] << 8 | i % 256)
    c_records(out, "ObCollEntry", "kEntries253", t.entries253, entry, None)
    table("kTable253", 65536, "253", "kSpecialPage253", len(flat),
          len(t.entries253))

    # Code set 1.
    out.append("")
    c_array(out, "uint16_t", "kOrders1", t.orders1, hex4, 16, lambda i: i)
    c_array(out, "uint16_t", "kSpecial1", t.special1, str, 16, lambda i: i)
    c_records(out, "ObCollEntry", "kEntries1", t.entries1, entry,
              (0, 0, 0, 0, 0, 0, 0))
    table("kTable1", 256, "1", "nullptr", 256, len(t.entries1))

    # Case mappings.
    out.append("")
    lists = t.upper_lists
    c_array(out, "uint16_t", "kUpperListChars", lists or [0], hex4, 12)
    c_records(out, "ObWCharList", "kUpperLists", list(range(len(lists))),
              lambda i: "ObWCharList(kUpperListChars + %d, %d)"
              % (i, 1 if lists else 0), 0)

    def prop(r):
        more = ("nullptr" if r[2] is None
                else "&kUpperLists[%d]" % lists.index(r[2]))
        return "{0x%04X, 0x%04X, %s}" % (r[0], r[1], more)

    c_array(out, "ObUnicodeProps", "kProps253", t.props253, prop, 4)
    c_array(out, "uint8_t", "kPropsPage253", t.props_page_of, str, 32)
    flat = [v for page in t.props_pages for v in page]
    c_array(out, "uint16_t", "kPropsIndex253", flat, str, 16)
    out.append("constexpr ObPropsData kPropsData253 = {")
    out.append("    kPropsPage253, kPropsIndex253, %d, kProps253, %d};"
               % (len(flat), len(t.props253)))

    # 8-bit code sets.
    for code, _ in CODE_PAGES:
        out.append("")
        c_array(out, "uint16_t", "kToUnicode%d" % code, t.pages[code], hex4,
                16, lambda i: i)
        page_of, pages = t.from_pages[code]
        c_array(out, "uint8_t", "kFromUnicodePage%d" % code, page_of, str, 32)
        flat = [v for page in pages for v in page]
        c_array(out, "uint8_t", "kFromUnicode%d" % code, flat, str, 16)
        c_array(out, "ObUnicodeProps", "kProps%d" % code, t.props8[code],
                prop, 4)
        out.append("constexpr ObCodePageData kCodePage%d = {" % code)
        out.append("    kToUnicode%d, kFromUnicodePage%d, kFromUnicode%d, %d, "
                   "kProps%d};" % (code, code, code, len(flat), code))
    out.append("")
    out.append("}  // namespace obi18n")
    return "\n".join(out) + "\n"


# --- Driver ------------------------------------------------------------------

def sha256_file(path):
    with open(path, "rb") as f:
        return hashlib.sha256(f.read()).hexdigest()


def sha256_text(text):
    return hashlib.sha256(text.encode("utf-8")).hexdigest()


def generate(ucd_dir, relock):
    """(cpp text, lock text, report lines)."""
    for name in ("UnicodeData.txt", "SpecialCasing.txt"):
        if not os.path.exists(os.path.join(ucd_dir, name)):
            raise GenError("%s not found in %s (Debian package unicode-data)"
                           % (name, ucd_dir))
    ucd = Ucd(ucd_dir)
    tailoring = Tailoring(TAILORING, ucd)
    tail_sha = sha256_file(TAILORING)
    lock = None if relock else read_lock(LOCK)
    report = []
    if lock is None:
        old = read_lock(LOCK)
        version = old[0] + 1 if old else 1
        seed = None
    else:
        version, locked_sha, seed = lock
        if locked_sha != tail_sha:
            version += 1
            report.append("tailoring changed: table version %d" % version)
    derivation = Derivation(ucd, tailoring, seed)
    if seed:
        fresh = Derivation(ucd, tailoring, None).table
        moved = sorted(cp for cp in seed if fresh.get(cp) != seed[cp])
        if moved:
            report.append("%d locked entries differ from a fresh derivation "
                          "(first U+%04X); --relock applies them"
                          % (len(moved), moved[0]))
    table = derivation.table
    variants = tailoring.variants(table)
    tables = Tables(ucd, tailoring, table, variants, version)
    self_check(ucd, derivation, tables, variants)

    lock_text = format_lock(version, tail_sha, ucd.version, table)
    code_hash = hashlib.sha256(repr([tables.pages[c] for c, _ in CODE_PAGES])
                               .encode("ascii")).hexdigest()
    hashes = [(name, sha256_file(os.path.join(ucd_dir, name)))
              for name in ("UnicodeData.txt", "SpecialCasing.txt")]
    hashes += [
        ("tailoring.txt", tail_sha),
        ("orders.lock", sha256_text(lock_text)),
        ("cp1252, iso8859_2 codecs (decoded bytes)", code_hash),
    ]
    cpp = emit_cpp(ucd, tables, hashes)
    report.append("known %d, newly ranked symbols %d (highest %d), "
                  "left out %d, "
                  "entries 253/1: %d/%d, special pages %d, props pages %d"
                  % (len(table), derivation.ranked, derivation.highest_symbol,
                     len(derivation.left_out), len(tables.entries253),
                     len(tables.entries1), len(tables.special_pages),
                     len(tables.props_pages)))
    return cpp, lock_text, report


def read_text(path):
    if not os.path.exists(path):
        return None
    with open(path, encoding="utf-8") as f:
        return f.read()


def write_text(path, text):
    directory = os.path.dirname(os.path.abspath(path))
    fd, tmp = tempfile.mkstemp(dir=directory, prefix=".gen_i18n_")
    with os.fdopen(fd, "w", encoding="utf-8", newline="\n") as f:
        f.write(text)
    os.chmod(tmp, 0o644)
    os.replace(tmp, path)


def main(argv=None):
    ap = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    ap.add_argument("--ucd", default=DEFAULT_UCD,
                    help="directory of UnicodeData.txt, SpecialCasing.txt")
    ap.add_argument("--out", default=DEFAULT_OUT, help="generated C++ file")
    ap.add_argument("--check", action="store_true",
                    help="compare with the committed files, write nothing")
    ap.add_argument("--relock", action="store_true",
                    help="rebuild orders.lock from scratch (new version)")
    ap.add_argument("-v", "--verbose", action="store_true")
    args = ap.parse_args(argv)
    try:
        cpp, lock_text, report = generate(args.ucd, args.relock)
    except GenError as e:
        print("gen_i18n_tables: %s" % e, file=sys.stderr)
        return 2
    if args.verbose or not args.check:
        for line in report:
            print("gen_i18n_tables: %s" % line, file=sys.stderr)
    if args.check:
        outputs = (("generated tables", args.out, cpp),
                   ("orders.lock", LOCK, lock_text))
        stale = [name for name, path, text in outputs
                 if read_text(path) != text]
        if stale:
            print("gen_i18n_tables: %s out of date; run gen_i18n_tables.py"
                  % " and ".join(stale), file=sys.stderr)
            return 1
        print("gen_i18n_tables: tables up to date")
        return 0
    write_text(args.out, cpp)
    write_text(LOCK, lock_text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
