# Included by the copies that scripts/mutate builds (CMAKE_PROJECT_INCLUDE). Qt's test library tells every test file the
# folders it is built in, which none of ours asks for: without them all copies compile alike, and ccache compiles once.
cmake_language(DEFER CALL set_property TARGET Qt6::Test PROPERTY INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
