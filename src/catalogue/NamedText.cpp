// Requests written as TOML: converted from positional ones, and templates with comments.
#include <algorithm>
#include <map>

#include "NamedRequest.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

constexpr int propertyType = 1;
constexpr int lineSizing = 5, firstPickedIndex = 31;

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04X", static_cast<unsigned char>(c));
            result += code;
        } else {
            result += c;
        }
    }
    return result + '"';
}

unsigned byteOf(char c) {
    return static_cast<unsigned char>(c);
}

// Bytes of the character of UTF-8 at the head of a text; 0 where there is none.
//   Source  The Unicode Standard, well-formed byte sequences
std::size_t characterLength(std::string_view text) {
    struct Form {
        unsigned first, last;      // of the byte in front
        std::size_t length;        // with those behind it, which are 80 to BF
        unsigned lowest, highest;  // of the first one behind it
    };
    constexpr Form forms[] = {
        {0x00, 0x7F, 1, 0x80, 0xBF}, {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
        {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
        {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
    };
    const auto form = std::find_if(std::begin(forms), std::end(forms), [&](const Form& one) {
        return byteOf(text.front()) >= one.first && byteOf(text.front()) <= one.last;
    });
    if (form == std::end(forms) || text.size() < form->length) return 0;
    const std::string_view behind = text.substr(1, form->length - 1);
    if (!behind.empty() && (byteOf(behind.front()) < form->lowest || byteOf(behind.front()) > form->highest)) return 0;
    return std::all_of(behind.begin(), behind.end(), [](char c) { return (byteOf(c) & 0xC0) == 0x80; }) ? form->length
                                                                                                        : 0;
}

// Titles of positional requests may hold bytes that are no UTF-8; those are read as the old code page of the west.
std::string asUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length > 0) {
            result += text.substr(0, length);
        } else {
            result += static_cast<char>(0xC0 | (byteOf(text.front()) >> 6));
            result += static_cast<char>(0x80 | (byteOf(text.front()) & 0x3F));
        }
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

// A component as a key of an inline table.
std::string bareOrQuoted(const std::string& name) {
    const bool bare = !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
        return isSmall(c) || isCapital(c) || isDigit(c) || c == '_' || c == '-';
    });
    return bare ? name : quoted(name);
}

// Number and unit that are read as exactly this value again: in the unit of the system with as few digits as that
// takes, or in the inner unit where the conversion cannot give it.
std::string exactQuantity(double value, Quantity quantity, UnitSystem system) {
    const Unit& unit = unitIn(system, quantity);
    const auto written = [](const std::string& number, const Unit& in) {
        if (in.symbol.empty()) return number;
        return quoted(number + ' ' + std::string(in.symbol));
    };
    const double number = fromInner(value, unit);
    constexpr int mostDigits = 17;
    for (int digits = 1; digits <= mostDigits; ++digits) {
        const std::string text = numberText(number, digits);
        if (toInner(std::strtod(text.c_str(), nullptr), unit) == value)
            return written(numberText(std::strtod(text.c_str(), nullptr)), unit);
    }
    return written(numberText(value), unitsOf(quantity).front());
}

class Writer {
  public:
    Writer(const FilledRequest& filled, const FluidNames& names, const WritingStyle& style)
        : filled_(filled), request_(*filled.request), names_(names), style_(style) {}

    std::string write() {
        if (style_.explained) comment(std::string(request_.title) + ": " + std::string(request_.about) + '.');
        put("request", quoted(request_.name));
        if (request_.type == propertyType)
            writePropertyRequest();
        else
            writeCycle();
        return std::move(text_);
    }

  private:
    // ---- lines ----

    void comment(const std::string& text) { text_ += "# " + text + '\n'; }
    void put(const std::string& key, const std::string& value) { text_ += key + " = " + value + '\n'; }
    void table(const std::string& name) { text_ += "\n[" + name + "]\n"; }

    // ---- fluid ----

    void writeFluid(const Fluid& fluid) {
        if (fluid.kind == 3) {
            std::vector<std::string> components;
            for (const Fluid::Component& component : fluid.components)
                components.push_back(bareOrQuoted(names_.nameFor(component.file)) + " = " +
                                     numberText(component.fraction));
            put("fluid", "{ " + listed(components, ", ") + " }");
            put("fractions", quoted(fluid.byMass ? "mass" : "mole"));
            put("blend_name", quoted(asUtf8(fluid.blendName)));
        } else {
            if (style_.explained) comment("any name that `frigana list` knows, or { R32 = 0.689, R1234yf = 0.311 }");
            put("fluid", quoted(asUtf8(names_.nameFor(fluid.file))));
        }
        if (fluid.referenceState != "DEF" || style_.explained) {
            if (style_.explained) comment("DEF (of the fluid file), IIR, ASHRAE or NBP");
            const bool ashrae = fluid.referenceState == "ASH";
            put("reference_state", quoted(ashrae ? std::string_view("ASHRAE") : fluid.referenceState));
        }
        if (fluid.referenceOf == 1) put("reference_of", quoted("pure fluids"));
    }

