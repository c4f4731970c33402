# TextFile reading in every encoding with small buffers, the splitters over what it reads,
# and a UTF-16LE write-and-read-back: every byte sequence must come through.
tessel_fuzz_target(fuzz_textfile
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/textfile/TextFileFuzz.cpp
  LIBS tessel_textfile tessel_platform tessel_text)
