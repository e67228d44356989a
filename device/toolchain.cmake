# Cross-compiles for the handheld: Windows CE 3.0 on an ARMv4 core, with Debian's compiler for bare ARM machines.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(UNDER_CE ON)
set(CMAKE_C_COMPILER arm-none-eabi-gcc)
set(CMAKE_CXX_COMPILER arm-none-eabi-g++)
set(CMAKE_ASM_COMPILER arm-none-eabi-gcc)
# The compiler links nothing by itself: see DeviceImage.cmake.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

cmake_path(SET ZEL_DEVICE NORMALIZE ${CMAKE_CURRENT_LIST_DIR})
cmake_path(SET libraries NORMALIZE ${ZEL_DEVICE}/../build/device-libraries)
file(STRINGS ${ZEL_DEVICE}/target-flags.txt target)
# The device's own headers first, then the C++ and C libraries and the compiler's, last the platform's.
foreach(folder ${ZEL_DEVICE}/include ${libraries}/include/c++ ${libraries}/include/c++/arm-none-eabi ${libraries}/include)
    string(APPEND target " -isystem ${folder}")
endforeach()
string(APPEND target " -idirafter /usr/share/mingw-w64/include")
# The system libraries are declared by the platform's headers, everything else by the C library's, also what strict C++
# would hide.
string(APPEND target " -D_WIN32 -DUNDER_CE=300 -D_WIN32_WCE=300 -DWIN32_LEAN_AND_MEAN -D_GNU_SOURCE -D__DYNAMIC_REENT__")
set(CMAKE_C_FLAGS_INIT "${target}")
set(CMAKE_CXX_FLAGS_INIT "${target}")
set(CMAKE_ASM_FLAGS_INIT "${target}")
