#include <gtest/gtest.h>

#include <string>

#include "simulator/line_settings.h"
#include "tests/simulator/decoder_cases.h"

namespace lumbra::sim::test {
namespace {

using namespace std::string_literals;

struct DisplayCase {
    const char* name;
    std::string bytes;
    std::string events;  // JSON lines: skipped commands, then the screen
};

// A row padded with blanks to its twenty cells.
std::string Row(const std::string& text, char fill = ' ') {
    return text + std::string(20 - text.size(), fill);
}

std::string Screen(const std::string& row1, const std::string& row2, int row, int column,
                   bool visible = true) {
    return R"({"device":"display","event":"screen","lines":[")" + row1 + "\",\"" + row2 +
           "\"],\"cursor\":[" + std::to_string(row) + "," + std::to_string(column) + "]" +
           (visible ? "" : ",\"cursor_visible\":false") + "}\n";
}

std::string Unknown(const std::string& hex) {
    return R"({"device":"display","event":"unknown","bytes":")" + hex + "\"}\n";
}

const std::string kBlank = Row("");
const std::string kA = std::string(20, 'a');
const std::string kB = std::string(20, 'b');

const DisplayCase kCases[] = {
    {"TextAtTheCursor", "Ola", Screen(Row("Ola"), kBlank, 1, 4)},
    {"SampleGreeting",
     "\x0C"
     "Bem-vindo!\r\nObrigado pela visita",
     Screen("Bem-vindo!          ", "Obrigado pela visita", 2, 20)},
    {"Row1WrapsToRow2", kA + "X", Screen(kA, Row("X"), 2, 2)},
    {"OverwriteWrapsFromRow2ToRow1", kA + kB + "X", Screen("X" + kA.substr(1), kB, 1, 2)},
    {"VerticalScrollMovesRow2Up", "\x1B\x12" + kA + kB + "X", Screen(kB, Row("X"), 2, 2)},
    {"OverwriteLfOnRow2GoesToRow1", "A\n\nB", Screen(Row("AB"), kBlank, 1, 3)},
    {"VerticalScrollLfOnRow2Scrolls",
     "\x1B\x12"
     "A\n\nB",
     Screen(kBlank, Row(" B"), 2, 3)},
    {"OverwriteUpOnRow1GoesToRow2", "\x1B[AX", Screen(kBlank, Row("X"), 2, 2)},
    {"VerticalScrollUpOnRow1Scrolls",
     "\x1B\x12"
     "A\x1F\n",
     Screen(kBlank, Row("A"), 1, 2)},
    {"ClearHomes",
     "AB\x0C"
     "C",
     Screen(Row("C"), kBlank, 1, 2)},
    {"CanClearsTheCursorRow", "ABC\r\nDEF\x18G", Screen(Row("ABC"), Row("G"), 2, 2)},
    {"HomeOverwrites", "ABC\x0BX", Screen(Row("XBC"), kBlank, 1, 2)},
    {"CrReturnsToRowStart", "ABC\rX", Screen(Row("XBC"), kBlank, 1, 2)},
    {"BackspaceStepsLeft", "ABC\x08X", Screen(Row("ABX"), kBlank, 1, 4)},
    {"BackspaceFromRow2GoesToRow1End", "\x1B[K\x08X",
     Screen(Row("").substr(1) + "X", kBlank, 1, 20)},
    {"TabStepsRight", "A\tB", Screen(Row("A B"), kBlank, 1, 4)},
    {"UsLfUpAndUsCrRightmost", "\x1B[K\x1F\n\x1F\rZ",
     Screen(kBlank.substr(1) + "Z", kBlank, 1, 20)},
    {"EscArrows", "\x1B[B\x1B[C\x1B[C\x1B[A\x1B[DX", Screen(Row(" X"), kBlank, 1, 3)},
    {"EscHomeRightmostLeftmost", "ABC\x1B[HX\x1B[RY\x1B[LZ",
     Screen("ZBC" + std::string(16, ' ') + "Y", kBlank, 1, 2)},
    {"EscBottom", "\x1B[KX", Screen(kBlank, Row("X"), 2, 2)},
    {"EscLMovesTheCursor", "\x1Bl\x05\x02X", Screen(kBlank, Row("    X"), 2, 6)},
    {"EscLOutsideTheScreen", "\x1Bl\x15\x01X",
     Unknown("1B 6C 15 01") + Screen(Row("X"), kBlank, 1, 2)},
    {"EscQWritesWholeRows", "\x1BQAPrimeira\r\x1BQBSegunda\r",
     Screen(Row("Primeira"), Row("Segunda"), 1, 1)},
    {"EscQKeepsTwentyCells", "\x1BQB" + std::string(25, 'x') + "\r",
     Screen(kBlank, std::string(20, 'x'), 1, 1)},
    {"EscQOtherRow", "\x1BQC", Unknown("1B 51 43") + Screen(kBlank, kBlank, 1, 1)},
    {"CursorHidden", "\x1B_\x00"s, Screen(kBlank, kBlank, 1, 1, false)},
    {"CursorShownAgain", "\x1B_\x00\x1B_\x01"s, Screen(kBlank, kBlank, 1, 1)},
    {"CursorBadValue", "\x1B_\x02", Unknown("1B 5F 02") + Screen(kBlank, kBlank, 1, 1)},
    {"InitialiseReturnsToOverwrite",
     "\x1B\x12"
     "A\x1B@" +
         kA + kB + "X",
     Screen("X" + kA.substr(1), kB, 1, 2)},
    {"OverwriteModeAgain", "\x1B\x12\x1B\x11" + kA + kB + "X",
     Screen("X" + kA.substr(1), kB, 1, 2)},
    {"UnknownEscInText",
     "A\x1B\x13"
     "B",
     Unknown("1B 13") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownEscBracket", "A\x1B[ZB", Unknown("1B 5B 5A") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownUs", "A\x1F@B", Unknown("1F 40") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownControlByte",
     "A\x01"
     "B",
     Unknown("01") + Screen(Row("AB"), kBlank, 1, 3)},
    {"Windows1252Text", "Sauda\xE7\xE3o", Screen("Saudação" + std::string(12, ' '), kBlank, 1, 9)},
};

class DisplayDecoderTest : public ::testing::TestWithParam<DisplayCase> {};

TEST_P(DisplayDecoderTest, DecodesTheSameWholeOrCutAtAnyByte) {
    const DisplayCase& c = GetParam();
    EXPECT_EQ(DisplayRun(c.bytes), c.events);
    for (std::size_t cut = 1; cut < c.bytes.size(); ++cut)
        EXPECT_EQ(DisplayRun(c.bytes, cut), c.events) << "cut after byte " << cut;
}

INSTANTIATE_TEST_SUITE_P(Commands, DisplayDecoderTest, ::testing::ValuesIn(kCases),
                         [](const auto& param) { return std::string(param.param.name); });

TEST(SettingsWatchTest, ReportsEachChangeToOtherSettingsOnce) {
    struct Step {
        std::int64_t baud;
        int stopBits;
        const char* reported;  // "" when nothing is
    };
    const Step steps[] = {
        {9600, 1, ""}, {19200, 1, "19200,n,8,1"}, {19200, 1, ""}, {19200, 2, "19200,n,8,2"},
        {9600, 1, ""}, {19200, 2, "19200,n,8,2"},
    };
    SettingsWatch watch(Device::Display, LineSettings{});
    for (const Step& s : steps) {
        const auto event = watch.observe(LineSettings{s.baud, 'n', 8, s.stopBits});
        EXPECT_EQ(
            event ? EventJson(*event) : "",
            *s.reported == 0
                ? ""
                : R"({"device":"display","event":"settings","expected":"9600,n,8,1","actual":")" +
                      std::string(s.reported) + "\"}");
    }
}

}  // namespace
}  // namespace lumbra::sim::test
