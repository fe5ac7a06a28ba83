#include "util/lists/like_pattern.h"

#include <bitset>
#include <cstddef>
#include <optional>
#include <vector>

namespace lumbra {

namespace {

// One pattern element; every element but a run matches exactly one character.
struct Element {
    enum class Kind { Literal, AnyChar, Digit, Run, Group };
    Kind kind = Kind::Literal;
    unsigned char literal = 0;
    std::bitset<256> group;  // for Group: the bytes it accepts, negation already applied

    bool accepts(unsigned char c) const {
        switch (kind) {
            case Kind::Literal:
                return c == literal;
            case Kind::AnyChar:
                return true;
            case Kind::Digit:
                return c >= '0' && c <= '9';
            case Kind::Group:
                return group.test(c);
            case Kind::Run:
                return false;
        }
        return false;
    }
};

unsigned char byteAt(std::string_view s, std::size_t i) {
    return static_cast<unsigned char>(s[i]);
}

// Reads the group whose "[" is at `open`; `next` receives the index after its "]".
std::optional<std::bitset<256>> readGroup(std::string_view pattern, std::size_t open,
                                          std::size_t& next) {
    const std::size_t close = pattern.find(']', open + 1);
    if (close == std::string_view::npos) return std::nullopt;
    std::size_t i = open + 1;
    bool negated = false;
    if (i < close && pattern[i] == '!') {
        negated = true;
        ++i;
    }
    std::bitset<256> set;
    while (i < close) {
        const unsigned char first = byteAt(pattern, i);
        if (i + 2 < close && pattern[i + 1] == '-') {
            // A range given backwards holds no character.
            const unsigned char last = byteAt(pattern, i + 2);
            for (unsigned c = first; c <= last; ++c)
                set.set(c);
            i += 3;
        } else {
            set.set(first);
            ++i;
        }
    }
    next = close + 1;
    return negated ? ~set : set;
}

std::optional<std::vector<Element>> compile(std::string_view pattern) {
    std::vector<Element> elements;
    elements.reserve(pattern.size());
    std::size_t i = 0;
    while (i < pattern.size()) {
        Element e;
        switch (pattern[i]) {
            case '?':
                e.kind = Element::Kind::AnyChar;
                break;
            case '#':
                e.kind = Element::Kind::Digit;
                break;
            case '*':
                e.kind = Element::Kind::Run;
                break;
            case '[': {
                std::size_t next = 0;
                auto group = readGroup(pattern, i, next);
                if (!group) return std::nullopt;
                e.kind = Element::Kind::Group;
                e.group = *group;
                elements.push_back(e);
                i = next;
                continue;
            }
            default:
                e.literal = byteAt(pattern, i);
                break;
        }
        elements.push_back(e);
        ++i;
    }
    return elements;
}

}  // namespace

bool likeMatches(std::string_view text, std::string_view pattern) {
    const auto compiled = compile(pattern);
    if (!compiled) return false;
    const std::vector<Element>& elements = *compiled;

    // Greedy matching that, on a mismatch, lets the last run take one more character: every
    // element other than a run consumes exactly one character, so this finds any match there is.
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t runElement = kNone;
    std::size_t runText = 0;
    while (t < text.size()) {
        if (p < elements.size() && elements[p].kind == Element::Kind::Run) {
            runElement = p++;
            runText = t;
        } else if (p < elements.size() && elements[p].accepts(byteAt(text, t))) {
            ++p;
            ++t;
        } else if (runElement != kNone) {
            p = runElement + 1;
            t = ++runText;
        } else {
            return false;
        }
    }
    while (p < elements.size() && elements[p].kind == Element::Kind::Run)
        ++p;
    return p == elements.size();
}

}  // namespace lumbra
