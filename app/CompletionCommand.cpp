// frigana completion: the words of the command line for bash, and the man page; both made from the commands themselves.
#include <memory>
#include <sstream>

#include "Catalogue.h"
#include "Commands.h"
#include "Versions.h"

namespace frigana::app {

using namespace catalogue;

namespace {

std::vector<const CLI::App*> commandsOf(const CLI::App& program) {
    std::vector<const CLI::App*> commands;
    for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; }))
        commands.push_back(command);
    return commands;
}

std::string optionWords(const CLI::App& command) {
    std::string words;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& name : option->get_lnames()) words += (words.empty() ? "--" : " --") + name;
    return words;
}

void printCompletion(std::ostream& out, const CLI::App& program) {
    std::string commands, names;
    for (const CLI::App* command : commandsOf(program)) commands += command->get_name() + ' ';
    for (const Request& request : requests()) names += std::string(request.name) + ' ';
    out << "# Completion of frigana for bash.\n"
           "_frigana() {\n"
           "    local word=\"${COMP_WORDS[COMP_CWORD]}\" before=\"${COMP_WORDS[COMP_CWORD-1]}\" "
           "command=\"${COMP_WORDS[1]}\"\n"
           "    case \"$before\" in\n"
           "        --units) COMPREPLY=($(compgen -W \"SI metric imperial\" -- \"$word\")); return ;;\n"
           "        --gwp) COMPREPLY=($(compgen -W \"AR4 AR5 AR6\" -- \"$word\")); return ;;\n"
           "        --chart-kind) COMPREPLY=($(compgen -W \"ph ts hs\" -- \"$word\")); return ;;\n"
           "    esac\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W \""
        << commands << optionWords(program)
        << "\" -- \"$word\") $(compgen -f -- \"$word\"))\n"
           "        return\n"
           "    fi\n"
           "    case \"$command\" in\n";
    for (const CLI::App* command : commandsOf(program)) {
        const std::string name = command->get_name();
        const bool takesRequest = name == "new" || name == "explain" || name == "schema";
        out << "        " << name << ") COMPREPLY=($(compgen -W \"" << (takesRequest ? names : "")
            << optionWords(*command) << "\" -- \"$word\")" << (takesRequest ? "" : " $(compgen -f -- \"$word\")")
            << ") ;;\n";
    }
    out << "        *) COMPREPLY=($(compgen -f -- \"$word\")) ;;\n"
           "    esac\n"
           "}\n"
           "complete -o filenames -F _frigana frigana\n";
}

// A text of a man page: a point or quote at the head of a line and backslashes mean something there.
std::string troff(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '-')
            result += "\\-";
        else if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n'))
            result += std::string("\\&") + c;
        else
            result += c;
    }
    return result;
}

void printOptions(std::ostream& out, const CLI::App& command) {
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_lnames().empty() && option->get_snames().empty())
            out << ".TP\n.I " << troff(option->get_name(true)) << '\n';
        else
            out << ".TP\n.B " << troff(option->get_name()) << '\n';
        out << troff(option->get_description()) << '\n';
    }
}

void printManPage(std::ostream& out, const CLI::App& program) {
    out << ".TH FRIGANA 1 \"\" \"frigana " << programVersion() << "\" \"User commands\"\n"
        << ".SH NAME\nfrigana \\- calculations for refrigeration engineers\n"
        << ".SH SYNOPSIS\n.B frigana\n.I REQUEST.fi1\n.RI [ options ]\n.br\n.B frigana\n.I COMMAND\n.RI [ options ]\n"
        << ".SH DESCRIPTION\n"
        << troff(program.get_description()) << "\n.SH OPTIONS\n";
    printOptions(out, program);
    out << ".SH COMMANDS\n";
    for (const CLI::App* command : commandsOf(program)) {
        out << ".SS frigana " << troff(command->get_name()) << '\n' << troff(command->get_description()) << '\n';
        printOptions(out, *command);
    }
    out << ".SH REQUESTS\n";
    for (const Request& request : requests())
        out << ".TP\n.B " << troff(std::string(request.name)) << '\n' << troff(std::string(request.about)) << '\n';
    out << ".SH FILES\nA named request is a TOML or JSON file:\n.PP\n.nf\n"
           "request = \"basic\"\nfluid = \"R134a\"\n\n[evaporator]\ntemperature = \"\\-5 °C\"\nsuperheat = \"5 K\"\n"
           ".fi\n.PP\nfrigana explain NAME shows the keys of a request, frigana new NAME writes one with all of "
           "them.\n";
}

}  // namespace

Command addCompletion(CLI::App& program) {
    CLI::App* line = program.add_subcommand("completion", "writes the completion for bash, or the man page");
    struct Options {
        std::string kind, file;
    };
    const auto options = std::make_shared<Options>();
    line->add_option("KIND", options->kind, "bash or man")->required()->check(CLI::IsMember({"bash", "man"}));
    line->add_option("--out", options->file, "file for it; standard output if left out");
    return {line, [&program, options] {
                std::ostringstream text;
                if (options->kind == "bash")
                    printCompletion(text, program);
                else
                    printManPage(text, program);
                return writeOutput(options->file, text.str()) ? 0 : runtimeError;
            }};
}

}  // namespace frigana::app
