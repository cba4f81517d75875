# Sourced by ./run, ./test, ./sanitize and ./fuzz: install what is missing, and build, in silence when all is well.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# fail MESSAGE...: says why on standard error, and ends.
fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# quietly WHAT COMMAND...: runs the command; its output shows, on standard error, only when it fails.
quietly() {
    local what=$1 log
    shift
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1 </dev/null; then
        cat "$log" >&2
        rm -f "$log"
        fail "$what failed."
    fi
    rm -f "$log"
}

# as_root COMMAND...: never asks for a password.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo -n "$@"
    fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 "$@"
}

# need PACKAGE...: installs those Debian packages that are not there.
need() {
    local package missing=()
    for package in "$@"; do
        has "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get >/dev/null || { [ "$(id -u)" -ne 0 ] && ! sudo -n true 2>/dev/null; }; then
        fail "Missing: ${missing[*]}. Install them, on Debian with:" "    sudo apt-get install ${missing[*]}"
    fi
    quietly "Updating the package lists" apt_get update
    quietly "Installing ${missing[*]}" apt_get install --yes --no-install-recommends "${missing[@]}"
}

# has PACKAGE: what the package brings is there, wherever it came from.
has() {
    case $1 in
        g++ | cmake | git) command -v "$1" ;;
        clang) command -v clang++ ;;
        libclang-rt-*) command -v clang++ && compgen -G "$(clang++ --print-runtime-dir)/libclang_rt.fuzzer-*" ;;
        ninja-build) command -v ninja ;;
        libgtest-dev) [ -e /usr/include/gtest/gtest.h ] ;;
        libgmock-dev) [ -e /usr/include/gmock/gmock.h ] ;;
        libcli11-dev) [ -e /usr/include/CLI/CLI.hpp ] ;;
        nlohmann-json3-dev) [ -e /usr/include/nlohmann/json.hpp ] ;;
        *) dpkg --status "$1" 2>/dev/null | grep -q '^Status: install ok installed' ;;
    esac >/dev/null
}

# configure FOLDER PRESET OPTION...: once; later builds see to changed CMake files themselves.
configure() {
    local folder=$1 preset=$2
    shift 2
    [ -e "$folder/build.ninja" ] || (cd "$root" && quietly "Configuring" cmake --preset "$preset" "$@")
}

# configure_with_tests: build/ for the tests too, installing what they need, whatever it was configured for before.
configure_with_tests() {
    need g++ cmake ninja-build git libcli11-dev nlohmann-json3-dev libgtest-dev libgmock-dev
    grep -qs '^VANTREL_TESTS:BOOL=ON' "$root/build/CMakeCache.txt" || rm -f "$root/build/build.ninja"
    configure "$root/build" release -DVANTREL_TESTS=ON
}

# run_tests FOLDER CTEST_ARGUMENT...: shows ctest's summary, and what the failing tests wrote.
run_tests() {
    local folder=$1 log
    shift
    log=$(mktemp)
    if ! ctest --test-dir "$folder" --parallel "$(nproc)" --output-on-failure --no-tests=error "$@" \
        >"$log" 2>&1 </dev/null; then
        grep -vE '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$log" >&2
        rm -f "$log"
        fail "Tests failed."
    fi
    grep 'tests passed' "$log"
    rm -f "$log"
}
