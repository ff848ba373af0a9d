#include "Rows.h"

#include <fstream>
#include <nlohmann/json.hpp>

#include "Tree.h"

namespace frigana::studies {

using Json = nlohmann::ordered_json;

namespace {

std::string errorText(const workers::Answer& answer) {
    const Json error = {{"error", {{"code", nameOf(answer.end)}, {"text", answer.text}}}};
    return error.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string outcomeOf(const workers::Answer& answer) {
    return answer.end == workers::End::done ? answer.text : errorText(answer);
}

std::string csvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char character : text) {
        // A row is one line, whatever a message holds.
        const char shown = character == '\n' || character == '\r' ? ' ' : character;
        quoted += shown == '"' ? std::string("\"\"") : std::string(1, shown);
    }
    return quoted + "\"";
}

std::string csvOf(const Json& value) {
    if (value.is_null()) return {};
    return csvField(value.is_string() ? value.get<std::string>() : value.dump());
}

std::string jsonInputs(const Study& study, std::size_t number) {
    std::string list = "[";
    for (const Setting& setting : study.settings(number)) {
        if (list.size() > 1) list += ',';
        list += jsonOf(setting.value);
    }
    return list + "]";
}

// What a row begins with, by its number alone.
std::string csvInputs(const Study& study, std::size_t number) {
    std::string row;
    for (const Setting& setting : study.settings(number)) {
        using Kind = catalogue::Node::Kind;
        row += setting.value.kind == Kind::text ? csvField(setting.value.text) : csvField(jsonOf(setting.value));
        row += ',';
    }
    return row;
}

std::string jsonBeginning(const Study& study, std::size_t number) {
    return "{\"case\":" + std::to_string(number) + ",\"inputs\":" + jsonInputs(study, number) + ',';
}

}  // namespace

std::string jsonRow(const Study& study, std::size_t number, const workers::Answer& answer) {
    // The outcome is an object; its members follow those of the case.
    return jsonBeginning(study, number) + outcomeOf(answer).substr(1);
}

std::string csvHead(const Study& study) {
    std::string head;
    for (const std::string& key : study.variedKeys()) head += csvField(key) + ',';
    if (study.optimum())
        for (const Optimum::Over& over : study.optimum()->over) {
            const bool plain = over.unit == nullptr;
            head += csvField(plain ? over.key : over.key + " [" + std::string(over.unit->symbol) + ']') + ',';
        }
    for (const std::string& key : study.resultKeys()) head += csvField(key) + ',';
    return head + "code,text";
}

std::string csvRow(const Study& study, std::size_t number, const workers::Answer& answer) {
    const Json outcome = Json::parse(outcomeOf(answer), nullptr, false);
    std::string row = csvInputs(study, number);
    const auto columns = [&](const char* name, std::size_t count) {
        const auto list = outcome.find(name);
        for (std::size_t i = 0; i < count; ++i) {
            if (list != outcome.end() && i < list->size()) row += csvOf((*list)[i]);
            row += ',';
        }
    };
    if (study.optimum()) columns("optimum", study.optimum()->over.size());
    columns("values", study.resultKeys().size());
    const auto error = outcome.find("error");
    if (error == outcome.end()) return row + ',';
    return row + csvOf((*error)["code"]) + ',' + csvOf((*error)["text"]);
}

bool isRefused(const workers::Answer& answer) {
    return answer.end != workers::End::done || answer.text.starts_with("{\"error\"");
}

std::string wholeRows(const Study& study, RowForm form, const std::string& path, std::size_t& rows, std::size_t& size) {
    rows = size = 0;
    std::ifstream file(path, std::ios::binary);
    if (!file) return {};
    const std::string head = form == RowForm::csv ? csvHead(study) : headOf(study);
    std::string line;
    for (std::size_t lines = 0; std::getline(file, line); ++lines) {
        if (file.eof()) break;  // half a line: it has no end
        if (lines == 0 && line != head) return path + ": its first line is not that of this study";
        if (lines > study.cases()) return path + " has more rows than the study has cases";
        if (lines > 0) {
            const std::string beginning =
                form == RowForm::csv ? csvInputs(study, lines - 1) : jsonBeginning(study, lines - 1);
            if (!line.starts_with(beginning))
                return path + ":" + std::to_string(lines + 1) + ": this is no row of case " +
                       std::to_string(lines - 1) + " of this study";
            rows = lines;
        }
        size += line.size() + 1;
    }
    return {};
}

std::size_t sizeOfRows(const std::string& path, std::size_t rows) {
    std::ifstream file(path, std::ios::binary);
    std::size_t size = 0;
    std::string line;
    for (std::size_t lines = 0; lines <= rows && std::getline(file, line); ++lines) size += line.size() + 1;
    return size;
}

}  // namespace frigana::studies
