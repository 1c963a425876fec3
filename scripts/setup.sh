# Sourced by every command, in the project's folder: what they need on a Debian 12 machine, installing
# it, and building.

# What isp-write is built with: its command line, its JSON.
terminal_packages=(libcli11-dev nlohmann-json3-dev)
build_packages=(g++ cmake ninja-build qt6-base-dev libgl-dev librsvg2-bin "${terminal_packages[@]}")
# The windows' fonts: text, hexadecimal columns, and full-width characters.
run_packages=(fonts-liberation fonts-wqy-microhei)
test_packages=(git libgtest-dev libgmock-dev qt6-base-private-dev clang libclang-rt-14-dev lld clang-format
  clang-tidy sigrok-cli)
# What turns a build into packages, and checks them.
package_packages=(git cmark-gfm dpkg-dev file xz-utils)
package_check_packages=(file lintian desktop-file-utils appstream)
# What drives the windows on a virtual screen.
screen_packages=(xvfb xauth openbox xdotool xclip imagemagick)
try_packages=(mmdebstrap "${screen_packages[@]}")
# A desktop around them: a theme, a screen reader.
desktop_packages=(qt6-gtk-platformtheme orca at-spi2-core dbus)
windows_packages=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest wine64
  "${terminal_packages[@]}")
windows_program_packages=(git cmake ninja-build g++-mingw-w64-x86-64-posix qt6-base-dev dpkg-dev
  librsvg2-bin icoutils cmark-gfm zip "${terminal_packages[@]}")
windows_try_packages=("${windows_packages[@]}" unzip xvfb xauth xdotool imagemagick fonts-liberation
  fonts-wqy-microhei)
# What builds for 64-bit ARM and runs it here. Qt's tools are this machine's.
arm64_packages=(g++-aarch64-linux-gnu qt6-base-dev:arm64)
arm64_test_packages=(googletest qemu-user)
fuzz_packages=(cmake ninja-build clang libclang-rt-14-dev lld "${terminal_packages[@]}")
# What boots a kernel with a parallel port. The trial is configured together with the tests.
kernel_packages=(libgtest-dev libgmock-dev qt6-base-private-dev qemu-system-x86 busybox-static cpio
  kmod gawk)
# What builds its GPIO simulator.
kernel_gpio_packages=(make gcc-12 libelf1 xz-utils)
bench_packages=(libbenchmark-dev libsrecord-dev libboost-dev xvfb xauth)

# Qt asks for the folder that a login session has.
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$PWD/build/runtime}
[ -d "$XDG_RUNTIME_DIR" ] || install -d -m 700 "$XDG_RUNTIME_DIR"

say() { echo "== $*"; }

# build PRESET [argument for the build..]
build() {
  say "building ($1)"
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$@"
}

# Runs a command and shows what it wrote only when it fails.
quietly() {
  local log
  log=$(mktemp)
  "$@" >"$log" 2>&1 || { cat "$log"; rm "$log"; return 1; }
  rm "$log"
}

# Installs those of the named Debian packages that are missing. NAME:ARCHITECTURE stands beside this
# machine's own packages, of which none is removed for it.
install_missing() {
  local own package architecture missing=() careful=() as_root=()
  own=$(dpkg --print-architecture)
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  for package in "$@"; do
    architecture=$own
    [[ $package != *:* ]] || { architecture=${package#*:}; careful=(--no-remove); }
    dpkg-query -W -f='${Architecture} ${db:Status-Status}\n' "$package" 2>/dev/null |
      grep -qxE "(all|$architecture) installed" || missing+=("$package")
    [[ " $own $(dpkg --print-foreign-architectures | xargs) " == *" $architecture "* ]] && continue
    say "adding the architecture $architecture to dpkg's"
    "${as_root[@]}" dpkg --add-architecture "$architecture"
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  say "installing with apt-get: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${careful[@]}" \
    --no-install-recommends -o DPkg::Lock::Timeout=600 "${missing[@]}" >/dev/null
}
