include(${CMAKE_CURRENT_LIST_DIR}/../HeaderLibraries.cmake)
frigana_header_library(nlohmann_json::nlohmann_json nlohmann)
set(nlohmann_json_FOUND TRUE)
