#!/usr/bin/python3
"""Usage: elf2pe.py ELF IMAGE dll|exe

Makes the handheld's image of a program that image.ld laid out at address 0 as position-independent: then each word
that holds an address has an entry among the dynamic relocations, which become the image's own."""
import struct
import sys

from elftools.elf.elffile import ELFFile

BASES = {'dll': 0x10000000, 'exe': 0x00010000}
PAGE, FILE_ALIGNMENT, HEADER_SIZE = 0x1000, 0x200, 0x200
R_ARM_RELATIVE = 23
CODE, INITIALIZED, DISCARDABLE = 0x60000020, 0x40000040, 0x02000000
WRITABLE = INITIALIZED | 0x80000000


def align(size, to):
    return (size + to - 1) // to * to


def words(image, offset, count):
    return struct.unpack_from(f'<{count}I', image, offset)


def load(elf, end):
    """The image as it lies in memory, from offset 0."""
    image = bytearray(end)
    for segment in elf.iter_segments():
        if segment['p_type'] != 'PT_LOAD':
            continue
        begin, data = segment['p_vaddr'], segment.data()[:max(end - segment['p_vaddr'], 0)]
        image[begin:begin + len(data)] = data
    return image


def relocate(elf, image, base, end, tables):
    """Moves all addresses to the image's base; returns where they stand. The words of tables are offsets, and stay."""
    places = []
    for relocation in elf.get_section_by_name('.rel.dyn').iter_relocations():
        kind, place = relocation['r_info_type'], relocation['r_offset']
        if kind != R_ARM_RELATIVE:
            sys.exit(f'elf2pe: a relocation of type {kind} at {place:#x}: only {R_ARM_RELATIVE} is known')
        if place >= end or any(begin <= place < behind for begin, behind in tables):
            continue
        if place % 4:
            sys.exit(f'elf2pe: an address at {place:#x}, which is no multiple of 4')
        struct.pack_into('<I', image, place, (words(image, place, 1)[0] + base) & 0xFFFFFFFF)
        places.append(place)
    return sorted(places)


def relocation_table(places):
    table = b''
    for page in sorted({place // PAGE * PAGE for place in places}):
        entries = [3 << 12 | place - page for place in places if place // PAGE * PAGE == page]
        if len(entries) % 2:
            entries.append(0)
        table += struct.pack(f'<II{len(entries)}H', page, 8 + 2 * len(entries), *entries)
    return table


def shift_resources(image, root, directory=0):
    """The leaves say where their data is in the section; the image wants it from its beginning."""
    named, numbered = struct.unpack_from('<HH', image, root + directory + 12)
    for i in range(named + numbered):
        entry = words(image, root + directory + 16 + 8 * i + 4, 1)[0]
        if entry & 0x80000000:
            shift_resources(image, root, entry & 0x7FFFFFFF)
        else:
            struct.pack_into('<I', image, root + entry, words(image, root + entry, 1)[0] + root)


def checksum(data):
    total = sum(struct.unpack(f'<{len(data) // 2}H', data))
    while total > 0xFFFF:
        total = (total & 0xFFFF) + (total >> 16)
    return total + len(data)


def headers(kind, entry, sections, directories, base):
    size_of = {flag: sum(section[4] for section in sections if section[5] & flag) for flag in (0x20, 0x40)}
    flags = {'dll': 0x210E, 'exe': 0x010E}[kind]
    head = b'MZ'.ljust(60, b'\0') + struct.pack('<I', 64) + b'PE\0\0'
    head += struct.pack('<HHIIIHH', 0x01C0, len(sections), 0, 0, 0, 224, flags)
    head += struct.pack('<HBBIIIIII', 0x10B, 2, 40, size_of[0x20], size_of[0x40], 0, entry, sections[0][1], sections[1][1])
    head += struct.pack('<IIIHHHHHHIIIIHHIIIIII', base, PAGE, FILE_ALIGNMENT, 4, 0, 1, 0, 3, 0, 0,
                        align(sections[-1][1] + sections[-1][2], PAGE), HEADER_SIZE, 0, 9, 0,
                        0x10000, 0x1000, 0x100000, 0x1000, 0, 16)
    for number in range(16):
        head += struct.pack('<II', *directories.get(number, (0, 0)))
    for name, address, size, offset, raw, flags in sections:
        head += struct.pack('<8sIIIIIIHHI', name, size, address, raw, offset, 0, 0, 0, 0, flags)
    return head.ljust(HEADER_SIZE, b'\0')


def main(source, target, kind):
    with open(source, 'rb') as file:
        elf = ELFFile(file)
        symbols = {symbol.name: symbol['st_value'] for symbol in elf.get_section_by_name('.symtab').iter_symbols()}
        at = lambda name: symbols['__pe_' + name]
        end, base = at('end'), BASES[kind]
        image = load(elf, end)
        tables = [(at('directories'), at('directories_end')), (at('addresses'), at('addresses_end'))]
        places = relocate(elf, image, base, end, tables)
        entry = elf['e_entry']
    has_resources = at('rsrc_end') > at('rsrc')
    if has_resources:
        shift_resources(image, at('rsrc'))
    fixups = relocation_table(places)
    image[end:] = fixups

    sections, offset, data = [], HEADER_SIZE, b''
    for name, begin, file_end, memory_end, flags in (
            (b'.text', at('text'), at('rdata'), at('rdata'), CODE),
            (b'.rdata', at('rdata'), at('data'), at('data'), INITIALIZED),
            (b'.data', at('data'), at('data_end'), at('bss_end'), WRITABLE),
            (b'.rsrc', at('rsrc'), at('rsrc_end'), at('rsrc_end'), INITIALIZED),
            (b'.reloc', end, len(image), len(image), INITIALIZED | DISCARDABLE)):
        if begin == memory_end:
            continue
        content = bytes(image[begin:file_end]).rstrip(b'\0') if name != b'.data' else bytes(image[begin:file_end])
        content = content.ljust(align(len(content), FILE_ALIGNMENT), b'\0')
        sections.append((name, begin, memory_end - begin, offset, len(content), flags))
        data += content
        offset += len(content)
    directories = {
        0: (at('exports'), at('exports_end') - at('exports')),
        1: (at('imports'), at('imports_end') - at('imports')),
        2: (at('rsrc'), at('rsrc_end') - at('rsrc')),
        5: (end, len(fixups)),
        12: (at('addresses'), at('addresses_end') - at('addresses')),
    }
    directories = {number: place for number, place in directories.items() if place[1]}
    whole = bytearray(headers(kind, entry, sections, directories, base) + data)
    struct.pack_into('<I', whole, 64 + 24 + 64, checksum(whole))
    with open(target, 'wb') as file:
        file.write(whole)


main(*sys.argv[1:])
