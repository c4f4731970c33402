# bench-xml: parse and write-back times of import configurations, SetText throughput.
add_executable(bench-xml ${CMAKE_CURRENT_SOURCE_DIR}/xml/XmlBench.cpp)
target_link_libraries(bench-xml PRIVATE tessel_import_config tessel_xml tessel_textfile tessel_platform tessel_text Boost::headers)
