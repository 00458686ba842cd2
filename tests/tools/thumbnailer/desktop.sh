# SPDX-License-Identifier: LGPL-2.1-or-later
# Other scripts source this file. It sets up a desktop environment with the files of the program's prefix and without those of
# the user. Sets $prefix, $program and $directory, which is removed at the end of the script.

tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$tests/../options.sh"
need sorrel-thumbnailer Sorrel
need update-mime-database shared-mime-info
program=$(command -v sorrel-thumbnailer)
prefix=$(dirname "$(dirname "$program")")

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
mkdir -p "$directory"/{data/mime/packages,cache,config,files,run}
chmod 700 "$directory/run"
export LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1 HOME=$directory
export XDG_DATA_HOME=$directory/data XDG_CACHE_HOME=$directory/cache XDG_CONFIG_HOME=$directory/config
export XDG_RUNTIME_DIR=$directory/run XDG_DATA_DIRS=$prefix/share:/usr/share
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS

fail() {
    echo "$1" >&2
    exit 1
}

# Makes the database of types from the installed file, and prints its faults.
cp "$prefix/share/mime/packages/sorrel-mime.xml" "$directory/data/mime/packages"
messages=$(update-mime-database "$directory/data/mime" 2>&1) || fail "update-mime-database fails: $messages"
[ -z "$messages" ] || fail "update-mime-database says: $messages"
