# Compiler settings shared by every target of the project.
function(tavrel_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(TAVREL_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

if(TAVREL_BUILD_FUZZ)
    # Everything the fuzz targets link is instrumented for coverage and checked by the sanitizers.
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
elseif(TAVREL_SANITIZE)
    # Findings stay recoverable so that tests/ubsan.supp can silence the ones inside Qt's headers;
    # the test command sets halt_on_error, so every other finding still stops the test.
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# A subsystem library: every .cpp of the folder (main.cpp excepted) is part of it, so that adding a
# class never means touching the build files. The folder itself is the include root.
function(tavrel_add_library target)
    cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/*.h")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    if(NOT sources MATCHES "\\.cpp")
        # A folder whose first class has not arrived yet still stands for its dependencies.
        add_library(${target} INTERFACE)
        target_include_directories(${target} INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}")
        target_link_libraries(${target} INTERFACE ${ARG_LIBS})
        return()
    endif()
    add_library(${target} STATIC ${sources})
    target_include_directories(${target} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${target} PUBLIC ${ARG_LIBS})
    tavrel_target_defaults(${target})
endfunction()
