// The decoders of the virtual devices: each case's bytes are fed whole and cut in two at every
// byte, and what the device reports is compared as the JSON lines scripts read.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include "simulator/device_options.h"
#include "simulator/display_decoder.h"
#include "simulator/event_views.h"
#include "simulator/line_settings.h"
#include "simulator/printer_decoder.h"
#include "simulator/pty/virtual_device.h"

namespace lumbra::sim::test {
namespace {

using namespace std::string_literals;

// The JSON lines of the events, each ending in "\n".
template <typename Events>
std::string Lines(const Events& events) {
    std::string out;
    for (const DeviceEvent& e : events)
        out += EventJson(e) + "\n";
    return out;
}

constexpr std::size_t kByteByByte = std::string_view::npos;

// bytes whole (cut 0), in two pieces cut after byte cut, or one byte at a time.
std::vector<std::string_view> Pieces(std::string_view bytes, std::size_t cut) {
    if (cut == 0) return {bytes};
    if (cut != kByteByByte) return {bytes.substr(0, cut), bytes.substr(cut)};
    std::vector<std::string_view> pieces;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        pieces.push_back(bytes.substr(i, 1));
    return pieces;
}

// What a fresh decoder reports for bytes fed in pieces, then ended as a burst ends; a display
// then shows its screen.
template <typename Decoder>
std::string Run(Decoder& decoder, std::string_view bytes, std::size_t cut) {
    std::string out;
    for (std::string_view piece : Pieces(bytes, cut))
        out += Lines(decoder.feed(piece));
    return out + Lines(decoder.finish());
}

std::string PrinterRun(std::string_view bytes, std::size_t cut = 0) {
    PrinterDecoder printer;
    return Run(printer, bytes, cut);
}

std::string DisplayRun(std::string_view bytes, std::size_t cut = 0,
                       CodePage charset = CodePage::Windows1252) {
    DisplayDecoder display(charset);
    const std::string events = Run(display, bytes, cut);
    return events + EventJson(display.screen()) + "\n";
}

struct DecoderCase {
    const char* name;
    std::string bytes;
    std::string events;  // JSON lines; a display's end with its screen
};

// The case decoded whole, byte by byte and cut in two at every byte.
void ExpectSameAtEveryCut(const DecoderCase& c, std::string (*run)(std::string_view, std::size_t)) {
    EXPECT_EQ(run(c.bytes, 0), c.events);
    EXPECT_EQ(run(c.bytes, kByteByByte), c.events) << "byte by byte";
    for (std::size_t cut = 1; cut < c.bytes.size(); ++cut)
        EXPECT_EQ(run(c.bytes, cut), c.events) << "cut after byte " << cut;
}

std::string Line(const std::string& text, const std::string& spans = "") {
    return R"({"device":"printer","event":"line","text":")" + text + "\"" +
           (spans.empty() ? "" : ",\"spans\":[" + spans + "]") + "}\n";
}

std::string Drawer(int pin, int on, int off) {
    return R"({"device":"printer","event":"drawer","pin":)" + std::to_string(pin) +
           ",\"on_ms\":" + std::to_string(on) + ",\"off_ms\":" + std::to_string(off) + "}\n";
}

std::string PUnknown(const std::string& hex, std::size_t more = 0) {
    return R"({"device":"printer","event":"unknown","bytes":")" + hex + "\"" +
           (more > 0 ? ",\"more_bytes\":" + std::to_string(more) : "") + "}\n";
}

// "00 00 ... 00", n times.
std::string Zeros(std::size_t n) {
    std::string hex = "00";
    while (--n > 0)
        hex += " 00";
    return hex;
}

const std::string kCut = "{\"device\":\"printer\",\"event\":\"cut\"}\n";
const std::string kPartialCut = "{\"device\":\"printer\",\"event\":\"cut\",\"partial\":true}\n";

