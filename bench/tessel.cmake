# bench-app: the host application tessel on a survey file (import points to JSON Lines and
# to GeoJSON, import cloud), each beside the engine's own figure from bench-import.
if(TARGET tessel)
  add_executable(bench-app ${CMAKE_CURRENT_SOURCE_DIR}/tessel/BenchApp.cpp)
  add_dependencies(bench-app tessel)
  if(TARGET bench-import)
    add_dependencies(bench-app bench-import)
  endif()
endif()
