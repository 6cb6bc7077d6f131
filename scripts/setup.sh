# Shared by run, test and bench, which source it: installs what is missing, configures, builds.
# Everything it tells goes to the standard error, so that a program's own output stays pure.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# Tests side by side: one more than there are processors, since many wait for a disk or a window.
jobs=$(($(nproc) + 1))

# What the build and the tests need of Debian 12 or 13, one package a line.
packages=(
    g++             # the compiler
    cmake           # configures by the presets
    ninja-build     # builds
    ccache          # makes the second build of the same sources quick
    pkg-config      # lets CMake find the libraries
    qt6-base-dev    # Qt 6: text, files, the plugin, windows, printing
    qt6-svg-dev     # the pictures of the screens
    fonts-dejavu-core # letters for the screens where there is no other font
    fonts-liberation2 # letters of the reports
    fonts-ocr-b     # the machine-read line of a giro slip
    libwmf-bin      # draws logos that are metafiles (WMF)
    fonts-urw-base35 # without which libwmf draws nothing
    libsqlite3-dev  # the embedded database
    libicu-dev      # Norwegian order of text
    libqpdf-dev     # author, language and the like of a PDF file
    libpq-dev       # the shared database: PostgreSQL's client library
    postgresql      # the server that the tests run for themselves
    libgtest-dev    # the tests
    tzdata          # the time zones that the tests run in
    xvfb            # a screen that nobody sees, for the tests with real windows
    openbox         # their window manager
    xdotool         # their mouse and keyboard
    x11-utils       # xprop, which reads what the window manager knows
    dbus-daemon     # the session of a desktop, which they have for themselves
    at-spi2-core    # its accessibility bus, read as by a screen reader
    libxml2-utils   # xmllint, by which the tests check documents
    poppler-utils   # pdftotext and its like, by which they read PDF files
)

# What ./check, the gate and ./test --dekning need besides.
check_packages=(
    clang           # the fuzz targets, headers alone
    libclang-rt-dev # the fuzzer and the sanitizers of clang
    clang-format-19 # one version judges, and both Debians have this one
    clang-tidy-19
    python3         # the checks in scripts/check
    git             # lists the files
    valgrind        # sees values that nobody set
    gcovr           # counts what the tests reach
    libsaxonhe-java # runs the official rules of EHF 3.0, where these lie beside the repository
    default-jre-headless # what that runs on
)

say() {
    printf '== %s\n' "$*" >&2
}

die() {
    printf '%s\n' "$*" >&2
    exit 1
}

is_installed() {
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# As root, or through sudo. The environment is set behind sudo, which would drop it.
as_root() {
    if ((EUID == 0)); then
        env DEBIAN_FRONTEND=noninteractive "$@" >&2
    elif command -v sudo >/dev/null; then
        sudo env DEBIAN_FRONTEND=noninteractive "$@" >&2
    else
        die "Packages are missing (${missing[*]}), and there is neither root nor sudo to install them."
    fi
}

install_missing() {
    local package
    missing=()
    for package in "${packages[@]}"; do
        is_installed "$package" || missing+=("$package")
    done
    if ((${#missing[@]} > 0)); then
        say "Installing ${missing[*]}"
        as_root apt-get update
        as_root apt-get install -y --no-install-recommends "${missing[@]}"
    fi
}

# build PRESET [TARGET...]: configures when that has not been done and builds into build/PRESET.
build() {
    local preset=$1
    shift
    local folder=$root/build/$preset
    # A tree that was moved or copied holds a configuration of its old place.
    if [[ -f $folder/CMakeCache.txt ]] &&
        ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
        say "Removing build/$preset, which was configured in another folder"
        rm -rf "$folder"
    fi
    if [[ ! -f $folder/build.ninja ]]; then
        say "Configuring build/$preset"
        (cd "$root" && cmake --preset "$preset") >&2
    fi
    say "Building build/$preset"
    if (($# > 0)); then
        set -- --target "$@"
    fi
    cmake --build "$folder" "$@" >&2
}
