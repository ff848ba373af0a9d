#include "Names.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <map>
#include <unordered_map>

#include "EditDistance.h"
#include "OneRefrigerant.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;

std::string stemOf(std::string_view file) {
    return std::string(file.substr(0, file.find_last_of('.')));
}

}  // namespace

std::string foldedName(std::string_view name) {
    std::string folded;
    for (const char c : name)
        if (c != ' ' && c != '-' && c != '_') folded += capitalLetter(c);
    // The family in place of the R: HFC-134a, HFO-1234yf, HC-290.
    for (const std::string_view family : {"HCFO", "HCFC", "HFO", "HFC", "CFC", "PFC", "HC", "FC"})
        if (folded.starts_with(family) && folded.size() > family.size() && isDigit(folded[family.size()]))
            return "R" + folded.substr(family.size());
    return folded;
}

struct FluidNames::Tables {
    std::string folder;

    struct File {
        std::string name;
        bool blend;
    };
    // Files by their folded stems, pure fluids before blends.
    std::multimap<std::string, File> files;
    fs::file_time_type read[2] = {};
    bool settled = false;

    // Names of refrigerants.json: folded name to the stem of a file.
    std::unordered_map<std::string, std::string> aliases;
    std::vector<std::string> spellings;
    bool aliasesRead = false;

    static constexpr const char* folders[] = {"fluids", "mixtures"};

    void readFiles() {
        fs::file_time_type now[2];
        std::error_code error;
        for (int i = 0; i < 2; ++i) now[i] = fs::last_write_time(fs::path(folder) / folders[i], error);
        if (settled && now[0] == read[0] && now[1] == read[1]) return;
        // File systems give times in steps of up to two seconds.
        constexpr std::chrono::seconds settlingTime(3);
        settled = std::max(now[0], now[1]) < fs::file_time_type::clock::now() - settlingTime;
        std::copy(now, now + 2, read);
        files.clear();
        std::vector<File> found;
        for (int i = 0; i < 2; ++i) {
            const std::string extension = i == 0 ? ".FLD" : ".MIX";
            for (const auto& entry : fs::directory_iterator(fs::path(folder) / folders[i], error))
                if (inCapitals(entry.path().extension().string()) == extension)
                    found.push_back({entry.path().filename().string(), i == 1});
        }
        std::sort(found.begin(), found.end(),
                  [](const File& a, const File& b) { return a.blend != b.blend ? b.blend : a.name < b.name; });
        for (const File& file : found) files.emplace(foldedName(stemOf(file.name)), file);
    }

    void addAlias(const std::string& name, const std::string& stem) {
        if (!name.empty() && aliases.emplace(foldedName(name), stem).second) spellings.push_back(name);
    }
    void readAliases() {
        if (aliasesRead) return;
        aliasesRead = true;
        for (const Refrigerant& fluid : Refrigerants::of(folder).all()) {
            addAlias(fluid.designation, fluid.name);
            for (const std::string& name : fluid.aliases) addAlias(name, fluid.name);
        }
    }

    // By the name with its extension; of two that differ in their letters alone the one that is written so.
    const File* byName(std::string_view name) const {
        const std::string upperName = inCapitals(name);
        if (!upperName.ends_with(".FLD") && !upperName.ends_with(".MIX")) return nullptr;
        const File* found = nullptr;
        for (const auto& [stem, file] : files) {
            if (file.name == name) return &file;
            if (found == nullptr && inCapitals(file.name) == upperName) found = &file;
        }
        return found;
    }
    const File* byStem(const std::string& folded) const {
        const auto found = files.lower_bound(folded);
        return found == files.end() || found->first != folded ? nullptr : &found->second;
    }
};

FluidNames::FluidNames(std::string dataFolder) : tables_(std::make_unique<Tables>()) {
    tables_->folder = std::move(dataFolder);
}
FluidNames::~FluidNames() = default;

FoundFluid FluidNames::find(std::string_view name) const {
    Tables& tables = *tables_;
    tables.readFiles();
    // With an extension it is the name of a file, taken as it stands.
    if (const auto* file = tables.byName(name)) return {std::string(name), file->blend, {}};
    const std::string folded = foldedName(name);
    if (const auto* file = tables.byStem(folded)) return {file->name, file->blend, {}};

    tables.readAliases();
    if (const auto alias = tables.aliases.find(folded); alias != tables.aliases.end()) {
        if (const auto* file = tables.byStem(foldedName(alias->second))) return {file->name, file->blend, {}};
        return {{}, false, "is " + alias->second + ", of which the installation has no file"};
    }
    std::string problem = "is no fluid or blend of the installation";
    const auto suggestions = near(name);
    if (!suggestions.empty()) problem += (suggestions.size() == 1 ? "; near is " : "; near are ") + listed(suggestions);
    return {{}, false, problem};
}

std::string FluidNames::fileAs(std::string_view name) const {
    tables_->readFiles();
    const auto* file = tables_->byName(name);
    return file == nullptr ? std::string() : file->name;
}

std::vector<std::string> FluidNames::near(std::string_view name) const {
    Tables& tables = *tables_;
    tables.readFiles();
    tables.readAliases();
    const std::string folded = foldedName(name);
    constexpr std::size_t most = 3;
    const std::size_t farthest = std::max<std::size_t>(1, std::min<std::size_t>(3, folded.size() / 3));
    // Distance, length and name, one entry for each file.
    std::map<std::string, std::pair<std::size_t, std::string>> best;
    const auto consider = [&](const std::string& spelling, const std::string& stem) {
        const auto* file = tables.byStem(foldedName(stem));
        if (file == nullptr) return;
        const std::size_t far = editDistance(folded, foldedName(spelling), farthest);
        if (far > farthest) return;
        const auto [entry, isNew] = best.emplace(file->name, std::pair{far, spelling});
        if (!isNew && far < entry->second.first) entry->second = {far, spelling};
    };
    for (const auto& [stem, file] : tables.files) consider(shownName(file.name), stem);
    for (const std::string& spelling : tables.spellings) consider(spelling, tables.aliases.at(foldedName(spelling)));
    std::vector<std::pair<std::size_t, std::string>> ordered;
    for (const auto& [file, entry] : best) ordered.push_back(entry);
    std::sort(ordered.begin(), ordered.end());
    std::vector<std::string> names;
    for (const auto& [far, spelling] : ordered)
        if (names.size() < most) names.push_back(spelling);
    return names;
}

std::string FluidNames::shownName(std::string_view file) const {
    std::string stem = stemOf(file);
    // R-717 and ammonia are both usual; the name of the file says which one this installation prefers.
    const bool numbered = stem.size() > 1 && capitalLetter(stem[0]) == 'R' && isDigit(stem[1]);
    const Refrigerant* known = numbered ? oneRefrigerant(tables_->folder, file) : nullptr;
    std::string designation;
    if (known != nullptr) designation = known->designation;
    designation.erase(std::remove(designation.begin(), designation.end(), '-'), designation.end());
    return designation.empty() ? stem : designation;
}

std::string FluidNames::nameFor(std::string_view file) const {
    if (std::string shown = shownName(file); find(shown).file == file) return shown;
    if (std::string stem = stemOf(file); find(stem).file == file) return stem;
    return std::string(file);
}

const FluidNames& FluidNames::of(const std::string& dataFolder) {
    static std::map<std::string, FluidNames> known;
    return known.try_emplace(dataFolder, dataFolder).first->second;
}

}  // namespace frigana::catalogue
