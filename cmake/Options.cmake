# What every target of the system is compiled with.
add_library(zel_options INTERFACE)
target_compile_options(zel_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wsuggest-override -Werror>)
# The same sources give the same files.
if(WIN32)
    add_link_options(-Wl,--no-insert-timestamp)
endif()
if(WIN32 OR UNDER_CE)
    target_compile_definitions(zel_options INTERFACE UNICODE _UNICODE STRICT NOMINMAX WIN32_LEAN_AND_MEAN)
    # The module's size counts: the linker drops what nothing calls. COM hands out typed pointers through void**.
    target_compile_options(zel_options INTERFACE
        $<$<COMPILE_LANGUAGE:CXX>:-ffunction-sections -fdata-sections -fno-strict-aliasing>)
    # One size of double everywhere: without SSE the 32-bit build would round twice, and quiet NaNs on the way. Its
    # callers align the stack to 4 bytes only; each function realigns it where it needs more.
    if(WIN32 AND CMAKE_SIZEOF_VOID_P EQUAL 4)
        target_compile_options(zel_options INTERFACE
            $<$<COMPILE_LANGUAGE:CXX>:-msse2 -mfpmath=sse -mstackrealign>)
    endif()
endif()

# zel_room(TARGET FOLDER sources... DEPENDS targets...): one room of the house, a static library of the sources in
# FOLDER. Others include "zel/FOLDER/Name.h", and only where they link the room: each has an include root of its own.
function(zel_room name folder)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    file(REAL_PATH ${folder} path BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    cmake_path(GET path FILENAME room)
    list(TRANSFORM arg_UNPARSED_ARGUMENTS PREPEND ${path}/)
    add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
    set(root ${PROJECT_BINARY_DIR}/rooms/${name})
    file(MAKE_DIRECTORY ${root}/zel)
    file(CREATE_LINK ${path} ${root}/zel/${room} SYMBOLIC)
    target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${root}>)
    target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:zel_options> PUBLIC ${arg_DEPENDS})
endfunction()
