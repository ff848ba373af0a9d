# Debian packages, one for each part of the installation, made by scripts/deb.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME frigana)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The developers of Frigana <frigana@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/CompressManual.cmake)

# Each package with its changelog and that of the packaging, as the system wants them. The time is SOURCE_DATE_EPOCH's.
set(packages ${CMAKE_BINARY_DIR}/packages)
file(MAKE_DIRECTORY ${packages})
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${packages}/changelog.Debian "frigana (${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium

  * Packages of this version.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")
execute_process(COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/CHANGELOG.md OUTPUT_FILE ${packages}/changelog.gz)
execute_process(COMMAND gzip -9nc ${packages}/changelog.Debian OUTPUT_FILE ${packages}/changelog.Debian.gz)
function(frigana_package component name section summary text)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
  install(FILES ${packages}/changelog.gz ${packages}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

set(same "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(about "Properties of refrigerants and their blends, vapor-compression cycles and\ntheir relatives, and the sizing of refrigerant lines.")
frigana_package(library libfrigana${PROJECT_VERSION_MAJOR} libs "refrigeration calculations, shared libraries"
  "${about}\n.\nThis package has the libraries that programs are linked with.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "frigana-data ${same}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${packages}/triggers)
file(WRITE ${packages}/triggers "activate-noawait ldconfig\n")
frigana_package(development libfrigana-dev libdevel "refrigeration calculations, headers"
  "${about}\n.\nThis package has the headers and what programs are built with.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libfrigana${PROJECT_VERSION_MAJOR} ${same}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
frigana_package(data frigana-data science "refrigeration calculations, fluids and blends"
  "${about}\n.\nThis package has the fluid files, blends and mixing parameters.")
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DATA_PACKAGE_SHLIBDEPS OFF)
frigana_package(program frigana science "refrigeration calculations"
  "${about}\n.\nThis package has the program, with charts and a page in the browser.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS "frigana-data ${same}")
if(TARGET frigana_python)
  frigana_package(python python3-frigana python "refrigeration calculations, module for Python"
    "${about}\n.\nThis package has the module for Python.")
  get_property(python GLOBAL PROPERTY FRIGANA_PYTHON)
  list(GET python 0 major)
  list(GET python 1 minor)
  math(EXPR next "${minor} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "frigana-data ${same}, python3 (>= ${major}.${minor}), python3 (<< ${major}.${next}), python3-numpy")
endif()
include(CPack)
