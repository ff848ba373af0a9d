# Manual pages are compressed in packages.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*.1)
list(FILTER pages INCLUDE REGEX "/man/man1/")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9n ${page})
endforeach()
