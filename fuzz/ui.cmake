# The import wizard's reading of a sample field as a number (the type guess and the marks of
# cells a type cannot convert): any field text must be classified, and consistently.
tessel_fuzz_target(fuzz_column_types
  SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/ui/ColumnTypesFuzz.cpp ${CMAKE_SOURCE_DIR}/ui/ColumnTypes.cpp
          ${CMAKE_SOURCE_DIR}/import/NumberText.cpp
  LIBS tessel_text)