    // ---- parameters ----

    static bool isZero(const Parameter& parameter, const Setting& setting) {
        return parameter.absent == Absent::zero && setting.value == 0.0 &&
               zeroOption(parameter).number == setting.option;
    }

    std::string valueText(const Option& option, const Setting& setting) const {
        switch (option.form) {
            case Form::yes:
                return "true";
            case Form::no:
                return "false";
            case Form::count:
                return std::to_string(setting.option);
            default:
                return exactQuantity(setting.value, option.quantity, style_.units);
        }
    }

    // Allowed values of an option, and what it means.
    std::string explanation(int circuit, bool stage, const Parameter& parameter, const Option& option) const {
        std::string text(option.label);
        const auto limits = limitsOf(request_, circuit, stage, parameter, option);
        if (!limits) return text;
        return text + "; " + limitsText(*limits, option.quantity, unitIn(style_.units, option.quantity));
    }

    // The table that a key stands in: that of the parameter, or the one that its own first word names where the
    // parameter has none and others of the request stand in that table.
    static std::string_view tableOf(const Parameter& parameter, const Option& option,
                                    std::span<const Parameter> parameters) {
        const auto dot = option.key.find('.');
        if (!parameter.place.empty() || dot == std::string_view::npos) return parameter.place;
        const std::string_view head = option.key.substr(0, dot);
        const bool isPlace = std::any_of(parameters.begin(), parameters.end(),
                                         [&](const Parameter& other) { return other.place == head; });
        return isPlace ? head : parameter.place;
    }
    static const Option* chosenOption(const Parameter& parameter, const Setting& setting) {
        for (const Option& option : parameter.options)
            if (option.form == Form::count || option.number == setting.option) return &option;
        return nullptr;
    }

    // A parameter that is written, with its option and the table that it stands in.
    struct Written {
        const Parameter* parameter;
        const Option* chosen;
        Setting setting;
        std::string_view table;
    };

    void writeParameter(int circuit, bool stage, const Written& written) {
        const Parameter& parameter = *written.parameter;
        const Option& chosen = *written.chosen;
        std::string key = keyOf(parameter, chosen);
        if (!written.table.empty()) key.erase(0, written.table.size() + 1);
        if (style_.explained)
            comment(explanation(circuit, stage, parameter, chosen) +
                    (parameter.absent == Absent::zero ? "; 0 if left out" : ""));
        put(key, valueText(chosen, written.setting));
        if (!style_.explained) return;
        for (const Option& option : parameter.options)
            if (option.form == Form::quantity || option.form == Form::yes) {
                if (option.number == chosen.number || option.key == chosen.key) continue;
                comment("or " + std::string(option.key) + ": " + explanation(circuit, stage, parameter, option));
            }
    }

    bool isWritten(const Parameter& parameter, const Setting& setting) const {
        if (parameter.absent == Absent::derived) return false;
        if (parameter.absent == Absent::optional && !filled_.isSecondRun()) return false;
        return style_.zeros || !isZero(parameter, setting);
    }

    // The parameters of a circuit or stage by their places, each place a table in the order of the request.
    void writeParameters(int circuit, int stage, std::span<const Parameter> parameters,
                         std::span<const Setting> settings, bool between) {
        std::vector<Written> all;
        std::vector<std::string_view> tables;
        for (std::size_t i = 0; i < parameters.size() && i < settings.size(); ++i) {
            const Parameter& parameter = parameters[i];
            const Option* chosen = chosenOption(parameter, settings[i]);
            if (chosen == nullptr || (parameter.place == "intermediate" && isSystem()) != between) continue;
            if (!isWritten(parameter, settings[i])) continue;
            all.push_back({&parameter, chosen, settings[i], tableOf(parameter, *chosen, parameters)});
            if (std::find(tables.begin(), tables.end(), all.back().table) == tables.end())
                tables.push_back(all.back().table);
        }
        // What stands in no table comes before the tables.
        std::stable_partition(tables.begin(), tables.end(), [](std::string_view name) { return name.empty(); });
        std::string prefix;
        if (!between && isSystem())
            prefix = std::string(request_.circuits[static_cast<std::size_t>(circuit)].key) + '.';
        if (stage > 0) prefix = "stage" + std::to_string(stage) + '.';
        for (const std::string_view name : tables) {
            std::string heading = prefix + std::string(name);
            if (name.empty() && stage > 0) heading.pop_back();
            if (!name.empty() || stage > 0) table(heading);
            for (const Written& written : all)
                if (written.table == name) writeParameter(circuit, stage > 0, written);
        }
    }

