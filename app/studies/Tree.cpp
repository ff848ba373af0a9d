#include "Tree.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace frigana::studies {

using catalogue::Node;
using Json = nlohmann::ordered_json;

namespace {

Node* member(Node& table, std::string_view key) {
    const auto found = std::ranges::find(table.members, key, &Node::Member::first);
    return found == table.members.end() ? nullptr : &found->second;
}

// "low" of "low.evaporator.temperature", which then is "evaporator.temperature".
std::string_view firstPart(std::string_view& key) {
    const std::string_view part = key.substr(0, key.find('.'));
    key.remove_prefix(std::min(key.size(), part.size() + 1));
    return part;
}

Json toJson(const Node& node) {
    switch (node.kind) {
        case Node::Kind::table: {
            Json table = Json::object();
            for (const auto& [key, value] : node.members) table[key] = toJson(value);
            return table;
        }
        case Node::Kind::list: {
            Json list = Json::array();
            for (const Node& item : node.items) list.push_back(toJson(item));
            return list;
        }
        case Node::Kind::number:
            return node.whole ? Json(static_cast<long long>(node.number)) : Json(node.number);
        case Node::Kind::boolean:
            return node.boolean;
        case Node::Kind::text:
            return node.text;
        default:
            return nullptr;
    }
}

}  // namespace

bool put(Node& tree, std::string_view key, const Node& value) {
    Node* at = &tree;
    while (!key.empty()) {
        if (at->kind != Node::Kind::table) return false;
        const std::string_view part = firstPart(key);
        Node* next = member(*at, part);
        if (next == nullptr) {
            at->members.emplace_back(std::string(part), Node{});
            next = &at->members.back().second;
        }
        at = next;
    }
    *at = value;
    return true;
}

void take(Node& tree, std::string_view key) {
    Node* at = &tree;
    for (;;) {
        const std::string_view part = firstPart(key);
        if (key.empty()) {
            std::erase_if(at->members, [&](const Node::Member& one) { return one.first == part; });
            return;
        }
        at = member(*at, part);
        if (at == nullptr) return;
    }
}

std::string jsonOf(const Node& node) {
    return toJson(node).dump(-1, ' ', false, Json::error_handler_t::replace);
}

Node textNode(std::string text) {
    Node node;
    node.kind = Node::Kind::text;
    node.text = std::move(text);
    return node;
}

Node numberNode(double number) {
    Node node;
    node.kind = Node::Kind::number;
    node.number = number;
    return node;
}

}  // namespace frigana::studies
