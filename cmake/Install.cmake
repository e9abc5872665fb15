# What is installed where, and under which names. What is built with Qt 6 has names of its own, so
# that both can be installed on one machine.
set(CPRDATA_PACKAGE CPRData)
set(CPRDATA_NAME_SUFFIX "")
if(CPRDATA_QT EQUAL 6)
    set(CPRDATA_NAME_SUFFIX Qt6)
    set(CPRDATA_PACKAGE CPRDataQt6)
endif()
set(CPRDATA_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/${CPRDATA_PACKAGE})
# Libraries that only this project's own programs and plugins use.
set(CPRDATA_PRIVATE_LIBDIR ${CMAKE_INSTALL_LIBDIR}/${CPRDATA_PACKAGE})
set(CPRDATA_INSTALL_QMLDIR "" CACHE STRING
    "Where QML modules are installed; when empty, where Debian's Qt looks for them")
if(NOT CPRDATA_INSTALL_QMLDIR)
    set(CPRDATA_INSTALL_QMLDIR ${CMAKE_INSTALL_LIBDIR}/qt${CPRDATA_QT}/qml)
endif()

# Lets TARGET find the libraries where it is built and, once it lies in the folder DESTINATION,
# wherever the prefix is. One path serves both: for a second one CMake makes room with an empty entry,
# which to the loader is the current folder.
function(cprdata_set_rpath target destination)
    get_target_property(type ${target} TYPE)
    if(type STREQUAL EXECUTABLE)
        get_target_property(built ${target} RUNTIME_OUTPUT_DIRECTORY)
    else()
        get_target_property(built ${target} LIBRARY_OUTPUT_DIRECTORY)
    endif()
    file(RELATIVE_PATH way ${built} ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
    set(rpath "$ORIGIN/${way}")
    foreach(directory IN ITEMS ${CMAKE_INSTALL_LIBDIR} ${CPRDATA_PRIVATE_LIBDIR})
        file(RELATIVE_PATH way /${destination} /${directory})
        string(REGEX REPLACE "/$" "" way "$ORIGIN/${way}")
        list(APPEND rpath ${way})
    endforeach()
    set_target_properties(${target} PROPERTIES
        INSTALL_RPATH "${rpath}"
        BUILD_WITH_INSTALL_RPATH ON)
endfunction()

# Makes TARGET one of the libraries that hosts link, as CPRData::TARGET. HEADERS are all that it
# installs; they are included from SUBDIRECTORY, or without one.
function(cprdata_public_library target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "SUBDIRECTORY" "HEADERS")
    add_library(CPRData::${target} ALIAS ${target})
    if(NOT CPRDATA_PACKAGE STREQUAL CPRData)
        add_library(${CPRDATA_PACKAGE}::${target} ALIAS ${target})
    endif()
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME ${target}${CPRDATA_NAME_SUFFIX}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
        BUILD_WITH_INSTALL_RPATH ON
        PUBLIC_HEADER "${arg_HEADERS}")
    target_compile_features(${target} PUBLIC cxx_std_17)
    if(NOT CPRDATA_INSTALL)
        return()
    endif()
    install(TARGETS ${target}
        EXPORT ${CPRDATA_PACKAGE}Targets
        LIBRARY
            DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT runtime
            NAMELINK_COMPONENT devel
        ARCHIVE
            DESTINATION ${CMAKE_INSTALL_LIBDIR}
            COMPONENT devel
        PUBLIC_HEADER
            DESTINATION ${CPRDATA_INCLUDEDIR}/${arg_SUBDIRECTORY}
            COMPONENT devel
        INCLUDES DESTINATION ${CPRDATA_INCLUDEDIR})
endfunction()

# Installs the program, plugin or private library TARGET in DESTINATION, a folder of the prefix.
function(cprdata_install target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESTINATION;COMPONENT" "")
    if(NOT CPRDATA_INSTALL)
        return()
    endif()
    cprdata_set_rpath(${target} ${arg_DESTINATION})
    install(TARGETS ${target}
        RUNTIME DESTINATION ${arg_DESTINATION} COMPONENT ${arg_COMPONENT}
        LIBRARY DESTINATION ${arg_DESTINATION} COMPONENT ${arg_COMPONENT} NAMELINK_SKIP)
endfunction()
