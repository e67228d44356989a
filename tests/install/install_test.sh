#!/bin/sh
# Usage: install_test.sh BUILD CMAKE COMPILER
# Installs into a folder below BUILD, builds the program of docs/library.md with what lies there alone, and runs it.
set -eu
build=$1 cmake=$2 compiler=$3
page=$(cd "$(dirname "$0")/../../docs" && pwd)/library.md
folder=$build/tests/install/host
prefix=$folder/prefix
rm -rf "$folder"
mkdir -p "$folder/program"
cd "$folder"
fail() { echo "install_test: $*" >&2; exit 1; }
"$cmake" --install "$build" --prefix "$prefix" >install.log

# The page's blocks: one of C++, one of CMake.
block() { awk -v begin="\`\`\`$1" '/^```/ { inside = $0 == begin; next } inside' "$page"; }
block cpp >program/change.cpp
block cmake >program/CMakeLists.txt
[ "$(wc -l <program/change.cpp)" -le 15 ] || fail 'the program has more than 15 lines'
# Every header lies where the others look for it, and nothing leads back to where it was built.
(cd "$prefix/include" && find zel -name '*.h' | sort) >headers
[ "$(cut -d/ -f2 headers | sort -u | tr '\n' ' ')" = 'definition drawing list record ' ] || fail 'rooms are missing'
! grep -rF "$build" "$prefix/lib/cmake" || fail 'the package leads into the build folder'
cat >>program/CMakeLists.txt <<'END'
add_executable(draw draw.cpp)
target_compile_options(draw PRIVATE -Wall -Wextra -Wpedantic -Werror)
target_link_libraries(draw PRIVATE zel::drawing zel::definition)
END
{
    echo '#include <fstream>'
    sed 's/.*/#include "&"/' headers
    echo 'int main() { std::ofstream file("drawing"); return zel::DrawingRecord().Write(file) ? 0 : 1; }'
} >program/draw.cpp
"$cmake" -G Ninja -S program -B built -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" >build.log 2>&1 &&
    "$cmake" --build built >>build.log 2>&1 || { cat build.log; fail 'the program does not build'; }
built/draw

# It runs as the page says, and loses nothing.
zelsketch=$prefix/bin/zelsketch
echo '{ "Definitions": [ { "AreaCode": "GAR", "Members": [ { "AreaCode": "BSMT" } ] }, { "AreaCode": "P/P" } ] }' |
    "$zelsketch" build - old.zel
built/change old.zel new.zel || fail 'the program failed'
[ "$("$zelsketch" get new.zel 'Definitions[GAR].Multiplier')" = 0.5 ] || fail 'nothing has changed'
"$zelsketch" set --no-backup old.zel 'Definitions[GAR].Multiplier=0.5' >/dev/null
cmp old.zel new.zel
! built/change old.zel new.zel || fail 'the program replaced a file'
head -c 200 old.zel >cut.zel
! built/change cut.zel other.zel || fail 'the program took half a file for a whole one'
[ ! -e other.zel ] || fail 'the program saved half a file'

# What lies beside the tool says the same as it does.
"$zelsketch" manual | cmp - "$prefix/share/man/man1/zelsketch.1"
"$zelsketch" completion | cmp - "$prefix/share/bash-completion/completions/zelsketch"
file -m "$prefix/share/zelsketch/zelsketch.magic" new.zel | grep -q 'Area definition file' || fail 'no magic'
