# SPDX-License-Identifier: LGPL-2.1-or-later

# Chooses the parts to build besides the libraries. Each part has an option SORREL_BUILD_<PART>:
#
#     AUTO    the part is built when everything that it needs is found (the default)
#     ON      the part is built; configuring fails when something is missing
#     OFF     the part is left out
#
# The rest of the project reads SORREL_HAS_<PART>. CMake prints a summary with the reason for each part that is left out.
include(FeatureSummary)

option(BUILD_TESTING "Build the tests when SORREL_BUILD_TESTS is AUTO" ON)

# sorrel_part(PART DESCRIPTION MISSING...): sets SORREL_HAS_<PART>. Each MISSING is a reason why the part cannot be built.
function(sorrel_part part description)
    set(option SORREL_BUILD_${part})
    set(${option} AUTO CACHE STRING "Build ${description}: ON, OFF, or AUTO (when the requirements are found)")
    set_property(CACHE ${option} PROPERTY STRINGS AUTO ON OFF)
    list(JOIN ARGN "; " reason)
    set(built FALSE)
    if(${option} STREQUAL "AUTO")
        if(NOT reason AND NOT PROJECT_IS_TOP_LEVEL AND NOT part STREQUAL "TOOLS")
            set(reason "this is a part of another project")
        endif()
        if(NOT reason)
            set(built TRUE)
        endif()
    elseif(${option})
        if(reason)
            message(FATAL_ERROR "${option} is ${${option}}, but ${description} cannot be built: ${reason}")
        endif()
        set(built TRUE)
    else()
        set(reason "${option} is ${${option}}")
    endif()
    set(SORREL_HAS_${part} ${built} PARENT_SCOPE)
    string(TOLOWER "${part}" name)
    set(SORREL_HAS_${part} ${built})
    if(built)
        add_feature_info(${name} SORREL_HAS_${part} "${description}")
    else()
        add_feature_info(${name} SORREL_HAS_${part} "${description}: ${reason}")
    endif()
endfunction()

set(missing "")
find_package(PNG 1.6 QUIET)
if(NOT PNG_FOUND)
    list(APPEND missing "libpng 1.6 or later was not found (Debian: libpng-dev)")
endif()
sorrel_part(TOOLS "the commands sorrel and sorrel-thumbnailer" ${missing})

set(missing "")
find_program(SORREL_AAPT aapt DOC "Android's first resource compiler")
find_program(SORREL_AAPT2 aapt2 DOC "Android's second resource compiler")
find_file(SORREL_FRAMEWORK_RES framework-res.apk
    PATHS /usr/share/android-framework-res
    DOC "the compiled resources of the Android platform"
)
if(NOT SORREL_AAPT OR NOT SORREL_AAPT2)
    list(APPEND missing "aapt or aapt2 was not found (Debian: aapt)")
endif()
if(NOT SORREL_FRAMEWORK_RES)
    list(APPEND missing "framework-res.apk was not found (Debian: android-framework-res)")
endif()
# The programs and plugins of this Qt. A program of the same name on the path may belong to another one.
get_target_property(qmake ${SORREL_QT}::qmake IMPORTED_LOCATION)
get_filename_component(qt_programs "${qmake}" DIRECTORY)
execute_process(COMMAND "${qmake}" -query QT_INSTALL_PLUGINS OUTPUT_VARIABLE qt_plugins OUTPUT_STRIP_TRAILING_WHITESPACE)
find_file(SORREL_WEBP_PLUGIN libqwebp.so PATHS "${qt_plugins}/imageformats" NO_DEFAULT_PATH
    DOC "Qt's plugin for WebP, which writes pictures of the samples"
)
if(NOT SORREL_WEBP_PLUGIN)
    list(APPEND missing "Qt's WebP plugin was not found (Debian: qt${SORREL_QT_MAJOR}-image-formats-plugins)")
endif()
sorrel_part(SAMPLES "the sample packages" ${missing})

set(missing "")
find_package(${SORREL_QT} ${SORREL_QT_VERSION} QUIET COMPONENTS Widgets)
if(NOT ${SORREL_QT}Widgets_FOUND)
    list(APPEND missing "${SORREL_QT} Widgets was not found")
endif()
sorrel_part(EXAMPLES "the example programs" ${missing})

set(missing "")
find_package(${SORREL_QT} ${SORREL_QT_VERSION} QUIET COMPONENTS Qml Quick)
foreach(component IN ITEMS Qml Quick)
    if(NOT ${SORREL_QT}${component}_FOUND)
        list(APPEND missing
            "${SORREL_QT} ${component} was not found (Debian: qtdeclarative5-dev, qt6-declarative-dev)")
    endif()
endforeach()
sorrel_part(QML "the QML module" ${missing})

# The reference has no diagrams, so Doxygen needs no other program.
set(missing "")
find_package(Doxygen QUIET MODULE COMPONENTS doxygen)
if(NOT DOXYGEN_FOUND)
    list(APPEND missing "Doxygen was not found (Debian: doxygen)")
endif()
find_program(SORREL_QHELPGENERATOR qhelpgenerator HINTS "${qt_programs}" "${qt_programs}/../libexec"
    DOC "Qt's generator of help files, for the reference"
)
if(NOT SORREL_QHELPGENERATOR)
    list(APPEND missing "qhelpgenerator was not found (Debian: qhelpgenerator-qt5)")
endif()
sorrel_part(DOCS "the reference of the public classes" ${missing})

set(missing "")
find_package(${SORREL_QT} ${SORREL_QT_VERSION} QUIET COMPONENTS Test Svg)
foreach(component IN ITEMS Test Svg)
    if(NOT ${SORREL_QT}${component}_FOUND)
        list(APPEND missing "${SORREL_QT} ${component} was not found")
    endif()
endforeach()
foreach(part IN ITEMS TOOLS SAMPLES EXAMPLES)
    if(NOT SORREL_HAS_${part})
        string(TOLOWER "${part}" name)
        list(APPEND missing "they test the ${name}, which are left out")
    endif()
endforeach()
if(SORREL_BUILD_TESTS STREQUAL "AUTO" OR NOT DEFINED SORREL_BUILD_TESTS)
    if(NOT BUILD_TESTING)
        set(missing "BUILD_TESTING is ${BUILD_TESTING}")
    endif()
endif()
sorrel_part(TESTS "the test programs" ${missing})
unset(missing)

foreach(list IN ITEMS ENABLED_FEATURES DISABLED_FEATURES)
    set(title "Built besides the libraries:")
    if(list STREQUAL "DISABLED_FEATURES")
        set(title "Left out:")
    endif()
    get_property(features GLOBAL PROPERTY ${list})
    if(features)
        feature_summary(WHAT ${list} DESCRIPTION "${title}")
    endif()
endforeach()
