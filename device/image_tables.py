#!/usr/bin/python3
"""Usage: image_tables.py ASSEMBLY EXPORTS.def IMPORTS.def...

Writes the tables that an image's loader reads, as assembly for the link: what it exports, by EXPORTS.def ("-" for
nothing), and what it may import from the library of each IMPORTS.def. Every import has sections of its own, so that the
linker drops those that nothing calls."""
import pathlib
import re
import sys


def read(path):
    text = re.sub(r';.*', '', pathlib.Path(path).read_text())
    library = re.search(r'LIBRARY\s+"?([\w.]+)"?', text).group(1)
    return library, re.findall(r'^\s+(\w+)', text[text.index('EXPORTS'):], re.M)


def exports(path):
    library, names = read(path)
    count = len(names)
    yield f'''
    .section .exports, "a"
    .word 0, 0, 0, library, 1, {count}, {count}, functions, names, ordinals
functions:'''
    yield from (f'    .word {name}' for name in names)
    yield 'names:'
    yield from (f'    .word name_{name}' for name in sorted(names))
    yield 'ordinals:'
    yield from (f'    .short {names.index(name)}' for name in sorted(names))
    yield f'library: .asciz "{library}"'
    yield from (f'name_{name}: .asciz "{name}"' for name in names)


def imports(path):
    library, names = read(path)
    group = library.split('.')[0].lower()
    yield f'''
    .section .imports.{group}, "a"
imports_{group}:
    .word __lookup_{group}, 0, 0, library_{group}, __addresses_{group}
    .section .hint.{group}, "a"
library_{group}: .asciz "{library}"'''
    for name in names:
        # The stub keeps its words in the tables, and the library's row.
        yield f'''
    .section .text.import.{name}, "ax"
    .global {name}
    .type {name}, %function
{name}:
    ldr ip, 0f
    ldr pc, [ip]
0:  .word address_{name}
    .reloc {name}, R_ARM_NONE, lookup_{name}
    .reloc {name}, R_ARM_NONE, imports_{group}
    .section .address.{group}.{name}, "aw"
address_{name}: .word hint_{name}
    .section .lookup.{group}.{name}, "a"
lookup_{name}: .word hint_{name}
    .section .hint.{name}, "a"
    .balign 2
hint_{name}: .short 0
    .asciz "{name}"'''


def main(out, export_def, *import_defs):
    lines = ['    .syntax unified', '    .arm']
    if export_def != '-':
        lines += exports(export_def)
    for path in import_defs:
        lines += imports(path)
    pathlib.Path(out).write_text('\n'.join(lines) + '\n')


main(*sys.argv[1:])
