#include "RequestTree.h"

#include "Units.h"

namespace frigana::catalogue {

const Node* Node::find(std::string_view key) const {
    for (const Member& member : members)
        if (member.first == key) return &member.second;
    return nullptr;
}

std::string Node::shown() const {
    switch (kind) {
        case Kind::table:
            return "a table";
        case Kind::list:
            return "a list";
        case Kind::text:
            return text.empty() ? "an empty text" : text;
        case Kind::number:
            return numberText(number);
        case Kind::boolean:
            return boolean ? "true" : "false";
        default:
            return text;
    }
}

}  // namespace frigana::catalogue
