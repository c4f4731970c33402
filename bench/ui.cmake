# bench-import-preview: the import wizard's preview through its model (no display): opening
# on a file, a reload after each delimiter change, and the peak memory of the process.
if(TARGET VeltoXTesselStatic)
  add_executable(bench-import-preview ${CMAKE_CURRENT_SOURCE_DIR}/ui/BenchImportPreview.cpp)
  target_link_libraries(bench-import-preview PRIVATE VeltoXTesselStatic refhost_utf8)
endif()

# bench-preset-detect: Detect on a file as the wizard and "tessel --preset auto" run it; it
# reads only the preview lines, however large the file.
if(TARGET VeltoXTesselStatic)
  add_executable(bench-preset-detect ${CMAKE_CURRENT_SOURCE_DIR}/ui/BenchPresetDetect.cpp)
  target_link_libraries(bench-preset-detect PRIVATE VeltoXTesselStatic refhost_utf8)
endif()
