# WebAssembly by Debian's emscripten. Exceptions, and the jump out of a failed run, are WebAssembly's own.
include(/usr/share/emscripten/cmake/Modules/Platform/Emscripten.cmake)
list(APPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/cross)
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions -sSUPPORT_LONGJMP=wasm")
