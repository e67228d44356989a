# zel_guid(OUT IDL BEFORE): the GUID, in braces, of the block of attributes in an IDL file that stands before the given
# words ("library", "coclass NAME").
function(zel_guid out idl before)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${idl})
    file(READ ${idl} text)
    string(REGEX REPLACE "//[^\n]*\n" "" text "${text}")
    if(NOT text MATCHES "uuid\\(([-0-9a-f]+)\\)[^{}]*\n *${before}[ \n]")
        message(FATAL_ERROR "${idl} states no GUID for ${before}")
    endif()
    string(TOUPPER "{${CMAKE_MATCH_1}}" guid)
    set(${out} ${guid} PARENT_SCOPE)
endfunction()
