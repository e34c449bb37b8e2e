# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by tools/windows/*, after common.sh: what is built from Debian's source packages for Windows, and where it lies.

packages_cross=(g++-mingw-w64-x86-64-posix cmake ninja-build ccache dpkg-dev perl)
# With which the compiler of the dictionaries is built for the machine that builds.
packages_host=(g++ qt6-base-dev libgettextpo-dev)
# Wine's compiler of type libraries, the interfaces that it has to know, and the standard library that it refers to.
packages_type_library=(mingw-w64-tools libwine-dev libwine)
packages_wine=(wine64 libwine)

toolchain_file=$project_dir/cmake/toolchain-mingw-w64.cmake
cache_dir=${XDG_CACHE_HOME:-$HOME/.cache}/letterlift

# installation_key PACKAGE-VERSION OPTION...: a short name for what these inputs give.
installation_key() {
    local version=$1
    shift
    local compiler
    compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
    printf '%s-%s' "${version//[^A-Za-z0-9.]/_}" \
        "$(printf '%s\n' "$version" "$compiler" "$@" | sha256sum | cut -c1-12)"
}

# lock_installation FOLDER: waits for another call that builds the same, until this one ends.
lock_installation() {
    mkdir -p "$(dirname "$1")"
    exec 9>"$1.lock"
    flock 9
}

# debian_mirrors: the sources of the machine, as lines of a list for source packages.
debian_mirrors() {
    local keyring=/usr/share/keyrings/debian-archive-keyring.gpg options=''
    [ ! -f "$keyring" ] || options="[signed-by=$keyring] "
    # shellcheck disable=SC2016 # apt's own placeholders
    apt-get indextargets --format "deb-src $options"'$(SITE) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sort -u
}

# debian_source DIRECTORY PACKAGE [VERSION]: fetches a source package and unpacks it, with Debian's patches, as
# DIRECTORY/PACKAGE. The sources come from the mirrors that the machine is set up with, through a list of its own, so
# that the machine's settings stay as they are.
debian_source() {
    local directory=$1 package=$2 version=${3:-}
    local apt=$directory/.apt
    mkdir -p "$apt/lists/partial" "$apt/archives/partial"
    local options=(-q -o "Dir::Etc::SourceList=$apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
                   -o "Dir::State::Lists=$apt/lists" -o "Dir::Cache=$apt" -o "APT::Sandbox::User=$(id -un)")
    if [ ! -f "$apt/sources.list" ]; then
        # What apt tells of its sources needs the lists, which images come without.
        [ -n "$(debian_mirrors)" ] || as_root apt-get update -q >/dev/null
        debian_mirrors >"$apt/sources.list"
        if [ ! -s "$apt/sources.list" ]; then
            say "This machine knows no mirror of Debian."
            exit 1
        fi
        apt-get "${options[@]}" update >/dev/null
    fi
    (cd "$directory" && apt-get "${options[@]}" source --only-source --download-only "$package${version:+=$version}" >/dev/null)
    rm -rf "${directory:?}/$package"
    dpkg-source --no-check -x "$directory/$package"_*.dsc "$directory/$package" >/dev/null
}

# debian_source_like DIRECTORY PACKAGE VERSION: the same for the version of an installed package. A corrected version that no
# mirror has, or not any more, gives way to the version that it corrects.
debian_source_like() {
    local directory=$1 package=$2 version=$3
    debian_source "$directory" "$package" "$version" && return
    rm -f "$directory/$package"_*
    debian_source "$directory" "$package" "${version%%+deb*}"
}

# build_windows [TARGET...]: the libraries, unless they are there, and then build/windows.
build_windows() {
    local qt gmime
    # With those of the tests: what they run with is looked for when the build folder is configured.
    need_packages "${packages_cross[@]}" "${packages_host[@]}" "${packages_type_library[@]}" "${packages_test[@]}"
    qt=$("$project_dir/tools/windows/build-qt")
    gmime=$("$project_dir/tools/windows/build-gmime")
    configure windows "-DLETTERLIFT_CROSS_PREFIXES=$qt;$gmime"
    say "Building build/windows"
    build windows "$@"
}
