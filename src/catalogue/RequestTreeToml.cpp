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

// The line of the first sign beyond ASCII that stands in no text and no comment, 0 for none. TOML allows none there,
// and the parser must not see one: in this version its test for blanks has no answer for some of them.
int lineOfBareSign(std::string_view text) {
    int line = 1;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\n') ++line;
        if (static_cast<unsigned char>(c) >= 0x80) return line;
        if (c == '#') {
            while (at + 1 < text.size() && text[at + 1] != '\n') ++at;
        } else if (c == '"' || c == '\'') {
            const std::string three(3, c);
            const bool several = text.substr(at, 3) == three;
            at += several ? 3 : 1;
            // A text of one line ends with it, closed or not: the parser goes no further.
            while (at < text.size() && (several ? text.substr(at, 3) != three : text[at] != c && text[at] != '\n')) {
                if (c == '"' && text[at] == '\\') ++at;
                if (at < text.size() && text[at] == '\n') ++line;
                ++at;
            }
            if (at < text.size() && text[at] == '\n') ++line;
            if (several) {
                // Up to two quotes more belong to the text that they end.
                at += 2;
                for (int more = 0; more < 2 && at + 1 < text.size() && text[at + 1] == c; ++more) ++at;
            }
        }
    }
    return 0;
}

}  // namespace

std::vector<Problem> readToml(std::string_view text, Node& tree) {
    if (const int line = lineOfBareSign(text); line > 0)
        return {{line, "this is no TOML: a value with a sign such as ° stands in quotes, as in \"-5 °C\""}};
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
