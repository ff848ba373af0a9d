// What the Python package stands on: requests as text, properties over arrays, studies as tasks. Everything that Python
// programmers see is made of it in Python. Calls let other threads of Python run, and queue for the engine.
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "CaseRun.h"
#include "CatalogueJson.h"
#include "ChartJson.h"
#include "DataFolder.h"
#include "EngineAccess.h"
#include "Properties.h"
#include "RunJson.h"
#include "Study.h"
#include "Tree.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

using namespace frigana;
using programs::EngineAccess;
using Array = py::array_t<double, py::array::c_style | py::array::forcecast>;

std::string neededFolder() {
    const std::string folder = programs::dataFolder();
    if (folder.empty()) throw std::runtime_error("no data folder was found; name one by frigana.set_data");
    return folder;
}

// Calls with the engine held and Python free. Nothing of Python may be touched in the call.
template <class Call>
auto calculated(Call call) {
    const py::gil_scoped_release others;
    const EngineAccess engine;
    return call();
}

std::pair<int, std::string> run(const std::string& request) {
    programs::RunRules rules{neededFolder()};
    rules.format = programs::formatOf(request);
    const programs::JsonAnswer answer = calculated([&] {
        EngineAccess::setLoaded(0);
        return programs::runJson(request, rules);
    });
    return {answer.status, answer.json};
}

std::pair<int, std::string> chart(const std::string& body) {
    const std::string folder = neededFolder();
    const programs::JsonAnswer answer = calculated([&] {
        EngineAccess::setLoaded(0);
        programs::JsonAnswer drawn{200, {}};
        const auto problems = programs::chartJson(body, folder, drawn.json);
        return problems.empty() ? drawn : programs::refusal("bad_chart", problems);
    });
    return {answer.status, answer.json};
}

std::string listFluids() {
    const std::string folder = neededFolder();
    return calculated([&] {
        EngineAccess::setLoaded(0);
        return programs::fluidsJson(folder);
    });
}

// ---- properties
// -------------------------------------------------------------------------------------------------------

constexpr std::size_t mostTexts = 1000;  // of failed states; the codes are there for all

struct Reason {
    std::size_t index;
    int code;
    std::string text;
};

py::tuple states(const programs::PropertyFluid& fluid, const std::string& pair, const Array& first, const Array& second,
                 const std::vector<int>& wanted) {
    if (pair.size() != 2 || first.size() != second.size())
        throw std::invalid_argument("two lists of one length are needed");
    const auto count = first.size();
    Array results({static_cast<py::ssize_t>(wanted.size()), count});
    py::array_t<int> codes(count);
    std::vector<Reason> reasons;
    const auto keep = [](void* context, std::size_t index, int code, std::string_view text) {
        auto& all = *static_cast<std::vector<Reason>*>(context);
        if (all.size() < mostTexts) all.push_back({index, code, std::string(text)});
    };
    const programs::PropertyFluid::Question question{pair[0],
                                                     pair[1],
                                                     first.data(),
                                                     second.data(),
                                                     static_cast<std::size_t>(count),
                                                     wanted,
                                                     results.mutable_data(),
                                                     codes.mutable_data(),
                                                     keep,
                                                     &reasons};
    const std::string problem = calculated([&] { return fluid.answer(question); });
    if (!problem.empty()) throw std::invalid_argument(problem);
    py::list told;
    for (const Reason& reason : reasons) told.append(py::make_tuple(reason.index, reason.code, reason.text));
    return py::make_tuple(results, codes, told);
}

std::unique_ptr<programs::PropertyFluid> openFluid(const std::string& description) {
    const std::string folder = neededFolder();
    auto fluid = std::make_unique<programs::PropertyFluid>();
    const std::string problem = calculated([&] { return fluid->open(description, folder); });
    if (!problem.empty()) throw std::invalid_argument(problem);
    return fluid;
}

std::vector<std::tuple<int, std::string, std::string, std::string>> properties() {
    std::vector<std::tuple<int, std::string, std::string, std::string>> all;
    for (const programs::PropertyRow& row : programs::propertyRows())
        all.emplace_back(static_cast<int>(row.property), row.name, row.label, catalogue::nameOf(row.quantity));
    return all;
}

// ---- units
// ------------------------------------------------------------------------------------------------------------

catalogue::Quantity quantityNamed(const std::string& name) {
    for (int i = 0; i < catalogue::quantityCount; ++i)
        if (catalogue::nameOf(static_cast<catalogue::Quantity>(i)) == name) return static_cast<catalogue::Quantity>(i);
    throw std::invalid_argument("there is no quantity " + name);
}

