# tessel_module_part(NAME SOURCES...): one folder of the module as an object library.
# The module's code is compiled once and linked both into the shared library VeltoXTessel
# (only its entry points visible) and into the static library VeltoXTesselStatic for tests.
# Every module part, and every library of the reference host, waits for the check that no
# source includes a layer above its own (cmake/CheckIncludeOrder.cmake).
set(tessel_checked_sources)
foreach(folder host platform textfile xml import export ui refhost)
  file(GLOB_RECURSE folder_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
  list(APPEND tessel_checked_sources ${folder_sources})
endforeach()
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/include-order.stamp
  COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${CMAKE_SOURCE_DIR} -DSTAMP=${CMAKE_BINARY_DIR}/include-order.stamp
          -P ${CMAKE_SOURCE_DIR}/cmake/CheckIncludeOrder.cmake
  DEPENDS ${tessel_checked_sources} ${CMAKE_SOURCE_DIR}/cmake/CheckIncludeOrder.cmake
  COMMENT "Checking that neither the module nor the reference host includes a layer above its own")
add_custom_target(tessel_include_order DEPENDS ${CMAKE_BINARY_DIR}/include-order.stamp)

function(tessel_module_part name)
  add_library(${name} OBJECT ${ARGN})
  add_dependencies(${name} tessel_include_order)
  set_target_properties(${name} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PUBLIC Boost::headers)
  set_property(GLOBAL APPEND PROPERTY TESSEL_MODULE_PARTS ${name})
endfunction()
