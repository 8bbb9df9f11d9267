#!/usr/bin/env bash
# Installs the packages that scripts/package.sh has made on a fresh Debian 12, which is made for it in
# a temporary directory with the archive that this machine's apt uses, and runs there what users run
# first: the program, the README's example by CMake and by pkg-config, the examples of Python and
# Dask. With the argument "qt6" the README's example runs under Qt 6, too, with a library that is built
# there. Needs root; leaves nothing behind.
set -euo pipefail
self=$(realpath "$0")
cd "$(dirname "$self")/.."

if [ "$(id -u)" -ne 0 ]; then
    echo "try-packages: this needs root" >&2
    exit 1
fi
# In namespaces of its own: what is mounted, and what runs in there, ends with it, however it ends.
if [ -z "${KELSTD_TRY_DIRECTORY:-}" ]; then
    command -v mmdebstrap >/dev/null || scripts/setup.sh try-packages
    KELSTD_TRY_DIRECTORY=$(mktemp -d)
    export KELSTD_TRY_DIRECTORY
    trap 'rm -rf --one-file-system "$KELSTD_TRY_DIRECTORY"' EXIT
    unshare --mount --pid --fork --kill-child --mount-proc "$self" "$@" &
    child=$!
    trap 'kill "$child"; wait "$child" || true; sleep 1; exit 130' INT TERM
    wait "$child"
    exit
fi

packages=$PWD/build/package/packages
if ! compgen -G "$packages/kelstd_*.deb" >/dev/null; then
    echo "try-packages: there are no packages; scripts/package.sh makes them" >&2
    exit 1
fi

work=$KELSTD_TRY_DIRECTORY
root=$work/debian

step() { printf '\n=== %s\n' "$*"; }
inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive HOME=/root "$@"; }
# As a user without rights, from a home directory of its own.
as_user() { chroot --userspec=surveyor "$root" /usr/bin/env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 \
    HOME=/home/surveyor bash -euo pipefail -c "cd; $1"; }
# Shows what it reads, in which the text has to be.
expect() {
    local output
    output=$(cat)
    printf '%s\n' "$output"
    if [[ $output != *"$1"* ]]; then
        echo "try-packages: \"$1\" is not in the output" >&2
        exit 1
    fi
}

step "a fresh Debian 12"
apt-get indextargets --format 'deb $(REPO_URI) $(CODENAME) $(COMPONENT)' \
    'Created-By: Packages' 'Origin: Debian' | grep ' bookworm' | sort -u >"$work/sources.list"
[ -s "$work/sources.list" ] || { echo "try-packages: apt knows no archive of Debian 12" >&2; exit 1; }
apt-config dump | grep -E '^Acquire::(http|https)::(Proxy|CAInfo)' >"$work/apt.conf" || true
mmdebstrap --quiet --variant=apt --dpkgopt=force-unsafe-io --aptopt="$work/apt.conf" bookworm "$root" "$work/sources.list"
cp -L /etc/resolv.conf "$root/etc/resolv.conf"
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"
mount --make-rslave "$root/dev"
inside useradd --create-home surveyor
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages/"
cp -r README.md examples "$root/home/surveyor/"
inside chown -R surveyor: /home/surveyor

step "apt install"
inside apt-get update -qq
inside bash -c 'apt-get install -y -qq --no-install-recommends /packages/*.deb' >"$work/apt.log" 2>&1 ||
    { cat "$work/apt.log" >&2; exit 1; }
inside dpkg-query --show --showformat '${db:Status-Abbrev} ${Package} ${Version} ${Installed-Size} kB\n' \
    '*kelstd*'

step "the program"
as_user 'kelstd --version'
as_user 'kelstd doctor' | tee "$work/doctor"
if grep -iE '^ *(bad|missing|wrong)' "$work/doctor"; then exit 1; fi
as_user 'kelstd convert --system examples/rd_new.xml --from wgs84-llh --table examples/rd_new_points.csv' |
    expect 465682.96
