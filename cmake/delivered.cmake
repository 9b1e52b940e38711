# The files that the program is delivered with, in the build tree's folder "delivered": the shop's empty database
# and one with an invented year in it, and the tips of the day. The help lies there too.

set(DELIVERED_DIR ${CMAKE_BINARY_DIR}/delivered)

foreach(tool build_database make_demo)
  add_executable(${tool} tools/${tool}.cpp)
  target_link_libraries(${tool} PRIVATE tarvello_data)
  set_target_properties(${tool} PROPERTIES AUTOMOC OFF AUTORCC OFF)
endforeach()

# The command for those who look after a shop's data.
file(GLOB VERBS CONFIGURE_DEPENDS tools/verbs/*.cpp tools/verbs/*.h)
add_executable(tarvello-data tools/tarvello_data.cpp ${VERBS})
target_link_libraries(tarvello-data PRIVATE tarvello_exchange CLI11::CLI11)
set_target_properties(tarvello-data PROPERTIES AUTOMOC OFF AUTORCC OFF)
# The reader of command lines is all header: compiled for each verb anew it would be a tenth of the whole build.
tarvello_together(tarvello-data 0)

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
# The icon for desktops that draw no SVG.
add_executable(make_icons tools/make_icons.cpp)
target_link_libraries(make_icons PRIVATE Qt6::Gui Qt6::Svg)
set_target_properties(make_icons PROPERTIES AUTOMOC OFF AUTORCC OFF)
set(ICONS_DIR ${CMAKE_BINARY_DIR}/icons)
set(ICON_DRAWING ${CMAKE_SOURCE_DIR}/resources/icons/Tarvello.svg)
add_custom_command(OUTPUT ${ICONS_DIR}/256x256/apps/tarvello.png
  COMMAND make_icons ${ICON_DRAWING} ${ICONS_DIR}
  DEPENDS make_icons ${ICON_DRAWING}
  COMMENT "Drawing the icon in its sizes"
  VERBATIM)
# Changelog and manual pages as they lie in a package: packed, and the same bytes from the same texts.
set(PACKED_DIR ${CMAKE_BINARY_DIR}/packed)
set(PACKED)
foreach(text resources/package/changelog docs/tarvello.1 docs/tarvello-data.1)
  get_filename_component(name ${text} NAME)
  add_custom_command(OUTPUT ${PACKED_DIR}/${name}.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PACKED_DIR}
    COMMAND sh -c "gzip -9nc '${CMAKE_SOURCE_DIR}/${text}' > '${PACKED_DIR}/${name}.gz'"
    DEPENDS ${CMAKE_SOURCE_DIR}/${text}
    COMMENT "Packing ${name}"
    VERBATIM)
  list(APPEND PACKED ${PACKED_DIR}/${name}.gz)
endforeach()
add_custom_target(delivered ALL
  DEPENDS ${DELIVERED_DIR}/Tarvello.mdb ${DELIVERED_DIR}/Demo.mdb ${DELIVERED_DIR}/tipoftheday.txt
  ${ICONS_DIR}/256x256/apps/tarvello.png ${PACKED})

if(NOT TARGET build_help)
  include(cmake/help.cmake)
endif()
