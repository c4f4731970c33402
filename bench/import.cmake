# bench-import: the import engine's cloud and point builders on a survey file, beside a
# minimal two-pass loop (count line feeds; widen, split, convert x and y) in the same process.
if(TARGET VeltoXTesselStatic)
  add_executable(bench-import ${CMAKE_CURRENT_SOURCE_DIR}/import/BenchImport.cpp)
  target_link_libraries(bench-import PRIVATE VeltoXTesselStatic)
endif()
