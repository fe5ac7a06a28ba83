// Windows-1252 bytes to the window's text and back.

#include "platform/qt_codepage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace lumbra::platform {
namespace {

// Every byte, the five the code page leaves undefined included, has a character of its own and
// comes back as itself.
TEST(Cp1252, EveryByteRoundTripsThroughACharacterOfItsOwn) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    const QString text = FromCp1252(all);
    EXPECT_EQ(text.mid(0x80, 4), QString::fromUtf16(u"\u20AC\u0081\u201A\u0192"));
    EXPECT_EQ(std::set<QChar>(text.begin(), text.end()).size(), 256u);
    std::string back;
    EXPECT_TRUE(ToCp1252(text, back));
    EXPECT_EQ(back, all);
}

// A character the code page cannot hold becomes one "?" (also beyond 16 bits, or a lone
// surrogate) and the conversion says so; a "?" of its own is no loss.
TEST(Cp1252, CharactersTheCodePageCannotHoldBecomeOneQuestionMarkEachAndAreReported) {
    const struct {
        std::string bytes;
        QString text;
    } lossy[] = {{"a?b", QString::fromUtf16(u"a\u0101b")},
                 {"x?y", QString::fromUtf8("x\xF0\x9F\x98\x80y")},
                 {"?z", QString::fromUtf16(u"\xD800z", 2)}};
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
