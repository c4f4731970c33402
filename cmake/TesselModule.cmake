# The module itself, from every folder's object library.
get_property(parts GLOBAL PROPERTY TESSEL_MODULE_PARTS)
set(objects)
foreach(part IN LISTS parts)
  list(APPEND objects $<TARGET_OBJECTS:${part}>)
endforeach()

if(objects AND TARGET VeltoXGisCore AND TARGET VeltoXImportExportCore AND TARGET VeltoXCadShim)
  set(host_libraries VeltoXGisCore VeltoXImportExportCore VeltoXCadShim Boost::headers)

  add_library(VeltoXTesselStatic STATIC ${objects})
  target_link_libraries(VeltoXTesselStatic PUBLIC ${host_libraries})

  add_library(VeltoXTessel SHARED ${objects})
  target_link_libraries(VeltoXTessel PRIVATE ${host_libraries})
  set_target_properties(VeltoXTessel PROPERTIES
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  if(TARGET tessel_win32_resources)
    # The dialog templates. A resource object inside an archive is never pulled in by the
    # linker, as nothing refers to it: every program that links the static module gets its own
    # copy, and its dialogs find the templates in the program itself.
    target_sources(VeltoXTessel PRIVATE $<TARGET_OBJECTS:tessel_win32_resources>)
    target_sources(VeltoXTesselStatic INTERFACE $<TARGET_OBJECTS:tessel_win32_resources>)
  endif()
  if(WIN32)
    # A DLL exports what is marked dllexport: the entry points of the version script. The build fails when the
    # export table holds anything else.
    set_target_properties(VeltoXTessel PROPERTIES PREFIX "")
    add_custom_command(TARGET VeltoXTessel POST_BUILD
      COMMAND ${CMAKE_COMMAND} -DOBJDUMP=${CMAKE_OBJDUMP} -DDLL=$<TARGET_FILE:VeltoXTessel>
              -DEXPORTS=${CMAKE_SOURCE_DIR}/cmake/VeltoXTessel.map -P ${CMAKE_SOURCE_DIR}/cmake/CheckDllExports.cmake
      COMMENT "Checking the exports of VeltoXTessel.dll")
  else()
    # Only the entry points of the version script leave the module; iconv and the C++ runtime stay private.
    # The version script keeps the C++ library's template code (default visibility in its
    # headers) from leaking out as weak symbols.
    target_link_options(VeltoXTessel PRIVATE -Wl,--exclude-libs,ALL ${TESSEL_NO_UNDEFINED}
      -Wl,--version-script=${CMAKE_SOURCE_DIR}/cmake/VeltoXTessel.map)
    set_property(TARGET VeltoXTessel APPEND PROPERTY LINK_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/VeltoXTessel.map)
  endif()
endif()
