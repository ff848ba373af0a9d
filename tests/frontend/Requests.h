// Requests as a front end writes them, line by line, and runs through the entry point.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "frigana.h"

namespace frigana::test {

struct Parameter {
    int option;
    double value;
};

// The lines of a request file.
class Request {
  public:
    Request& line(const std::string& text) {
        lines_.push_back(text);
        return *this;
    }
    Request& append(const Request& other) {
        lines_.insert(lines_.end(), other.lines_.begin(), other.lines_.end());
        return *this;
    }
    std::string text(const std::string& lineEnd = "\n") const {
        std::string all;
        for (const std::string& line : lines_) all += line + lineEnd;
        return all;
    }
    std::vector<std::string>& lines() { return lines_; }

  private:
    std::vector<std::string> lines_;
};

// A basic cycle of R134A.
inline std::vector<Parameter> basicParameters() {
    return {{1, 268.15}, {2, 5.0}, {1, 0.0},    {2, 2.0}, {1, 0.0}, {1, 0.0028}, {1, 0.7}, {1, 0.85},
            {2, 0.0},    {1, 0.0}, {1, 313.15}, {2, 3.0}, {1, 0.0}, {2, 0.0},    {1, 0.0}};
}

inline Request cycleRequest(int sub, const std::vector<Parameter>& parameters, const std::string& fluid = "R134A.FLD",
                            const std::string& title = "Test of a small chiller") {
    Request request;
    request.line("2").line(title).line(fluid).line("2 DEF").line(std::to_string(sub));
    request.line(std::to_string(parameters.size()));
    for (const Parameter& p : parameters) {
        char value[40];
        std::snprintf(value, sizeof value, "%.17g", p.value);
        request.line(std::to_string(p.option) + " " + value);
    }
    return request;
}

// A property request of one fluid, with the lines of all tools up to that of sub.
inline Request propertyRequest(int sub, const std::string& toolLine, const std::string& fluid = "R134A.FLD",
                               int kind = 1) {
    Request request;
    request.line("1").line(std::to_string(kind)).line("1").line("1").line(fluid).line("1.0").line("none");
    request.line("2 DEF").line(std::to_string(sub));
    for (int tool = 2; tool < sub && sub <= 6; ++tool) request.line("1 0 0 0");
    if (!toolLine.empty()) request.line(toolLine);
    return request;
}

// A folder with one request, its result, and the call of the entry point.
struct Plant {
    TemporaryFolder folder;
    std::string installation = std::string(test::dataFolder) + "/frigana";
    std::string request = folder.path("plant.fi1");
    std::string result = folder.path("plant.fo1");

    void operator()(const std::string& bytes) {
        writeFile(request, bytes);
        call(request);
    }
    void operator()(const Request& lines) { (*this)(lines.text()); }
    void call(const std::string& path) const {
        Frigana(path.data(), installation.data(), static_cast<int>(path.size()), static_cast<int>(installation.size()));
    }
    bool hasResult() const { return std::filesystem::exists(result); }
    std::string resultText() const { return readFile(result); }
};

// The whole failure form.
inline std::string failure(int code, const std::string& text) {
    return " 0\n " + std::to_string(code) + "\n " + text + std::string(255 - text.size(), ' ') + "\n";
}

}  // namespace frigana::test
