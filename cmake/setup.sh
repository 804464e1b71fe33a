# Sourced by ./run, ./test and bench/run: says what it does, installs what is missing, builds.

say() { printf '== %s\n' "$*"; }
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

install_packages() {
    missing=$(grep -v '^#' cmake/packages.txt | while read -r package; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || printf '%s ' "$package"
    done)
    [ -z "$missing" ] && return 0
    say "installing: $missing"
    as_root apt-get update -qq || fail "apt-get update"
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null ||
        fail "these packages could not be installed: $missing"
}

build() {
    preset=$1
    shift
    say "building ($preset)"
    log=$(mktemp)
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log"; fail "configuring"; }
    rm -f "$log"
    cmake --build --preset "$preset" "$@" || fail "building"
}
