# tessel_module_part(NAME SOURCES...): one folder of the module as an object library.
# The module's code is compiled once and linked both into the shared library VeltoXTessel
# (only its entry points visible) and into the static library VeltoXTesselStatic for tests.
function(tessel_module_part name)
  add_library(${name} OBJECT ${ARGN})
  set_target_properties(${name} PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PUBLIC Boost::headers)
  set_property(GLOBAL APPEND PROPERTY TESSEL_MODULE_PARTS ${name})
endfunction()
