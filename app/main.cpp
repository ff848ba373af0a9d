// The program frigana: runs requests and says what came of them; every other thing it does is a command.
#include <cstdio>
#include <exception>
#include <iostream>

#include "Commands.h"
#include "Platform.h"

namespace {

// In the order of the help.
constexpr frigana::app::Command (*commands[])(CLI::App& program) = {
    frigana::app::addRun,
#ifdef FRIGANA_PROCESSES
    frigana::app::addStudy,
#endif
    frigana::app::addNew,    frigana::app::addExplain,   frigana::app::addConvert,
    frigana::app::addState,  frigana::app::addChart,     frigana::app::addList,
    frigana::app::addSchema, frigana::app::addCheckData, frigana::app::addCompletion,
#ifdef FRIGANA_PROCESSES
    frigana::app::addServe,
#endif
};

int run(int argc, char** argv) {
    CLI::App program{
        "Refrigeration calculations: runs requests and says what came of them.\n"
        "Exit status: 0 done; 1 wrong command line; 2 the request was refused: code and message are shown\n"
        "and stand in the result file; 3 the request cannot be read, asks for what there is not, or a file\n"
        "cannot be written; 4 the data have faults; 5 under --strict: done, but the figures are of no use.",
        "frigana"};
    program.set_version_flag("--version", "frigana " FRIGANA_VERSION);
    const auto runPositional = frigana::app::addPositionalRequest(program);
    std::vector<frigana::app::Command> added;
    for (const auto add : commands) added.push_back(add(program));
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : frigana::app::usageError;
    }
    for (const frigana::app::Command& command : added)
        if (command.line->parsed()) return command.run();
    return runPositional();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        frigana::holdStandardHandles();
        frigana::writeUtf8();
        const int status = run(argc, argv);
        // What could not be written was not said.
        std::cout.flush();
        if (!std::cout) return frigana::app::complain(frigana::app::runtimeError, "standard output cannot be written");
        return status;
    } catch (const std::exception& fault) {
        // No command should end so: what it knows of the cause is said, as of every failure.
        (void)std::fprintf(stderr, "frigana: %s\n", fault.what());
        return frigana::app::runtimeError;
    }
}
