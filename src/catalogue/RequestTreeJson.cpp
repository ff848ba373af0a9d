// JSON by its parser, event by event; lines are counted while it reads.
#include <cstddef>
#include <iterator>
#include <nlohmann/json.hpp>

#include "RequestTree.h"

namespace frigana::catalogue {

namespace {

// Characters of the text, with a count of the lines that were read.
struct CountingIterator {
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    const char* at;
    int* line;

    reference operator*() const { return *at; }
    CountingIterator& operator++() {
        if (*at == '\n') ++*line;
        ++at;
        return *this;
    }
    CountingIterator operator++(int) {
        CountingIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const CountingIterator& other) const { return at == other.at; }
    bool operator!=(const CountingIterator& other) const { return at != other.at; }
};

// Builds the tree. The members of an open table or list are moved into their parent when it closes, so that no pointer
// to a growing list is held.
class Builder : public nlohmann::json_sax<nlohmann::json> {
  public:
    Builder(Node& tree, const int& line) : tree_(tree), line_(line) {}
    std::vector<Problem> problems;

    bool null() override { return other("null"); }
    bool boolean(bool value) override {
        Node node = fresh(Node::Kind::boolean);
        node.boolean = value;
        return put(std::move(node));
    }
    bool number_integer(number_integer_t value) override { return number(static_cast<double>(value), true); }
    bool number_unsigned(number_unsigned_t value) override { return number(static_cast<double>(value), true); }
    bool number_float(number_float_t value, const string_t&) override { return number(value, false); }
    bool string(string_t& value) override {
        Node node = fresh(Node::Kind::text);
        node.text = value;
        return put(std::move(node));
    }
    bool binary(binary_t&) override { return other("bytes"); }
    bool start_object(std::size_t) override { return open(Node::Kind::table); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(Node::Kind::list); }
    bool end_array() override { return close(); }
    bool key(string_t& value) override {
        if (stack_.back().node.find(value) != nullptr) return fail(line_, value + ": stands here twice");
        stack_.back().key = value;
        stack_.back().keyLine = line_;
        return true;
    }
    bool parse_error(std::size_t, const std::string& token, const nlohmann::detail::exception&) override {
        return fail(line_, "this is no JSON: unexpected " + (token.empty() ? "end" : "'" + token + "'"));
    }

  private:
    struct Open {
        Node node;
        std::string key;
        int keyLine;
    };

    bool fail(int line, const std::string& text) {
        problems.push_back({line, text});
        return false;
    }
    Node fresh(Node::Kind kind) const {
        Node node;
        node.kind = kind;
        // A number ends at the character behind it, which may be the next line's.
        node.line = !stack_.empty() && stack_.back().node.kind == Node::Kind::table ? stack_.back().keyLine : line_;
        return node;
    }
    bool other(const char* name) {
        Node node = fresh(Node::Kind::other);
        node.text = name;
        return put(std::move(node));
    }
    bool number(double value, bool whole) {
        Node node = fresh(Node::Kind::number);
        node.number = value;
        node.whole = whole;
        return put(std::move(node));
    }
    bool open(Node::Kind kind) {
        if (static_cast<int>(stack_.size()) > deepestNesting)
            return fail(line_,
                        "tables and lists stand in each other more than " + std::to_string(deepestNesting) + " deep");
        stack_.push_back({fresh(kind), {}, line_});
        return true;
    }
    bool close() {
        Node node = std::move(stack_.back().node);
        stack_.pop_back();
        return put(std::move(node));
    }
    bool put(Node node) {
        if (stack_.empty()) {
            tree_ = std::move(node);
            return true;
        }
        Open& parent = stack_.back();
        if (parent.node.kind == Node::Kind::table)
            parent.node.members.emplace_back(parent.key, std::move(node));
        else
            parent.node.items.push_back(std::move(node));
        return true;
    }

    Node& tree_;
    const int& line_;
    std::vector<Open> stack_;
};

}  // namespace

std::vector<Problem> readJson(std::string_view text, Node& tree) {
    int line = 1;
    Builder builder(tree, line);
    const CountingIterator first{text.data(), &line}, last{text.data() + text.size(), &line};
    if (!nlohmann::json::sax_parse(first, last, &builder) && builder.problems.empty())
        builder.problems.push_back({line, "this is no JSON"});
    if (builder.problems.empty() && tree.kind != Node::Kind::table)
        builder.problems.push_back({1, "a request is a table of names and values, in braces"});
    return builder.problems;
}

}  // namespace frigana::catalogue
