# The pages as Qt 5's qmllint sees them.
get_target_property(moc Qt5::moc IMPORTED_LOCATION)
cmake_path(GET moc PARENT_PATH qt_tools)
find_program(QMLLINT qmllint HINTS ${qt_tools} REQUIRED)
find_path(QT_QML_DIR QtQuick.2/qmldir HINTS ${Qt5Core_DIR}/../../qt5/qml REQUIRED)
list(APPEND lint_paths -I ${QT_QML_DIR})

add_test(NAME qmllint COMMAND ${QMLLINT} -U ${lint_paths} ${module_pages})
add_test(NAME qmllint_viewer COMMAND ${QMLLINT} ${viewer_pages})
# With -U it finds names that do not exist, but also takes offence at Qt's own types, such as
# Accessible.List, of which it does not know enough.
add_test(NAME qmllint_viewer_names COMMAND sh -c "! \"$@\" 2>&1 | grep -A 2 unqualified" sh
    ${QMLLINT} -U ${lint_paths} ${viewer_pages})
# The example's page uses what its host hands it by name alone, so only its syntax is checked.
add_test(NAME qmllint_examples COMMAND ${QMLLINT} ${example_page})
