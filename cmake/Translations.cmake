# The words of all programs, in every language, as resources of TARGET in PROGRAM_translations.qrc:
# /PROGRAM/translations/cprviewer_LANGUAGE.qm. English has a translation for its plurals only.
find_package(Qt${CPRDATA_QT} ${CPRDATA_QT_MINIMUM} REQUIRED COMPONENTS LinguistTools)

set(CPRDATA_TRANSLATIONS
    ${PROJECT_SOURCE_DIR}/apps/cprviewer/translations/cprviewer_de.ts
    ${PROJECT_SOURCE_DIR}/apps/cprviewer/translations/cprviewer_en.ts)

function(cprdata_translations target program)
    qt_add_translation(compiled ${CPRDATA_TRANSLATIONS})
    set(files)
    foreach(file IN LISTS compiled)
        cmake_path(GET file FILENAME name)
        string(APPEND files "    <file alias=\"${name}\">${file}</file>\n")
    endforeach()
    file(CONFIGURE OUTPUT ${program}_translations.qrc CONTENT
        "<RCC>\n  <qresource prefix=\"/${program}/translations\">\n@files@  </qresource>\n</RCC>\n" @ONLY)
    qt_add_resources(resources ${CMAKE_CURRENT_BINARY_DIR}/${program}_translations.qrc)
    target_sources(${target} PRIVATE ${resources})
    set_source_files_properties(${resources} PROPERTIES SKIP_AUTOMOC ON)
endfunction()
