# zel_constant(OUT HEADER NAME): the number that a C++ header gives a constant.
function(zel_constant out header name)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
    file(STRINGS ${header} line REGEX " ${name} = [0-9]+")
    if(NOT line MATCHES " = ([0-9]+)")
        message(FATAL_ERROR "${header} gives no ${name}")
    endif()
    set(${out} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()
