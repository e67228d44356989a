// Makes the platform's headers, written for its desktop compilers, fit the handheld and this compiler. The
// headers include this one first.
#ifndef ZEL_DEVICE_MINGW_H
#define ZEL_DEVICE_MINGW_H

// There is one calling convention, and imports are called through a stub of their name.
#define __stdcall
#define __cdecl
#define __fastcall
#define __declspec(attribute)

#include_next <_mingw.h>

#ifdef __cplusplus
extern "C" {
#endif

// Of the core library; the C library at hand lacks them.
wchar_t* _ultow(unsigned long value, wchar_t* text, int radix);
int _wcsicmp(const wchar_t* left, const wchar_t* right);

#ifdef __cplusplus
}
#endif

#endif
