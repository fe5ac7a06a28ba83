// The pieces of lumbractl on their own: the command line split between the engine and the tool,
// the choice of a row, the access check of portas.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"
#include "tools/row_choice.h"
#include "tools/serial_port_list.h"
#include "tools/tool_args.h"

namespace lumbra::ctl {
namespace {

ParsedArgs Parse(std::vector<std::string> words) {
    words.insert(words.begin(), "lumbractl");
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    return ParseToolArgs(static_cast<int>(argv.size()), argv.data());
}

struct EngineArgsCase {
    std::vector<std::string> words;
    std::vector<std::string> engine;  // after the program's name
    std::string command;
};

const EngineArgsCase kEngineArgs[] = {
    {{"-FP", "a.par", "-COM1", "/dev/pts/3", "teste"},
     {"-FP", "a.par", "-COM1", "/dev/pts/3"},
     "teste"},
    {{"teste", "--texto", "-FP", "-fp", "b.par"}, {"-fp", "b.par"}, "teste"},
    {{"teste", "--texto", "-COM1 /dev/null"}, {}, "teste"},
    {{"-com9", "x", "abrir", "--modo", "-COM2"}, {"-com9", "x"}, "abrir"},
};

TEST(LumbractlArgs, OnlyTheEngineSwitchesAndTheirValuesGoToTheEngine) {
    for (const EngineArgsCase& c : kEngineArgs) {
        const ParsedArgs p = Parse(c.words);
        EXPECT_EQ(p.error, "") << c.words.size();
        std::vector<std::string> engine = {"lumbractl"};
        engine.insert(engine.end(), c.engine.begin(), c.engine.end());
        EXPECT_EQ(p.args.engineArgs, engine);
        EXPECT_EQ(p.args.command, c.command);
    }
}

TEST(LumbractlArgs, RefusesWhatNoCommandTakes) {
    for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
             {"-COM0", "x", "teste"},
             {"-COM10", "x", "teste"},
             {"teste", "-FP"},
             {"teste", "--bytes=1"},
             {"teste", "extra"},
             {"portas", "--porta", "1"},
             {"converter", "--bytes", "--dec", "1"},
         }) {
        EXPECT_NE(Parse(words).error, "") << words[0] << " " << words[1];
    }
}

std::vector<LinReg> Rows(const std::vector<std::string>& names) {
    std::vector<LinReg> tab(1);
    for (const std::string& n : names)
        tab.push_back(LinReg{"", n, "SER", "COM1"});
    return tab;
}

struct RowCase {
    std::vector<std::string> names;
    std::string wanted;
    std::int16_t row;
};

const RowCase kRows[] = {
    {{"A", "B"}, "", 1},        // left out: the first row
    {{"A", "B"}, "2", 2},       // by number
    {{"A", "B"}, "02", 2},      // a number with a leading zero
    {{"A", "B"}, "3", 0},       // beyond the last row
    {{"A", "B"}, "0", 0},       // row 0 is nothing selected
    {{"A", "B", "B"}, "B", 2},  // the first row of that name
    {{"A", "b"}, "B", 0},       // names match exactly
    {{"A", "7"}, "7", 2},       // digits beyond the rows are a name
    {{"A", " A"}, " A", 2},     // blanks are part of the name
    {{}, "", 0},                // no rows: nothing to choose
    {{"A"}, "99999999999", 0},  // digits too long for any row
};

TEST(LumbractlRowChoice, ByNumberFromOneOrByExactName) {
    for (const RowCase& c : kRows)
        EXPECT_EQ(ChooseRow(Rows(c.names), c.wanted), c.row) << "\"" << c.wanted << "\"";
    EXPECT_EQ(ChooseRow(std::vector<LinReg>{}, ""), 0);  // a zone never read
}

TEST(LumbractlPortAccess, SaysWhoMayOpenTheDevice) {
    test::PtyPair pty;
    EXPECT_EQ(PortAccess(pty.slavePath()), "pode abrir");
    EXPECT_EQ(PortAccess("/nada/tty").rfind("n\xE3o pode abrir: ", 0), 0u);

    // A device of the group "dialout" (or whichever group the file gets), readable by its group
    // only, seen by an ordinary user.
    test::TempDir dir;
    ::chmod(dir.path().c_str(), 0755);
    dir.write("tty", "");
    const std::string tty = dir.file("tty");
    ::chmod(tty.c_str(), 0660);
    const int groupOnly = test::RunUnprivileged(
        [&] { return PortAccess(tty).rfind("sem permiss\xE3o: junte-se ao grupo \"", 0) == 0; });
    ::chmod(tty.c_str(), 0600);
    const int ownerOnly = test::RunUnprivileged([&] {
        return PortAccess(tty) == "sem permiss\xE3o: s\xF3 o dono do dispositivo o pode abrir";
    });
    if (groupOnly == test::kCannotDropRoot) GTEST_SKIP() << "cannot give up root";
    EXPECT_EQ(groupOnly, 1);
    EXPECT_EQ(ownerOnly, 1);
}

}  // namespace
}  // namespace lumbra::ctl