const DecoderCase kPrinterCases[] = {
    {"TextPrintsAtLf", "Teste\n", Line("Teste")},
    {"CrMovesNothing", "A\r\n\n", Line("A") + Line("")},
    {"TextWaitsForLf", "sem fim", ""},
    {"InitialiseForgetsTextAndPage", "\x1Bt\x02\x9B\x1B@\x9B\n", Line("¢")},
    {"PrintModesAtOnce", "\033!\070AB\033!\000C\n"s,
     Line("ABC", R"({"start":1,"length":2,"bold":true,"double_width":true,"double_height":true})")},
    {"EmphasisedOnAndOff", "A\033E\001BC\033E\000D\n"s,
     Line("ABCD",
          R"({"start":2,"length":2,"bold":true,"double_width":false,"double_height":false})")},
    {"FullCut", "\x1DV\0"s, kCut},
    {"FullCutDigit", "\x1DV0", kCut},
    {"PartialCut", "\x1DV\x01", kPartialCut},
    {"PartialCutDigit", "\x1DV1", kPartialCut},
    {"FeedAndFullCut", "\x1DVA\x03", kCut},
    {"FeedAndPartialCut", "\x1DVB\0"s, kPartialCut},
    {"CutPrintsWhatIsLeft", "Fim\x1DV0", Line("Fim") + kCut},
    {"CutUnknownMode", "\x1DV\x07", PUnknown("1D 56 07")},
    {"DrawerEscPin2", "\x1Bp\0\x19\xFA"s, Drawer(2, 50, 500)},
    {"DrawerEscPin5", "\x1Bp\x01\x0A\x1E", Drawer(5, 20, 60)},
    {"DrawerEscPin2Digit", "\x1Bp0\0\xFF"s, Drawer(2, 0, 510)},
    {"DrawerEscPin5Digit", "\x1Bp1\x01\x01", Drawer(5, 2, 2)},
    {"DrawerEscOtherPin", "\x1Bp\x02\x19\xFA", PUnknown("1B 70 02 19 FA")},
    {"DrawerDlePin5", "\x10\x14\x01\x01\x01", Drawer(5, 100, 100)},
    {"DrawerDleLongest", "\x10\x14\x01\0\x08"s, Drawer(2, 800, 800)},
    {"DrawerDleTimeZero", "\x10\x14\x01\0\0"s, PUnknown("10 14 01 00 00")},
    {"DrawerDleTimeNine", "\x10\x14\x01\0\x09"s, PUnknown("10 14 01 00 09")},
    {"DrawerDleOtherPin", "\x10\x14\x01\x02\x01", PUnknown("10 14 01 02 01")},
    {"UnknownEscInText", "AB\033\231CD\n", PUnknown("1B 99") + Line("ABCD")},
    {"UnknownControlByte", "A\tB\n", PUnknown("09") + Line("AB")},
    // Unknown bytes in a row are one event, which keeps their first 64 and counts the rest.
    {"UnknownBytesInARowAreOneEvent",
     "\x1B\x99\x01\x1D!\x11"
     "A\n",
     PUnknown("1B 99 01 1D 21 11") + Line("A")},
    {"UnknownRunEndsWithTheBurst", "A\n\x01", Line("A") + PUnknown("01")},
    {"LongUnknownRunKeepsItsFirstBytes", std::string(65, '\0') + "A\n",
     PUnknown(Zeros(64), 1) + Line("A")},
    {"LongLineGoesOn", std::string(50, 'x') + "\n", Line(std::string(48, 'x')) + Line("xx")},
    {"DoubleWidthTakesTwoColumns", "\x1B!\x20" + std::string(25, 'w') + "\n",
     Line(std::string(24, 'w'),
          R"({"start":1,"length":24,"bold":false,"double_width":true,"double_height":false})") +
         Line("w",
              R"({"start":1,"length":1,"bold":false,"double_width":true,"double_height":false})")}};

class PrinterDecoderTest : public ::testing::TestWithParam<DecoderCase> {};