as_user 'kelstd convert --system EPSG:28992 --csv examples/rd_new_points.csv' | expect 465682.9
as_user 'kelstd convert --system "ED50 / UTM zone 31N" --to "WGS 84 / UTM zone 31N" examples/wells.shp -o wells.gpkg'

step "manual pages, completion, MIME type"
inside apt-get install -y -qq --no-install-recommends man-db bash-completion xdg-utils shared-mime-info \
    libfile-mimeinfo-perl libglib2.0-bin >>"$work/apt.log" 2>&1
as_user 'man kelstd-convert | head -4'
as_user '
source /usr/share/bash-completion/bash_completion
_completion_loader kelstd || true
complete -p kelstd'
as_user 'kelstd complete bash ":" "kelstd convert --system EPSG:2899"' | expect 28992
as_user 'xdg-mime query filetype examples/rd_new.xml' | expect application/vnd.kelstd.coord+xml

step "the README's example, by CMake"
inside apt-get install -y -qq --no-install-recommends g++ cmake make pkg-config >>"$work/apt.log" 2>&1
as_user '
cmake -S examples/quickstart -B quickstart >/dev/null
cmake --build quickstart >/dev/null
quickstart/quickstart examples/rd_new.xml' |
    expect "$(cat examples/quickstart/expected_output.txt)"

step "the README's example, by pkg-config"
as_user '
g++ -fPIC examples/quickstart/main.cpp -o quickstart-pkg $(pkg-config --cflags --libs kelstd)
./quickstart-pkg examples/rd_new.xml' |
    expect "$(cat examples/quickstart/expected_output.txt)"

if [ "${1:-}" = qt6 ]; then
    step "the README's example, under Qt 6"
    inside apt-get install -y -qq --no-install-recommends qt6-base-dev qt6-5compat-dev \
        ninja-build libproj-dev libeigen3-dev libboost-math-dev proj-data >>"$work/apt.log" 2>&1
    mkdir "$root/home/surveyor/source"
    git ls-files -z | xargs -0 tar cf - | tar xf - -C "$root/home/surveyor/source"
    inside chown -R surveyor: /home/surveyor/source
    as_user '
cmake -S source -B qt6 -G Ninja -DKELSTD_QT=6 -DCMAKE_BUILD_TYPE=Release -DKELSTD_BUILD_TESTS=OFF \
    -DKELSTD_BUILD_CLI=OFF >/dev/null
nice cmake --build qt6 >/dev/null
cmake --install qt6 --prefix ~/prefix >/dev/null
cmake -S examples/quickstart -B quickstart6 -DCMAKE_PREFIX_PATH=$HOME/prefix >/dev/null
cmake --build quickstart6 >/dev/null
ldd quickstart6/quickstart | grep libQt6Core
quickstart6/quickstart examples/rd_new.xml' |
        expect "$(cat examples/quickstart/expected_output.txt)"
fi

step "the Python example"
inside apt-get install -y -qq --no-install-recommends python3-pandas >>"$work/apt.log" 2>&1
as_user 'python3 examples/python/convert_table.py examples/rd_new.xml examples/rd_new_points.csv' |
    expect "$(cat examples/python/expected_output.txt)"

step "the Dask example"
inside apt-get install -y -qq --no-install-recommends python3-distributed python3-zarr \
    >>"$work/apt.log" 2>&1
as_user '
mkdir tables
grep -v "^#" examples/rd_new_points.csv >tables/rd_new_points.csv
python3 examples/dask/convert_directory.py --system examples/rd_new.xml tables converted
head -2 converted/rd_new_points.csv' | expect 465682.96

step "the pages"
as_user 'ls /usr/share/doc/kelstd-doc/html | wc -l; test -s /usr/share/doc/kelstd-doc/html/index.html'

step "apt purge"
inside bash -c "apt-get purge -y -qq '*kelstd*'" >>"$work/apt.log" 2>&1
if find "$root/usr" "$root/etc" "$root/var/lib" -iname '*kelstd*' -not -path '*/dpkg/*' \
    -not -path '*/apt/*' | grep .; then
    echo "try-packages: this is left after the purge" >&2
    exit 1
fi
step "all done"
