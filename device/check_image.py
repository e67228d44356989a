#!/usr/bin/python3
"""Usage: check_image.py ELF IMAGE OBJDUMP EXPORTS.def|- LARGEST

Refuses an image of the handheld that the device could not load or run: other headers than its system takes, exports
other than those of EXPORTS.def, imports that the device has not, instructions that its processor has not, more than
LARGEST bytes. Prints what it is."""
import os
import pathlib
import re
import subprocess
import sys

import pefile

IMPORTS = pathlib.Path(__file__).parent / 'imports'
# Beyond those that objdump does not know of an ARMv4 core: a preload, which it takes for a load.
LACKING = re.compile(r'\t(bx|blx|bxj|clz|pld|ldrd|strd|bkpt)[a-z]*\b')


def names(path):
    return set(re.findall(r'^\s+(\w+)', path.read_text(), re.M))


def allowed(library):
    """The core library's own list, for the others what was found on devices."""
    if library == 'coredll.dll':
        return set((IMPORTS / 'coredll.txt').read_text().split())
    return names(IMPORTS / library.replace('.dll', '.def'))


def faults(elf, path, image, objdump, exports, largest):
    header = image.FILE_HEADER, image.OPTIONAL_HEADER
    found = (header[0].Machine, header[1].Magic, header[1].Subsystem, header[1].MajorSubsystemVersion,
             header[1].MinorSubsystemVersion)
    if found != (0x01C0, 0x10B, 9, 3, 0):
        yield f'its header says {found}'
    # That a program imports little makes it suspect on the desktop only.
    yield from (warning for warning in image.get_warnings() if 'packed executables' not in warning)
    if not image.verify_checksum():
        yield 'its checksum is wrong'
    wanted = set() if exports == '-' else names(pathlib.Path(exports))
    exported = {symbol.name.decode() for symbol in image.DIRECTORY_ENTRY_EXPORT.symbols} if wanted else set()
    if exported != wanted:
        yield f'it exports {sorted(exported)}'
    for entry in image.DIRECTORY_ENTRY_IMPORT:
        library = entry.dll.decode().lower()
        for name in sorted({symbol.name.decode() for symbol in entry.imports} - allowed(library)):
            yield f'it imports {name}, which {library} of the device has not'
    size = os.path.getsize(path)
    if size > largest:
        yield f'it has {size} bytes, more than {largest}'
    listing = subprocess.run([objdump, '-d', '-m', 'armv4', elf], capture_output=True, text=True, check=True).stdout
    if listing.count('\n') < 1000:
        yield 'it could not be disassembled'
    # The unwinder's, of registers that no core here has: called for objects only that use them.
    listing = re.sub(r'<__gnu_Unwind_(Restore|Save)_WMMX\w>:\n.*?\n\n', '', listing, flags=re.S)
    for line in listing.splitlines():
        if LACKING.search(line) or 'UNDEFINED' in line:
            yield f'the processor lacks: {line.strip()}'


def main(elf, path, objdump, exports, largest):
    image = pefile.PE(path)
    refused = list(faults(elf, path, image, objdump, exports, int(largest)))
    for fault in refused:
        print(f'{path}: {fault}', file=sys.stderr)
    if refused:
        os.remove(path)
        sys.exit(1)
    code = sum(section.Misc_VirtualSize for section in image.sections if section.Characteristics & 0x20)
    imports = ', '.join(f'{len(entry.imports)} {entry.dll.decode()}' for entry in image.DIRECTORY_ENTRY_IMPORT)
    print(f'size: device/{os.path.basename(path)} {os.path.getsize(path)} bytes, code {code}, imports {imports}')


main(*sys.argv[1:])
