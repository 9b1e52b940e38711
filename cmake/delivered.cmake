# The files that the program is delivered with, in the build tree's folder "delivered": the shop's empty database
# and one with an invented year in it, and the tips of the day. The help lies there too.

set(DELIVERED_DIR ${CMAKE_BINARY_DIR}/delivered)

foreach(tool build_database make_demo)
  add_executable(${tool} tools/${tool}.cpp)
  target_link_libraries(${tool} PRIVATE tarvello_data)
  set_target_properties(${tool} PROPERTIES AUTOMOC OFF AUTORCC OFF)
endforeach()

# The command for those who look after a shop's data.
add_executable(tarvello-data tools/tarvello_data.cpp)
target_link_libraries(tarvello-data PRIVATE tarvello_data CLI11::CLI11)
set_target_properties(tarvello-data PROPERTIES AUTOMOC OFF AUTORCC OFF)

set(SHOP_TEXTS schema units service_types catalogue)
list(TRANSFORM SHOP_TEXTS PREPEND ${CMAKE_SOURCE_DIR}/data/)
list(TRANSFORM SHOP_TEXTS APPEND .txt)
list(GET SHOP_TEXTS 0 SCHEMA_TEXT)
list(GET SHOP_TEXTS 1 UNITS_TEXT)
list(GET SHOP_TEXTS 2 SERVICE_TYPES_TEXT)
list(GET SHOP_TEXTS 3 CATALOGUE_TEXT)

add_custom_command(OUTPUT ${DELIVERED_DIR}/Tarvello.mdb
  COMMAND ${CMAKE_COMMAND} -E make_directory ${DELIVERED_DIR}
  COMMAND build_database ${DELIVERED_DIR}/Tarvello.mdb --schema ${SCHEMA_TEXT} --units ${UNITS_TEXT}
    --service-types ${SERVICE_TYPES_TEXT} --catalogue ${CATALOGUE_TEXT}
  DEPENDS build_database ${SHOP_TEXTS}
  COMMENT "Making the delivered database"
  VERBATIM)
# make_demo starts from the delivered database, whoever runs it.
add_custom_target(delivered_database DEPENDS ${DELIVERED_DIR}/Tarvello.mdb)
add_dependencies(make_demo delivered_database)

add_custom_command(OUTPUT ${DELIVERED_DIR}/Demo.mdb
  COMMAND make_demo ${DELIVERED_DIR}/Demo.mdb --from ${DELIVERED_DIR}/Tarvello.mdb
  DEPENDS make_demo ${DELIVERED_DIR}/Tarvello.mdb
  COMMENT "Inventing a shop's year"
  VERBATIM)
add_custom_command(OUTPUT ${DELIVERED_DIR}/tipoftheday.txt
  COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_SOURCE_DIR}/resources/tipoftheday.txt ${DELIVERED_DIR}/tipoftheday.txt
  DEPENDS ${CMAKE_SOURCE_DIR}/resources/tipoftheday.txt
  COMMENT "Laying the tips beside them"
  VERBATIM)
add_custom_target(delivered ALL
  DEPENDS ${DELIVERED_DIR}/Tarvello.mdb ${DELIVERED_DIR}/Demo.mdb ${DELIVERED_DIR}/tipoftheday.txt)

if(NOT TARGET build_help)
  include(cmake/help.cmake)
endif()
