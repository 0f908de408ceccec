# Which Debian packages each task needs, and how they get onto the machine. Sourced by the scripts
# beside it; nothing here runs by itself.

build_packages=(g++ make cmake pkg-config libgtkmm-2.4-dev libxml2-dev libsndfile1-dev libopenal-dev
  libboost-dev libfst-dev libcli11-dev zlib1g-dev libgraphviz-dev libpng-dev)
run_packages=(graphviz fonts-dejavu-core)
display_packages=(xvfb openbox x11-utils xdotool wmctrl imagemagick)
test_packages=(libgtest-dev libxtst-dev dbus dbus-daemon libatk-adaptor libgail-common at-spi2-core
  python3 python3-gi locales-all dia ghostscript librsvg2-common
  valgrind desktop-file-utils appstream shared-mime-info libglib2.0-bin libxml2-utils man-db)
package_packages=(dpkg-dev lintian)
lint_packages=(clang-format clang-tidy shellcheck git)
fuzz_packages=(clang libclang-rt-dev)
bench_packages=(libbenchmark-dev libfst-tools libgtest-dev xdot gir1.2-gtk-3.0 python3-gi)
bare_packages=(debootstrap debian-archive-keyring git)

# stop LINE: ends the script with a line that says why
stop() {
  echo "$(basename "$0"): $1" >&2
  exit 1
}

# stands before what only root may do
as_root=()
((EUID == 0)) || as_root=(sudo)

# install_missing PURPOSE PACKAGE...: installs those packages that the machine lacks, and says so
install_missing() {
  local purpose=$1 package missing=()
  shift
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null ||
    stop "this is no Debian system; install by hand what the README names for $purpose"
  for package in "$@"; do
    [[ $(dpkg-query -W -f='${Status}' "$package" 2>/dev/null) == *' ok installed' ]] ||
      missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  echo "Installing for $purpose: ${missing[*]}"
  ((EUID == 0)) || command -v sudo >/dev/null ||
    stop "installing needs root or sudo: apt-get install ${missing[*]}"
  "${as_root[@]}" apt-get update -qq || stop "apt-get update failed"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    stop "apt-get could not install: ${missing[*]}"
}

# build TARGET [CMAKE-OPTION...]: brings a build folder up to date, `build` unless `folder` names
# another; what is said goes to a file `log` in it
folder=build
build() {
  local target=$1
  shift
  mkdir -p "$folder"
  { cmake -S . -B "$folder" "$@" && cmake --build "$folder" --target "$target" -j"$(nproc)"; } \
    >"$folder/log" 2>&1 || { cat "$folder/log" >&2; stop "the build failed"; }
}
