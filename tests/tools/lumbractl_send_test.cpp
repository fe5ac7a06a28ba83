// The device commands of the real lumbractl: the bytes that reach each port, the --bytes report,
// and the exit status of every kind of failure.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/tool_fixture.h"
#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

std::string Hex(const std::string& bytes) {
    std::string out;
    char buf[4];
    for (char c : bytes) {
        std::snprintf(buf, sizeof buf, "%02X", static_cast<unsigned char>(c));
        out += (out.empty() ? "" : " ") + std::string(buf);
    }
    return out;
}

enum class Port { Com1, Com2, OutFile, DisplayFile };

struct SendCase {
    const char* what;
    std::vector<std::string> args;
    Port port;
    std::string bytes;  // what reaches the port (for a file: its whole content)
};

void PrintTo(const SendCase& c, std::ostream* os) {
    *os << c.what;
}

const std::string kLigTst = "Teste de liga\xE7\xE3o";

// clang-format off
const SendCase kSends[] = {
    {"test line with the preset text and CR LF", {"teste"}, Port::Com1, kLigTst + "\r\n"},
    {"test text in Windows-1252 to a port chosen by name",
     {"teste", "--porta", "Impressora 2", "--texto", "Ol\xC3\xA1 \xE2\x82\xAC"}, Port::Com2,
     "Ol\xE1 \x80\r\n"},
    {"file port by number adds its own line end", {"teste", "--porta", "2"}, Port::OutFile,
     kLigTst + "\r\n\r\n"},
    {"drawer mode by name, prepared as the window does", {"abrir", "--modo", "Pino 5"},
     Port::Com1, "\x1Bp\x01\x19\xFA"},
    {"display command by name as the engine stored it",
     {"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"}, Port::Com2, "\x0COl\xE1!\r\n"},
    {"display text to a file port, not decoded", {"mostrar", "--display", "2", "--texto", "chr$(12)"},
     Port::DisplayFile, "chr$(12)"},
};
// clang-format on

class LumbractlSend : public LumbractlFixture, public ::testing::WithParamInterface<SendCase> {};

TEST_P(LumbractlSend, SendsExactlyTheWindowsBytesAndReportsThem) {
    const SendCase& c = GetParam();
    std::vector<std::string> args = c.args;
    args.emplace_back("--bytes");
    PtyDrain drain1(com1.master());
    PtyDrain drain2(com2.master());

    const ToolRun run = RunTool(Args(args));
    const std::string got1 = drain1.finish(c.port == Port::Com1 ? c.bytes.size() : 0);
    const std::string got2 = drain2.finish(c.port == Port::Com2 ? c.bytes.size() : 0);

    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(got1, c.port == Port::Com1 ? c.bytes : "");
    EXPECT_EQ(got2, c.port == Port::Com2 ? c.bytes : "");
    std::string channel;
    std::string sent = c.bytes;
    switch (c.port) {
        case Port::Com1:
            channel = "COM1";
            break;
        case Port::Com2:
            channel = "COM2";
            break;
        case Port::OutFile:
            channel = dir.file("saida.txt");
            EXPECT_EQ(dir.read("saida.txt"), c.bytes);
            break;
        case Port::DisplayFile:
            channel = dir.file("display.txt");
            EXPECT_EQ(dir.read("display.txt"), c.bytes);
            break;
    }
    EXPECT_EQ(run.out, channel + ": " + Hex(sent) + "\n");
}

INSTANTIATE_TEST_SUITE_P(Commands, LumbractlSend, ::testing::ValuesIn(kSends),
                         [](const auto& p) { return "Case" + std::to_string(p.index); });

// What goes before a failure case's own arguments.
enum class Given { FileAndPorts, FileOnly, Nothing };

struct FailureCase {
    const char* what;
    Given given;
    std::vector<std::string> args;
    int status;
    std::string errStart;  // the first lines of standard error
};

void PrintTo(const FailureCase& c, std::ostream* os) {
    *os << c.what;
}

const std::string kUsageLine =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO [OP\xC3\x87\xC3\x95"
    "ES]\n";

// clang-format off
const FailureCase kFailures[] = {
    // Each stage of the channel reports its box as a title line and a text line.
    {"missing serial device", Given::FileOnly, {"-COM1", "/nada/tty", "abrir"}, 1,
     "Erro no ficheiro: COM1\nFuncao: Abrir|Erro:Port 1 (/nada/tty) does not exist\n"
     "Erro no ficheiro: COM1\nFuncao: Escrever|Erro:Port 1 is not open\n"
     "Erro no ficheiro: COM1\nFuncao: Fechar|Erro:Port 1 is not open\n"},
    {"missing serial device in a cycle", Given::FileOnly, {"-COM1", "/nada/tty", "ciclo"}, 1,
     "Erro no ficheiro: COM1\nFuncao: Abrir|Erro:Port 1 (/nada/tty) does not exist\n"},
    {"row number beyond the zone", Given::FileAndPorts, {"teste", "--porta", "9"}, 2,
     "lumbractl: a zona LIG n\xC3\xA3o tem a linha \"9\" (--porta)\n" + kUsageLine},
    {"unknown option", Given::FileAndPorts, {"teste", "--nada", "1"}, 2,
     "lumbractl: op\xC3\xA7\xC3\xA3o desconhecida: \"--nada\"\n" + kUsageLine},
    {"text Windows-1252 cannot hold", Given::FileAndPorts,
     {"teste", "--texto", "seta \xE2\x86\x92 \xCE\xA9"}, 2,
     "lumbractl: o valor de --texto tem caracteres que o Windows-1252 n\xC3\xA3o tem: U+2192 U+03A9\n"},
    {"no parameter file beside the program", Given::Nothing, {"listar"}, 3,
     "Erro a abrir ficheiro\nErro : 52   Bad file name or number\nFicheiro :   ()\n"},
    {"missing parameter file", Given::Nothing, {"-FP", "/nada/Lumbra.par", "teste"}, 3,
     "Erro a abrir ficheiro\nErro : 52   Bad file name or number\nFicheiro :   ()\n"
     "lumbractl: ficheiro de par\xC3\xA2metros: /nada/Lumbra.par: n\xC3\xA3o existe\n"},
};
// clang-format on

class LumbractlFailure : public LumbractlFixture,
                         public ::testing::WithParamInterface<FailureCase> {};

TEST_P(LumbractlFailure, EndsWithItsStatusAndSaysWhyOnStandardError) {
    const FailureCase& c = GetParam();
    PtyDrain drain1(com1.master());
    PtyDrain drain2(com2.master());
    std::vector<std::string> args;
    if (c.given == Given::FileAndPorts) args = Args(c.args);
    if (c.given == Given::FileOnly) args = {"-FP", par};
    if (c.given != Given::FileAndPorts) args.insert(args.end(), c.args.begin(), c.args.end());
    const ToolRun run = RunTool(args);
    EXPECT_EQ(run.status, c.status) << run.err;
    EXPECT_EQ(run.err.substr(0, c.errStart.size()), c.errStart) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(drain1.finish(), "");
    EXPECT_EQ(drain2.finish(), "");
}

INSTANTIATE_TEST_SUITE_P(Failures, LumbractlFailure, ::testing::ValuesIn(kFailures),
                         [](const auto& p) { return "Case" + std::to_string(p.index); });

}  // namespace
}  // namespace lumbra::test
