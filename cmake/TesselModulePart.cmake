# tessel_module_part(NAME SOURCES...): one folder of the module as an object library.
# The module's code is compiled once and linked both into the shared library VeltoXTessel
# (only its entry points visible) and into the static library VeltoXTesselStatic for tests.
# Every module part waits for the check that no module source includes the reference host.
file(GLOB_RECURSE tessel_module_sources CONFIGURE_DEPENDS
  ${CMAKE_SOURCE_DIR}/host/*.h ${CMAKE_SOURCE_DIR}/host/*.cpp ${CMAKE_SOURCE_DIR}/platform/*.h
  ${CMAKE_SOURCE_DIR}/platform/*.cpp ${CMAKE_SOURCE_DIR}/textfile/*.h ${CMAKE_SOURCE_DIR}/textfile/*.cpp
  ${CMAKE_SOURCE_DIR}/xml/*.h ${CMAKE_SOURCE_DIR}/xml/*.cpp ${CMAKE_SOURCE_DIR}/import/*.h
  ${CMAKE_SOURCE_DIR}/import/*.cpp ${CMAKE_SOURCE_DIR}/export/*.h ${CMAKE_SOURCE_DIR}/export/*.cpp
  ${CMAKE_SOURCE_DIR}/ui/*.h ${CMAKE_SOURCE_DIR}/ui/*.cpp)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/module-includes.stamp
  COMMAND ${CMAKE_COMMAND} -DSOURCE_DIR=${CMAKE_SOURCE_DIR} -DSTAMP=${CMAKE_BINARY_DIR}/module-includes.stamp
          -P ${CMAKE_SOURCE_DIR}/cmake/CheckModuleIncludes.cmake
  DEPENDS ${tessel_module_sources} ${CMAKE_SOURCE_DIR}/cmake/CheckModuleIncludes.cmake
  COMMENT "Checking that the module includes nothing of the reference host")
add_custom_target(tessel_module_includes DEPENDS ${CMAKE_BINARY_DIR}/module-includes.stamp)

function(tessel_module_part name)
  add_library(${name} OBJECT ${ARGN})
  add_dependencies(${name} tessel_module_includes)
  set_target_properties(${name} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PUBLIC Boost::headers)
  set_property(GLOBAL APPEND PROPERTY TESSEL_MODULE_PARTS ${name})
endfunction()
