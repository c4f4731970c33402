# Cross-compiling for 64-bit Windows with mingw-w64 on Debian (cmake --preset windows).
# The posix-thread compiler: the win32-thread one has no std::mutex. Everything links the
# C and C++ runtimes statically, so that the programs and DLLs need nothing beside them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mingw_triple x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${mingw_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw_triple}-windres)

set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)

# The header-only libraries of the build machine, each exposed on its own: adding
# /usr/include as a whole would put glibc's headers before the Windows ones.
set(tessel_host_headers ${CMAKE_BINARY_DIR}/host-headers)
file(MAKE_DIRECTORY ${tessel_host_headers}/include)
foreach(folder boost fast_float CLI nlohmann flatbuffers utf8cpp)
  if(EXISTS /usr/include/${folder} AND NOT EXISTS ${tessel_host_headers}/include/${folder})
    file(CREATE_LINK /usr/include/${folder} ${tessel_host_headers}/include/${folder} SYMBOLIC)
  endif()
endforeach()
set(Boost_NO_BOOST_CMAKE ON)

# Libraries and headers from the Windows sysroot (and the folder above) only; programs from
# the build machine.
set(CMAKE_FIND_ROOT_PATH /usr/${mingw_triple} ${tessel_host_headers})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# ctest runs the test programs under Wine; tests are listed when they run, not at link time
# (which would start Wine for every program built).
find_program(TESSEL_WINE NAMES wine wine64)
if(TESSEL_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TESSEL_WINE})
endif()
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)

# GoogleTest is built from its source with the same compiler.
set(TESSEL_GTEST_SOURCE /usr/src/googletest CACHE PATH "GoogleTest's source, built for the target")
