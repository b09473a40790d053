# How every target of the project is built: language level, warnings, output
# layout, and the two functions with which modules and tests declare themselves.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

# The build tree has the layout of the installed prefix, so that the command
# finds the agent, and the agent its libraries, by the same relative paths.
set(VANTLE_PLUGIN_DIR "${CMAKE_INSTALL_LIBDIR}/vantle/plugins/generic")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_BINDIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")

# ccache can't see into precompiled headers; it has to be told that ours depend
# on nothing but what they include.
find_program(VANTLE_CCACHE ccache)
mark_as_advanced(VANTLE_CCACHE)
if(VANTLE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env "CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime"
        "${VANTLE_CCACHE}")
endif()

# Qt's headers take most of the time of a build. A target whose settings differ
# from those of a precompiled header just doesn't use it.
set(CMAKE_PCH_WARN_INVALID OFF)

# vantle_precompile_qt(<target> <link>…): precompiles the headers of the Qt
# modules that the target links.
function(vantle_precompile_qt target)
    set(headers)
    if("Qt6::QuickPrivate" IN_LIST ARGN)
        set(headers <QtQuick/QQuickItem> <QtQuick/QQuickWindow> <QtQml/QQmlEngine>)
    elseif("Qt6::GuiPrivate" IN_LIST ARGN)
        set(headers <QtGui/QGuiApplication> <QtGui/QWindow>)
    elseif("Qt6::Network" IN_LIST ARGN)
        set(headers <QtNetwork/QLocalSocket> <QtCore/QJsonObject>)
    elseif("Qt6::Core" IN_LIST ARGN)
        set(headers <QtCore/QJsonObject> <QtCore/QString>)
    endif()
    if(headers)
        target_precompile_headers(${target} PRIVATE ${headers})
    endif()
endfunction()

add_library(vantle_options INTERFACE)
target_compile_options(vantle_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${VANTLE_WARNINGS_AS_ERRORS}>:-Werror>
)
target_compile_definitions(vantle_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_MESSAGELOGCONTEXT
)
# The libraries under test need it ahead of a program that knows nothing of it.
if("address" IN_LIST VANTLE_SANITIZERS)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=libasan.so
        OUTPUT_VARIABLE VANTLE_SANITIZER_RUNTIME OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()

if(VANTLE_SANITIZERS)
    list(JOIN VANTLE_SANITIZERS "," _sanitizers)
    target_compile_options(vantle_options INTERFACE
        -fsanitize=${_sanitizers} -fno-omit-frame-pointer -fno-sanitize-recover=undefined
        # Asks for the type information of classes that other libraries hide.
        -fno-sanitize=vptr)
    target_link_options(vantle_options INTERFACE -fsanitize=${_sanitizers})
endif()

# vantle_add_library(<target> [STATIC] HEADERS ... SOURCES ... LINKS ... [OUTPUT_NAME name])
#
# Compiles the sources once, as <target>_objects; the library <target> is made
# from those objects, and so are the tests (through vantle_testable), which
# therefore reach operations that the shared library does not export.
function(vantle_add_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "STATIC" "OUTPUT_NAME" "HEADERS;PRIVATE_HEADERS;SOURCES;LINKS")

    add_library(${target}_objects OBJECT ${arg_SOURCES} ${arg_HEADERS} ${arg_PRIVATE_HEADERS})
    target_include_directories(${target}_objects PUBLIC "${PROJECT_SOURCE_DIR}/src")
    target_link_libraries(${target}_objects PRIVATE vantle_options)
    vantle_precompile_qt(${target}_objects ${arg_LINKS})
    foreach(link IN LISTS arg_LINKS)
        # Other modules of ours are linked by the libraries below; their objects
        # only need to be compiled against.
        if(TARGET ${link}_objects)
            target_link_libraries(${target}_objects PUBLIC ${link}_headers)
        else()
            target_link_libraries(${target}_objects PUBLIC ${link})
        endif()
    endforeach()

    add_library(${target}_headers INTERFACE)
    target_include_directories(${target}_headers INTERFACE "${PROJECT_SOURCE_DIR}/src")
    foreach(link IN LISTS arg_LINKS)
        if(TARGET ${link}_headers)
            target_link_libraries(${target}_headers INTERFACE ${link}_headers)
        else()
            target_link_libraries(${target}_headers INTERFACE ${link})
        endif()
    endforeach()

    if(arg_STATIC)
        add_library(${target} STATIC)
    else()
        add_library(${target} SHARED)
        set_target_properties(${target} PROPERTIES
            VERSION ${PROJECT_VERSION}
            SOVERSION ${PROJECT_VERSION_MAJOR}
            INSTALL_RPATH "$ORIGIN"
            BUILD_WITH_INSTALL_RPATH ON
        )
        target_link_options(${target} PRIVATE -Wl,--no-undefined)
        if(VANTLE_SANITIZERS)
            # The sanitizers' runtime is the executable's; with it linked as a
            # shared object undefined symbols are expected.
            target_link_options(${target} PRIVATE -Wl,-z,undefs)
        endif()
    endif()
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_objects>)
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX AUTOMOC OFF)
    if(arg_OUTPUT_NAME)
        set_target_properties(${target} PROPERTIES OUTPUT_NAME ${arg_OUTPUT_NAME})
    endif()
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:vantle_options>)
    foreach(link IN LISTS arg_LINKS)
        # Qt's private headers are for our sources alone; public headers do
        # without them, and so do users of the installed package.
        if(link MATCHES "^(Qt6::.+)Private$")
            target_link_libraries(${target} PUBLIC ${CMAKE_MATCH_1})
        else()
            target_link_libraries(${target} PUBLIC ${link})
        endif()
    endforeach()

    set(public_headers ${arg_HEADERS})
    list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
    target_sources(${target} PUBLIC
        FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${public_headers})
    set_target_properties(${target} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)

    set_property(GLOBAL APPEND PROPERTY VANTLE_MODULES ${target})
endfunction()
