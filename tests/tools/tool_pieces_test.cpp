// The pieces of lumbractl on their own, the same on every host: the command line split between
// the engine and the tool, the choice of a row, the text of arguments, what is said about the
// parameter file's contents.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "tests/support/temp_dir.h"
#include "tools/parameter_file_check.h"
#include "tools/row_choice.h"
#include "tools/tool_args.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {
namespace {

ParsedArgs Parse(std::vector<std::string> words) {
    words.insert(words.begin(), "lumbractl");
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    return ParseToolArgs(static_cast<int>(argv.size()), argv.data());
}

// Only "-FP" and "-COM1".."-COM9" with their values go to the engine; paths it would split at
// blanks, and whatever no command takes, are refused.
TEST(LumbractlArgs, SplitsTheEngineSwitchesFromTheToolsAndRefusesWhatNoCommandTakes) {
    const struct {
        std::vector<std::string> words;
        std::string error;
        std::vector<std::string> engine;
    } cases[] = {
        {{"-FP", "a.par", "-COM1", "/dev/pts/3", "teste"},
         "",
         {"lumbractl", "-FP", "a.par", "-COM1", "/dev/pts/3"}},
        {{"teste", "--texto", "-FP", "-fp", "b.par"}, "", {"lumbractl", "-fp", "b.par"}},
        {{"-com9", "x", "abrir", "--modo", "-COM2"}, "", {"lumbractl", "-com9", "x"}},
        {{"-FP", "com espa\xC3\xA7o.par", "listar"},
         "o caminho de -FP \"com espa\xE7o.par\" tem espa\xE7os: a linha de comandos do motor "
         "parte-o nos espa\xE7os e leria outro ficheiro",
         {}},
        {{"-com2", "/dev/a b", "teste"},
         "o caminho de -com2 \"/dev/a b\" tem espa\xE7os: a linha de comandos do motor parte-o "
         "nos espa\xE7os e abriria outro dispositivo",
         {}},
    };
    for (const auto& c : cases) {
        const ParsedArgs p = Parse(c.words);
        EXPECT_EQ(p.error, c.error) << c.words[0];
        EXPECT_EQ(p.args.engineArgs, c.error.empty() ? c.engine : p.args.engineArgs);
    }
    for (const auto& words :
         std::vector<std::vector<std::string>>{{"-COM0", "x", "teste"},
                                               {"-COM10", "x", "teste"},
                                               {"teste", "-FP"},
                                               {"teste", "--bytes=1"},
                                               {"teste", "extra"},
                                               {"converter", "--bytes", "--dec", "1"},
                                               {"converter"},
                                               {"converter", "--dec", "1", "--hex", "1"},
                                               {"listar", "--json"},
                                               {"simular", "--porta", "1"},
                                               {"ciclo", "--texto", "x"}})
        EXPECT_NE(Parse(words).error, "") << words[0] << " " << words.back();
}

std::vector<LinReg> Rows(const std::vector<std::string>& names) {
    std::vector<LinReg> tab(1);
    for (const std::string& n : names)
        tab.push_back(LinReg{"", n, "SER", "COM1"});
    return tab;
}

TEST(LumbractlRowChoice, ByNumberFromOneOrByExactName) {
    const struct {
        std::vector<std::string> names;
        std::string wanted;
        std::int16_t row;
    } cases[] = {
        {{"A", "B"}, "", 1},                 // left out: the first row
        {{"A", "B"}, "2", 2},                // by number
        {{"A", "B"}, "3", 0},                // beyond the last row
        {{"A", "B", "B"}, "B", 2},           // the first row of that name
        {{"A", "7"}, "7", 2},                // digits beyond the rows are a name
        {{}, "", 0},                         // no rows: nothing to choose
        {{"A"}, "99999999999999999999", 0},  // digits too long for any row
    };
    for (const auto& c : cases)
        EXPECT_EQ(ChooseRow(Rows(c.names), c.wanted), c.row) << "\"" << c.wanted << "\"";
}

// An argument reaches the devices in Windows-1252 or not at all; what cannot is named by code
// point, and bytes that are not UTF-8 stand for U+FFFD.
TEST(LumbractlArgumentText, EncodesWindows1252OrNamesWhatItCannot) {
    const struct {
        std::string utf8;
        bool whole;
        std::string bytes, unencodable;
    } cases[] = {
        {"Ol\xC3\xA1 \xE2\x82\xAC\xC5\xB8\xC2\x81", true, "Ol\xE1 \x80\x9F\x81", ""},
        {"a\xE2\x86\x92\xF0\x9F\x98\x80", false, "", "U+2192 U+1F600"},
        {"\xE9", false, "", "U+FFFD"},                        // Windows-1252 itself is no UTF-8
        {"\xC0\xAF", false, "", "U+FFFD U+FFFD"},             // an overlong "/"
        {"\xED\xA0\x80", false, "", "U+FFFD U+FFFD U+FFFD"},  // half of a surrogate pair
        {"\xED\xBF\xBF", false, "", "U+FFFD U+FFFD U+FFFD"},  // the last half
        {"\xE2\x82", false, "", "U+FFFD U+FFFD"},             // cut short
        {"\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF", false, "", "U+D7FF U+E000 U+10FFFF"},
        {"\xF4\x90\x80\x80", false, "", "U+FFFD U+FFFD U+FFFD U+FFFD"},  // beyond U+10FFFF
    };
    for (const auto& c : cases) {
        std::string bytes;
        EXPECT_EQ(ArgumentToCp1252(c.utf8, bytes), c.whole) << c.utf8;
        if (c.whole) {
            EXPECT_EQ(bytes, c.bytes);
        }
        EXPECT_EQ(UnencodableCharacters(c.utf8), c.unencodable) << c.utf8;
    }
}

TEST(LumbractlParameterFile, CountsOverlongLinesAndTellsUtf8FromWindows1252) {
    const std::string bound(32767, 'a');
    const struct {
        std::string bytes;
        std::int64_t longLines;
        bool utf8;
    } cases[] = {
        {"Sauda\xE7\xE3o\r\n" + bound + "\r\n" + bound + "b\n" + bound + "bb", 2, false},
        // Two-, three- and four-byte sequences, each followed by more text.
        {"Sauda\xC3\xA7\xC3\xA3o \xE2\x82\xAC \xF0\x9F\x98\x80 fim\r\n", 0, true},
        {"\x80 e \xF5\x80\x80\x80", 0, false},  // bytes that start no sequence
        {"s\xC3\xB3 at\xE9", 0, false},         // one sequence whole, one broken: not UTF-8
        {"ASCII [A]=1\r\n", 0, false},
        {"\xC3", 0, false},  // a sequence cut by the end of the file
        {"\xC3\xA9\xC3", 0, false},
        {"\xDF\xBF \xF4\x8F\xBF\xBF \xC2\x80", 0, true},  // the last lead bytes of each length
    };
    test::TempDir dir;
    for (const auto& c : cases) {
        dir.write("p.par", c.bytes);
        const ParameterFileScan scan = ScanParameterFile(dir.file("p.par"));
        EXPECT_EQ(scan.longLines, c.longLines) << c.bytes.substr(0, 20);
        EXPECT_EQ(scan.utf8, c.utf8) << c.bytes.substr(0, 20);
    }
}

// The last row is a device: never read, so not scanned either.
TEST(LumbractlParameterFile, SaysWhyAFileCannotBeRead) {
    const test::TempDir dir;
    dir.write("ok.par", "x");
    const std::string device = "\xE9 um dispositivo, n\xE3o um ficheiro";
    const std::pair<std::string, std::string> cases[] = {
        {dir.file("ok.par"), ""},
        {dir.file("falta.par"), "n\xE3o existe"},
        {dir.path(), "\xE9 uma pasta"},
#ifdef _WIN32
        {dir.file("falta\\x.par"), "n\xE3o existe"},
        {"\\\\.\\COM9", device},
        {"NUL", device},
#else
        {"/dev/zero", device},
#endif
    };
    for (const auto& [path, reason] : cases)
        EXPECT_EQ(UnreadableReason(path), reason) << path;
    EXPECT_FALSE(ScanParameterFile(std::prev(std::end(cases))->first).utf8);
}

// Which commands read the parameter file and which send to a device (and so take --bytes).
TEST(LumbractlCommands, SayWhichReadTheParameterFileAndWhichSend) {
    const struct {
        const char* command;
        bool configured, sends;
    } cases[] = {{"listar", true, false},     {"teste", true, true},    {"abrir", true, true},
                 {"ciclo", true, true},       {"executar", true, true}, {"mostrar", true, true},
                 {"converter", false, false}, {"portas", false, false}, {"simular", false, false},
                 {"outro", false, false}};
    std::vector<std::string> commands;
    for (const auto& c : cases) {
        EXPECT_EQ(NeedsConfiguration(c.command), c.configured) << c.command;
        EXPECT_EQ(SendsToDevice(c.command), c.sends) << c.command;
        commands.push_back(c.command);
    }
    commands.pop_back();
    EXPECT_EQ(ToolCommands(), commands);  // in the order the help lists them
}

}  // namespace
}  // namespace lumbra::ctl