    bool isSystem() const { return request_.circuits.size() == 2; }

    void writeCycle() {
        if (!isSystem()) {
            put("title", quoted(asUtf8(filled_.blocks.front().title)));
            writeFluid(filled_.blocks.front().fluid);
        }
        for (std::size_t i = 0; i < filled_.blocks.size(); ++i) {
            const Block& block = filled_.blocks[i];
            if (isSystem()) {
                table(std::string(request_.circuits[i].key));
                put("title", quoted(asUtf8(block.title)));
                writeFluid(block.fluid);
            }
            writeParameters(static_cast<int>(i), 0, request_.circuits[i].parameters, block.settings, false);
        }
        if (isSystem()) writeParameters(1, 0, request_.circuits[1].parameters, filled_.blocks[1].settings, true);
        const auto& settings = filled_.blocks.front().settings;
        const std::size_t perStage = request_.stages.parameters.size();
        for (int stage = 1; stage < filled_.stages(); ++stage) {
            const std::size_t first =
                static_cast<std::size_t>(request_.stages.countIndex) + perStage * static_cast<std::size_t>(stage - 1);
            writeParameters(0, stage, request_.stages.parameters, std::span(settings).subspan(first, perStage), false);
        }
        if (request_.sub == lineSizing && style_.explained && !filled_.isSecondRun()) explainPicked();
    }

    void explainPicked() {
        text_ += '\n';
        comment("Once the tables are there: the number of the pipe picked for each line, as in");
        for (const Parameter& parameter : request_.circuits.front().parameters)
            if (parameter.index >= firstPickedIndex)
                comment(keyOf(parameter, parameter.options.front()) + " = " + std::to_string(parameter.typical.option));
    }

    // ---- property requests ----

    void putQuantity(const std::string& key, double value, Quantity quantity) {
        put(key, exactQuantity(value, quantity, style_.units));
    }

    void writePropertyRequest() {
        writeFluid(filled_.blocks.front().fluid);
        const PropertyQuestion& ask = filled_.question;
        const PropertyName& running = propertyName(ask.running);
        switch (request_.sub) {
            case 2:
            case 3:
                if (request_.sub == 3) {
                    const PropertyName& constant = propertyName(ask.constant);
                    put("constant", "{ " + std::string(constant.word) + " = " +
                                        exactQuantity(ask.constantValue, constant.quantity, style_.units) + " }");
                }
                if (style_.explained) comment("the property that runs: temperature or pressure");
                put("property", quoted(running.word));
                if (ask.step == 0.0) {
                    put("suggested_limits", "true");
                    break;
                }
                if (style_.explained)
                    comment("from, to, and a step or a count of rows; or suggested_limits = true alone");
                putQuantity("from", ask.from, running.quantity);
                putQuantity("to", ask.to, running.quantity);
                putQuantity("step", ask.step, running.difference);
                break;
            case 4: {
                if (style_.explained)
                    comment("two of temperature, pressure and density; or points = [ { ... }, { ... } ]");
                const PropertyName &first = propertyName(ask.first), &second = propertyName(ask.second);
                putQuantity(std::string(first.word), ask.firstValue, first.quantity);
                putQuantity(std::string(second.word), ask.secondValue, second.quantity);
                break;
            }
            case 5:
            case 6:
                if (style_.explained)
                    comment("bubble or dew at a temperature or pressure; or points = [ { ... }, { ... } ]");
                for (const Option& option : request_.circuits.front().parameters.front().options)
                    if (option.number == ask.side) putQuantity(std::string(option.key), ask.sideValue, option.quantity);
                break;
            default:
                break;
        }
    }

    const FilledRequest& filled_;
    const Request& request_;
    const FluidNames& names_;
    WritingStyle style_;
    std::string text_;
};

}  // namespace

std::string namedText(const FilledRequest& filled, const FluidNames& names, const WritingStyle& style) {
    return Writer(filled, names, style).write();
}

}  // namespace frigana::catalogue