double parseQuantity(const std::string& text, const std::string& quantity) {
    const catalogue::Quantity kind = quantityNamed(quantity);
    const catalogue::Parsed parsed = catalogue::parseQuantity(text, kind, &catalogue::unitsOf(kind).front());
    if (!parsed.problem.empty()) throw std::invalid_argument(text + ": " + parsed.problem);
    return parsed.value;
}

// Factor and shift of a unit: value in the inner unit = (number + shift) * factor.
std::pair<double, double> unitOf(const std::string& quantity, const std::string& symbol) {
    const catalogue::Unit* unit = catalogue::findUnit(quantityNamed(quantity), symbol);
    if (unit == nullptr) throw std::invalid_argument("there is no unit " + symbol + " of the quantity " + quantity);
    return {unit->factor, unit->shift};
}

// ---- studies
// ----------------------------------------------------------------------------------------------------------

// A description in TOML or JSON; files that it names lie in a folder.
std::unique_ptr<studies::Study> openStudy(const std::string& text, const std::string& folder) {
    catalogue::Node tree;
    const bool json = programs::formatOf(text) == catalogue::NamedFormat::json;
    const auto problems = json ? catalogue::readJson(text, tree) : catalogue::readToml(text, tree);
    const auto told = [](const std::vector<catalogue::Problem>& all) {
        std::string lines;
        for (const catalogue::Problem& problem : all) lines += (lines.empty() ? "" : "\n") + problem.text;
        return lines;
    };
    if (!problems.empty()) throw std::invalid_argument(told(problems));
    try {
        return std::make_unique<studies::Study>(tree, [&](const std::string& name) {
            const auto path = std::filesystem::path(folder) / name;
            std::ifstream file(path, std::ios::binary);
            std::ostringstream content;
            content << file.rdbuf();
            if (!file) throw studies::Faulty{{{0, path.string() + ": cannot be read"}}};
            return content.str();
        });
    } catch (const studies::Faulty& faulty) {
        throw std::invalid_argument(told(faulty.problems));
    }
}

std::string runCase(const std::string& task) {
    const std::string folder = neededFolder();
    return calculated([&] {
        EngineAccess::setLoaded(0);
        return studies::runCase(task, folder);
    });
}

std::string settingsOf(const studies::Study& study, std::size_t number) {
    std::string list = "[";
    for (const studies::Setting& setting : study.settings(number)) {
        if (list.size() > 1) list += ',';
        list += studies::jsonOf(setting.value);
    }
    return list + "]";
}

}  // namespace

PYBIND11_MODULE(_frigana, module) {
    module.doc() = "The engine of the package frigana.";
    module.attr("version") = FRIGANA_VERSION;
    module.def("run", &run, "request"_a);
    module.def("chart", &chart, "description"_a);
    module.def("list_requests", &programs::requestsJson);
    module.def("list_fluids", &listFluids);
    module.def("data_folder", &programs::dataFolder);
    module.def("set_data", [](const std::string& folder) {
        if (const std::string problem = programs::chooseDataFolder(folder); !problem.empty())
            throw std::invalid_argument(problem);
    });
    module.def("properties", &properties);
    module.def("parse_quantity", &parseQuantity, "text"_a, "quantity"_a);
    module.def("unit", &unitOf, "quantity"_a, "symbol"_a);
    module.def("run_case", &runCase, "task"_a);
    py::class_<programs::PropertyFluid>(module, "Fluid")
        .def(py::init(&openFluid), "description"_a)
        .def("facts", [](const programs::PropertyFluid& fluid) { return fluid.facts(); })
        .def("states", &states, "pair"_a, "first"_a, "second"_a, "wanted"_a);
    py::class_<studies::Study>(module, "Study")
        .def(py::init(&openStudy), "text"_a, "folder"_a)
        .def("cases", &studies::Study::cases)
        .def("varied_keys", &studies::Study::variedKeys)
        .def("result_keys", &studies::Study::resultKeys)
        .def("optimum_keys",
             [](const studies::Study& study) {
                 std::vector<std::string> keys;
                 if (study.optimum())
                     for (const studies::Optimum::Over& over : study.optimum()->over)
                         keys.push_back(over.unit == nullptr ? over.key
                                                             : over.key + " [" + std::string(over.unit->symbol) + "]");
                 return keys;
             })
        .def("settings", &settingsOf, "number"_a)
        .def(
            "task", [](const studies::Study& study, std::size_t number) { return studies::caseTask(study, number); },
            "number"_a);
}
