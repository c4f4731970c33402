# bench-export: the export engine's entity data writer on a million point entities, in ANSI
# and UTF-16LE, beside a plain write() of the same bytes.
if(TARGET VeltoXTesselStatic)
  add_executable(bench-export ${CMAKE_CURRENT_SOURCE_DIR}/export/BenchExport.cpp)
  target_link_libraries(bench-export PRIVATE VeltoXTesselStatic)
endif()
