#include <gtest/gtest.h>

#include <string>

#include "tests/simulator/decoder_cases.h"

namespace lumbra::sim::test {
namespace {

using namespace std::string_literals;

struct PrinterCase {
    const char* name;
    std::string bytes;
    std::string events;  // JSON lines
};

std::string Line(const std::string& text, const std::string& spans = "") {
    return R"({"device":"printer","event":"line","text":")" + text + "\"" +
           (spans.empty() ? "" : ",\"spans\":[" + spans + "]") + "}\n";
}

std::string Drawer(int pin, int on, int off) {
    return R"({"device":"printer","event":"drawer","pin":)" + std::to_string(pin) +
           ",\"on_ms\":" + std::to_string(on) + ",\"off_ms\":" + std::to_string(off) + "}\n";
}

std::string Unknown(const std::string& hex) {
    return R"({"device":"printer","event":"unknown","bytes":")" + hex + "\"}\n";
}

const std::string kCut = "{\"device\":\"printer\",\"event\":\"cut\"}\n";
const std::string kPartialCut = "{\"device\":\"printer\",\"event\":\"cut\",\"partial\":true}\n";

std::string Bytes(std::initializer_list<int> codes) {
    std::string s;
    for (int c : codes)
        s += static_cast<char>(c);
    return s;
}

const PrinterCase kCases[] = {
    {"TextPrintsAtLf", "Teste\n", Line("Teste")},
    {"CrMovesNothing", "A\r\n\n", Line("A") + Line("")},
    {"TextWaitsForLf", "sem fim", ""},
    {"InitialiseForgetsTextAndPage", "\x1Bt\x02\x9B\x1B@\x9B\n", Line("¢")},
    {"CodeTableWindows1252", "\x1Bt\x10\xE7\xE3o\n", Line("ção")},
    {"CodeTableUnknownIsSkipped",
     "\x1Bt\x01"
     "A\n",
     Unknown("1B 74 01") + Line("A")},
    {"PrintModesAtOnce",
     "\x1B!\x38"
     "AB\x1B!\x00"
     "C\n"s,
     Line("ABC", R"({"start":1,"length":2,"bold":true,"double_width":true,"double_height":true})")},
    {"PrintModeDoubleHeightAlone", "x\x1B!\x10y\n",
     Line("xy",
          R"({"start":2,"length":1,"bold":false,"double_width":false,"double_height":true})")},
    {"EmphasisedOnAndOff",
     "A\x1B"
     "E\x01"
     "BC\x1B"
     "E\x00"
     "D\n"s,
     Line("ABCD",
          R"({"start":2,"length":2,"bold":true,"double_width":false,"double_height":false})")},
    {"FullCut", Bytes({0x1D, 'V', 0}), kCut},
    {"FullCutDigit", "\x1DV0", kCut},
    {"PartialCut", Bytes({0x1D, 'V', 1}), kPartialCut},
    {"PartialCutDigit", "\x1DV1", kPartialCut},
    {"FeedAndFullCut", Bytes({0x1D, 'V', 65, 3}), kCut},
    {"FeedAndPartialCut", Bytes({0x1D, 'V', 66, 0}), kPartialCut},
    {"CutPrintsWhatIsLeft", "Fim\x1DV0", Line("Fim") + kCut},
    {"CutUnknownMode", "\x1DV\x07", Unknown("1D 56 07")},
    {"DrawerEscPin2", Bytes({27, 'p', 0, 25, 250}), Drawer(2, 50, 500)},
    {"DrawerEscPin5", Bytes({27, 'p', 1, 10, 30}), Drawer(5, 20, 60)},
    {"DrawerEscPin2Digit", Bytes({27, 'p', '0', 0, 255}), Drawer(2, 0, 510)},
    {"DrawerEscPin5Digit", Bytes({27, 'p', '1', 1, 1}), Drawer(5, 2, 2)},
    {"DrawerEscOtherPin", Bytes({27, 'p', 2, 25, 250}), Unknown("1B 70 02 19 FA")},
    {"DrawerDlePin2", Bytes({16, 20, 1, 0, 5}), Drawer(2, 500, 500)},
    {"DrawerDlePin5", Bytes({16, 20, 1, 1, 1}), Drawer(5, 100, 100)},
    {"DrawerDleLongest", Bytes({16, 20, 1, 0, 8}), Drawer(2, 800, 800)},
    {"DrawerDleTimeZero", Bytes({16, 20, 1, 0, 0}), Unknown("10 14 01 00 00")},
    {"DrawerDleTimeNine", Bytes({16, 20, 1, 0, 9}), Unknown("10 14 01 00 09")},
    {"DrawerDleOtherPin", Bytes({16, 20, 1, 2, 1}), Unknown("10 14 01 02 01")},
    {"DlePowerOffSkipped", Bytes({16, 20, 2, 1, 8}) + "A\n", Unknown("10 14 02 01 08") + Line("A")},
    {"UnknownEscInText",
     "AB\x1B\x99"
     "CD\n",
     Unknown("1B 99") + Line("ABCD")},
    {"UnknownEscTakesItsParameters",
     "A\x1B"
     "a\x01"
     "B\n",
     Unknown("1B 61 01") + Line("AB")},
    {"UnknownGsTakesItsParameters",
     "A\x1D!\x11"
     "B\n",
     Unknown("1D 21 11") + Line("AB")},
    {"UnknownControlByte", "A\tB\n", Unknown("09") + Line("AB")},
    {"StatusRequestSkipped", Bytes({16, 4, 1}) + "A\n", Unknown("10 04 01") + Line("A")},
    {"LongLineGoesOn", std::string(50, 'x') + "\n", Line(std::string(48, 'x')) + Line("xx")},
    {"DoubleWidthTakesTwoColumns", "\x1B!\x20" + std::string(25, 'w') + "\n",
     Line(std::string(24, 'w'),
          R"({"start":1,"length":24,"bold":false,"double_width":true,"double_height":false})") +
         Line("w",
              R"({"start":1,"length":1,"bold":false,"double_width":true,"double_height":false})")},
};

