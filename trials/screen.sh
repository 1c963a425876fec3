# Sourced by what drives the windows on a virtual screen, as a hand on mouse and keyboard does. Needs
# the packages of `screen_packages`; `pictures` names the folder for screenshots. Places are pixels
# within a window's client area; the writers have a menu bar above it.

fail() { echo "FAILED: $*"; import -window root "$pictures/failed.png"; exit 1; }
expect() { [ "$2" = "$3" ] || fail "$1: \"$2\", not \"$3\""; echo "  ok: $1: $3"; }
picture() { import -window root "$pictures/$1.png"; echo "  picture: $1.png"; }

# on_screen SCRIPT [argument..]: runs the script again on a virtual screen of its own, and keeps what
# it says in the folder of the pictures.
on_screen() {
  rm -rf "$pictures"
  mkdir -p "$pictures"
  export ON_SCREEN=1
  xvfb-run -a -s "-ac -screen 0 1366x768x24" "$@" 2>&1 | tee "$pictures/transcript.txt"
  exit "${PIPESTATUS[0]}"
}

# window TITLE: waits for it to open
window() {
  local id tries
  for tries in $(seq 300); do
    id=$(xdotool search --onlyvisible --name "^$1\$" | tail -1) && [ -n "$id" ] && { echo "$id"; return; }
    sleep 0.2
  done
  fail "the window \"$1\" did not open ($tries tries)" >&2
}
# gone TITLE: waits for it to close
gone() {
  local tries
  for tries in $(seq 300); do
    xdotool search --onlyvisible --name "^$1\$" >/dev/null || { echo "  ok: \"$1\" has closed"; return; }
    sleep 0.2
  done
  fail "the window \"$1\" stays open ($tries tries)"
}
geometry() { xdotool getwindowgeometry --shell "$1" | sed -n "s/^$2=//p"; }
menu_height() { [ -z "${2:-}" ] && echo 0 || echo $(($(geometry "$1" HEIGHT) - $2)); }
# point TITLE X Y [client height, of a window with a menu bar]: the mouse goes there
point() {
  local id
  id=$(window "$1")
  xdotool windowactivate "$id" sleep 0.3 mousemove --window "$id" "$2" $(($3 + $(menu_height "$id" "${4:-}")))
}
click() {
  point "$@"
  xdotool click --repeat "${clicks:-1}" --delay 60 1
  sleep 0.3
}
# What a text box shows: a double click selects it.
shown() {
  clicks=2 click "$@"
  xclip -o -selection primary
}
# legible WHAT TITLE X Y WIDTH HEIGHT [client height]: that part of a window is light, with text in it
legible() {
  local id seen
  id=$(window "$2")
  seen=$(import -window "$id" -crop "$5x$6+$3+$(($4 + $(menu_height "$id" "${7:-}")))" -colorspace Gray -depth 8 gray:- |
    od -An -v -tu1 -w1 | sort -n | awk '{ grey[NR] = $1 } END {
      ground = grey[int((NR + 1) / 2)]
      while (grey[text + 1] < ground - 100) ++text
      if (ground >= 200 && text > 0.01 * NR) print "legible"
      else printf "ground %d of 255, %d of %d pixels much darker", ground, text, NR
    }')
  expect "$1" "$seen" legible
}
