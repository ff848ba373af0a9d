#include "Folders.h"

#include <algorithm>
#include <cctype>

#include "FixedText.h"
#include "Platform.h"

namespace frigana::app {

std::string plainText(std::string_view text) {
    std::string plain;
    for (char character : text) plain += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
    return std::string(trimRight(plain));
}

std::string visible(std::string_view text) {
    std::string shown;
    unsigned char before = 0;
    for (const char character : text) {
        const auto c = static_cast<unsigned char>(character);
        // Above the 127 characters: alone, or as their sequence of two bytes in UTF-8.
        const bool high = c >= 0x80 && c <= 0x9F;
        const bool sequence = high && before == 0xC2;
        if (sequence) shown.pop_back();
        if (c < 0x20 || c == 0x7F || (high && before < 0x80) || sequence) {
            constexpr std::string_view digits = "0123456789ABCDEF";
            shown += std::string("\\x") + digits[c / 16] + digits[c % 16];
        } else {
            shown += character;
        }
        before = c;
    }
    return shown;
}

std::string shownPath(std::string_view path) {
    static char native[longestPath + 1];
    return nativePath(path, native) ? std::string(native) : std::string(trimRight(path));
}

std::vector<std::string> filesOf(const std::filesystem::path& folder, std::string_view extension) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        std::string found = entry.path().extension().string();
        std::transform(found.begin(), found.end(), found.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        if (found == extension) names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace frigana::app
