#include "StoredBlends.h"

#include <algorithm>
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

bool isFileOfBlend(const fs::directory_entry& entry) {
    std::error_code error;
    return entry.path().extension() == extension && entry.is_regular_file(error);
}

// The file of a blend by its name without what people write differently; empty if there is none.
fs::path fileOf(std::string_view name, const fs::path& folder) {
    const std::string folded = foldedName(name);
    std::error_code error;
    fs::path found;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const fs::path& file = entry.path();
        if (!isFileOfBlend(entry) || foldedName(file.stem().string()) != folded) continue;
        // Of several that fold to one the same is taken whatever the order of the folder.
        if (found.empty() || file < found) found = file;
    }
    return found;
}

std::optional<Fluid> readBlend(const fs::path& file, const FluidNames& names, std::string& problem) {
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
    return file.empty() ? std::nullopt : readBlend(file, names, problem);
}

std::string findFluid(std::string_view name, const FluidNames& names, const std::string& folder, Fluid& fluid) {
    FoundFluid found = names.find(name);
    if (!found.file.empty()) {
        fluid.kind = found.blend ? 2 : 1;
        fluid.file = found.file;
        return {};
    }
    const auto stored = storedBlend(name, folder, names, found.problem);
    if (!stored) return found.problem;
    fluid.kind = stored->kind;
    fluid.components = stored->components;
    fluid.byMass = stored->byMass;
    fluid.blendName = stored->blendName;
    return {};
}

std::vector<StoredBlend> storedBlends(const std::string& folder, const FluidNames& names) {
    std::vector<StoredBlend> blends;
    std::error_code error;
    if (folder.empty()) return blends;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (!isFileOfBlend(entry)) continue;
        StoredBlend blend;
        blend.name = entry.path().stem().string();
        if (const auto fluid = readBlend(entry.path(), names, blend.problem)) blend.fluid = *fluid;
        blends.push_back(std::move(blend));
    }
    std::sort(blends.begin(), blends.end(), [](const StoredBlend& a, const StoredBlend& b) { return a.name < b.name; });
    return blends;
}

std::string shownName(const Fluid& fluid, const FluidNames& names) {
    return fluid.kind == 3 ? fluid.blendName : names.shownName(fluid.file);
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
