# Fails when a source of the module includes anything of the reference host, or reaches for
# the host's own side of the framework's classes (HostSide, whose friendship the contract
# headers declare and nothing else may use): the module sees the host only through the
# contract headers in host/. Run with -DSOURCE_DIR=... and -DSTAMP=... (the file written when
# everything is clean).
set(module_folders host platform textfile xml import export ui)
set(offenders "")
foreach(folder IN LISTS module_folders)
  file(GLOB_RECURSE sources ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
  foreach(source IN LISTS sources)
    file(STRINGS ${source} lines REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]refhost/")
    if(lines)
      file(RELATIVE_PATH relative ${SOURCE_DIR} ${source})
      list(APPEND offenders "${relative}: ${lines}")
    endif()
    file(STRINGS ${source} uses REGEX "HostSide")
    list(FILTER uses EXCLUDE REGEX "^[ \t]*(class HostSide;|friend class VeltoGis::HostSide;)[ \t]*$")
    if(uses)
      file(RELATIVE_PATH relative ${SOURCE_DIR} ${source})
      list(APPEND offenders "${relative}: ${uses}")
    endif()
  endforeach()
endforeach()
if(offenders)
  list(JOIN offenders "\n  " report)
  message(FATAL_ERROR "The module must not use the reference host:\n  ${report}")
endif()
file(TOUCH ${STAMP})
