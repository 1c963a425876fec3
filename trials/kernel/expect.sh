# Sourced by the checks of a trial's transcript. $console is the file with what was said, "== N title"
# before each section; $sections holds what happened on the port, one line a section: its number as two
# hexadecimal digits, then words. One line an expectation, "ok" or "WRONG".
accesses() {
  local section
  section=$(grep "^$(printf %02X "$1")" <<<"$sections") || section=". never began"
  section=${section#* }
  echo "${section% }"
}
said() { tr -d '\r' <"$console" | sed -n "/^== $1 /,/^== $(($1 + 1)) /p"; }
check() { if [ "$2" = "$3" ]; then echo "ok: $1"; else printf 'WRONG: %s\n  expected %s\n  saw      %s\n' "$1" "$3" "$2"; fi; }
says() { if said "$1" | grep -qF "$3"; then echo "ok: $2"; else printf 'WRONG: %s: "%s" was not said\n' "$2" "$3"; fi; }
# With the word that the program ends with: one that never ran tells nothing either.
tells_nothing() {
  if said "$1" | grep -q '^told:' || ! said "$1" | grep -q "^$3"; then
    echo "WRONG: $2"; said "$1"
  else
    echo "ok: $2"
  fi
}
