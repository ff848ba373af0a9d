#include "FilledRequest.h"

#include <algorithm>
#include <memory>

#include "13_ReadInputData.h"
#include "14_ErrorControl.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana::catalogue {

namespace {

constexpr int lineSizing = 5, combinedCycle = 3, cascadeCycle = 4, pumpedSystem = 13;
constexpr int runIndex = 30, lastPickedIndex = 33;
constexpr int propertyType = 1, cycleType = 2;

// ---- writing
// ---------------------------------------------------------------------------------------------------------

std::string word(int number) {
    return std::to_string(number);
}
std::string word(double number) {
    return numberText(number);
}
// Numbers with blanks between.
template <class... Numbers>
std::string numbersLine(const Numbers&... numbers) {
    std::string line;
    ((line += word(numbers) + ' '), ...);
    line.back() = '\n';
    return line;
}

std::string settingLine(const Setting& setting) {
    return numbersLine(setting.option, setting.value);
}

// A name bare, or in quotes where it holds what ends a bare text.
std::string nameLine(const std::string& name) {
    const bool bare = !name.empty() && name.find_first_of(" ,\t'\"/") == std::string::npos;
    if (bare) return name + '\n';
    return '"' + name + "\"\n";
}

std::string referenceLine(const Fluid& fluid) {
    return std::to_string(fluid.referenceOf) + ' ' + fluid.referenceState + '\n';
}

std::string blockText(const FilledRequest& filled, int circuit) {
    const Block& block = filled.blocks[static_cast<std::size_t>(circuit)];
    const int count = filled.countOf(circuit);
    std::string text = "2\n" + block.title + '\n';
    text += nameLine(block.fluid.kind == 3 ? block.fluid.blendName + ".mix" : block.fluid.file);
    text += referenceLine(block.fluid) + std::to_string(filled.request->sub) + '\n' + std::to_string(count) + '\n';
    for (int k = 1; k <= count; ++k) text += settingLine(block.settings[static_cast<std::size_t>(k - 1)]);
    return text;
}

std::string cycleText(const FilledRequest& filled) {
    std::string text = blockText(filled, 0);
    if (filled.blocks.size() == 1) return text;
    text += "----\n" + std::string(filled.request->circuits[1].label) + '\n' + blockText(filled, 1);
    const auto& settings = filled.blocks[1].settings;
    if (static_cast<int>(settings.size()) > filled.countOf(1))
        text += "----\nIntermediate temperatures\n" + settingLine(settings.back());
    return text;
}

std::string propertyText(const FilledRequest& filled) {
    const Fluid& fluid = filled.blocks.front().fluid;
    const PropertyQuestion& ask = filled.question;
    std::string text = "1\n" + std::to_string(fluid.kind) + '\n';
    if (fluid.kind == 3) {
        text += std::to_string(fluid.components.size()) + (fluid.byMass ? "\n1\n" : "\n2\n");
        for (const Fluid::Component& component : fluid.components)
            text += nameLine(component.file) + numberText(component.fraction) + '\n';
    } else {
        text += "1\n1\n" + nameLine(fluid.file) + "1\n";
    }
    text += fluid.blendName.empty() ? "none\n" : nameLine(fluid.blendName);
    text += referenceLine(fluid);
    text += std::to_string(filled.request->sub) + '\n';
    constexpr int firstTool = 2, lastTool = 6;
    if (filled.request->sub <= lastTool)
        for (int tool = firstTool; tool < filled.request->sub; ++tool) text += "0\n";
    switch (filled.request->sub) {
        case 2:
            text += numbersLine(ask.running, ask.from, ask.to, ask.step);
            break;
        case 3:
            text += numbersLine(ask.constant, ask.running, ask.constantValue, ask.from, ask.to, ask.step);
            break;
        case 4:
            text += numbersLine(ask.first, ask.firstValue, ask.second, ask.secondValue);
            break;
        case 5:
        case 6:
            text += numbersLine(ask.side, ask.sideValue);
            break;
        default:
            break;
    }
    return text;
}

// ---- reading
// ---------------------------------------------------------------------------------------------------------

// What the readers of the entry fill.
struct Records {
    Text255 path;
    int type = 0, sub = 0, stepFlag = 0;
    SUBSTANCE substance1{}, substance2{};
    CYCLEIN cycle1{}, cycle2{};
    PROPREQ property{};
};

void readRecords(void* context) {
    Records& records = *static_cast<Records*>(context);
    READINPUTTYPE(records.path, records.type, records.sub);
    if (records.type == propertyType)
        return READINPUTPROPS(records.path, records.substance1, records.property, records.stepFlag);
    if (records.type != cycleType) return;
    switch (records.sub) {
        case combinedCycle:
            return READINPUTCOMBINED(records.path, records.substance1, records.cycle1, records.substance2,
                                     records.cycle2);
        case cascadeCycle:
            return READINPUTCASCADE(records.path, records.substance1, records.cycle1, records.substance2,
                                    records.cycle2);
        case pumpedSystem:
            return READINPUTPUMPED(records.path, records.substance1, records.cycle1, records.substance2,
                                   records.cycle2);
        default:
            return READINPUTCYCLE(records.path, records.substance1, records.cycle1);
    }
}

std::string textOf(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(" \r") + 1));
}

