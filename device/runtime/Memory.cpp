// The C library's allocation functions, on the process heap.
#include <windows.h>

#include <reent.h>
#include <stdlib.h>
#include <string.h>

extern "C" {

void* malloc(size_t size) { return LocalAlloc(LMEM_FIXED, size == 0 ? 1 : size); }

void free(void* block) {
    if (block) LocalFree(block);
}

void* calloc(size_t count, size_t size) {
    size_t bytes = 0;
    if (__builtin_mul_overflow(count, size, &bytes)) return nullptr;
    void* block = malloc(bytes);
    return block ? memset(block, 0, bytes) : nullptr;
}

void* realloc(void* block, size_t size) {
    return block ? LocalReAlloc(block, size == 0 ? 1 : size, LMEM_MOVEABLE) : malloc(size);
}

// What the C library itself calls.
void* _malloc_r(_reent*, size_t size) { return malloc(size); }
void _free_r(_reent*, void* block) { free(block); }
void* _calloc_r(_reent*, size_t count, size_t size) { return calloc(count, size); }
void* _realloc_r(_reent*, void* block, size_t size) { return realloc(block, size); }

}  // extern "C"
