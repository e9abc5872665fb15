# The Debian packages, one for each component: configure with -DCMAKE_INSTALL_PREFIX=/usr, build, and
# run cpack in the build folder. They come to lie in its folder "packages".
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
# Completes each package's folder before it is packed.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/complete.cmake)
set(CPACK_VERBATIM_VARIABLES ON)

# The release's date stands in the changelog.
set(changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${changelog})
file(STRINGS ${changelog} release REGEX "^## ${PROJECT_VERSION} ")
if(NOT release MATCHES "\\(([0-9]+-[0-9]+-[0-9]+)\\)")
    message(FATAL_ERROR "CHANGELOG.md has no line \"## ${PROJECT_VERSION} (YEAR-MONTH-DAY)\"")
endif()
set(CPACK_CPRDATA_DATE ${CMAKE_MATCH_1})
set(CPACK_CPRDATA_SOURCE_DIR ${PROJECT_SOURCE_DIR})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE cprdata)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The libCPRData authors <authors@cprdata.invalid>")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Gives COMPONENT the Debian package NAME.
function(cprdata_package component name section summary description)
    cmake_parse_arguments(PARSE_ARGV 5 arg "" "" "NEEDS;DEPENDS")
    set(prefix CPACK_DEBIAN_${component})
    string(TOUPPER ${prefix} prefix)
    foreach(needed IN LISTS arg_NEEDS)
        list(APPEND arg_DEPENDS "${needed} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
    endforeach()
    list(JOIN arg_DEPENDS ", " depends)
    set(${prefix}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(${prefix}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(${prefix}_DESCRIPTION "${summary}\n${story}${description}" PARENT_SCOPE)
    set(${prefix}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
endfunction()

if(CPRDATA_QT EQUAL 6)
    set(runtime libcprdata-qt6-${PROJECT_VERSION_MAJOR})
    set(devel libcprdata-qt6-dev)
    set(tools cprdata-tools-qt6)
    set(qml qml6-module-cprdata)
    set(devel_needs qt6-base-dev qt6-declarative-dev)
    set(qml_needs
        qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick
        qml6-module-qtquick-window libqt6sql6-sqlite)
    set(tools_needs
        libqt6sql6-sqlite
        qml6-module-qt-labs-platform qml6-module-qtquick-controls qml6-module-qtquick-layouts
        qml6-module-qtquick-templates)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_CONFLICTS cprdata-tools)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS
        "qt6-speech-speechd-plugin | qt6-speech-flite-plugin") # for what learners hear
else()
    set(runtime libcprdata${PROJECT_VERSION_MAJOR})
    set(devel libcprdata-dev)
    set(tools cprdata-tools)
    set(qml qml-module-cprdata)
    set(devel_needs qtbase5-dev qtdeclarative5-dev)
    set(qml_needs libqt5sql5-sqlite qml-module-qtquick-window2 qml-module-qtquick2)
    set(tools_needs
        libqt5sql5-sqlite
        qml-module-qt-labs-platform qml-module-qtquick-controls2 qml-module-qtquick-layouts
        qml-module-qtquick-templates2)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_CONFLICTS cprdata-tools-qt6)
    set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS
        "libqt5multimedia5-plugins, qtspeech5-speechd-plugin | qtspeech5-flite-plugin") # what learners hear
endif()
# Links can go through a broker of any machine; recommended, one would start on each.
set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS mosquitto)
# Each package's text begins with its own summary and goes on with this one.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(story "\
libCPRData holds all data of one CPR training session recorded from a manikin:
events, waves, guidelines, scores and advice. Sessions are saved as archives.
.
")

cprdata_package(runtime ${runtime} libs
    "data of CPR training sessions, for Qt ${CPRDATA_QT}"
    "This package has the libraries that programs use.")
cprdata_package(devel ${devel} libdevel
    "data of CPR training sessions, for Qt ${CPRDATA_QT} - development files"
    "This package has headers, the libraries of recorded logs, links, session\nfiles and reviews, and what CMake and pkg-config need."
    NEEDS ${runtime}
    DEPENDS ${devel_needs} libmosquitto-dev pkg-config zlib1g-dev)
if(CPRDATA_BUILD_TOOLS)
    cprdata_package(qml ${qml} libs
        "data of CPR training sessions - QML module for Qt ${CPRDATA_QT}"
        "This package has the QML module CPRData: classes, models, items that draw."
        NEEDS ${runtime}
        DEPENDS ${qml_needs})
    cprdata_package(tools ${tools} science
        "record, check, export and look over CPR training sessions"
        "This package has the command-line program cprsession and the viewer\ncprviewer."
        NEEDS ${runtime} ${qml}
        DEPENDS ${tools_needs})
endif()
# The pages are the same for both versions of Qt.
if(NOT CPRDATA_QT EQUAL 6)
    cprdata_package(doc libcprdata-doc doc
        "data of CPR training sessions - documentation"
        "This package has the guides, the class pages and the examples.")
    set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
endif()

# Programs that link the libraries come to depend on their package. (What cpack itself would write
# names the QML module's private library as well.)
file(CONFIGURE OUTPUT shlibs CONTENT
"libCPRData@CPRDATA_NAME_SUFFIX@ @PROJECT_VERSION_MAJOR@ @runtime@ (>= @PROJECT_VERSION@)
libchestboard@CPRDATA_NAME_SUFFIX@ @PROJECT_VERSION_MAJOR@ @runtime@ (>= @PROJECT_VERSION@)
" @ONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_LIST_DIR}/triggers
    ${CMAKE_CURRENT_BINARY_DIR}/shlibs)
include(CPack)
