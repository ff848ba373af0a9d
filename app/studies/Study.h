// A study: one named request, calculated for many values of some of its keys. The description is the same on the
// command line (TOML), in the page and for programs (JSON):
//
//   request = "chiller.toml"                                     or the table of the request itself
//   [vary]                                                       every value with every other: a grid
//   fluid                  = ["R134a", "R290"]
//   condenser.temperature  = { from = "30 °C", to = "60 °C", count = 31 }
//   evaporator.temperature = { from = "-30 °C", to = "5 °C", step = "1 K" }
//   [zip]                                                        lists that go side by side
//   compressor.swept_volume = ["0.002 m3/s", "0.003 m3/s"]
//   [cases]                                                      rows of a file: its columns are keys, "key [unit]" too
//   file   = "hours.csv"
//   labels = ["hour"]                                            columns that stand in the result and in no request
//   [results]
//   keys = ["performance.cop_cooling", "compressor.outlet.temperature"]
//   [optimum]                                                    of each case, over one key or two
//   maximise  = "performance.cop_cooling"                        or minimise
//   over      = "gas_cooler.pressure"
//   from      = "75 bar"
//   to        = "130 bar"
//   tolerance = "0.05 bar"
//
// Cases are counted through with the first key of the grid as the slowest, so that the cases of one fluid stand
// together where it is named first. They are made one by one, by their number: a study takes no more memory for more
// cases.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Catalogue.h"
#include "RequestTree.h"

namespace frigana::studies {

// The most cases of a study.
inline constexpr std::size_t mostCases = 1'000'000'000;

// One value of a key, as it is put into the request.
struct Setting {
    std::string_view key;
    catalogue::Node value;
};

// The values of a key: a list, or evenly spaced numbers that are made when they are asked for.
class Values {
  public:
    Values() = default;
    explicit Values(std::vector<catalogue::Node> list) : size_(list.size()), list_(std::move(list)) {}
    // `unit` is null for plain numbers.
    Values(double first, double width, std::size_t size, const catalogue::Unit* unit)
        : size_(size), first_(first), width_(width), unit_(unit) {}
    // Numbers, each with the unit.
    Values(std::vector<double> numbers, const catalogue::Unit* unit)
        : size_(numbers.size()), numbers_(std::move(numbers)), unit_(unit) {}

    std::size_t size() const { return size_; }
    catalogue::Node at(std::size_t number) const;

  private:
    std::size_t size_ = 0;
    std::vector<catalogue::Node> list_;
    std::vector<double> numbers_;
    double first_ = 0.0, width_ = 0.0;
    const catalogue::Unit* unit_ = nullptr;
};

// A study that cannot be read.
struct Faulty {
    std::vector<catalogue::Problem> problems;
};

// What is searched in every case.
struct Optimum {
    bool maximise = true;
    std::string objective;  // key of the result
    // For each key searched over: bounds and tolerance in a unit, null for plain numbers.
    struct Over {
        std::string key;
        double from, to, tolerance;
        const catalogue::Unit* unit;
    };
    std::vector<Over> over;
};

class Study {
  public:
    // How a file that a study names is read: its text, or a throw of Faulty. Null where no file may be named.
    using ReadFile = std::function<std::string(const std::string& name)>;

    // Reads a description from its tree. Throws Faulty.
    Study(const catalogue::Node& description, const ReadFile& readFile);

    std::size_t cases() const { return cases_; }
    // Keys that vary and labels, in the order of the description, and keys of the results.
    const std::vector<std::string>& variedKeys() const { return varied_; }
    const std::vector<std::string>& resultKeys() const { return results_; }

    const std::optional<Optimum>& optimum() const { return optimum_; }
    // What a varied key is; none for a label.
    catalogue::Quantity quantityOf(const std::string& key) const;
    // The number of values of the key that varies fastest, 1 where several vary together.
    std::size_t fastest() const;

    // The values of a case, in the order of variedKeys().
    std::vector<Setting> settings(std::size_t number) const;

    // What is sent to a worker (CaseRun.h).
    std::string caseRequest(std::size_t number) const;

  private:
    class Reader;
    friend class Reader;

    // Lists of one length that are counted through together.
    struct Axis {
        std::vector<std::string> keys;
        std::vector<Values> values;  // for each key
        std::size_t length() const { return values.front().size(); }
    };

    catalogue::Node request_;
    std::vector<Axis> axes_;
    std::vector<std::string> varied_, results_, labels_;
    std::optional<Optimum> optimum_;
    const catalogue::Request* catalogued_ = nullptr;
    std::size_t cases_ = 0;
};

// Whether a request leaves something in the installation: such a one is run on the command line alone.
bool storesInInstallation(const catalogue::Request& request);

// The first line of a stream of cases: {"cases": N, "inputs": [keys], "keys": [keys]}, with "optimum": [keys] where one
// is searched.
std::string headOf(const Study& study);

}  // namespace frigana::studies
