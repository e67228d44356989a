# Run after the link of MODULE: it must load on a machine that has nothing but the system, so it may import from the
# system's libraries only; and it exports the four entry points of an in-process server, undecorated. Says its size.
cmake_minimum_required(VERSION 3.25)
set(system advapi32 gdi32 kernel32 msvcrt ole32 oleaut32 user32)

execute_process(COMMAND ${OBJDUMP} -p ${MODULE} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]*" imports "${headers}")
foreach(import ${imports})
    string(REGEX REPLACE "DLL Name: (.*)\\.[Dd][Ll][Ll]" "\\1" library ${import})
    string(TOLOWER ${library} library)
    if(NOT library IN_LIST system)
        file(REMOVE ${MODULE})
        message(FATAL_ERROR "${MODULE} imports ${library}, which is no system library")
    endif()
endforeach()

string(REGEX REPLACE ".*Name Pointer\\] Table\n(([^\n]+\n)*).*" "\\1" names "${headers}")
string(REGEX REPLACE "[^\n]*\\] ([^\n]*)\n" "\\1 " exports "${names}")
if(NOT exports STREQUAL "DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer ")
    file(REMOVE ${MODULE})
    message(FATAL_ERROR "${MODULE} exports ${exports}")
endif()

cmake_path(GET MODULE FILENAME name)
cmake_path(GET MODULE PARENT_PATH folder)
cmake_path(GET folder FILENAME preset)
file(SIZE ${MODULE} size)
execute_process(COMMAND ${CMAKE_COMMAND} -E echo "size: ${preset}/${name} ${size} bytes")
