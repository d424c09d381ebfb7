# shellcheck shell=bash
# What ./run, ./test and .ci/run share: the packages that the machine lacks, and the build. Sourced, with the checkout
# as the current folder.

say() { printf '%s\n' "$*"; }

fail() {
    printf '\n' >&2
    printf '%s\n' "$@" >&2
    exit 1
}

# File names of the checkout and of punch files may hold any character, also on a machine whose language is C.
useUtf8() {
    [[ "$(locale charmap 2>/dev/null)" == UTF-8 ]] || export LC_ALL=C.UTF-8
}

# The packages of packages.txt that are not fully installed, one a line.
missingPackages() {
    local wanted installed
    wanted=$(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' packages.txt | sort -u)
    # The query fails for names that it has never seen, which is no reason to stop.
    # shellcheck disable=SC2086
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null |
        sed -n 's/^installed //p' | sort -u) || true
    comm -23 <(printf '%s\n' "$wanted") <(printf '%s\n' "$installed")
}

asRoot() {
    if [[ $(id -u) -eq 0 ]]; then
        env DEBIAN_FRONTEND=noninteractive "$@"
    else
        sudo env DEBIAN_FRONTEND=noninteractive "$@"
    fi
}

# Stops with a sentence where the file system of a folder has less than that many megabytes left.
needSpace() {
    local folder=$1 megabytes=$2 what=$3 free
    free=$(df -Pm -- "$folder" 2>/dev/null | awk 'NR == 2 { print $4 }')
    [[ -z $free || $free -ge $megabytes ]] ||
        fail "The disk is too full: $what needs about $megabytes MB in $folder, and $free MB are left."
}

installPackages() {
    command -v dpkg-query >/dev/null ||
        fail "This is no Debian system (there is no dpkg-query). Pontrel is built on Debian 12."
    local missing
    missing=$(missingPackages)
    [[ -n $missing ]] || return 0
    local list=${missing//$'\n'/ }

    if [[ $(id -u) -ne 0 ]] && ! command -v sudo >/dev/null; then
        fail "These packages are missing: $list" \
            "Installing them needs root, and there is no sudo here. As root, type:" \
            "    apt-get update && apt-get install --no-install-recommends $list" \
            "and start this again."
    fi
    # A bare machine lacks about twenty, which take 1,200 MB and 300 more for their archives.
    needSpace /usr $((80 * $(wc -l <<<"$missing"))) "installing the packages"

    say "Installing: $list"
    local apt=(apt-get -q -o DPkg::Lock::Timeout=300)
    [[ -z "$(dpkg --audit 2>/dev/null)" ]] || asRoot dpkg --configure -a || true
    asRoot "${apt[@]}" update || say "The package lists could not be fetched anew; trying with those at hand."
    # shellcheck disable=SC2086
    asRoot "${apt[@]}" install -y --no-install-recommends $list ||
        fail "apt-get could not install: $list" \
            "Its own message stands above. Usual causes: no network or no package registry, a full disk, no right to" \
            "use sudo. Nothing has been built."
    missing=$(missingPackages)
    [[ -z $missing ]] || fail "Still missing after the installation: ${missing//$'\n'/ }"
}

# Waits until no other of the commands works in this checkout. The lock goes with the process, or with unlockBuild.
lockBuild() {
    { mkdir -p build && exec {buildLock}>build/.lock; } ||
        fail "Nothing can be written in $PWD/build. May this user write there?"
    flock -n "$buildLock" || {
        say "Another run or test is at work in this checkout; waiting for it."
        flock "$buildLock"
    }
}

unlockBuild() { exec {buildLock}>&-; }

# build PRESET MEGABYTES ARGUMENT...: configures and builds a preset, with further arguments for the build. Stops where
# that fails.
build() {
    local preset=$1 megabytes=$2 folder="build/$1" home
    shift 2
    needSpace build "$megabytes" "building"
    if [[ -f $folder/CMakeCache.txt ]]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
        # The checkout has been moved or copied: the old build knows another place.
        [[ $(realpath -m -- "$home") == "$(pwd -P)" ]] || rm -rf -- "$folder"
    fi
    cmake --preset "$preset" >"build/$preset-configure.log" 2>&1 || {
        cat "build/$preset-configure.log" >&2
        fail "The build could not be configured (preset $preset)."
    }
    cmake --build --preset "$preset" "$@" || fail "The build failed (preset $preset)."
}

# A folder for what the tests write, in memory where there is a gigabyte to spare: they make thousands of small stores,
# and each would wait for the disk. Without that memory it is a folder like any other temporary one. Others may pass
# through it, for a test that becomes another user; what stands in it is closed to them or not by itself.
testFolder() {
    local free folder
    free=$(df -Pm /dev/shm 2>/dev/null | awk 'NR == 2 { print $4 }')
    folder=$({ [[ ${free:-0} -ge 1024 ]] && mktemp -d -p /dev/shm pontrel-test.XXXXXX; } || mktemp -d)
    chmod 711 -- "$folder"
    printf '%s\n' "$folder"
}

# Runs the tests of a preset, two at a time, and leaves the totals in build/<preset>-tests.xml. Returns their status.
runTests() {
    local folder status=0
    rm -f -- "build/$1-tests.xml"
    folder=$(testFolder)
    TMPDIR=$folder ctest --preset "$1" -j2 --no-tests=error --output-junit "$PWD/build/$1-tests.xml" || status=$?
    rm -rf -- "$folder"
    return "$status"
}
