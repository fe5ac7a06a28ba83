// The commands of lumbractl that need no parameter file: converter, portas, --help, --version.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

struct ConversionCase {
    std::vector<std::string> args;
    std::string shown;
};

void PrintTo(const ConversionCase& c, std::ostream* os) {
    for (const std::string& a : c.args)
        *os << a << " ";
}

const ConversionCase kConversions[] = {
    {{"--dec", "255"}, "FF"}, {{"--hex=8000"}, "-32768"}, {{"--dec", "2147483648"}, "Erro"}};

class LumbractlConverter : public ::testing::TestWithParam<ConversionCase> {};

TEST_P(LumbractlConverter, PrintsWhatTheWindowsOtherBoxWouldShow) {
    std::vector<std::string> args = {"converter"};
    args.insert(args.end(), GetParam().args.begin(), GetParam().args.end());
    const ToolRun run = RunTool(args);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, GetParam().shown + "\n");
    EXPECT_EQ(run.err, "");
}

INSTANTIATE_TEST_SUITE_P(Values, LumbractlConverter, ::testing::ValuesIn(kConversions));

TEST(Lumbractl, ConverterTakesExactlyOneOfDecAndHex) {
    EXPECT_EQ(RunTool({"converter"}).status, 2);
    EXPECT_EQ(RunTool({"converter", "--dec", "1", "--hex", "1"}).status, 2);
}

TEST(Lumbractl, HelpOfTheToolAndOfEachCommandInPortuguese) {
    const ToolRun tool = RunTool({"--help"});
    EXPECT_EQ(tool.status, 0);
    EXPECT_EQ(tool.out.rfind("Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO", 0),
              0u);
    for (const char* command :
         {"listar", "teste", "abrir", "ciclo", "executar", "mostrar", "converter", "portas"}) {
        const ToolRun run = RunTool({command, "--help"});
        EXPECT_EQ(run.status, 0) << command;
        EXPECT_NE(run.out.find(std::string(" ") + command), std::string::npos) << command;
        EXPECT_NE(run.out, tool.out) << command;
    }
}

TEST(Lumbractl, PortasListsTheMachinesSerialPortsOrSaysThereAreNone) {
    const ToolRun run = RunTool({"portas"});
    EXPECT_EQ(run.status, 0) << run.err;
    ASSERT_FALSE(run.out.empty());
    const bool none = run.out == "Nenhuma porta s\xC3\xA9rie encontrada nesta m\xC3\xA1quina.\n";
    EXPECT_TRUE(none ||
                (run.out.rfind("/dev/", 0) == 0 && run.out.find("  acesso: ") != std::string::npos))
        << run.out;
}

}  // namespace
}  // namespace lumbra::test
