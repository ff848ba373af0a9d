// The commands of the program: one source each, one row each in the table of main.cpp.
//
// A source adds its command to the command line (name, help, options) and returns what runs it once it was chosen. What
// its options fill lives as long as the program.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace frigana::app {

struct Command {
    CLI::App* line;            // the options of the command; parsed() says that it was chosen
    std::function<int()> run;  // returns the exit status
};

Command addCheckData(CLI::App& program);
Command addList(CLI::App& program);
Command addRun(CLI::App& program);
Command addNew(CLI::App& program);
Command addExplain(CLI::App& program);
Command addConvert(CLI::App& program);
Command addState(CLI::App& program);
Command addSchema(CLI::App& program);
Command addCompletion(CLI::App& program);
Command addServe(CLI::App& program);
Command addChart(CLI::App& program);
Command addStudy(CLI::App& program);

// The program without a command: one positional request.
std::function<int()> addPositionalRequest(CLI::App& program);

// ---- what commands share --------------------------------------------------------------------------------------------

inline constexpr int usageError = 1;
inline constexpr int refused = 2;
inline constexpr int runtimeError = 3;
inline constexpr int faultyData = 4;
inline constexpr int uselessResult = 5;  // under --strict: a remark says that the figures are wrong

// Says on standard error what is wrong.
//   Returned  (value) status
int complain(int status, const std::string& text);

// The entry cuts paths at 255 characters: a request or an installation that lies deeper is told so.
bool fits(const std::string& path);

// The data folder that a command works with.
//   Given     program  the command line; its own --data counts where the command names no folder
//             folder   as named for the command, empty for the one that came with the program
//             naming   how to name one, for the message
//   Returned  folder   the folder; (value) 0, or the exit status after a complaint
int findDataFolder(const CLI::App& program, std::string& folder, const std::string& naming);

// A whole file, or standard input where the path is "-"; false after a complaint.
bool readInput(const std::string& path, std::string& text);

// Writes a text to a file, or to standard output where the path is "-" or empty; false after a complaint.
bool writeOutput(const std::string& path, const std::string& text);

// What a file holds: by its extension, else by its first character.
enum class FileKind { positional, toml, json };
FileKind kindOf(const std::string& path, const std::string& text);

// The report whose global warming potentials are shown, as the option --gwp.
void addClimateReport(CLI::App& line, std::string& report);

inline constexpr const char* dataFolderHelp =
    "folder that holds the folders fluids and mixtures (default: the one that came with this program)";

}  // namespace frigana::app
