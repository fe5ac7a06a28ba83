// The command line: its words, the word at a position or after a switch, and the choice of the
// parameter file between "-FP" and the default name in the program's folder.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/program.h"
#include "tests/options/open_tda_opc.h"

namespace lumbra::test {
namespace {

TEST(CommandLine, SplitsIntoWordsAtBlanksOnly) {
    const struct {
        std::string cmd;
        std::vector<std::string> args;
    } cases[] = {
        {"", {""}},
        {"  X   Y", {"  X   Y", "X", "Y"}},
        {"a\tb \"C:\\Os Meus\"", {"a\tb \"C:\\Os Meus\"", "a\tb", "\"C:\\Os", "Meus\""}},
    };
    for (const auto& c : cases) {
        OpenTdaOpc opc;
        opc.LcPrpArg(c.cmd);
        EXPECT_EQ(opc.args(), c.args) << c.cmd;
        EXPECT_EQ(opc.LcArgC(), static_cast<std::int16_t>(c.args.size() - 1)) << c.cmd;
    }
}

TEST(CommandLine, LcConFindsTheWordAtAPositionOrAfterASwitch) {
    const struct {
        std::string cmd;
        Variant arg, target;
        std::int16_t ok;
        Variant value;
    } cases[] = {
        {"-fp C:\\A.PAR", Variant("-FP"), Variant(""), 1, Variant("C:\\A.PAR")},
        {"-FP", Variant("-FP"), Variant(""), 0, Variant("")},
        {"A B C", Variant(std::int16_t{2}), Variant(""), 1, Variant("B")},
        {"A B C", Variant(std::int16_t{0}), Variant(""), 0, Variant("")},
        {"A B C", Variant(2.5), Variant(""), 1, Variant("B")},
        {"A B C", Variant(3.5), Variant(""), 0, Variant("")},
        {"X -FP Y -FP Z", Variant("-FP"), Variant(""), 1, Variant("Y")},
        {"-FP 12", Variant("-FP"), Variant(1.0), 1, Variant(12.0)},
        {"-X", Variant("-FP"), Variant(5.0), 0, Variant(std::int16_t{0})},
        // Compared without regard to case, but not trimmed.
        {"op\xE7\xE3o 1", Variant("OP\xC7\xC3O"), Variant(""), 1, Variant("1")},
        {"-FP x", Variant(" -FP"), Variant(""), 0, Variant("")},
        {"-FP x", Variant("-fp"), Variant(""), 1, Variant("x")},
    };
    for (const auto& c : cases) {
        OpenTdaOpc opc;
        opc.LcPrpArg(c.cmd);
        Variant vl = c.target;
        std::int16_t ok = -1;
        opc.LcCon(c.arg, vl, ok);
        EXPECT_EQ(ok, c.ok) << c.cmd;
        EXPECT_EQ(vl, c.value) << c.cmd;
    }
}

class ProgramSetting : public ::testing::Test {
  protected:
    ~ProgramSetting() override {
        platform::SetProgramArgs(0, nullptr);
        platform::OverrideProgramFolder("");
    }
    TempDir program_;
    TempDir data_;
};

TEST_F(ProgramSetting, LcIniChoosesTheNamedFileOrTheDefaultInTheProgramFolder) {
    program_.write("Lumbra.par", "");
    data_.write("outro.par", "");
    platform::OverrideProgramFolder(program_.path());
    const std::string named = data_.file("outro.par");
    const std::string missing = data_.file("falta.par");
    const struct {
        std::vector<const char*> words;
        std::string nfp, LcFpa;
    } cases[] = {
        {{}, "Lumbra.par", program_.file("Lumbra.par")},
        {{"-fp", named.c_str()}, "Lumbra.par", named},
        // A named file that is missing is not replaced by the default.
        {{"-FP", missing.c_str()}, "Lumbra.par", ""},
        {{"-FP"}, "Lumbra.par", program_.file("Lumbra.par")},
        {{}, "Falta.par", ""},
        {{}, "", ""},
    };
    for (const auto& c : cases) {
        std::vector<const char*> argv{"lumbra"};
        argv.insert(argv.end(), c.words.begin(), c.words.end());
        platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
        OpenTdaOpc opc;
        opc.setLcFpa("old");
        opc.LcIni(c.nfp);
        EXPECT_EQ(opc.LcFpa(), c.LcFpa) << c.nfp << " after " << c.words.size() << " words";
        EXPECT_EQ(opc.LcArgC(), static_cast<std::int16_t>(c.words.size()));
    }
}

}  // namespace
}  // namespace lumbra::test
