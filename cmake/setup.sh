# Sourced by ./run, ./test and bench/run: says what it does, installs what is missing, builds.

say() { printf '== %s\n' "$*"; }
fail() { printf 'FAILED: %s\n' "$*" >&2; exit 1; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# install_packages LIST...: what stands in these files and is not there yet.
install_packages() {
    missing=$(cat "$@" | grep -v '^#' | while read -r package; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || printf '%s ' "$package"
    done)
    [ -z "$missing" ] && return 0
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null || fail "these packages are missing, and only root can install them: $missing"
    say "installing: $missing"
    as_root apt-get update -qq -o APT::Update::Error-Mode=any || fail "there is no way to the sources of packages (apt-get update), and these are missing: $missing"
    forbid_services
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
    status=$?
    allow_services
    [ $status -eq 0 ] || fail "these packages could not be installed: $missing"
}

# Broker and mail server are for tests, which start their own: their packages must not start a service on this machine,
# now or with the next boot. What forbids it goes away again, also when the installation is broken off.
policy=/usr/sbin/policy-rc.d
forbid_services() {
    [ -e $policy ] && return 0
    trap allow_services EXIT
    trap 'exit 130' INT TERM
    printf '#!/bin/sh\nexit 101\n' | as_root tee $policy >/dev/null
    as_root chmod +x $policy
    is_policy_ours=yes
}
allow_services() {
    trap - EXIT INT TERM
    [ "${is_policy_ours:-}" = yes ] && as_root rm -f $policy
    is_policy_ours=
    case " $missing" in *" rabbitmq-server "* | *" dovecot-pop3d "*)
        for unit in rabbitmq-server.service epmd.service epmd.socket dovecot.service dovecot.socket; do
            as_root systemctl disable "$unit" >/dev/null 2>&1 || true
        done ;;
    esac
    case " $missing" in *" rsyslog "*) as_root systemctl disable rsyslog.service >/dev/null 2>&1 || true ;; esac
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
