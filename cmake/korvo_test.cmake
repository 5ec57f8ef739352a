# korvo_add_test(<source> <library>...)
#   Builds one GoogleTest executable named after <source>, links it with the given libraries and
#   registers its cases with CTest. Adding a test file is one line in its folder's CMakeLists.txt.
function(korvo_add_test source)
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest_main GTest::gmock)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST)
endfunction()
