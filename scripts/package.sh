#!/usr/bin/env bash
# From a fresh checkout to Debian packages: installs what is missing, builds, makes the packages in
# build/package/packages and has lintian look at them. Fails when lintian finds an error.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh package
cmake --preset package
cmake --build --preset package

made=$PWD/build/package/packages
rm -rf "$made"
(cd build/package && cpack -G DEB -B "$made")
rm -rf "$made/_CPack_Packages"
for expected in libkelstd0 libkelstd-dev kelstd python3-kelstd kelstd-doc; do
    if ! compgen -G "$made/${expected}_*.deb" >/dev/null; then
        echo "package: $expected was not made" >&2
        exit 1
    fi
done
lintian --allow-root --fail-on error "$made"/*.deb
ls -l "$made"
