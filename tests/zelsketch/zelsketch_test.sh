#!/bin/sh
# Usage: zelsketch_test.sh BUILD VERSION [EMULATOR]
# What only the program itself shows: statuses, streams, names with any letter, a disk that is full, file(1) and the
# manual page. An emulator runs the program for another system, where the last three are not looked at.
set -u
build=$1 version=$2 emulator=${3-}
docs=$(cd "$(dirname "$0")/../../docs" && pwd)
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
rm g
zelsketch show --json f >g.json
expect 0 '' zelsketch build g.json g
cmp f g || failed=1
expect 2 'will not replace ./g.json: it is the JSON itself' zelsketch build g.json ./g.json
rm g.json
chmod a-w g
expect 2 'will not replace g: it is read-only; --force replaces it' zelsketch build f.json g
expect 0 '' zelsketch build --force f.json g
expect 0 "zelsketch $version" zelsketch --version
expect 0 'Exit status:' zelsketch --help
expect 0 'JSON:' zelsketch build --help
expect 2 'FILE is required' zelsketch show
expect 2 'no such command: shwo' zelsketch shwo f
expect 2 'not expected: --jsn' zelsketch show --jsn f
truncate -s 10G huge
# A 32-bit program takes less.
limit=1024
case $build in */windows-x86) limit=256 ;; esac
expect 2 "cannot read huge: larger than $limit MiB" zelsketch check huge
expect 2 'zelsketch: cannot read missing: No such file' zelsketch show missing
expect 2 'cannot write none/g: No such file' zelsketch convert --to-version 3 f none/g
rm -f g huge
# Changes in place; what stood there is kept beside.
cp f old
expect 0 'Header.CreatedBy: "" to "Jo"' zelsketch set f Header.CreatedBy=Jo
cmp old f.bak || failed=1
expect 0 'Jo' zelsketch get f Header.CreatedBy
expect 0 'removed: Definitions[20]' zelsketch remove --no-backup f 'Definitions[20]'
cmp old f.bak || failed=1
chmod a-w f.bak
expect 2 'will not replace f.bak: it is read-only; --force replaces it' zelsketch add f Definitions
chmod a-w f
expect 2 'will not replace f: it is read-only; --force replaces it' zelsketch add f Definitions
expect 0 'added: Definitions[0] GLA1' zelsketch add --force f 'Definitions[0]' AreaCode=GLA1
chmod u+w f
expect 0 'moved: Definitions[0] GLA1 to Definitions[20]' zelsketch move --no-backup f 'Definitions[GLA1]' Definitions
expect 0 'GLA1' eval "zelsketch set - Header.CreatedBy=Jo <f | zelsketch get - 'Definitions[20].AreaCode'"
mv -f old f
rm f.bak
[ "$(ls)" = "$(printf 'f\nf.json')" ] || { ls >&2; failed=1; }
# Standard streams, many files, folders.
expect 0 '-: sound' eval 'zelsketch check - <f'
expect 0 'Definitions[20]' eval 'zelsketch build - - <f.json | zelsketch show -'
mkdir -p in/deep
cp f in/a.zel
cp f in/deep/b
echo text >in/readme
expect 2 'cannot read in: a folder; --recursive takes the files in it' zelsketch check in
expect 0 'passed over 1 file of other kinds' zelsketch check -r in
[ "$(zelsketch check -r in 2>/dev/null | tr '\\' /)" = "$(printf 'in/a.zel: sound\nin/deep/b: sound')" ] || failed=1
echo text >in/odd.ZEL
expect 1 'odd.ZEL: 0x00000000: Header.Signature' zelsketch check -r in
rm in/odd.ZEL
mkdir out
expect 0 'version 3' zelsketch convert --to-version 3 -r in out
zelsketch convert --to-version 3 -o one f >report
expect 0 'one: version 3, 0 values lost' cat report
cmp one out/a.zel && cmp one out/deep/b || failed=1
expect 2 'one is no folder, where more than one file could go' zelsketch convert --to-version 3 f f one
expect 0 '' zelsketch show -o page f in/a.zel
expect 0 '==> in/a.zel <==' cat page
expect 2 'will not replace f: it is a definition file' zelsketch show -o f f
rm -r in out one page report

# The jobs of docs/zelsketch.md, as they stand there.
mkdir jobs && cd jobs || exit 1
mkdir archive
printf '%s' '{ "Definitions": [ { "AreaCode": "GLA1", "Members": [ { "AreaCode": "GAR" }, { "AreaCode": "BSMT" } ] },
                        { "AreaCode": "P/P" } ] }' >areas.json
zelsketch build areas.json areas.zel
cp areas.zel archive/a.zel
at=$(grep -abo P/P areas.zel | cut -d: -f1)
{ head -c $((at - 2)) areas.zel; printf '\000'; tail -c +$((at)) areas.zel; } >damaged.zel
jobs=$(awk '/^```/ { inside = $0 == "```sh"; next } inside' "$docs/zelsketch.md")
[ "$(echo "$jobs" | grep -c '^zelsketch')" -ge 13 ] || { echo 'jobs are missing' >&2; failed=1; }
while IFS= read -r job; do
    expect 0 '' eval "$job"
