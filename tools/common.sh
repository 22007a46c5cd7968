# Shared by the scripts of this project; to be sourced, not run. Defines:
#   root, build            the project's folder and its build folder
#   say, fail              messages on standard error
#   install_packages       makes sure that Debian packages are installed
#   use_wine KIND          points Wine at a prefix of the build folder
#   keep_wine, stop_wine   start the prefix's Wine beforehand, and end it
#   start_screen           opens a virtual display with a window manager

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build

say() { printf '%s\n' "$*" >&2; }

fail() {
    say "$(basename "$0"): $*"
    exit 1
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# install_packages PACKAGE...: installs those that are missing; silent when none is.
install_packages() {
    local package missing=() become=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    command -v apt-get >/dev/null || fail "please install: ${missing[*]}"
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "please install as root: ${missing[*]}"
        become=(sudo)
    fi
    say "Installing ${missing[*]}"
    local log=$build/install.log
    mkdir -p "$build"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q update >"$log" 2>&1 ||
        say "The list of packages could not be refreshed ($log); going on with the old one"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -q install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1 </dev/null || {
        tail -n 20 "$log" >&2
        fail "installing failed; the whole story is in $log"
    }
}

build_packages=(cmake ninja-build python3 g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64)
wine_packages=(wine wine64 fonts-wine fonts-liberation)
screen_packages=(xvfb openbox imagemagick xdotool)

# use_wine KIND: every wine command after it works in the prefix build/wine/KIND.
use_wine() {
    export WINEPREFIX=$build/wine/$1 WINEARCH=win64
    export WINEDEBUG=${WINEDEBUG:--all}
    # Wine needs no .NET and no web engine, and adds no entries to the menus of the user's desktop.
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d"
    # What the tests recycle does not go to the user's own trash.
    export XDG_DATA_HOME=$build/wine/data
    mkdir -p "$XDG_DATA_HOME"
    # Wine smooths text only where fontconfig asks for it.
    export FONTCONFIG_FILE=$build/wine/fonts.conf
    case ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} in
        *[Uu][Tt][Ff]8* | *[Uu][Tt][Ff]-8*) ;;
        *) export LC_ALL=C.UTF-8 ;;  # otherwise Wine garbles names in other scripts
    esac
}

# Starts the Wine of the current prefix and keeps it for ten minutes, so that no test has to start
# it. No process of it may hold our pipes: ctest would wait for their end.
keep_wine() {
    wineserver -p120 >/dev/null 2>&1 </dev/null || true
    wine cmd /c exit >/dev/null 2>&1 </dev/null || true
    # The desktop stays while some window is open; starting it takes a second each time.
    setsid timeout 600 wine winemine >/dev/null 2>&1 </dev/null &
    disown
    sleep 1
}

# Ends the Wine of the current prefix and everything that runs in it.
stop_wine() {
    wineserver -k 2>/dev/null || true
    wineserver -w 2>/dev/null || true
}

# start_screen WIDTHxHEIGHT: sets DISPLAY; stop_screen closes it again.
start_screen() {
    local number_file
    number_file=$(mktemp)
    Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp \
        3>"$number_file" >/dev/null 2>&1 </dev/null &
    screen_pid=$!
    for _ in $(seq 100); do
        [ -s "$number_file" ] && break
        sleep 0.05
    done
    [ -s "$number_file" ] || fail "the virtual display does not start"
    DISPLAY=:$(tr -d '[:space:]' <"$number_file")
    export DISPLAY
    unset WAYLAND_DISPLAY
    rm -f "$number_file"
    openbox >/dev/null 2>&1 </dev/null &
    manager_pid=$!
}

stop_screen() {
    [ -z "${manager_pid:-}" ] || kill "$manager_pid" 2>/dev/null || true
    [ -z "${screen_pid:-}" ] || kill "$screen_pid" 2>/dev/null || true
}
