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
    {"test text arrives in Windows-1252", {"teste", "--texto", "Ol\xC3\xA1 \xE2\x82\xAC"},
     Port::Com1, "Ol\xE1 \x80\r\n"},
    {"empty test text sends CR LF only", {"teste", "--texto", ""}, Port::Com1, "\r\n"},
    {"port chosen by name", {"teste", "--porta", "Impressora 2"}, Port::Com2, kLigTst + "\r\n"},
    {"port chosen by number", {"teste", "--porta", "4"}, Port::Com2, kLigTst + "\r\n"},
    {"file port adds its own line end", {"teste", "--porta", "2"}, Port::OutFile,
     kLigTst + "\r\n\r\n"},
    {"drawer command prepared as the window does", {"abrir"}, Port::Com1,
     std::string("\x1Bp\0\x19\xFA", 5)},
    {"drawer mode by name", {"abrir", "--modo", "Pino 5"}, Port::Com1, "\x1Bp\x01\x19\xFA"},
    {"empty drawer command writes nothing", {"abrir", "--modo", "Vazio"}, Port::Com1, ""},
    {"display command as the engine stored it", {"executar"}, Port::Com2, "\x0C"},
    {"display command by name", {"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"},
     Port::Com2, "\x0COl\xE1!\r\n"},
    {"display text preset, nothing added", {"mostrar"}, Port::Com2, "Texto para display"},
    {"display text is not decoded", {"mostrar", "--texto", "chr$(12)"}, Port::Com2, "chr$(12)"},
    {"display text to a file port", {"mostrar", "--display", "2", "--texto", "x"},
     Port::DisplayFile, "x"},
    {"texts that look like the engine's switches stay texts",
     {"teste", "--texto", "-FP /nada -COM1 /dev/null"}, Port::Com1,
     "-FP /nada -COM1 /dev/null\r\n"},
};
// clang-format on

class LumbractlSendOther : public LumbractlFixture {};

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

TEST_F(LumbractlSendOther, WithoutBytesNothingGoesToStandardOutput) {
    PtyDrain drain(com1.master());
    const ToolRun run = RunTool(Args({"abrir"}));
    EXPECT_EQ(drain.finish(5).size(), 5u);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "");
}

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
    {"missing serial device", Given::FileOnly, {"-COM1", "/nada/tty", "abrir"}, 1,
     "Erro no ficheiro: COM1\nFuncao: Abrir|Erro:Port 1 (/nada/tty) does not exist\n"},
    {"missing serial device in a cycle", Given::FileOnly, {"-COM1", "/nada/tty", "ciclo"}, 1,
     "Erro no ficheiro: COM1\nFuncao: Abrir|Erro:Port 1 (/nada/tty) does not exist\n"},
    {"file port in a missing folder", Given::FileAndPorts, {"teste", "--porta", "Sem pasta"}, 1,
     "Erro no ficheiro: "},
    {"row number beyond the zone", Given::FileAndPorts, {"teste", "--porta", "9"}, 2,
     "lumbractl: a zona LIG n\xC3\xA3o tem a linha \"9\" (--porta)\n" + kUsageLine},
    {"row name not in the zone", Given::FileAndPorts, {"executar", "--comando", "Nada"}, 2,
     "lumbractl: a zona DIS_CMD n\xC3\xA3o tem a linha \"Nada\" (--comando)\n" + kUsageLine},
    {"row name differs in case", Given::FileAndPorts, {"abrir", "--modo", "pino 5"}, 2,
     "lumbractl: a zona GAV"},
    {"unknown option", Given::FileAndPorts, {"teste", "--nada", "1"}, 2,
     "lumbractl: op\xC3\xA7\xC3\xA3o desconhecida: \"--nada\"\n" + kUsageLine},
    {"option of another command", Given::FileAndPorts, {"abrir", "--texto", "x"}, 2,
     "lumbractl: a op\xC3\xA7\xC3\xA3o --texto n\xC3\xA3o serve ao comando abrir\n"},
    {"unknown command", Given::FileAndPorts, {"fechar"}, 2,
     "lumbractl: comando desconhecido: \"fechar\"\n"},
    {"no command", Given::FileAndPorts, {}, 2, "lumbractl: falta o comando\n" + kUsageLine},
    {"option without its value", Given::FileAndPorts, {"teste", "--texto"}, 2,
     "lumbractl: falta o valor de --texto\n"},
    {"text Windows-1252 cannot hold", Given::FileAndPorts,
     {"teste", "--texto", "seta \xE2\x86\x92"}, 2,
     "lumbractl: o valor de --texto tem caracteres que o Windows-1252 n\xC3\xA3o tem: U+2192\n"},
    {"text that is not UTF-8", Given::FileAndPorts, {"mostrar", "--texto", "\xFF"}, 2,
     "lumbractl: o valor de --texto"},
    {"--bytes where nothing is sent", Given::FileAndPorts, {"listar", "--bytes"}, 2,
     "lumbractl: a op\xC3\xA7\xC3\xA3o"},
    {"missing parameter file", Given::Nothing, {"-FP", "/nada/Lumbra.par", "teste"}, 3,
     "Erro a abrir ficheiro\nErro : 52   Bad file name or number\nFicheiro :   ()\n"
     "lumbractl: ficheiro de par\xC3\xA2metros: /nada/Lumbra.par: n\xC3\xA3o existe\n"},
    {"device as parameter file", Given::Nothing, {"-FP", "/dev/zero", "listar"}, 3,
     "Erro a abrir ficheiro\nErro : 52   Bad file name or number\nFicheiro :   ()\n"
     "lumbractl: ficheiro de par\xC3\xA2metros: /dev/zero: \xC3\xA9 um dispositivo, n\xC3\xA3o um "
     "ficheiro\n"},
    {"parameter file path with blanks", Given::Nothing, {"-FP", "/tmp/a b.par", "listar"}, 2,
     "lumbractl: o caminho de -FP \"/tmp/a b.par\" tem espa\xC3\xA7os: a linha de comandos do "
     "motor parte-o nos espa\xC3\xA7os e leria outro ficheiro\n" + kUsageLine},
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

TEST_F(LumbractlSendOther, EngineSwitchesMayFollowTheCommand) {
    PtyDrain drain(com1.master());
    const ToolRun run =
        RunTool({"-FP", par, "teste", "--porta", "Impressora 2", "-com2", com1.slavePath()});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(drain.finish(18), kLigTst + "\r\n");
}

TEST_F(LumbractlSendOther, ChannelFailureShowsEachBoxAsTitleAndTextLines) {
    const ToolRun missing = RunTool({"-FP", par, "-COM1", "/nada/tty", "abrir"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err,
              "Erro no ficheiro: COM1\nFuncao: Abrir|Erro:Port 1 (/nada/tty) does not exist\n"
              "Erro no ficheiro: COM1\nFuncao: Escrever|Erro:Port 1 is not open\n"
              "Erro no ficheiro: COM1\nFuncao: Fechar|Erro:Port 1 is not open\n");
}

TEST(LumbractlStart, WithoutFpReadsLumbraParBesideTheProgramAndEndsWith3WhenThereIsNone) {
    const ToolRun run = RunTool({"listar"});
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(run.err.rfind("Erro a abrir ficheiro\n", 0), 0u) << run.err;
}

}  // namespace
}  // namespace lumbra::test
