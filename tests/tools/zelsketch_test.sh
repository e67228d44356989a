#!/bin/sh
# Usage: zelsketch_test.sh ZELSKETCH MAGIC MANUAL
# What only the program itself shows: statuses, streams, a disk that is full, file(1) and the manual page.
set -u
zelsketch=$1 magic=$2 manual=$3
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
full() (
    trap '' XFSZ
    ulimit -f "$1"
    shift
    exec "$@"
)

{
    printf '{ "Definitions": [ {'
    for _ in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do printf ' }, {'; done
    printf ' } ] }'
} >f.json
expect 0 '' "$zelsketch" build f.json f
expect 0 'zelsketch 1.0.741' "$zelsketch" --version
expect 0 'Exit status:' "$zelsketch" --help
expect 2 'FILE is required' "$zelsketch" show
expect 2 'zelsketch: cannot read missing: No such file' "$zelsketch" show missing
expect 2 'zelsketch: cannot read .: Is a directory' "$zelsketch" show .
expect 2 'cannot write to the standard output' sh -c '"$1" show f >/dev/full' - "$zelsketch"
expect 2 'cannot replace /dev/null: not a regular file' "$zelsketch" build f.json /dev/null
expect 2 'cannot write none/g: No such file' "$zelsketch" convert --to-version 3 f none/g

# A full disk: the new file does not appear, the old one stays, nothing is left beside them.
expect 2 'cannot write g: File too large' full 1 "$zelsketch" convert --to-version 3 f g
cp f old
expect 2 'cannot write f: File too large' full 1 "$zelsketch" build f.json f
cmp f old || failed=1
[ "$(ls)" = "$(printf 'f\nf.json\nold')" ] || { ls >&2; failed=1; }

expect 0 'f: Area definition file, version 5, type 0' file -m "$magic" f
expect 0 'f.json: JSON' file -m "$magic:/usr/share/misc/magic" f.json
lint=$(mandoc -Tlint "$manual" 2>&1) || { echo "$lint" >&2; failed=1; }
[ -z "$lint" ] || { echo "$lint" >&2; failed=1; }
exit "$failed"
