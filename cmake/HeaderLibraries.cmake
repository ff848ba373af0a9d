# Libraries of headers alone, for a build for another system: Debian installs them for this one, among headers that
# another system must not see. A folder of the build leads to theirs and to nothing else.
#   frigana_header_library(TARGET FOLDER)   FOLDER as it stands in an #include
function(frigana_header_library target folder)
  if(TARGET ${target})
    return()
  endif()
  set(headers ${CMAKE_BINARY_DIR}/headers)
  if(NOT EXISTS /usr/include/${folder})
    message(FATAL_ERROR "/usr/include/${folder} is missing")
  endif()
  file(MAKE_DIRECTORY ${headers})
  file(CREATE_LINK /usr/include/${folder} ${headers}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} INTERFACE ${headers})
endfunction()
