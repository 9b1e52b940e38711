# Tarvello.hlp, built from the pages in resources/help. The builder takes only the form of the file, not the windows,
# so that it is there before anything else is built.
add_executable(build_help tools/build_help.cpp shell/help_file.cpp shell/help_file.h)
target_include_directories(build_help PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(build_help PRIVATE Qt6::Core)

file(GLOB HELP_PAGES CONFIGURE_DEPENDS resources/help/*.md resources/help/*.png resources/icons/*.svg)
set(HELP_FILE ${CMAKE_BINARY_DIR}/delivered/Tarvello.hlp)
add_custom_command(OUTPUT ${HELP_FILE}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/delivered
  COMMAND build_help ${CMAKE_SOURCE_DIR}/resources/help ${HELP_FILE}
    ${CMAKE_SOURCE_DIR}/resources/help ${CMAKE_SOURCE_DIR}/resources/icons
  DEPENDS build_help ${HELP_PAGES}
  COMMENT "Building Tarvello.hlp" VERBATIM)
add_custom_target(help_file DEPENDS ${HELP_FILE})
add_dependencies(delivered help_file)
