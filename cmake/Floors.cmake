# A floor is one folder and one static library. Its headers are visible to those that link it, so that a source
# can include only what stands on the floors that its folder names here: the build enforces the drawing.
#   frigana_floor(NAME below...)   all *.cpp of the current folder; a folder of headers alone becomes an interface
function(frigana_floor name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARGN})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ARGN})
  endif()
endfunction()

# One test program for the sources of a tests/ folder, found by ctest case by case.
#   frigana_test(NAME floors...)   without *UnixTest.cpp on Windows: signals, processes, devices and links of Unix
function(frigana_test name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "UnixTest\\.cpp$")
  endif()
  add_executable(${name} ${sources})
  # What is tested has the optimisation of its build; the tests themselves are compiled quickly.
  set(quick $<$<CONFIG:Release>:-O0>)
  target_compile_options(${name} PRIVATE ${quick})
  target_link_libraries(${name} PRIVATE ${ARGN} GTest::gtest GTest::gtest_main)
  target_link_libraries(${name} PRIVATE frigana_test_folders)
  if(FRIGANA_PRECOMPILE)
    if(NOT TARGET frigana_test_headers)
      # A program, for headers are compiled in the manner of programs only there.
      file(WRITE ${CMAKE_BINARY_DIR}/TestHeaders.cpp "int main() {}\n")
      add_executable(frigana_test_headers EXCLUDE_FROM_ALL ${CMAKE_BINARY_DIR}/TestHeaders.cpp)
      target_compile_options(frigana_test_headers PRIVATE ${quick})
      target_link_libraries(frigana_test_headers PRIVATE GTest::gtest)
      target_precompile_headers(frigana_test_headers PRIVATE <gtest/gtest.h> <algorithm> <cmath> <filesystem>
        <fstream> <map> <set> <sstream> <string> <vector>)
    endif()
    target_precompile_headers(${name} REUSE_FROM frigana_test_headers)
  endif()
  if(WIN32)
    target_link_options(${name} PRIVATE -static)
  elseif(CMAKE_CROSSCOMPILING)
    target_compile_definitions(${name} PRIVATE FRIGANA_EMULATED)
  endif()
  add_dependencies(frigana_tests ${name})
  add_test(NAME ${name} COMMAND ${name})
endfunction()
