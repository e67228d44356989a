// The types that the platform's headers expect of their C library, as the one at hand has them.
#ifndef ZEL_DEVICE_CORECRT_H
#define ZEL_DEVICE_CORECRT_H

#include <_mingw.h>
#include <stddef.h>
#include <stdint.h>
#include <time.h>

typedef int errno_t;

#endif