// Each command the printer skips takes its own bytes and no more: its parameters here are LFs,
// which would print a line were one left over, and the "A" after them would be taken were one
// too many counted.
TEST(PrinterDecoderTest, SkippedCommandsTakeTheirParametersOnly) {
    const struct {
        std::string prefix, finals;
        std::size_t parameters;
    } kinds[] = {{"\x1B", " -3GJMRUVadr{T", 1}, {"\x1B", "$c", 2},       {"\x1B", "\x99", 0},
                 {"\x1D", "!BHIafhrw", 1},      {"\x1D", "LPW", 2},      {"\x1D", "\x99", 0},
                 {"\x10", "\x04\x05", 1},       {"\x10", "\x99", 0},     {"\x10\x14", "\x02", 2},
                 {"\x10\x14", "\x08", 7},       {"\x10\x14", "\x09", 0}, {"\x1Bt", "\x01", 0}};
    for (const auto& k : kinds)
        for (const char c : k.finals) {
            const std::string command = k.prefix + c + std::string(k.parameters, '\n');
            const std::string events = PUnknown(HexBytes(command)) + Line("A");
            EXPECT_EQ(PrinterRun(command + "A\n"), events) << HexBytes(command);
            EXPECT_EQ(PrinterRun(command + "A\n", kByteByByte), events) << HexBytes(command);
        }
}

TEST_P(PrinterDecoderTest, DecodesTheSameWholeOrCutAtAnyByte) {
    ExpectSameAtEveryCut(GetParam(), PrinterRun);
}

INSTANTIATE_TEST_SUITE_P(Commands, PrinterDecoderTest, ::testing::ValuesIn(kPrinterCases),
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
    {"Windows1252", 16, CodePage::Windows1252, "\xE7\xE3\xF5\xC7\xC3\xC9\x80", "çãõÇÃÉ€"}};

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

TEST(CodePageTest, UndefinedWindows1252BytesShowAsReplacement) {
    EXPECT_EQ(CharacterUtf8(0x81, CodePage::Windows1252), "\uFFFD");
    EXPECT_EQ(CharacterUtf8(0xFF, CodePage::Windows1252), "ÿ");
}

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

std::string Unknown(const std::string& hex, std::size_t more = 0) {
    return R"({"device":"display","event":"unknown","bytes":")" + hex + "\"" +
           (more > 0 ? ",\"more_bytes\":" + std::to_string(more) : "") + "}\n";
}

const std::string kBlank = Row("");
const std::string kA = std::string(20, 'a');
const std::string kB = std::string(20, 'b');

