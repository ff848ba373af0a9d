// Fixed-length, blank-padded text, the way every name, path and message of the system is kept.
#pragma once

#include <algorithm>
#include <string_view>

namespace frigana {

// Text without its trailing blanks.
constexpr std::string_view trimRight(std::string_view text) {
    constexpr std::string_view blanks = "        ";  // eight at once: most fields are far longer than their text
    while (text.ends_with(blanks)) text.remove_suffix(blanks.size());
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return text;
}

// N characters, padded with blanks, never terminated. Positions count from 1.
template <int N>
class FixedText {
  public:
    static constexpr int size = N;

    constexpr FixedText() { clear(); }
    constexpr FixedText(std::string_view text) { assign(text); }
    constexpr FixedText(const char* text) { assign(text); }
    template <int M>
    constexpr FixedText(const FixedText<M>& other) {
        assign(other.view());
    }

    constexpr void clear() { std::fill_n(characters_, N, ' '); }

    // The first N characters of text, padded with blanks.
    constexpr void assign(std::string_view text) {
        const int count = std::min(N, static_cast<int>(text.size()));
        for (int i = 0; i < count; ++i) characters_[i] = text[static_cast<std::size_t>(i)];
        std::fill_n(characters_ + count, N - count, ' ');
    }

    // Positions first to last take text, cut or padded with blanks to fit.
    constexpr void assign(int first, int last, std::string_view text) {
        for (int i = first; i <= last; ++i) {
            const auto k = static_cast<std::size_t>(i - first);
            characters_[i - 1] = k < text.size() ? text[k] : ' ';
        }
    }

    constexpr std::string_view view() const { return {characters_, static_cast<std::size_t>(N)}; }
    constexpr std::string_view trimmed() const { return trimRight(view()); }

    // Positions first to last (both included); an empty text where last < first.
    constexpr std::string_view slice(int first, int last) const {
        return last < first
                   ? std::string_view{}
                   : view().substr(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1));
    }

    // Position of the last character that is not a blank; 0 in a blank text.
    constexpr int length() const { return static_cast<int>(trimmed().size()); }
    constexpr bool blank() const { return length() == 0; }
    constexpr bool startsWith(std::string_view text) const { return view().starts_with(text); }

    // Position of the first place where text stands; 0 if it does not.
    constexpr int find(std::string_view text) const {
        const auto at = view().find(text);
        return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
    }

    constexpr char& operator[](int position) { return characters_[position - 1]; }
    constexpr char operator[](int position) const { return characters_[position - 1]; }
    constexpr char* data() { return characters_; }
    constexpr const char* data() const { return characters_; }

    // Trailing blanks do not count in a comparison.
    friend constexpr bool operator==(const FixedText& a, std::string_view b) { return a.trimmed() == trimRight(b); }
    friend constexpr bool operator==(const FixedText& a, const char* b) { return a == std::string_view(b); }
    template <int M>
    constexpr bool operator==(const FixedText<M>& b) const {
        return trimmed() == b.trimmed();
    }

  private:
    char characters_[N];
};

using Text3 = FixedText<3>;
using Text12 = FixedText<12>;
using Text255 = FixedText<255>;

}  // namespace frigana
