# What tests of the module expect, in the folder expected/ of the current build folder. Unregistering leaves the
# interfaces and the type library.
set(expected ${CMAKE_CURRENT_BINARY_DIR}/expected/)
foreach(name registered.txt type_library.txt)
    configure_file(${PROJECT_SOURCE_DIR}/tests/module/expected/${name} ${expected}${name} COPYONLY)
endforeach()
file(READ ${expected}registered.txt registered)
if(NOT registered MATCHES "\n(Interface\n.*\n)ZEL_BRU\\.BRU_Store\n")
    message(FATAL_ERROR "registered.txt has no interfaces")
endif()
file(CONFIGURE OUTPUT ${expected}unregistered.txt CONTENT "CLSID\n${CMAKE_MATCH_1}")
