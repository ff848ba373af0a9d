// The names that the shared library shows to the world.
#include <string_view>

#include "11_MainFrigana.h"
#include "frigana.h"

namespace {

std::string_view textOf(const char* characters, int length) {
    if (characters == nullptr || length <= 0) return {};
    return {characters, static_cast<std::size_t>(length)};
}

}  // namespace

extern "C" void Frigana(const char* FILEIN, const char* ADDRESS, int FILEIN_LENGTH, int ADDRESS_LENGTH) {
    frigana::runRequest(textOf(FILEIN, FILEIN_LENGTH), textOf(ADDRESS, ADDRESS_LENGTH));
}
