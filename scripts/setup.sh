#!/usr/bin/env bash
# Installs what is missing of the Debian packages that the project needs: for the build and all tests,
# or for what the argument names alone.
set -euo pipefail

packages=(
    g++ cmake ninja-build            # the build
    qtbase5-dev libqt5xml5           # Qt 5 Core and Xml
    libeigen3-dev libboost-math-dev  # least squares and quantiles: headers alone
    libproj-dev libproj25 proj-data  # PROJ's header, the library file and the resource files
    libgdal-dev                      # the program's module for vector files
    unzip                            # unpacks PROJ at run time
)
python=(
    pybind11-dev python3-dev         # the Python package
    python3-numpy                    # its columns
)
site=(doxygen doxygen-awesome-css)   # the documentation site and its theme
clang=(clang libclang-rt-dev)        # the sanitizers, and the targets of fuzzing
tests=(
    "${clang[@]}"
    libgtest-dev libgmock-dev        # the tests
    proj-bin gdal-bin zip tzdata     # their independent peers
    gpsd-clients gpsbabel            # the same, for what receivers say
    chromium                         # looks at reports and at the site
    make pkgconf                     # a build by pkg-config
    dpkg-dev                         # the flags of Debian's packages
    abigail-tools git                # compares what the libraries offer with a release
    qttools5-dev-tools               # lupdate, which extracts texts
    zsh fish                         # complete command lines
    shared-mime-info libfile-mimeinfo-perl libglib2.0-bin  # are asked what type a file has
    python3-pandas python3-xarray    # columns for the Python package
    python3-pytest mypy              # its tests
    python3-pip python3-setuptools   # it is installed as Python installs packages
    python3-wheel                    # the same
    python3-distributed              # the example on a cluster
    python3-zarr                     # and its arrays
)
case "${1:-}" in
build) ;;
benchmark)
    packages+=("${python[@]}" libbenchmark-dev)
    packages+=(proj-bin python3-pyproj python3-pandas python3-distributed parallel) # the peers
    ;;
fuzz) packages+=("${clang[@]}") ;;
package) packages+=("${python[@]}" "${site[@]}" dpkg-dev file lintian) ;;
try-packages) packages+=(mmdebstrap) ;;
qt6) packages+=("${python[@]}" "${site[@]}" "${tests[@]}" qt6-base-dev qt6-5compat-dev qt6-l10n-tools) ;;
"") packages+=("${python[@]}" "${site[@]}" "${tests[@]}") ;;
*)
    echo "usage: scripts/setup.sh [build|benchmark|fuzz|package|try-packages|qt6]" >&2
    exit 2
    ;;
esac

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

if ! command -v apt-get >/dev/null; then
    echo "setup: this script installs Debian packages; install these by other means: ${missing[*]}" >&2
    exit 1
fi
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
echo "setup: installing ${missing[*]}" >&2
"${as_root[@]}" apt-get update -qq
DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