done <<EOF
$jobs
EOF
[ "$(zelsketch get mended.zel 'Definitions[*].AreaCode' | tr '\n' ' ')" = 'GLA1 P/P ' ] || failed=1
[ "$(zelsketch get areas.zel 'Definitions[*].AreaCode' | tr '\n' ' ')" = 'WIN GLA1 P/P ' ] || failed=1
cd .. && rm -r jobs
[ -z "$emulator" ] || exit "$failed"

for command in 'show f' 'check f' --help --version 'convert --to-version 4 f g'; do
    expect 2 'cannot write to the standard output' eval "zelsketch $command >/dev/full"
done
[ ! -e g ] || { echo 'converted, though nobody heard of the losses' >&2; failed=1; }
expect 2 "cannot read /dev/zero: larger than $limit MiB" zelsketch check /dev/zero
escape=$(printf 'a\033\302\233b')
expect 2 'cannot read a\x1b\xc2\x9bb: No such file' zelsketch show "$escape"
cp f "$escape"
expect 0 'a\x1b\xc2\x9bb: sound' zelsketch check "$escape"
rm "$escape"
# A change goes to the file behind a link, which stays one.
ln -s f link
expect 0 'to "Jo"' zelsketch set --no-backup link Header.CreatedBy=Jo
[ -L link ] && expect 0 'Jo' zelsketch get f Header.CreatedBy
expect 0 'to ""' zelsketch set --no-backup link Header.CreatedBy=
rm link
# completed WORD...: what bash makes of the last word.
completed() {
    bash -c 'source <("$0" completion); COMP_WORDS=(zelsketch "$@"); COMP_CWORD=$#; _zelsketch
             echo "${COMPREPLY[@]}"' "$build/zelsketch" "$@"
}
[ "$(completed con)" = convert ] && [ "$(completed show --j)" = --json ] && [ -z "$(completed show f)" ] || failed=1
expect 0 "$(printf '\033[1mHeader')" zelsketch show --color always f
# As git uses it, in both ways.
(
    mkdir repo && cd repo || exit 1
    unset GIT_EXTERNAL_DIFF GIT_DIR
    export HOME="$folder/repo" PATH="$build:$PATH" GIT_CONFIG_NOSYSTEM=1
    git init -q . && git config user.name x && git config user.email x@example.org
    echo '*.zel diff=zel' >.gitattributes
    cp ../f 'a b.zel'
    git add . && git commit -qm first
    zelsketch set --no-backup 'a b.zel' 'Definitions[3].AreaName=Attic' >/dev/null
    git config diff.zel.textconv 'zelsketch show'
    expect 0 '+  AreaName                 "Attic"' git diff
    git config diff.zel.command 'zelsketch diff --git'
    expect 0 'changed: Definitions[3].AreaName: "" -> "Attic"' git diff
    git mv 'a b.zel' c.zel && expect 0 'a b.zel -> c.zel' git diff -M HEAD
    cp ../f d.zel && git add d.zel && expect 0 'new file' git diff --cached d.zel
    exit "$failed"
) || failed=1
rm -rf repo
zelsketch --help | awk 'length > 80 { exit 1 }' || { echo '--help is too wide' >&2; failed=1; }
# interrupted SIGNAL CALL before|after COMMAND...: the command dies of it.
interrupted() (
    number=$1 call=$2 when=$3
    shift 3
    export ZEL_SIGNAL="$number" ZEL_CALL="$call" ZEL_WHEN="$when" ASAN_OPTIONS=verify_asan_link_order=0
    LD_PRELOAD=$build/tests/zelsketch/libzelsketch_interrupt.so "$build/zelsketch" "$@"
)
# Who starts it may want it to go on.
expect 0 '' eval "trap '' 1; interrupted 1 fsync before convert --to-version 3 f g"
[ -e g ] || failed=1
rm g
# A change in place meets its end before or behind both names' change, never between them.
cp f old
for moment in 'fsync before' 'fsync after' 'rename before' 'rename after'; do
    cp old f
    echo backup >f.bak
    expect 130 '' eval "interrupted 2 $moment set f Header.CreatedBy=Jo"
    case $moment in
        fsync*) cmp f old && [ "$(cat f.bak)" = backup ] || failed=1 ;;
        *) cmp f.bak old && [ "$("$build/zelsketch" get f Header.CreatedBy)" = Jo ] || failed=1 ;;
    esac
done
mv old f
rm f.bak
cp f old
zelsketch convert --to-version 3 f new >/dev/null
sed 's/ } ] }/ }, { "AreaCode": "new" } ] }/' f.json >new.json
zelsketch build new.json built
for number in 1 2 15; do
    cp old f
    for moment in 'fsync before' 'fsync after' 'renameat2 before' 'renameat2 after'; do
        expect $((128 + number)) '' eval "interrupted $number $moment convert --to-version 3 f g"
        [ ! -e g ] || cmp g new || failed=1
        rm -f g
    done
    for moment in 'fsync before' 'rename before' 'rename after'; do
        cp old f
        expect $((128 + number)) '' eval "interrupted $number $moment build new.json f"
        case $moment in fsync*) cmp f old || failed=1 ;; *) cmp f built || failed=1 ;; esac
    done
done
cp old f
rm old new new.json built
[ "$(ls)" = "$(printf 'f\nf.json')" ] || { ls >&2; failed=1; }
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
