# Run when IDL has changed: writes HEADER, the names of the members of each dual interface in it.
cmake_minimum_required(VERSION 3.25)
cmake_path(GET IDL STEM library)
set(text "// Generated from ${library}.idl.\n#pragma once\n\n#include \"${library}.h\"\n")
string(APPEND text "#include \"zel/com/MemberNames.h\"\n\nnamespace zel {\n")

file(READ ${IDL} idl)
string(REGEX REPLACE "//[^\n]*\n" "" idl "${idl}")
# What means something to a CMake list.
string(REGEX REPLACE "[][;]" "|" idl "${idl}")
string(REGEX MATCHALL "interface [A-Za-z_]+ : IDispatch[^}]*}" interfaces "${idl}")
foreach(interface ${interfaces})
    string(REGEX REPLACE "^interface ([A-Za-z_]+).*" "\\1" name "${interface}")
    string(REGEX MATCHALL "HRESULT " declared "${interface}")
    string(REGEX MATCHALL "[ |]id\\(-?[0-9]+\\)[^|]*\\| HRESULT [A-Za-z0-9_]+\\(" members "${interface}")
    list(LENGTH declared expected)
    list(LENGTH members found)
    if(found EQUAL 0 OR NOT found EQUAL expected)
        message(FATAL_ERROR "${IDL}: ${found} of ${expected} members of ${name} have an id and a name")
    endif()
    list(TRANSFORM members TOLOWER)
    list(TRANSFORM members REPLACE ".id\\(([-0-9]+)\\).* ([a-z0-9_]+)\\($" "        {\"\\2\", \\1},\n")
    list(REMOVE_DUPLICATES members)  # a property is got and put by one name
    list(JOIN members "" rows)
    string(APPEND text "\ntemplate <>\nstruct MembersOf<${name}> {\n"
        "    static constexpr MemberName kMembers[] = {\n${rows}    };\n"
        "    static constexpr MemberNames kNames{kMembers};\n};\n")
endforeach()
file(WRITE ${HEADER} "${text}\n}  // namespace zel\n")