Fluid fluidOf(const SUBSTANCE& substance, bool cycle) {
    Fluid fluid;
    fluid.kind = substance.FLUIDKIND;
    fluid.referenceOf = substance.IXREF;
    fluid.referenceState = textOf(substance.HRF.view());
    if (fluid.kind == 3) {
        fluid.byMass = substance.ZTYPE == 1;
        for (int i = 1; i <= substance.NREFS; ++i)
            fluid.components.push_back({textOf(substance.REFSNAME[i].view()), substance.ZCOMP[i]});
    } else {
        fluid.file = textOf(substance.REFSNAME[1].view());
    }
    if (!cycle) fluid.blendName = textOf(substance.MIXNAME.view());
    return fluid;
}

Block blockOf(const SUBSTANCE& substance, const CYCLEIN& cycle, int settings) {
    Block block{textOf(cycle.TITLE.view()), fluidOf(substance, true), {}};
    for (int k = 1; k <= settings; ++k) block.settings.push_back({cycle.TDAT[k], cycle.VDAT[k]});
    return block;
}

PropertyQuestion questionOf(const PROPREQ& property, int sub) {
    PropertyQuestion ask;
    constexpr int saturationTable = 2, isopropertyTable = 3;
    ask.running = sub == saturationTable ? property.SATVAR : sub == isopropertyTable ? property.ISOSWEEP : 0;
    ask.constant = property.ISOVAR;
    ask.constantValue = property.ISOVALUE;
    ask.from = property.TABFROM;
    ask.to = property.TABTO;
    ask.step = property.TABSTEP;
    ask.first = property.PT1VAR;
    ask.firstValue = property.PT1VALUE;
    ask.second = property.PT2VAR;
    ask.secondValue = property.PT2VALUE;
    ask.side = property.SATPTVAR;
    ask.sideValue = property.SATPTVALUE;
    return ask;
}

std::string fill(const Records& records, FilledRequest& filled) {
    filled = {};
    filled.request = findRequest(records.type, records.sub);
    if (filled.request == nullptr)
        return "there is no request of type " + std::to_string(records.type) + " and sub-type " +
               std::to_string(records.sub);
    if (records.type == propertyType) {
        filled.blocks.push_back({{}, fluidOf(records.substance1, false), {}});
        filled.question = questionOf(records.property, records.sub);
        return {};
    }
    const auto circuits = filled.request->circuits;
    filled.blocks.push_back(blockOf(records.substance1, records.cycle1, records.cycle1.NDAT));
    if (circuits.size() == 2)
        filled.blocks.push_back(
            blockOf(records.substance2, records.cycle2,
                    std::max(records.cycle2.NDAT, static_cast<int>(circuits[1].parameters.size()))));
    for (std::size_t i = 0; i < circuits.size(); ++i)
        if (static_cast<int>(filled.blocks[i].settings.size()) < filled.countOf(static_cast<int>(i)))
            return "the request has " + std::to_string(filled.blocks[i].settings.size()) + " parameters of " +
                   std::to_string(filled.countOf(static_cast<int>(i)));
    return {};
}

}  // namespace

int FilledRequest::stages() const {
    const int index = request->stages.countIndex;
    const auto& settings = blocks.front().settings;
    if (index == 0 || static_cast<int>(settings.size()) < index) return 0;
    return settings[static_cast<std::size_t>(index - 1)].option;
}

bool FilledRequest::isSecondRun() const {
    if (request->type != cycleType || request->sub != lineSizing) return false;
    const auto& settings = blocks.front().settings;
    return static_cast<int>(settings.size()) >= runIndex && settings[runIndex - 1].option == 2;
}

FilledRequest FilledRequest::firstRun() const {
    FilledRequest first = *this;
    first.blocks.front().settings.resize(runIndex);
    first.blocks.front().settings[runIndex - 1] = {1, 0.0};
    return first;
}

bool FilledRequest::hasListedBlend() const {
    return request->type == cycleType &&
           std::any_of(blocks.begin(), blocks.end(), [](const Block& block) { return block.fluid.kind == 3; });
}

int FilledRequest::countOf(int circuit) const {
    if (isSecondRun()) return lastPickedIndex;
    const int count = request->circuits[static_cast<std::size_t>(circuit)].count;
    const int most = request->stages.most;
    const int stageCount = std::clamp(stages(), 0, most);
    return stageCount < 2 ? count : count + (stageCount - 1) * static_cast<int>(request->stages.parameters.size());
}

std::string positionalText(const FilledRequest& filled) {
    return filled.request->type == propertyType ? propertyText(filled) : cycleText(filled);
}

std::string readPositional(const std::string& path, FilledRequest& filled) {
    // The records are large and begin empty: a field that a request does not give is 0.
    const auto records = std::make_unique<Records>();
    records->path = std::string_view(path);
    if (path.size() > static_cast<std::size_t>(Text255::size)) return "the path is longer than 255 characters";
    runReport = {};
    const bool read = runContained(readRecords, records.get());
    abandonAllUnits();
    if (!read) return textOf(runReport.HERR.view());
    return fill(*records, filled);
}

}  // namespace frigana::catalogue
