// Files of a data folder and texts of the engine, as the program shows them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace frigana::app {

// Text of the library without trailing blanks and without what ends its messages.
std::string plainText(std::string_view text);

// Text of a file or a request as a terminal may be given it: characters that would move it stand as \x1B.
std::string visible(std::string_view text);

// A path with the separators of this system throughout.
std::string shownPath(std::string_view path);

// Files of a folder with an extension in either case, by name.
std::vector<std::string> filesOf(const std::filesystem::path& folder, std::string_view extension);

}  // namespace frigana::app
