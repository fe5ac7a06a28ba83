#include "util/lists/condition.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "util/lists/comma_list.h"

namespace lumbra {
namespace {

struct Condition {
    std::string a;
    std::string op;
    std::string b;
    std::int16_t ok;
};

void expectConditions(const Condition* begin, const Condition* end) {
    for (const Condition* c = begin; c != end; ++c) {
        std::int16_t ok = 7;
        CndAva(c->a, c->op, c->b, ok);
        EXPECT_EQ(ok, c->ok) << "'" << c->a << "' " << c->op << " '" << c->b << "'";
    }
}

TEST(CndAva, ComparesTextsOrdinallyUnderEveryOperator) {
    const Condition cases[] = {
        {"abc", "=", "abc", 1},
        {"abc", "=", "ABC", 0},
        {"a", "=", "a ", 0},
        {"9", ">", "10", 1},
        {"ab", ">", "abc", 0},
        {"b", ">", "b", 0},
        {"10", "<", "9", 1},
        {"ab", "<", "abc", 1},
        {"b", "<", "b", 0},
        {"b", ">=", "b", 1},
        {"a", ">=", "b", 0},
        {"b", "<=", "b", 1},
        {"c", "<=", "b", 0},
        {"a", "<>", "b", 1},
        {"a", "<>", "a", 0},
        // Bytes above 127 sort after ASCII: "é" is 0xE9.
        {"\xE9", ">", "z", 1},
        {"Z", "<", "a", 1},
        {"b", ":", "a:c", 1},
        {"a", ":", "a:c", 1},
        {"c", ":", "a:c", 1},
        {"d", ":", "a:c", 0},
        {"x", ":", "x", 0},
        {"", ":", "", 1},
        {"c:e", ":", "a:c:d", 0},
        {"c:", ":", "a:c:d", 1},
        {"", "INSTR", "abc", 1},
        {"bc", "instr", "abc", 1},
        {"abc", "INSTR", "", 0},
        {"", "INSTR", "", 0},
        {"abcd", "INSTR", "abc", 0},
        {"B", "INSTR", "abc", 0},
        {"abc", "!=", "abd", 0},
        {"a", " =", "a", 0},
        {"a", "", "a", 0},
        {"a", "==", "a", 0},
    };
    expectConditions(std::begin(cases), std::end(cases));
}

TEST(CndAva, LikeMatchesTheWholeTextAgainstThePattern) {
    const Condition cases[] = {
        {"a", "like", "A*", 0},
        {"A1", "LIKE", "A#", 1},
        {"A0", "LIKE", "A#", 1},
        {"AB", "LIKE", "A#", 0},
        {"A12", "LIKE", "A#", 0},
        {"", "LIKE", "", 1},
        {"", "LIKE", "*", 1},
        {"", "LIKE", "?", 0},
        {"abc", "LIKE", "a?c", 1},
        {"ac", "LIKE", "a?c", 0},
        {"abc", "LIKE", "a*", 1},
        {"abc", "LIKE", "*c", 1},
        {"abc", "LIKE", "*b*", 1},
        {"abc", "LIKE", "a*b*c", 1},
        {"abcbc", "LIKE", "*bc", 1},
        {"abcb", "LIKE", "*bc", 0},
        {"aXbXc", "LIKE", "a*X*c", 1},
        {"abc", "LIKE", "ab", 0},
        {"ab", "LIKE", "abc", 0},
        {"b", "LIKE", "[abc]", 1},
        {"d", "LIKE", "[abc]", 0},
        {"d", "LIKE", "[!abc]", 1},
        {"a", "LIKE", "[!abc]", 0},
        {"m", "LIKE", "[a-z]", 1},
        {"M", "LIKE", "[a-z]", 0},
        {"-", "LIKE", "[a-]", 1},
        {"-", "LIKE", "[-a]", 1},
        {"b", "LIKE", "[-a]", 0},
        {"*", "LIKE", "[*]", 1},
        {"x", "LIKE", "[*]", 0},
        {"?", "LIKE", "[?]", 1},
        {"#", "LIKE", "[#]", 1},
        {"[", "LIKE", "[[]", 1},
        {"!", "LIKE", "[a!]", 1},
        {"x", "LIKE", "[!]", 1},
        {"x", "LIKE", "[]", 0},
        {"m", "LIKE", "[z-a]", 0},
        {"\xE9", "LIKE", "[\xE0-\xFF]", 1},
        {"z", "LIKE", "[\xE0-\xFF]", 0},
        {"A9z", "LIKE", "[A-Z]#[!0-9]", 1},
        {"[a", "LIKE", "[a", 0},
        {"]", "LIKE", "]", 1},
        {"a!", "LIKE", "a!", 1},
        {"ab", "LIKE", "a[b", 0},
    };
    expectConditions(std::begin(cases), std::end(cases));
}

TEST(CommaList, AcceptsExactValuesOrPrefixesElementByElement) {
    const struct {
        bool prefix;
        std::string lst;
        std::string val;
        std::int16_t ok;
    } cases[] = {
        {false, "", "", 0},      {true, "", "", 0},        {false, "", "A", 0},
        {true, "", "A", 0},      {false, "*", "", 1},      {true, "*", "x", 1},
        {false, "A,", "A", 1},   {false, "A,", "", 0},     {false, "A,,B", "", 1},
        {true, "A,,B", "z", 1},  {true, "A,,B", "", 0},    {false, "A,*", "*", 1},
        {false, "A,*", "B", 0},  {true, "AB", "A", 0},     {true, "A", "ABC", 1},
        {false, "A, B", "B", 0}, {false, "A, B", " B", 1}, {false, "A,B,C", "C", 1},
        {false, "A,B", "a", 0},  {true, "X,AB", "ABC", 1}, {true, "X,AB", "XYZ", 1},
        {true, " A", "A", 0},
    };
    for (const auto& c : cases) {
        std::int16_t ok = 7;
        if (c.prefix) {
            LstPre(c.lst, c.val, ok);
        } else {
            LstIgu(c.lst, c.val, ok);
        }
        EXPECT_EQ(ok, c.ok) << (c.prefix ? "LstPre '" : "LstIgu '") << c.lst << "' '" << c.val
                            << "'";
    }
}

}  // namespace
}  // namespace lumbra
