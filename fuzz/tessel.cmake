# The host application's readers of outside input: the export's JSON Lines and GeoJSON, the
# configuration files, and the small languages inside option values.
if(TARGET tessel_app)
  tessel_fuzz_target(fuzz_app_input
    SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/tessel/AppInputFuzz.cpp
    LIBS tessel_app)
endif()
