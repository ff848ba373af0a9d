#include "StoredBlends.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "NamedRequest.h"
#include "Platform.h"
#include "TextFile.h"

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;

constexpr const char* extension = ".toml";
constexpr int unit = 1;

// The file of a blend by its name without what people write differently; empty if there is none.
fs::path fileOf(std::string_view name, const fs::path& folder) {
    const std::string folded = foldedName(name);
    std::error_code error;
    fs::path found;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const fs::path& file = entry.path();
        if (file.extension() != extension || foldedName(file.stem().string()) != folded) continue;
        if (!entry.is_regular_file(error)) continue;
        // Of several that fold to one the same is taken whatever the order of the folder.
        if (found.empty() || file < found) found = file;
    }
    return found;
}

}  // namespace

std::string personalFolder() {
    const PersonalData data = personalData();
    const fs::path base(data.base);
    if (!base.is_absolute()) return {};
    return (base / data.below / "frigana").string();
}

std::optional<Fluid> storedBlend(std::string_view name, const std::string& folder, const FluidNames& names,
                                 std::string& problem) {
    const fs::path file = folder.empty() ? fs::path() : fileOf(name, folder);
    if (file.empty()) return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    const NamedRequest stored = readNamed(text.str(), NamedFormat::toml, names);
    if (!stored.problems.empty()) {
        problem = "is a stored blend that cannot be read: " + message(file.string(), stored.problems.front());
        return std::nullopt;
    }
    const Fluid& fluid = stored.runs.front().blocks.front().fluid;
    if (fluid.kind != 3) {
        problem = "is a stored blend that lists no components: " + file.string();
        return std::nullopt;
    }
    Fluid blend;
    blend.kind = 3;
    blend.components = fluid.components;
    blend.byMass = fluid.byMass;
    blend.blendName = fluid.blendName;
    return blend;
}

std::string storeOwnBlend(const FilledRequest& request, const std::string& folder, const FluidNames& names,
                          std::string& path) {
    if (folder.empty()) return "the blend cannot be stored: the system names no folder for a person's data";
    const std::string& name = request.blocks.front().fluid.blendName;
    const fs::path target = fs::path(folder) / (name + extension);
    path = target.string();
    if (path.size() > static_cast<std::size_t>(Text255::size))
        return "the blend cannot be stored: its path has more than 255 characters: " + path;
    std::error_code error;
    fs::create_directories(folder, error);
    const fs::path older = fileOf(name, folder);
    const std::string text = namedText(request, names, {UnitSystem::SI, false, false});
    bool written = openForWriting(unit, path, Writing::whole);
    if (written) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) writeLine(unit, std::string_view(line));
        written = closeUnit(unit);
    }
    if (!written) return "the blend cannot be stored: " + path + " cannot be written";
    if (!older.empty() && older != target && !fs::equivalent(older, target, error)) fs::remove(older, error);
    return {};
}

}  // namespace frigana::catalogue
