#include "Http.h"

#include <algorithm>
#include <cctype>

#include "Module.h"

namespace frigana::http {

std::vector<std::string_view> Request::header(std::string_view name) const {
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    std::vector<std::string_view> values;
    for (const auto& [key, value] : headers)
        if (std::ranges::equal(key, name, same)) values.push_back(value);
    return values;
}

MakeServer loadTransport(std::string& complaint) {
    return reinterpret_cast<MakeServer>(modules::load("frigana_http.so", makeServerName, complaint));
}

}  // namespace frigana::http
