# The host application's readers of outside input: the export's JSON Lines and GeoJSON, and the
# small languages inside option values. Configuration files are read by the module's TextFile,
# which has its own target.
if(TARGET tessel_app)
  tessel_fuzz_target(fuzz_app_input
    SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/tessel/AppInputFuzz.cpp
    LIBS tessel_app)
endif()
