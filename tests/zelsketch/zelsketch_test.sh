#!/bin/sh
# Usage: zelsketch_test.sh BUILD VERSION [EMULATOR]
# What only the program itself shows: statuses, streams, names with any letter, a disk that is full, file(1) and the
# manual page. An emulator runs the program for another system, where the last three are not looked at.
set -u
build=$1 version=$2 emulator=${3-}
magic=$(cd "$(dirname "$0")/../../zelsketch" && pwd)/zelsketch.magic manual=$build/zelsketch.1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
failed=0
# expect STATUS TEXT COMMAND...: the command ends so, and what it prints has the text in it.
expect() {
    status=$1 text=$2
    shift 2
    printed=$("$@" 2>&1)
    got=$?
    case $printed in
        *"$text"*) [ "$got" -eq "$status" ] && return ;;
    esac
    echo "status $got, expected $status and '$text' of: $*" >&2
    echo "$printed" >&2
    failed=1
}
zelsketch() {
    if [ -n "$emulator" ]; then "$emulator" "$build/zelsketch.exe" "$@"; else "$build/zelsketch" "$@"; fi
}
full() (
    trap '' XFSZ
    ulimit -f "$1"
    shift
    "$@"
)

{
    printf '{ "Definitions": [ {'
    for _ in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do printf ' }, {'; done
    printf ' } ] }'
} >f.json
expect 0 '' zelsketch build f.json f
expect 0 '' zelsketch build f.json 'Größe ł'
cmp f 'Größe ł' || failed=1
rm 'Größe ł'
expect 0 'Definitions[20]' zelsketch show f
expect 0 'f: sound' zelsketch check f
expect 0 'g: version 3, 0 values lost' zelsketch convert --to-version 3 f g
expect 2 'zelsketch: will not overwrite g: File exists' zelsketch convert --to-version 3 f g
expect 0 '' zelsketch build f.json g
cmp f g || failed=1
zelsketch show --json f >g
expect 0 '' zelsketch build g g
cmp f g || failed=1
expect 0 "zelsketch $version" zelsketch --version
expect 0 'Exit status:' zelsketch --help
expect 2 'FILE is required' zelsketch show
expect 2 'zelsketch: cannot read missing: No such file' zelsketch show missing
expect 2 'cannot write none/g: No such file' zelsketch convert --to-version 3 f none/g
rm g
[ "$(ls)" = "$(printf 'f\nf.json')" ] || { ls >&2; failed=1; }
[ -z "$emulator" ] || exit "$failed"

expect 2 'zelsketch: cannot read .: Is a directory' zelsketch show .
expect 2 'cannot write to the standard output' eval 'zelsketch show f >/dev/full'
expect 2 'cannot replace /dev/null: not a regular file' zelsketch build f.json /dev/null

# A full disk: the new file does not appear, the old one stays as it is, nothing is left beside them.
expect 2 'cannot write g: File too large' full 1 zelsketch convert --to-version 3 f g
cp f old
expect 2 'cannot write f: File too large' full 1 zelsketch build f.json f
cmp f old || failed=1
[ "$(ls)" = "$(printf 'f\nf.json\nold')" ] || { ls >&2; failed=1; }
chmod 640 f
expect 0 '' zelsketch build f.json f
[ "$(stat -c %a f)" = 640 ] || failed=1

version=$(zelsketch show --json f | sed -n 's/.*"FileVersion": \([0-9]*\).*/\1/p')
expect 0 "f: Area definition file, version $version, type 0" file -m "$magic" f
expect 0 'f.json: JSON' file -m "$magic:/usr/share/misc/magic" f.json
lint=$(mandoc -Tlint "$manual" 2>&1) || { echo "$lint" >&2; failed=1; }
[ -z "$lint" ] || { echo "$lint" >&2; failed=1; }
exit "$failed"
