// TOML by its parser; every value keeps its line.
#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

#include <algorithm>

#include "RequestTree.h"

namespace frigana::catalogue {

namespace {

int lineOf(const toml::node& node) {
    return static_cast<int>(node.source().begin.line);
}

bool takeOver(const toml::node& from, Node& to, int depth);

// The parser sorts keys; a person's order is that of the file.
bool takeOverTable(const toml::table& from, Node& to, int depth) {
    struct Place {
        const toml::key* key;
        const toml::node* node;
    };
    std::vector<Place> places;
    for (const auto& [key, node] : from) places.push_back({&key, &node});
    std::sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        const auto first = a.key->source().begin, second = b.key->source().begin;
        return first.line != second.line ? first.line < second.line : first.column < second.column;
    });
    to.kind = Node::Kind::table;
    for (const Place& place : places) {
        Node& child = to.members.emplace_back(std::string(place.key->str()), Node{}).second;
        if (!takeOver(*place.node, child, depth)) return false;
        child.line = static_cast<int>(place.key->source().begin.line);
    }
    return true;
}

template <class Value>
std::string written(const Value& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

bool takeOver(const toml::node& from, Node& to, int depth) {
    if (depth > deepestNesting) return false;
    to.line = lineOf(from);
    if (const auto* table = from.as_table()) return takeOverTable(*table, to, depth + 1);
    if (const auto* array = from.as_array()) {
        to.kind = Node::Kind::list;
        for (const toml::node& item : *array)
            if (!takeOver(item, to.items.emplace_back(), depth + 1)) return false;
    } else if (const auto* text = from.as_string()) {
        to.kind = Node::Kind::text;
        to.text = text->get();
    } else if (const auto* integer = from.as_integer()) {
        to.kind = Node::Kind::number;
        to.number = static_cast<double>(integer->get());
        to.whole = true;
    } else if (const auto* real = from.as_floating_point()) {
        to.kind = Node::Kind::number;
        to.number = real->get();
    } else if (const auto* boolean = from.as_boolean()) {
        to.kind = Node::Kind::boolean;
        to.boolean = boolean->get();
    } else {
        to.kind = Node::Kind::other;
        to.text = "a date or time";
    }
    return true;
}

}  // namespace

std::vector<Problem> readToml(std::string_view text, Node& tree) {
    const toml::parse_result result = toml::parse(text);
    if (!result) {
        const toml::parse_error& error = result.error();
        return {{static_cast<int>(error.source().begin.line), "this is no TOML: " + std::string(error.description())}};
    }
    if (!takeOver(result.table(), tree, 0))
        return {{0, "tables and lists stand in each other more than " + std::to_string(deepestNesting) + " deep"}};
    return {};
}

}  // namespace frigana::catalogue
