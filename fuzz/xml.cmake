# The XML reader and the two configuration records: every byte sequence must parse.
set(xml_fuzz ${CMAKE_CURRENT_SOURCE_DIR}/xml)
tessel_fuzz_target(fuzz_xml_document
  SOURCES ${xml_fuzz}/XmlDocumentFuzz.cpp
  LIBS tessel_xml tessel_textfile tessel_platform tessel_text)
tessel_fuzz_target(fuzz_import_configuration
  SOURCES ${xml_fuzz}/ImportConfigurationFuzz.cpp
  LIBS tessel_import_config tessel_xml tessel_textfile tessel_platform tessel_text Boost::headers)
tessel_fuzz_target(fuzz_export_configuration
  SOURCES ${xml_fuzz}/ExportConfigurationFuzz.cpp
  LIBS tessel_export_config tessel_xml tessel_textfile tessel_platform tessel_text)
