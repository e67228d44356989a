# Images of the handheld: linked as ELF at address 0, then made what the system loads.
find_program(ZEL_DEVICE_WINDRES x86_64-w64-mingw32-windres REQUIRED)
find_program(ZEL_DEVICE_OBJCOPY x86_64-w64-mingw32-objcopy REQUIRED)
find_program(ZEL_DEVICE_OBJDUMP arm-none-eabi-objdump REQUIRED)
# The system's: its packages are.
set(ZEL_DEVICE_PYTHON /usr/bin/python3)
cmake_path(SET ZEL_DEVICE_LIBRARIES NORMALIZE ${ZEL_DEVICE}/../build/device-libraries)

# Behind all others in a link.
set(CMAKE_CXX_STANDARD_LIBRARIES "-Wl,--start-group -lstdc++ -lm -lc -lgcc -Wl,--end-group")

# The system's libraries need no linking: the imports below stand for them.
foreach(library advapi32 gdi32 ole32 oleaut32 user32 uuid)
    add_library(${library} INTERFACE)
endforeach()

add_library(zel_device_runtime OBJECT
    ${ZEL_DEVICE}/runtime/Exceptions.cpp
    ${ZEL_DEVICE}/runtime/Files.cpp
    ${ZEL_DEVICE}/runtime/Guids.cpp
    ${ZEL_DEVICE}/runtime/Memory.cpp
    ${ZEL_DEVICE}/runtime/Platform.cpp
    ${ZEL_DEVICE}/runtime/Threads.cpp)
target_link_libraries(zel_device_runtime PRIVATE zel_options)

# zel_device_image(TARGET dll|exe NAME sources... EXPORTS FILE RC FILE LINK targets... LARGEST bytes): NAME in the build
# folder, checked (check_image.py).
function(zel_device_image target kind name)
    cmake_parse_arguments(arg "" "EXPORTS;RC;LARGEST" "LINK;RC_DEPENDS" ${ARGN})
    set(out ${CMAKE_CURRENT_BINARY_DIR})
    set(imports ${ZEL_DEVICE}/imports/coredll.def ${ZEL_DEVICE}/imports/ole32.def ${ZEL_DEVICE}/imports/oleaut32.def)
    set(exports -)
    if(arg_EXPORTS)
        set(exports ${arg_EXPORTS})
    endif()
    add_custom_command(OUTPUT ${out}/${target}_tables.s VERBATIM
        COMMAND ${ZEL_DEVICE_PYTHON} ${ZEL_DEVICE}/image_tables.py ${out}/${target}_tables.s ${exports} ${imports}
        DEPENDS ${ZEL_DEVICE}/image_tables.py ${imports} ${arg_EXPORTS})
    set(resources "")
    if(arg_RC)
        add_custom_command(OUTPUT ${out}/${target}.rsrc VERBATIM
            COMMAND ${ZEL_DEVICE_WINDRES} -O coff -D_WIN32 -I/usr/share/mingw-w64/include
            -I${CMAKE_CURRENT_SOURCE_DIR} -I${out} ${arg_RC} ${out}/${target}.res.o
            COMMAND ${ZEL_DEVICE_OBJCOPY} -O binary -j .rsrc ${out}/${target}.res.o ${out}/${target}.rsrc
            DEPENDS ${arg_RC} ${arg_RC_DEPENDS})
        set(resources ${out}/${target}_resources.s)
        file(CONFIGURE OUTPUT ${resources} CONTENT "    .section .rsrc, \"a\"\n    .incbin \"${target}.rsrc\"\n")
        set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${out}/${target}.rsrc
            COMPILE_OPTIONS -Wa,-I${out})
    endif()

    add_executable(${target} ${arg_UNPARSED_ARGUMENTS} ${out}/${target}_tables.s ${resources})
    set_source_files_properties(${out}/${target}_tables.s ${resources} PROPERTIES LANGUAGE ASM)
    set_target_properties(${target} PROPERTIES SUFFIX .elf LINK_DEPENDS ${ZEL_DEVICE}/image.ld)
    target_link_libraries(${target} PRIVATE zel_options zel_device_runtime ${arg_LINK})
    target_link_options(${target} PRIVATE -nostdlib -L${ZEL_DEVICE_LIBRARIES}/lib
        -Wl,-T,${ZEL_DEVICE}/image.ld,-pie,-z,notext,--no-dynamic-linker,--fix-v4bx,--gc-sections,--fatal-warnings
        -Wl,--no-wchar-size-warning,--no-enum-size-warning
        -Wl,-Map,${target}.map)
    add_custom_command(TARGET ${target} POST_BUILD VERBATIM
        COMMAND ${ZEL_DEVICE_PYTHON} ${ZEL_DEVICE}/elf2pe.py $<TARGET_FILE:${target}> ${PROJECT_BINARY_DIR}/${name}
            ${kind})
    # With every build: it says what the image is.
    add_custom_target(${target}_check ALL VERBATIM DEPENDS ${target}
        COMMAND ${ZEL_DEVICE_PYTHON} ${ZEL_DEVICE}/check_image.py $<TARGET_FILE:${target}> ${PROJECT_BINARY_DIR}/${name}
            ${ZEL_DEVICE_OBJDUMP} ${exports} ${arg_LARGEST})
endfunction()
