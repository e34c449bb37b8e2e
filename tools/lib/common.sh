# shellcheck shell=bash disable=SC2034
# Sourced by the tools: where the project lies, what it needs of the system, how it is configured and built.

set -euo pipefail

project_dir=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

# The packages of Debian 12, by what they are needed for.
packages_build=(g++ cmake ninja-build ccache pkg-config qt6-base-dev libgmime-3.0-dev libgettextpo-dev)
packages_run=(libqt6gui6 qt6-qpa-plugins fonts-dejavu-core shared-mime-info)
packages_test=(python3 xvfb xdotool x11-utils gettext)
packages_sanitize=(clang libclang-rt-14-dev)
packages_lint=(git clang clang-format clang-tidy shellcheck python3)
packages_dictionaries=(python3-icu)
packages_benchmark=(libbenchmark-dev xvfb gettext)

say() {
    printf '%s\n' "$*" >&2
}

# need_packages PACKAGE...: installs those that are missing.
need_packages() {
    local missing=() package installed
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        grep -qx "installed $package" <<<"$installed" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get >/dev/null; then
        say "These packages (by their Debian names) are needed: ${missing[*]}"
        exit 1
    fi
    say "Installing ${missing[*]}"
    as_root apt-get update -q >/dev/null
    DEBIAN_FRONTEND=noninteractive as_root apt-get install -qy --no-install-recommends "${missing[@]}" >/dev/null
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo --preserve-env=DEBIAN_FRONTEND "$@"
    fi
}

# configure PRESET [OPTION...]: once, and again when an option is not what the build folder was configured with.
configure() {
    local preset=$1
    shift
    [ -z "${CI:-}" ] || set -- "$@" -DLETTERLIFT_WERROR=ON
    local stamp="$project_dir/build/$preset/configured-with"
    if [ ! -f "$project_dir/build/$preset/build.ninja" ] || [ "$(cat "$stamp" 2>/dev/null)" != "$*" ]; then
        say "Configuring build/$preset"
        (cd "$project_dir" && cmake --preset "$preset" "$@" >"$(log_file "$preset")" 2>&1) || show_log_and_fail "$preset"
        printf '%s' "$*" >"$stamp"
    fi
}

# build PRESET [TARGET...]
build() {
    local preset=$1 target targets=()
    shift
    for target in "$@"; do
        targets+=(--target "$target")
    done
    cmake --build "$project_dir/build/$preset" "${targets[@]}" >"$(log_file "$preset")" 2>&1 || show_log_and_fail "$preset"
}

log_file() {
    mkdir -p "$project_dir/build/$1"
    printf '%s' "$project_dir/build/$1/build.log"
}

show_log_and_fail() {
    tail -n 100 "$(log_file "$1")" >&2
    say "The whole output is in build/$1/build.log."
    exit 1
}
