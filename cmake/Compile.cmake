# Compile settings that every target of the project shares.

add_library(ta_compile INTERFACE)
target_include_directories(ta_compile INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(ta_compile INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough
    $<$<BOOL:${TADIALOGS_WERROR}>:-Werror>)

if(TADIALOGS_SANITIZE)
    set(ta_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(ta_compile INTERFACE ${ta_sanitizers})
    target_link_options(ta_compile INTERFACE ${ta_sanitizers})
endif()

# Precompiles headers for a target: STD for the standard library, QT for the toolkit as well, and
# what is named besides.
function(ta_precompile target kind)
    if(NOT TADIALOGS_PCH)
        return()
    endif()
    set(headers <algorithm> <map> <memory> <string> <string_view> <vector>)
    if(kind STREQUAL "QT")
        list(APPEND headers <QtWidgets>)
    endif()
    target_precompile_headers(${target} PRIVATE ${headers} ${ARGN})
endfunction()
