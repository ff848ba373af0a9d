# Writes a C++ source with the bytes of all files of a folder, as the table behind frigana::serve::pageFiles().
#   cmake -DFOLDER=... -DOUTPUT=... -P EmbedFolder.cmake
set(types
  "html|text/html" "css|text/css" "js|text/javascript"
  "mjs|text/javascript" "json|application/json" "svg|image/svg+xml" "png|image/png" "ico|image/x-icon"
  "txt|text/plain" "woff2|font/woff2" "wasm|application/wasm" "webmanifest|application/manifest+json")

file(GLOB_RECURSE files RELATIVE ${FOLDER} ${FOLDER}/*)
list(SORT files)
set(arrays "")
set(rows "")
set(number 0)
foreach(file IN LISTS files)
  file(READ ${FOLDER}/${file} bytes HEX)
  file(SHA256 ${FOLDER}/${file} hash)
  string(SUBSTRING ${hash} 0 16 tag)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  get_filename_component(extension ${file} LAST_EXT)
  string(REPLACE "." "" extension "${extension}")
  set(type "application/octet-stream")
  foreach(row IN LISTS types)
    if(row MATCHES "^${extension}\\|(.*)$")
      set(type "${CMAKE_MATCH_1}")
    endif()
  endforeach()
  if(type MATCHES "^text/")
    string(APPEND type "; charset=utf-8")
  endif()
  string(APPEND arrays "constexpr unsigned char bytes${number}[] = {\n${bytes}\n0};\n")
  string(APPEND rows "    row(\"/${file}\", \"${type}\", \"\\\"${tag}\\\"\", bytes${number}),\n")
  math(EXPR number "${number} + 1")
endforeach()

file(WRITE ${OUTPUT} "// Made from the files of the page; never edited.
#include \"Page.h\"

#include <cstddef>

namespace frigana::serve {

namespace {

${arrays}
// Behind the bytes stands a null that does not belong to them: an empty file has bytes, too.
template <std::size_t size>
PageFile row(std::string_view path, std::string_view type, std::string_view tag, const unsigned char (&bytes)[size]) {
    return {path, type, tag, {reinterpret_cast<const char*>(bytes), size - 1}};
}

const PageFile files[] = {
${rows}};

}  // namespace

std::span<const PageFile> pageFiles() {
    return files;
}

}  // namespace frigana::serve
")
