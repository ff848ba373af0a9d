# What a prefix gets: the library with its header and what others find it by, the program with its modules, the data, the
# man page and the completion of the shell. The program looks for its data in ../share/frigana and for its modules in
# ../lib/frigana beside it. What was not built is left out.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS frigana_shared EXPORT FriganaTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library OPTIONAL NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development OPTIONAL
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT library OPTIONAL)
set_target_properties(frigana_shared PROPERTIES EXPORT_NAME frigana)
target_include_directories(frigana_shared INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
install(FILES include/frigana.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(DIRECTORY data/fluids data/mixtures DESTINATION ${CMAKE_INSTALL_DATADIR}/frigana COMPONENT data)
install(FILES data/refrigerants.json DESTINATION ${CMAKE_INSTALL_DATADIR}/frigana COMPONENT data)

# find_package(Frigana) gives the target Frigana::frigana and FRIGANA_DATA, the folder to be named in a call.
set(friganaConfigFolder ${CMAKE_INSTALL_LIBDIR}/cmake/Frigana)
set(friganaDataFolder ${CMAKE_INSTALL_DATADIR}/frigana)
install(EXPORT FriganaTargets NAMESPACE Frigana:: DESTINATION ${friganaConfigFolder} COMPONENT development)
configure_package_config_file(cmake/FriganaConfig.cmake.in ${CMAKE_BINARY_DIR}/FriganaConfig.cmake
  INSTALL_DESTINATION ${friganaConfigFolder} PATH_VARS friganaDataFolder)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/FriganaConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/FriganaConfig.cmake ${CMAKE_BINARY_DIR}/FriganaConfigVersion.cmake
  DESTINATION ${friganaConfigFolder} COMPONENT development)
configure_file(cmake/frigana.pc.in frigana.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/frigana.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(NOT FRIGANA_PROGRAM)
  return()
endif()
install(TARGETS frigana_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program OPTIONAL)
if(TARGET frigana_api)
  # The library for programs in C, with an engine of its own.
  install(TARGETS frigana_api
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library OPTIONAL NAMELINK_COMPONENT development)
  install(FILES include/frigana_api.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
endif()
foreach(module frigana_http frigana_rsvg)
  if(TARGET ${module})
    install(TARGETS ${module} LIBRARY DESTINATION lib/frigana COMPONENT program OPTIONAL)
  endif()
endforeach()

# Both are written by the program, from its commands and the catalogue; one for another system does not run here.
if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
  return()
endif()
function(frigana_words kind file folder)
  set(written ${CMAKE_BINARY_DIR}/share/${file})
  add_custom_command(OUTPUT ${written}
    COMMAND frigana_app completion ${kind} --out ${written}
    DEPENDS frigana_app VERBATIM)
  list(APPEND FRIGANA_WORDS ${written})
  set(FRIGANA_WORDS ${FRIGANA_WORDS} PARENT_SCOPE)
  install(FILES ${written} DESTINATION ${folder} COMPONENT program OPTIONAL)
endfunction()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share)
frigana_words(man frigana.1 ${CMAKE_INSTALL_MANDIR}/man1)
frigana_words(bash frigana ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
add_custom_target(frigana_words_written ALL DEPENDS ${FRIGANA_WORDS})
