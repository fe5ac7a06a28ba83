#include "platform/qt_codepage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace lumbra::platform {
namespace {

struct Pair {
    std::string bytes;
    QString text;
};

TEST(Cp1252, KnownTextsConvertByteForByteBothWays) {
    const Pair pairs[] = {
        {"Teste de liga\xE7\xE3o", QString::fromUtf8("Teste de ligação")},
        {"\x80\x8A\x9F\x93\x97", QString::fromUtf16(u"\u20AC\u0160\u0178\u201C\u2014")},
        {"\x81\x8D\x8F\x90\x9D", QString::fromUtf16(u"\u0081\u008D\u008F\u0090\u009D")},
        {"\xA0\xFF", QString::fromUtf16(u"\u00A0\u00FF")},
        {std::string("a\0b", 3), QString::fromUtf16(u"a\u0000b", 3)},
    };
    for (const auto& p : pairs) {
        EXPECT_EQ(FromCp1252(p.bytes), p.text) << p.bytes;
        std::string out = "stale";
        EXPECT_TRUE(ToCp1252(p.text, out));
        EXPECT_EQ(out, p.bytes);
    }
}

TEST(Cp1252, EveryByteRoundTripsThroughACharacterOfItsOwn) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    const QString text = FromCp1252(all);
    std::set<char16_t> distinct;
    for (QChar c : text)
        distinct.insert(c.unicode());
    EXPECT_EQ(distinct.size(), 256u);
    std::string back;
    EXPECT_TRUE(ToCp1252(text, back));
    EXPECT_EQ(back, all);
}

TEST(Cp1252, CharactersTheCodePageCannotHoldBecomeOneQuestionMarkEachAndAreReported) {
    const Pair lossy[] = {
        {"a?b", QString::fromUtf16(u"a\u0101b")},
        {"?", QString::fromUtf16(u"\u0080")},
        {"x?y", QString::fromUtf8("x\xF0\x9F\x98\x80y")},  // beyond 16 bits: still one character
        {"?z", QString::fromUtf16(u"\xD800z", 2)},
    };
    for (const auto& l : lossy) {
        std::string out;
        EXPECT_FALSE(ToCp1252(l.text, out)) << l.bytes;
        EXPECT_EQ(out, l.bytes);
    }
    std::string mark;
    EXPECT_TRUE(ToCp1252(QStringLiteral("?"), mark));
}

}  // namespace
}  // namespace lumbra::platform
