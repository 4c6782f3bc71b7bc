# folvane_test(NAME sources...) builds a GoogleTest program and tells ctest of each test in it.
# The caller links the library under test:
#     folvane_test(folvane-tests-platform fileKindTest.cpp jpegTest.cpp)
#     target_link_libraries(folvane-tests-platform PRIVATE folvane-platform)
# tests/support/main.cpp starts Qt offscreen with private settings; tests/support/printers.h is included first everywhere.

include(GoogleTest)

function(folvane_test NAME)
    add_executable(${NAME} ${ARGN} "${PROJECT_SOURCE_DIR}/tests/support/main.cpp")
    target_link_libraries(${NAME} PRIVATE folvane-test-support folvane-warnings GTest::gmock Qt6::Gui Qt6::Test)
    target_include_directories(${NAME} PRIVATE "${PROJECT_SOURCE_DIR}/src")
    target_compile_options(${NAME} PRIVATE "SHELL:-include \"${PROJECT_SOURCE_DIR}/tests/support/printers.h\"")
    gtest_discover_tests(${NAME} DISCOVERY_MODE PRE_TEST NO_PRETTY_VALUES TEST_PREFIX "${NAME}." PROPERTIES TIMEOUT 300)
endfunction()
