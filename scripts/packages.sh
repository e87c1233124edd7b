# Sourced by run and test: installs Debian packages that are missing, and nothing when all are there.

# Qt, the expression parser, Protocol Buffers (libprotoc-dev has the header for reading .proto text), the parsers of
# JSON and YAML, the compressions of recordings, and what compiles them.
build_packages="build-essential cmake ninja-build qt6-base-dev qt6-tools-dev qt6-tools-dev-tools
    qt6-l10n-tools qt6-translations-l10n libqcustomplot-dev libmuparser-dev libprotobuf-dev libprotoc-dev libsimdjson-dev liblz4-dev
    libzstd-dev libyaml-cpp-dev libdeflate-dev zlib1g-dev qt6-websockets-dev qt6-serialport-dev libmosquitto-dev libnats-dev pkg-config fonts-dejavu-core"
# The second Qt, what loads forms (which needs OpenGL in Qt 6), benchmarks, sanitizers and fuzzers with clang, the checks of
# style and licences, the reference, a look at pictures of the window, the layout of public classes.
test_packages="$build_packages qtbase5-dev libqt5websockets5-dev libqt5serialport5-dev qttools5-dev
    qttools5-dev-tools qttranslations5-l10n libbenchmark-dev clang clang-format python3 libclang-rt-14-dev xvfb
    protobuf-compiler mosquitto mosquitto-clients nats-server openssl desktop-file-utils appstream imagemagick reuse
    doxygen qt6-documentation-tools libqt6opengl6-dev abigail-tools"
# What looks at Debian packages, and makes chroots where they are built and tried.
packaging_packages="dpkg-dev lintian mmdebstrap autopkgtest"

install_packages() {
    local missing=""
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0

    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing, and only root can install them:$missing" >&2
            return 1
        fi
        as_root=sudo
    fi
    echo "Installing packages:$missing"
    $as_root apt-get update -qq
    # shellcheck disable=SC2086 # a list of words
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}
