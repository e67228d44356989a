# What every target of the system is compiled with.
add_library(zel_options INTERFACE)
target_compile_options(zel_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wsuggest-override -Werror>)
if(WIN32)
    target_compile_definitions(zel_options INTERFACE UNICODE _UNICODE STRICT NOMINMAX WIN32_LEAN_AND_MEAN)
    # The module's size counts: the linker drops what nothing calls. COM hands out typed pointers through void**.
    target_compile_options(zel_options INTERFACE
        $<$<COMPILE_LANGUAGE:CXX>:-ffunction-sections -fdata-sections -fno-strict-aliasing>)
    # One size of double everywhere: without SSE the 32-bit build would round twice, and quiet NaNs on the way. Its
    # callers align the stack to 4 bytes only; each function realigns it where it needs more.
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        target_compile_options(zel_options INTERFACE
            $<$<COMPILE_LANGUAGE:CXX>:-msse2 -mfpmath=sse -mstackrealign>)
    endif()
endif()

# zel_library(NAME sources... DEPENDS targets...): one folder of the house. Its include root is its own folder,
# handed on only to those that link it.
function(zel_library name)
    cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
    add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE zel_options PUBLIC ${arg_DEPENDS})
endfunction()
