# Qt 5's CMake files have nothing for QML modules; this does with moc and qmltyperegistrar what
# qmake's CONFIG += qmltypes does.

get_target_property(moc Qt${CPRDATA_QT}::moc IMPORTED_LOCATION)
cmake_path(GET moc PARENT_PATH qt_tools)
find_program(QMLTYPEREGISTRAR qmltyperegistrar HINTS ${qt_tools} REQUIRED)

# Writes what moc knows of HEADERS, seen as TARGET is compiled, into the one file OUTPUT.
function(collect_metatypes)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "OUTPUT;TARGET" "HEADERS")
    set(includes "$<TARGET_PROPERTY:${arg_TARGET},INCLUDE_DIRECTORIES>")
    cmake_path(GET arg_OUTPUT STEM LAST_ONLY stem)
    set(parts)
    foreach(header IN LISTS arg_HEADERS)
        cmake_path(GET header STEM name)
        set(part ${CMAKE_CURRENT_BINARY_DIR}/${stem}/${name}.cpp)
        add_custom_command(OUTPUT ${part}.json
            COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${stem}
            COMMAND Qt${CPRDATA_QT}::moc "$<$<BOOL:${includes}>:-I$<JOIN:${includes},;-I>>"
                --output-json -o ${part} ${header}
            DEPENDS ${header}
            COMMENT "Types of ${name}.h"
            COMMAND_EXPAND_LISTS VERBATIM)
        list(APPEND parts ${part}.json)
    endforeach()
    add_custom_command(OUTPUT ${arg_OUTPUT}
        COMMAND Qt${CPRDATA_QT}::moc --collect-json -o ${arg_OUTPUT} ${parts}
        DEPENDS ${parts}
        COMMENT "Types of ${stem}"
        VERBATIM)
endfunction()

# Adds to TARGET the code that registers the types of its HEADERS as the module URI VERSION, and
# writes QMLTYPES. METATYPES are those of the classes that the headers build on.
function(register_qml_types target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI;VERSION;QMLTYPES" "HEADERS;METATYPES")
    string(REPLACE "." ";" version ${arg_VERSION})
    list(GET version 0 major)
    list(GET version 1 minor)
    set(metatypes ${CMAKE_CURRENT_BINARY_DIR}/${target}_metatypes.json)
    set(registration ${CMAKE_CURRENT_BINARY_DIR}/${target}_qmltyperegistrations.cpp)
    collect_metatypes(OUTPUT ${metatypes} TARGET ${target} HEADERS ${arg_HEADERS})
    list(JOIN arg_METATYPES "," foreign)
    cmake_path(GET arg_QMLTYPES PARENT_PATH module)
    file(MAKE_DIRECTORY ${module})
    add_custom_command(OUTPUT ${registration} ${arg_QMLTYPES}
        COMMAND ${QMLTYPEREGISTRAR} -o ${registration} --generate-qmltypes ${arg_QMLTYPES}
            --import-name ${arg_URI} --major-version ${major} --minor-version ${minor}
            --foreign-types ${foreign} ${metatypes}
        DEPENDS ${metatypes} ${arg_METATYPES}
        COMMENT "QML module ${arg_URI} ${arg_VERSION}"
        VERBATIM)
    target_sources(${target} PRIVATE ${registration})
    set_source_files_properties(${registration} PROPERTIES SKIP_AUTOMOC ON)
endfunction()
