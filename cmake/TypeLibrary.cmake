# Interface headers and type libraries come from IDL by widl, with the IDL files and stdole2.tlb of Wine's own packages.
# Debian's wine64-tools alone have it under the second name.
find_program(ZEL_WIDL NAMES widl widl-stable REQUIRED)
# Or else widl stamps the time of the build into the type library.
find_program(ZEL_FAKETIME faketime REQUIRED)
find_path(ZEL_IDL_FOLDER oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
    NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(ZEL_STDOLE_FOLDER stdole2.tlb NO_CMAKE_FIND_ROOT_PATH REQUIRED
    PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/i386-linux-gnu/wine/i386-windows)

# zel_type_library(TARGET NAME): makes NAME.h, NAME_members.h, NAME_i.c and NAME.tlb from NAME.idl in the current build
# folder. TARGET brings the headers and the GUIDs to those that link it; a resource script finds the library beside them.
function(zel_type_library target name)
    set(out ${CMAKE_CURRENT_BINARY_DIR})
    set(idl ${CMAKE_CURRENT_SOURCE_DIR}/${name}.idl)
    add_custom_command(
        OUTPUT ${out}/${name}.h ${out}/${name}_i.c ${out}/${name}.tlb
        COMMAND ${CMAKE_COMMAND} -E env TZ=UTC ${ZEL_FAKETIME} -f "2001-01-01 00:00:00"
            ${ZEL_WIDL} --win32 -t -h -u -I${ZEL_IDL_FOLDER} -L${ZEL_STDOLE_FOLDER} ${idl}
        WORKING_DIRECTORY ${out}
        DEPENDS ${idl}
        VERBATIM)
    set(members ${PROJECT_SOURCE_DIR}/cmake/Members.cmake)
    add_custom_command(
        OUTPUT ${out}/${name}_members.h
        COMMAND ${CMAKE_COMMAND} -DIDL=${idl} -DHEADER=${out}/${name}_members.h -P ${members}
        DEPENDS ${idl} ${members}
        VERBATIM)
    set_source_files_properties(${out}/${name}_i.c PROPERTIES LANGUAGE CXX)
    add_library(${target} STATIC ${out}/${name}.h ${out}/${name}_members.h ${out}/${name}_i.c ${out}/${name}.tlb)
    target_include_directories(${target} SYSTEM PUBLIC ${out})
endfunction()
