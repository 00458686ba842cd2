# SPDX-License-Identifier: LGPL-2.1-or-later

# The files by which other projects find the libraries: a CMake package, .pc files for pkg-config and .pri files for qmake.
include(CMakePackageConfigHelpers)

if(SORREL_QT_MAJOR EQUAL 5)
    set(package Sorrel)
else()
    set(package Sorrel-${SORREL_QT})
endif()
set(package_directory "${CMAKE_INSTALL_LIBDIR}/cmake/${package}")
set(made "${PROJECT_BINARY_DIR}/package")

configure_package_config_file(cmake/SorrelConfig.cmake.in "${made}/${package}Config.cmake"
    INSTALL_DESTINATION "${package_directory}"
    NO_SET_AND_CHECK_MACRO
)
# The soname has the major version: the binary interface stays the same within it.
write_basic_package_version_file("${made}/${package}ConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(FILES "${made}/${package}Config.cmake" "${made}/${package}ConfigVersion.cmake"
    DESTINATION "${package_directory}"
)
foreach(export SorrelTargets SorrelKitCoreTargets SorrelKitGuiTargets SorrelShelfTargets SorrelTrustTargets)
    install(EXPORT ${export} NAMESPACE Sorrel:: DESTINATION "${package_directory}")
endforeach()

# pkg-config omits system directories from its output only when the .pc file names them plainly, so the file has the prefix.
# The file is made during installation, because cmake --install --prefix may change the prefix.
set(pkgconfig_directory "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(qmake_directory "${CMAKE_INSTALL_LIBDIR}/sorrel")
foreach(kind IN ITEMS INCLUDE LIB)
    cmake_path(IS_ABSOLUTE CMAKE_INSTALL_${kind}DIR elsewhere)
    if(elsewhere)
        set(pkgconfig_${kind} "${CMAKE_INSTALL_${kind}DIR}")
        set(qmake_${kind} "${CMAKE_INSTALL_${kind}DIR}")
    else()
        set(pkgconfig_${kind} "\${prefix}/${CMAKE_INSTALL_${kind}DIR}")
        cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_${kind}DIR
            BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/sorrel" OUTPUT_VARIABLE way)
        set(qmake_${kind} "$$clean_path($$PWD/${way})")
    endif()
endforeach()
set(prefix_at_install @CMAKE_INSTALL_PREFIX@)
foreach(library IN ITEMS sorrel sorrelkitcore sorrelkitgui sorrelshelf sorreltrust)
    set(pc "${library}${SORREL_SUFFIX}.pc")
    configure_file(cmake/${library}.pc.in "${made}/${pc}.in" @ONLY)
    install(CODE "configure_file(\"${made}/${pc}.in\" \"${made}/${pc}\" @ONLY)")
    install(FILES "${made}/${pc}" DESTINATION "${pkgconfig_directory}")
    configure_file(cmake/${library}.pri.in "${made}/${library}${SORREL_SUFFIX}.pri" @ONLY)
    install(FILES "${made}/${library}${SORREL_SUFFIX}.pri" DESTINATION "${qmake_directory}")
endforeach()
