# Sourced by run and check: finds what the builds need and installs what is missing with apt, when
# that is allowed; else names it and ends.

# need FILE_OR_COMMAND PACKAGE...: notes the packages when a command of that name, or that file, is
# not there.
missing_packages=()
need() {
    local thing=$1
    shift
    case $thing in
        /*) compgen -G "$thing" > /dev/null && return 0 ;;
        *) command -v "$thing" > /dev/null && return 0 ;;
    esac
    missing_packages+=("$@")
}

need_native() {
    need g++ g++
    need cmake cmake
    need ninja ninja-build
    need llvm-rc-14 llvm-14
    need lld-link-14 lld-14
    need clang clang # llvm-rc calls it by this name
    need /usr/include/unicode/ucol.h libicu-dev
    need /usr/src/googletest/googletest/CMakeLists.txt googletest
}

need_checks() {
    need clang++ clang
    need "/usr/lib/clang/14*/lib/linux/libclang_rt.asan-x86_64.a" libclang-rt-14-dev
    need clang-format-14 clang-format-14
    need git git
    need python3 python3
    need gsf libgsf-bin
    need /usr/share/zoneinfo/America/New_York tzdata
}

need_windows() {
    need x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
    need wine wine
    need /usr/lib/wine/wine64 wine64
}

need_desktop() {
    need Xvfb xvfb
    need openbox openbox
    need xdotool xdotool
}

install_missing() {
    # Two needs may name one package.
    mapfile -t missing_packages < <(printf '%s\n' "${missing_packages[@]}" | sed '/^$/d' | sort -u)
    [ ${#missing_packages[@]} -eq 0 ] && return 0
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2> /dev/null; then
            echo "missing Debian packages: ${missing_packages[*]}" >&2
            echo "install them with: sudo apt-get install ${missing_packages[*]}" >&2
            exit 1
        fi
        root=(sudo -n)
    fi
    if ! command -v apt-get > /dev/null; then
        echo "missing, and there is no apt-get to install it: ${missing_packages[*]}" >&2
        exit 1
    fi
    echo "installing: ${missing_packages[*]}"
    if ! { "${root[@]}" apt-get update -qq &&
        DEBIAN_FRONTEND=noninteractive "${root[@]}" apt-get install -y -qq \
            --no-install-recommends "${missing_packages[@]}" > /dev/null; }; then
        echo "these packages could not be installed: ${missing_packages[*]}" >&2
        exit 1
    fi
}
