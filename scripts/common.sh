# shellcheck shell=bash disable=SC2154,SC2034
# Shared by ./run, ./test and scripts/bench: what must be installed, building a preset, and Wine with a screen.
# Sourced with `root` set to the project's folder.

say() { printf '%s\n' "$*"; }
cannot() { printf 'Cannot %s\n' "$*" >&2; }

# What a step needs: a command or a file, and the Debian package that brings it.
readonly WindowsBuildNeeds='
x86_64-w64-mingw32-g++-posix g++-mingw-w64-x86-64-posix
x86_64-w64-mingw32-windres binutils-mingw-w64-x86-64
cmake cmake
ninja ninja-build
ccache ccache'
# Without it only the manual is missing.
readonly ManualNeeds='
/usr/lib/python3/dist-packages/markdown python3-markdown'
readonly NativeBuildNeeds='
g++ g++
cmake cmake
ninja ninja-build
ccache ccache'
readonly WineNeeds='
/usr/lib/wine/wine64 wine64
/usr/share/fonts/truetype/liberation/LiberationMono-Regular.ttf fonts-liberation'
readonly PackageNeeds='
makensis nsis'
readonly ManifestNeeds='
/usr/lib/python3/dist-packages/yaml python3-yaml'
readonly ScreenNeeds='
Xvfb xvfb
openbox openbox
xdotool xdotool
import imagemagick'

# Succeeds when the package lists above are all there; prints those that are missing.
missing_packages() { # NEEDS
    local thing package
    while read -r thing package; do
        case $thing in
        '') ;;
        /*) [ -e "$thing" ] || say "$package" ;;
        *) command -v "$thing" >/dev/null || say "$package" ;;
        esac
    done <<<"$1" | sort -u
}

install_packages() { # PACKAGE...
    local become=()
    if ! command -v apt-get >/dev/null; then
        cannot "install $*: there is no apt-get; install them by hand and start again"
        return 1
    fi
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            cannot "install $*: neither root nor sudo; as root: apt-get install $*"
            return 1
        fi
        # Without a terminal nobody can answer a password prompt.
        become=(sudo)
        [ -t 0 ] || become=(sudo -n)
    fi
    say "Installing $*"
    local log=$root/build/install.log
    mkdir -p "$root/build"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@" \
        </dev/null >"$log" 2>&1 && return 0
    # The package lists may be missing or old.
    "${become[@]}" apt-get update </dev/null >>"$log" 2>&1
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@" \
        </dev/null >>"$log" 2>&1 && return 0
    cannot "install $*: $(grep -m1 -E '^E:|sudo:' "$log" || tail -n 1 "$log") (see build/install.log)"
    return 1
}

ensure_packages() { # NEEDS...
    local missing
    missing=$(missing_packages "$(printf '%s\n' "$@")")
    # Package names hold no blanks.
    # shellcheck disable=SC2086
    [ -z "$missing" ] || install_packages $missing
}

# Configures the preset when that was not done yet (later ninja does it itself) and builds.
build_preset() { # PRESET [CMAKE_OPTION...] -- [TARGET...]
    local preset=$1 options=()
    shift
    while [ "$1" != -- ]; do
        options+=("$1")
        shift
    done
    shift
    local folder=$root/build/$preset
    if [ ! -e "$folder/build.ninja" ] || [ ${#options[@]} != 0 ]; then
        (cd "$root" && cmake --preset "$preset" "${options[@]}") || return 1
    fi
    ninja -C "$folder" -j "$(nproc)" "$@"
}

# Sets the environment for a Wine prefix of our own, made once. The user's own folders stay out of it.
use_wine_prefix() { # FOLDER
    export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=-all
    export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d'
    # Wine reaches only the file names that the characters of the locale can say.
    [ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8
    Wine=/usr/lib/wine/wine64
    if [ ! -e /proc/self/exe ]; then
        cannot 'run Wine: it finds itself through /proc, which is not mounted'
        return 1
    fi
    [ -e "$WINEPREFIX/.ready" ] && return 0
    say "Setting up Wine in ${WINEPREFIX#"$root"/} (once)"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    local log=$root/build/wineboot.log
    if ! timeout 300 env -u DISPLAY "$Wine" wineboot -i >"$log" 2>&1 </dev/null; then
        cannot "set up Wine: $(tail -n 1 "$log") (see build/wineboot.log)"
        return 1
    fi
    # Wine would answer "Courier New" with a proportional face.
    env -u DISPLAY "$Wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'Courier New' /d 'Liberation Mono' /f \
        >>"$log" 2>&1 </dev/null
    timeout 60 /usr/lib/wine/wineserver64 -w
    local link
    for link in "$WINEPREFIX"/drive_c/users/*/*; do
        [ -L "$link" ] && rm "$link" && mkdir "$link"
    done
    touch "$WINEPREFIX/.ready"
}

# Calls a command until it succeeds; fails after the given seconds.
wait_until() { # SECONDS COMMAND...
    local deadline=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$deadline" ] || return 1
        sleep 0.1
    done
}

# Starts the X server, which says its number in the file once it takes connections. It ends at once when another
# one has taken the same number at the same moment.
start_server() { # FILE
    # Without -noreset it would start again when its first client leaves, and disconnect those that have just come.
    Xvfb -displayfd 3 -noreset -screen 0 1280x900x24 -nolisten tcp 3>"$1" >/dev/null 2>&1 &
    ScreenPids=$!
    wait_until 30 eval "[ -s '$1' ] || ! kill -0 $ScreenPids" && [ -s "$1" ]
}

# Starts a virtual screen with a window manager, which the windows need to get their places. It gives the focus to
# none of them by itself: whose the keys are is Wine's to decide, see scripts/openbox.xml.
start_screen() {
    local number attempt
    number=$(mktemp)
    for attempt in 1 2 3; do
        start_server "$number" && break
        kill "$ScreenPids" 2>/dev/null
    done
    if [ ! -s "$number" ]; then
        cannot "start a virtual screen (Xvfb)"
        return 1
    fi
    DISPLAY=:$(cat "$number")
    rm "$number"
    export DISPLAY
    openbox --sm-disable --config-file "$root/scripts/openbox.xml" >/dev/null 2>&1 &
    ScreenPids="$! $ScreenPids"
    if ! wait_until 60 xdotool get_num_desktops; then
        cannot "start a window manager (openbox)"
        return 1
    fi
    # Away from where windows appear: one that comes up under the pointer takes over the state of the
    # keyboard at that moment, which has none of the keys that a test presses.
    xdotool mousemove 1279 899
}

# True once two pictures of the screen, taken one after the other, are the same. Keeps them in the folder $work.
screen_stands_still() {
    import -window root "$work/new.ppm" || return 1
    if cmp -s "$work/new.ppm" "$work/old.ppm"; then return 0; fi
    mv "$work/new.ppm" "$work/old.ppm"
    return 1
}

stop_screen() {
    [ -z "${ScreenPids:-}" ] && return
    # What Wine still runs on this screen ends first; the prefix is used for virtual screens only.
    /usr/lib/wine/wineserver64 -k 2>/dev/null
    timeout 20 /usr/lib/wine/wineserver64 -w 2>/dev/null
    # The list holds only process numbers.
    # shellcheck disable=SC2086
    kill $ScreenPids 2>/dev/null
    # shellcheck disable=SC2086
    wait $ScreenPids 2>/dev/null
    ScreenPids=
}
