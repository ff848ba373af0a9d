# What a prefix gets: the program with its modules, the library with its header, the data, the man page and the
# completion of the shell. The program looks for its data in ../share/frigana and for its modules in ../lib beside it.
include(GNUInstallDirs)

install(TARGETS frigana_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS frigana_shared LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES include/frigana.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(module frigana_http frigana_rsvg)
  if(TARGET ${module})
    install(TARGETS ${module} LIBRARY DESTINATION lib/frigana)
  endif()
endforeach()
install(DIRECTORY data/fluids data/mixtures DESTINATION ${CMAKE_INSTALL_DATADIR}/frigana)
install(FILES data/refrigerants.json DESTINATION ${CMAKE_INSTALL_DATADIR}/frigana)

# Both are written by the program, from its commands and the catalogue.
function(frigana_words kind file folder)
  set(written ${CMAKE_BINARY_DIR}/share/${file})
  add_custom_command(OUTPUT ${written}
    COMMAND frigana_app completion ${kind} --out ${written}
    DEPENDS frigana_app VERBATIM)
  list(APPEND FRIGANA_WORDS ${written})
  set(FRIGANA_WORDS ${FRIGANA_WORDS} PARENT_SCOPE)
  install(FILES ${written} DESTINATION ${folder})
endfunction()
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/share)
frigana_words(man frigana.1 ${CMAKE_INSTALL_MANDIR}/man1)
frigana_words(bash frigana ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
add_custom_target(frigana_words_written ALL DEPENDS ${FRIGANA_WORDS})