class PrinterDecoderTest : public ::testing::TestWithParam<PrinterCase> {};

TEST_P(PrinterDecoderTest, DecodesTheSameWholeOrCutAtAnyByte) {
    const PrinterCase& c = GetParam();
    EXPECT_EQ(PrinterRun(c.bytes), c.events);
    for (std::size_t cut = 1; cut < c.bytes.size(); ++cut)
        EXPECT_EQ(PrinterRun(c.bytes, cut), c.events) << "cut after byte " << cut;
}

INSTANTIATE_TEST_SUITE_P(Commands, PrinterDecoderTest, ::testing::ValuesIn(kCases),
                         [](const auto& param) { return std::string(param.param.name); });

struct PageCase {
    const char* name;
    int escT;
    CodePage page;
    std::string bytes;
    std::string utf8;
};

// The accented letters of Portuguese in each page the printer and display know.
const PageCase kPages[] = {
    {"Pc437", 0, CodePage::Pc437, "\x87\x82\xA0\x80\x90\x83\x88\x93", "çéáÇÉâêô"},
    {"Pc850", 2, CodePage::Pc850, "\xC6\xC7\xE4\xE5\xB5\xB6\xB7\xD2\xE0", "ãÃõÕÁÂÀÊÓ"},
    {"Pc860", 3, CodePage::Pc860, "\x84\x8E\x94\x99\x86\x8F\x91\x89\x8C\x9F\x96", "ãÃõÕÁÂÀÊÔÓÚ"},
    {"Windows1252", 16, CodePage::Windows1252, "\xE7\xE3\xF5\xC7\xC3\xC9\x80", "çãõÇÃÉ€"},
};

class CodePageTest : public ::testing::TestWithParam<PageCase> {};

TEST_P(CodePageTest, AccentedLettersPrintAndShowInTheirPage) {
    const PageCase& c = GetParam();
    EXPECT_EQ(PrinterRun("\x1Bt" + std::string(1, static_cast<char>(c.escT)) + c.bytes + "\n"),
              Line(c.utf8));
    DisplayDecoder display(c.page);
    display.feed(c.bytes);
    EXPECT_EQ(display.screen().lines[0].rfind(c.utf8, 0), 0U) << display.screen().lines[0];
}

INSTANTIATE_TEST_SUITE_P(Pages, CodePageTest, ::testing::ValuesIn(kPages),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(CodePageTest, WindowsTextOnAPc437PrinterShowsTheMismatch) {
    // What a technician sees when the test line leaves in Windows-1252 and the printer is in its
    // power-on page.
    EXPECT_EQ(PrinterRun("Teste de liga\xE7\xE3o\r\n"), Line("Teste de ligaτπo"));
}

TEST(CodePageTest, UndefinedWindows1252BytesShowAsReplacement) {
    EXPECT_EQ(CharacterUtf8(0x81, CodePage::Windows1252), "\uFFFD");
    EXPECT_EQ(CharacterUtf8(0xFF, CodePage::Windows1252), "ÿ");
}

}  // namespace
}  // namespace lumbra::sim::test