const DecoderCase kDisplayCases[] = {
    {"TextAtTheCursor", "Ola", Screen(Row("Ola"), kBlank, 1, 4)},
    {"Row1WrapsToRow2", kA + "X", Screen(kA, Row("X"), 2, 2)},
    {"OverwriteWrapsFromRow2ToRow1", kA + kB + "X", Screen("X" + kA.substr(1), kB, 1, 2)},
    {"VerticalScrollMovesRow2Up", "\x1B\x12" + kA + kB + "X", Screen(kB, Row("X"), 2, 2)},
    {"OverwriteLfOnRow2GoesToRow1", "A\n\nB", Screen(Row("AB"), kBlank, 1, 3)},
    {"VerticalScrollLfOnRow2Scrolls", "\033\022A\n\nB", Screen(kBlank, Row(" B"), 2, 3)},
    {"OverwriteUpOnRow1GoesToRow2", "\x1B[AX", Screen(kBlank, Row("X"), 2, 2)},
    {"VerticalScrollUpOnRow1Scrolls", "\033\022A\037\n", Screen(kBlank, Row("A"), 1, 2)},
    {"ClearHomes", "AB\014C", Screen(Row("C"), kBlank, 1, 2)},
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
    // A line command whose CR was lost is given up once it is as long as the longest one can be.
    {"EscQWaitsForItsCr", "\033QB" + std::string(39, 'x'), Screen(kBlank, kBlank, 1, 1)},
    {"EscQWithoutCrGivenUp", "\033QB" + std::string(40, 'x'),
     Unknown("1B 51 42") + Screen(std::string(20, 'x'), std::string(20, 'x'), 2, 20)},
    // ... and so is one whose CR comes too late, whole or cut.
    {"EscQWithLateCrGivenUp", "\033QA" + std::string(50, 'x') + "\r",
     Unknown("1B 51 41") + Screen(std::string(20, 'x'), std::string(20, 'x'), 1, 1)},
    {"EscQOtherRow", "\x1BQC", Unknown("1B 51 43") + Screen(kBlank, kBlank, 1, 1)},
    {"CursorHidden", "\x1B_\x00"s, Screen(kBlank, kBlank, 1, 1, false)},
    {"CursorShownAgain", "\x1B_\x00\x1B_\x01"s, Screen(kBlank, kBlank, 1, 1)},
    {"CursorBadValue", "\x1B_\x02", Unknown("1B 5F 02") + Screen(kBlank, kBlank, 1, 1)},
    {"InitialiseReturnsToOverwrite", "\033\022A\033@" + kA + kB + "X",
     Screen("X" + kA.substr(1), kB, 1, 2)},
    {"OverwriteModeAgain", "\x1B\x12\x1B\x11" + kA + kB + "X",
     Screen("X" + kA.substr(1), kB, 1, 2)},
    {"UnknownEscInText", "A\033\023B", Unknown("1B 13") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownEscBracket", "A\x1B[ZB", Unknown("1B 5B 5A") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownUs", "A\x1F@B", Unknown("1F 40") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownControlByte", "A\001B", Unknown("01") + Screen(Row("AB"), kBlank, 1, 3)},
    {"UnknownRunsApart", "\001\002B\003",
     Unknown("01 02") + Unknown("03") + Screen(Row("B"), kBlank, 1, 2)},
    {"NulFloodIsOneEvent", std::string(100, '\0'),
     Unknown(Zeros(64), 36) + Screen(kBlank, kBlank, 1, 1)},
};

class DisplayDecoderTest : public ::testing::TestWithParam<DecoderCase> {};

TEST_P(DisplayDecoderTest, DecodesTheSameWholeOrCutAtAnyByte) {
    ExpectSameAtEveryCut(GetParam(),
                         [](std::string_view b, std::size_t cut) { return DisplayRun(b, cut); });
}

INSTANTIATE_TEST_SUITE_P(Commands, DisplayDecoderTest, ::testing::ValuesIn(kDisplayCases),
                         [](const auto& param) { return std::string(param.param.name); });

// What the options come to ("printer display baud page"), or why they cannot be used.
TEST(DeviceOptionsTest, ReadsPortsSpeedAndCharacterSetWithinTheirBounds) {
    const std::string ports = "--impressora e --display levam uma porta de 1 a 9";
    const std::string speed = "--velocidade leva uma velocidade de 50 a 4000000: ";
    const std::pair<std::map<std::string, std::string>, std::string> cases[] = {
        {{}, "1 2 9600 Windows-1252"},
        {{{"--impressora", "9"}, {"--display", "1"}, {"--velocidade", "50"}},
         "9 1 50 Windows-1252"},
        {{{"--velocidade", "4000000"}, {"--pagina-display", "437"}}, "1 2 4000000 PC437"},
        {{{"--pagina-display", "850"}}, "1 2 9600 PC850"},
        {{{"--pagina-display", "860"}}, "1 2 9600 PC860"},
        {{{"--impressora", "0"}}, ports},
        {{{"--display", "10"}}, ports},
        {{{"--display", "1"}}, "a impressora e o display precisam de portas diferentes"},
        {{{"--velocidade", "49"}}, speed + "49"},
        {{{"--velocidade", "4000001"}}, speed + "4000001"},
        {{{"--velocidade", "12345678"}}, speed + "12345678"},
        {{{"--velocidade", "96x"}}, speed + "96x"},
        {{{"--pagina-display", "1251"}}, "--pagina-display leva 1252, 437, 850 ou 860"},
    };
    for (const auto& [values, result] : cases) {
        DeviceOptions o;
        std::string error;
        const bool read = ReadDeviceOptions(values, o, error);
        EXPECT_EQ(read, error.empty());
        EXPECT_EQ(read ? std::to_string(o.printerPort) + " " + std::to_string(o.displayPort) + " " +
                             std::to_string(o.expected.baud) + " " + CodePageName(o.displayCharset)
                       : error,
                  result);
    }
}

// Writes bytes to a device's port as a sender would, at speed when it is not 0, and waits for
// them to reach the device.
void Send(const VirtualDevice& device, const std::string& bytes, speed_t speed = 0) {
    const int fd = ::open(device.port().path().c_str(), O_WRONLY | O_NOCTTY);
    termios tio{};
    if (speed != 0 && ::tcgetattr(fd, &tio) == 0 && ::cfsetspeed(&tio, speed) == 0)
        ::tcsetattr(fd, TCSANOW, &tio);
    ASSERT_EQ(::write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(fd);
    pollfd p{device.port().masterFd(), POLLIN, 0};
    ASSERT_EQ(::poll(&p, 1, 5000), 1);
}

// A burst's events come as its bytes are read; its end brings the unknown bytes it ended with and
// the display's screen, once.
TEST(VirtualDeviceTest, ReportsEachBurstAsItComesAndItsEndOnce) {
    VirtualDevice display(Device::Display, LineSettings{});
    EXPECT_EQ(Lines(display.pump()) + Lines(display.endBurst()), "");
    Send(display, "Ola\x01");
    EXPECT_EQ(Lines(display.pump()), "");
    EXPECT_EQ(Lines(display.endBurst()), Unknown("01") + Screen(Row("Ola"), kBlank, 1, 4));
    EXPECT_EQ(Lines(display.endBurst()), "");
    Send(display, "!", B19200);
    EXPECT_EQ(
        Lines(display.pump()),
        R"({"device":"display","event":"settings","expected":"9600,n,8,1","actual":"19200,n,8,1"})"
        "\n");

    VirtualDevice printer(Device::Printer, LineSettings{19200, 'n', 8, 2});
    Send(printer, "Ola\n\x01");
    EXPECT_EQ(Lines(printer.pump()), Line("Ola"));
    EXPECT_EQ(Lines(printer.endBurst()), PUnknown("01"));
}

// How lumbractl simular without --json and the window's messages word each kind of event.
TEST(EventTextTest, WordsEachKindOfEvent) {
    PrinterDecoder printer;
    std::vector<DeviceEvent> events = printer.feed(
        "\x1B!\x08"
        "AB\x1B!\x38"
        "C\x1B!\x00"
        "D\n\x1DV1\x1DV0\x1Bp\x01\x0A\x14\x01"s);
    for (DeviceEvent& e : printer.finish())
        events.push_back(std::move(e));
    events.push_back(*SettingsWatch(Device::Display, {}).observe({19200, 'n', 8, 1}));
    DisplayDecoder display(CodePage::Windows1252);
    display.feed("X\x1B_\x00"s);
    events.push_back(display.screen());
    std::string text, bar;
    for (const DeviceEvent& e : events)
        text += EventText(e) + "\n";
    for (int i = 0; i < 20; ++i)
        bar += "─";
    EXPECT_EQ(text,
              "impressora: │ABCD  (negrito 1-2, negrito e largura dupla e altura dupla 3-3)\n"
              "impressora: ✂ corte parcial do papel\nimpressora: ✂ corte do papel\n"
              "gaveta: impulso no pino 5, 20 ms ligado, 40 ms desligado\n"
              "impressora: comando desconhecido: 01\n"
              "display: o dispositivo espera 9600,n,8,1; a porta foi aberta a 19200,n,8,1\n"
              "display: cursor na linha 1, coluna 2 (escondido)\n  ┌" +
                  bar + "┐\n  │X" + std::string(19, ' ') + "│\n  │" + std::string(20, ' ') +
                  "│\n  └" + bar + "┘\n");
}

TEST(SettingsWatchTest, ReportsEachChangeToOtherSettingsOnce) {
    struct Step {
        std::int64_t baud;
        int stopBits;
        const char* reported;  // "" when nothing is
    };
    const Step steps[] = {{9600, 1, ""},  {19200, 1, "19200,n,8,1"},
                          {19200, 1, ""}, {19200, 2, "19200,n,8,2"},
                          {9600, 1, ""},  {19200, 2, "19200,n,8,2"}};
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
