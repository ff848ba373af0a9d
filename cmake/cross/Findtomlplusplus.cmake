include(${CMAKE_CURRENT_LIST_DIR}/../HeaderLibraries.cmake)
frigana_header_library(tomlplusplus::tomlplusplus toml++)
set(tomlplusplus_FOUND TRUE)
