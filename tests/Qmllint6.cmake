# The pages as Qt 6's qmllint sees them: it looks at types, too, and prints whole lines about what it
# finds. A test passes when nothing is found but IGNORED, a regular expression.
function(lint_test name ignored)
    add_test(NAME ${name} COMMAND sh -c "! \"$@\" 2>&1 | grep -E '^(Warning|/|Failed)' | grep -vE '${ignored}'"
        sh $<TARGET_FILE:Qt6::qmllint> ${lint_paths} ${ARGN})
endfunction()

# It does not know the functions of JavaScript's lists.
lint_test(qmllint "\"join\" not found" ${module_pages})
# Nor what a Loader holds, what only some items have, that a property may be a function, and names of
# the page around a component.
lint_test(qmllint_viewer
    "\"(join|filter|map|concat|focusReason)\" not found|\"callLater\"|type \"?Q(Object|QuickMenu)|variant property|Cannot defer|Unqualified"
    ${viewer_pages})
# The example's page uses what its host hands it by name alone, types included.
lint_test(qmllint_examples "Unqualified|CPRDataTypes" ${example_page})
