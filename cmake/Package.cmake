# The Windows package: cmake --build --preset windows --target package makes
# VeltoXTessel-<version>-win64.zip with the module, the reference host's libraries it loads
# against, tessel.exe and a read-me. Everything links the C and C++ runtimes statically; the
# package fails if a program or library in it imports a DLL that is neither in it nor one of
# the system's own.
if(NOT WIN32 OR NOT TARGET VeltoXTessel OR NOT TARGET tessel)
  return()
endif()

# The DLLs' import libraries are for building against them, not for the package.
install(TARGETS VeltoXTessel VeltoXGisCore VeltoXImportExportCore VeltoXCadShim tessel
        RUNTIME DESTINATION . COMPONENT runtime
        LIBRARY DESTINATION . COMPONENT runtime
        ARCHIVE DESTINATION lib COMPONENT development EXCLUDE_FROM_ALL)
install(FILES ${CMAKE_SOURCE_DIR}/packaging/README-windows.txt DESTINATION . RENAME README.txt COMPONENT runtime)
install(CODE "
  execute_process(COMMAND \"${CMAKE_COMMAND}\" -DOBJDUMP=${CMAKE_OBJDUMP}
                          \"-DFOLDER=\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\"
                          -P ${CMAKE_SOURCE_DIR}/cmake/CheckPackageImports.cmake
                  RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR \"The package lacks a DLL that its programs import\")
  endif()" COMPONENT runtime)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME VeltoXTessel)
set(CPACK_PACKAGE_VENDOR VeltoX)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Text file import and export engines for the VeltoGis framework, with tessel")
set(CPACK_PACKAGE_FILE_NAME VeltoXTessel-${PROJECT_VERSION}-win64)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
set(CPACK_STRIP_FILES ON) # the debugging information stays in the build folder
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
include(CPack)
