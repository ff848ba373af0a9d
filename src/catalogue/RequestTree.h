// A file of named values as it was written: tables, lists, texts and numbers, each with its line. TOML and JSON become
// the same tree.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace frigana::catalogue {

struct Node {
    enum class Kind { table, list, text, number, boolean, other };
    struct Member;

    Kind kind = Kind::table;
    int line = 0;
    std::vector<Member> members;  // of a table, in the order of the file
    std::vector<Node> items;      // of a list
    std::string text;             // of a text; how a value of another kind was written, for messages
    double number = 0.0;
    bool whole = false;  // a number without a fraction
    bool boolean = false;

    const Node* find(std::string_view key) const;
    // How a message names what was found.
    std::string shown() const;
};

// A value under its key.
struct Node::Member {
    Member(std::string key, Node value) : first(std::move(key)), second(std::move(value)) {}
    std::string first;
    Node second;
};

// What is wrong with a file, by its line; 0 for the file as a whole.
struct Problem {
    int line;
    std::string text;
    // Of a value beyond its limits, for programs: its key, and what is allowed.
    std::string key = {}, allowed = {};
};

// Reads a text.
//   Returned  tree     the table of the whole file
//             (value)  problems of the form; empty where it could be read
std::vector<Problem> readToml(std::string_view text, Node& tree);
std::vector<Problem> readJson(std::string_view text, Node& tree);

// Tables and lists may stand in each other only so deep.
inline constexpr int deepestNesting = 16;

}  // namespace frigana::catalogue
