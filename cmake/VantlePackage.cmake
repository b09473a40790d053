# What `cmake --install` puts beside the command and the agent: the shared
# libraries, their headers, a package for find_package(VantleQtQuick), and the
# directory that users put their extension files into. Nothing in the prefix
# names it, so that it can be moved.

include(CMakePackageConfigHelpers)

set(VANTLE_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/VantleQtQuick")
set(VANTLE_INCLUDE_DIR "${CMAKE_INSTALL_INCLUDEDIR}/vantle")
# Below "lib" on every platform: that is where the library looks.
set(VANTLE_EXTENSION_DIR "lib/extensions/qt/qtquick")

# vantle_install_library(<target> <namespace> <name>): users link <namespace>::<name>.
function(vantle_install_library target namespace name)
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
    install(TARGETS ${target} EXPORT VantleQtQuick-${namespace}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        FILE_SET HEADERS DESTINATION ${VANTLE_INCLUDE_DIR}
    )
endfunction()

vantle_install_library(tracelib corvaline tracelib)
vantle_install_library(vantlehook Vantle hook)
vantle_install_library(vantleqtwrapper Vantle QtWrapper)
vantle_install_library(vantleqtquickcommon Vantle QtQuickCommon)
vantle_install_library(vantleqtquick Vantle QtQuick)

install(EXPORT VantleQtQuick-corvaline
    DESTINATION ${VANTLE_PACKAGE_DIR} NAMESPACE corvaline:: FILE VantleQtQuickTracelibTargets.cmake)
install(EXPORT VantleQtQuick-Vantle
    DESTINATION ${VANTLE_PACKAGE_DIR} NAMESPACE Vantle:: FILE VantleQtQuickTargets.cmake)

configure_package_config_file(
    "${CMAKE_CURRENT_LIST_DIR}/VantleQtQuickConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/VantleQtQuickConfig.cmake"
    INSTALL_DESTINATION ${VANTLE_PACKAGE_DIR}
    PATH_VARS VANTLE_EXTENSION_DIR
)
write_basic_package_version_file(
    "${PROJECT_BINARY_DIR}/VantleQtQuickConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/VantleQtQuickConfig.cmake"
    "${PROJECT_BINARY_DIR}/VantleQtQuickConfigVersion.cmake"
    DESTINATION ${VANTLE_PACKAGE_DIR}
)

install(DIRECTORY DESTINATION ${VANTLE_EXTENSION_DIR})
