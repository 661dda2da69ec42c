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

# The model libraries and the programs made of them (the command-line tool, the sample generator)
# must never pull in widgets or the media back end: they run where no display or sound exists, and a
# widget include in a model is a design error that is cheap to catch here and dear to undo later.
set(TAVREL_FORBIDDEN_IN_MODELS Qt6::Widgets Qt6::OpenGLWidgets Qt6::Multimedia Qt6::MultimediaWidgets)

function(_tavrel_collect_links target out)
    set(seen ${${out}})
    if(NOT TARGET ${target} OR target IN_LIST seen)
        return()
    endif()
    list(APPEND seen ${target})
    get_target_property(type ${target} TYPE)
    set(links "")
    if(NOT type STREQUAL "INTERFACE_LIBRARY")
        get_target_property(direct ${target} LINK_LIBRARIES)
        if(direct)
            list(APPEND links ${direct})
        endif()
    endif()
    get_target_property(interface ${target} INTERFACE_LINK_LIBRARIES)
    if(interface)
        list(APPEND links ${interface})
    endif()
    foreach(link ${links})
        # Generator expressions such as $<LINK_ONLY:...> wrap plain target names.
        string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" link "${link}")
        if(TARGET ${link})
            _tavrel_collect_links(${link} seen)
        endif()
    endforeach()
    set(${out} ${seen} PARENT_SCOPE)
endfunction()

# Fails the configuration when one of the targets reaches a forbidden library through any chain of
# links, and names the chain's start so the offending dependency is easy to find.
function(tavrel_forbid_widgets)
    foreach(target ${ARGN})
        set(reached "")
        _tavrel_collect_links(${target} reached)
        foreach(forbidden ${TAVREL_FORBIDDEN_IN_MODELS})
            if(forbidden IN_LIST reached)
                message(FATAL_ERROR "${target} is model code but links ${forbidden}; widgets and media "
                                    "belong to the editor's libraries")
            endif()
        endforeach()
    endforeach()
endfunction()
