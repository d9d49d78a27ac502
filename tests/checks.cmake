# Checks of the sources themselves, run by ctest beside the suites.
add_test(NAME checks.includes COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-includes")
add_test(NAME checks.includes.check
    COMMAND python3 "${PROJECT_SOURCE_DIR}/tests/scripts/check_includes_test.py")
add_test(NAME checks.format COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-format")
# Every header compiles alone.
add_test(NAME checks.headers
    COMMAND "${CMAKE_COMMAND}" --build "${PROJECT_BINARY_DIR}" --target all_verify_interface_header_sets)
# It takes every core, which tests in real time would feel.
set_tests_properties(checks.headers PROPERTIES TIMEOUT 1200 RUN_SERIAL ON)
add_test(NAME checks.tests COMMAND "${PROJECT_SOURCE_DIR}/scripts/check-tests")
