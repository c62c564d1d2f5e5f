#!/bin/sh
# Test wrapper: are the committed tables what the generator makes of the
# current inputs? Exit 77 (skipped) where python3 or the Unicode data is
# missing, so hosts without them still pass.
ucd=${UCD_DIR:-/usr/share/unicode}
if ! command -v python3 >/dev/null 2>&1; then
  echo "skipped: python3 not found"
  exit 77
fi
if [ ! -f "$ucd/UnicodeData.txt" ] || [ ! -f "$ucd/SpecialCasing.txt" ]; then
  echo "skipped: no Unicode data in $ucd (Debian package unicode-data)"
  exit 77
fi
exec python3 "$(dirname "$0")/gen_i18n_tables.py" --ucd "$ucd" --check
