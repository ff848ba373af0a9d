// The files of the page, which are part of the program.
#pragma once

#include <span>
#include <string_view>

namespace frigana::serve {

struct PageFile {
    std::string_view path;  // "/" and the name below the folder of the page
    std::string_view type;
    std::string_view tag;  // changes with the bytes
    std::string_view bytes;
};

// All of them; the first page is "/index.html".
std::span<const PageFile> pageFiles();

}  // namespace frigana::serve
