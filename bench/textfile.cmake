# Text files: tessel-gen-survey writes deterministic survey files (other benchmarks use it
# too); bench-textfile measures TextFile reading and the per-line split against a plain
# read() loop.
add_executable(tessel-gen-survey ${CMAKE_CURRENT_SOURCE_DIR}/textfile/GenSurvey.cpp)
add_executable(bench-textfile ${CMAKE_CURRENT_SOURCE_DIR}/textfile/BenchTextFile.cpp)
target_link_libraries(bench-textfile PRIVATE tessel_textfile tessel_platform tessel_text)
