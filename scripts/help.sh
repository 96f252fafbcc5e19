# Sourced by every script before it does anything: --help or -h among its arguments prints the comment that it begins
# with, and ends it. Arguments given to `source` are looked at instead.
for kx_word in "$@"; do
  case $kx_word in
    --help | -h) sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"; exit 0 ;;
  esac
done
