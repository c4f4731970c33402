# Fails when a source includes anything of a layer above its own. The layers, from the bottom:
# the module (host platform textfile xml import export ui), the reference host (refhost), the
# application tessel (tessel). The module sees the host only through the contract headers in
# host/, so it includes neither refhost/ nor tessel/, nor reaches for the host's own side of
# the framework's classes (HostSide, whose friendship the contract headers declare and nothing
# else may use); the reference host includes nothing of tessel/. Run with -DSOURCE_DIR=... and
# -DSTAMP=... (the file written when everything is clean).
set(module_folders host platform textfile xml import export ui)
set(offenders "")

# Adds "FILE: LINES" to offenders for every line of the sources in folders that matches regex.
function(find_includes folders regex)
  foreach(folder IN LISTS folders)
    file(GLOB_RECURSE sources ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
    foreach(source IN LISTS sources)
      file(STRINGS ${source} lines REGEX "${regex}")
      if(lines)
        file(RELATIVE_PATH relative ${SOURCE_DIR} ${source})
        list(APPEND offenders "${relative}: ${lines}")
      endif()
    endforeach()
  endforeach()
  set(offenders "${offenders}" PARENT_SCOPE)
endfunction()

find_includes("${module_folders}" "^[ \t]*#[ \t]*include[ \t]*[<\"](refhost|tessel)/")
find_includes(refhost "^[ \t]*#[ \t]*include[ \t]*[<\"]tessel/")

foreach(folder IN LISTS module_folders)
  file(GLOB_RECURSE sources ${SOURCE_DIR}/${folder}/*.h ${SOURCE_DIR}/${folder}/*.cpp)
  foreach(source IN LISTS sources)
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
  message(FATAL_ERROR "A source includes a layer above its own (the module: neither refhost/ nor tessel/, "
                      "nor HostSide; refhost/: nothing of tessel/):\n  ${report}")
endif()
file(TOUCH ${STAMP})
