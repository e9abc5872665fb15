# Compiler settings of this project's own code. They stay inside the build: nothing links this
# target publicly, so a host is not made to compile with them.
add_library(cprdata_warnings INTERFACE)
target_compile_options(cprdata_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
    # No path of the building machine in log lines; they name files as the repository does.
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=
    # Qt's logging macros are called without arguments.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-gnu-zero-variadic-macro-arguments>
    $<$<BOOL:${CPRDATA_WERROR}>:-Werror>)
target_compile_definitions(cprdata_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    # Log lines carry the reporting function's signature in release builds too.
    QT_MESSAGELOGCONTEXT)

# Files and messages come from outside: what a fault could still do is kept small. The checks of
# the highest level need g++ 12 or clang 16 and an optimised build; level 2 serves the others.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_FLAGS "-O2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -Werror")
check_cxx_source_compiles("#include <cstdlib>
    int main() { static_assert(__USE_FORTIFY_LEVEL == 3); }" CPRDATA_HAS_FORTIFY_3)
unset(CMAKE_REQUIRED_FLAGS)
set(fortify_level $<IF:$<BOOL:${CPRDATA_HAS_FORTIFY_3}>,3,2>)
target_compile_options(cprdata_warnings INTERFACE -fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${fortify_level}>
    $<$<PLATFORM_ID:Linux>:-fstack-clash-protection>
    $<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-fcf-protection>)
target_compile_definitions(cprdata_warnings INTERFACE _GLIBCXX_ASSERTIONS)
target_link_options(cprdata_warnings INTERFACE
    $<$<PLATFORM_ID:Linux>:-Wl,-z,relro,-z,now>)
