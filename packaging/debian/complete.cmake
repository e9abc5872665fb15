# Adds to the folder of each package what Debian wants to find in it. cpack runs this before it packs.
cmake_minimum_required(VERSION 3.25)

set(authors "${CPACK_DEBIAN_PACKAGE_MAINTAINER}")
set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
execute_process(COMMAND date --utc --rfc-email --date ${CPACK_CPRDATA_DATE}
    OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
file(READ ${CPACK_CPRDATA_SOURCE_DIR}/LICENSE license)
string(REGEX REPLACE "^MIT License\n\nCopyright[^\n]*\n\n" "" license "${license}")
string(REGEX REPLACE "\n+$" "" license "${license}")
string(REPLACE "\n\n" "\n.\n" license "${license}")
string(REPLACE "\n" "\n " license "${license}")

# Packs FILES as Debian does: best compression, and nothing in them that changes from day to day.
function(compress)
    execute_process(COMMAND gzip --best --no-name --force ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})

    set(doc ${root}/usr/share/doc/${package})
    file(CONFIGURE OUTPUT ${doc}/changelog.Debian CONTENT
"cprdata (@version@) bookworm; urgency=medium

  * Release @CPACK_PACKAGE_VERSION@; changelog.gz says what is new.

 -- @authors@  @date@
" @ONLY)
    file(CONFIGURE OUTPUT ${doc}/copyright CONTENT
"Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/
Upstream-Name: libCPRData

Files: *
Copyright: 2026 The libCPRData authors
License: Expat

License: Expat
 @license@
" @ONLY)
    configure_file(${CPACK_CPRDATA_SOURCE_DIR}/CHANGELOG.md ${doc}/changelog COPYONLY)
    file(GLOB_RECURSE pages ${root}/usr/share/man/*.[1-8])
    compress(${doc}/changelog.Debian ${doc}/changelog ${pages})

    # cpack strips programs and shared libraries only.
    file(GLOB_RECURSE archives ${root}/*.a)
    if(archives)
        execute_process(COMMAND strip --strip-debug --enable-deterministic-archives ${archives}
            COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
