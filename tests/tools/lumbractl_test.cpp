// A real lumbractl, the Linux program or the Windows one under Wine: each command's bytes on a
// pseudo-terminal or a file, every exit status with what it says, the cycle and its stop, Ctrl+C.

#include <signal.h>
#include <termios.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

using std::chrono::seconds;

std::size_t Lines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// The 338 sends of the cycle of "Ciclo [CIC]": 27, 112, MO, P1, P2, MO innermost, P1 outermost.
std::string CycleBytes() {
    std::string sent;
    for (int p1 = 10; p1 <= 250; p1 += 20)
        for (int p2 = 10; p2 <= 250; p2 += 20)
            sent +=
                std::string("\x1Bp\0", 3) + char(p1) + char(p2) + "\x1Bp\x01" + char(p1) + char(p2);
    return sent;
}

class Lumbractl : public LumbractlFixture {};

TEST_F(Lumbractl, EachCommandSendsTheWindowsBytesToItsPort) {
    const struct {
        Strings args;
        int port;  // 1, 2: the pseudo-terminal of COM1, COM2; 0: display.txt
        std::string bytes;
        unsigned speed;
    } cases[] = {
        {{"teste"}, 1, "Teste de liga\xE7\xE3o\r\n", B9600},  // the first row, the preset text
        {{"abrir", "--porta", "2", "--modo", "Pino 5"}, 2, "\x1Bp\x01\x19\xFA", B19200},
        // A "+" between quotes goes too.
        {{"abrir", "--modo", "Estranho"},
         1,
         std::string("\x1Bp\0abSauda\xE7\xE3o\xFF\x80", 15),
         B9600},
        {{"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"}, 2, "\x0COl\xE1!\r\n", B9600},
        // Typed text goes out in Windows-1252 and is not decoded.
        {{"mostrar", "--display", "2", "--texto", "Ol\xC3\xA1 chr$(12) \xE2\x82\xAC"},
         0,
         "Ol\xE1 chr$(12) \x80",
         0},
    };
    for (const auto& c : cases) {
        Strings args = Args(c.args);
        args.emplace_back("--bytes");
        const ToolRun run = RunTool(args);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.err, "");
        PtyPair& pty = c.port == 1 ? com1 : com2;
        const std::string got = c.port == 0 ? dir.read("display.txt") : pty.readAvailable();
        EXPECT_EQ(got, c.bytes) << c.args[0];
        if (c.port != 0) {
            EXPECT_EQ(LineSpeed(pty.slavePath()), c.speed) << c.args[0];
        }
        const std::string channel =
            c.port == 0 ? name("display.txt") : "COM" + std::to_string(c.port);
        EXPECT_EQ(run.out.rfind(channel + ": ", 0), 0u) << run.out;
        EXPECT_EQ(Lines(run.out), 1u);
    }
}

// Every status says why on standard error. A zone without rows selects none, as the window's
// empty list: without a port nothing is sent, without a mode or a command the port is opened and
// closed and nothing is written ("--bytes" reports the empty write); a row named there is still a
// usage error.
TEST_F(Lumbractl, EachStatusSaysWhyOnStandardError) {
    dir.write("Vazias.par",
              kParHeader +
                  "#LIG P\r\nImpressora [SER]=COM1,9600,n,8,1\r\n##\r\n#GAV G\r\n##\r\n"
                  "#DIS_OPC D\r\nDisplay [SER]=COM2,9600,n,8,1\r\n##\r\n#DIS_CMD C\r\n##\r\n");
    dir.write("SemPortas.par",
              kParHeader +
                  "#GAV G\r\nModo [M]=\"A\"\r\n##\r\n#DIS_CMD C\r\nLimpar [C]=chr$(12)\r\n##\r\n");
    std::string cycle;
    for (int i = 0; i < 338; ++i)
        cycle += "COM1: \n";
    const std::string usage =
        "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO [OP\xC3\x87\xC3\x95"
        "ES]\n";
    const std::string noRows = " n\xC3\xA3o tem linhas configuradas\n";
    Strings missing = Tool().missingCom3;
    missing.insert(missing.end(), {"ciclo", "--porta", "3"});
    const struct {
        Strings args;
        int status;
        std::string errStart, errEnd, out = "";
    } cases[] = {
        // Needs no parameter file.
        {{"converter", "--hex=8000"}, 0, "", "", "-32768\n"},
        {{"converter", "--dec", "255"}, 0, "", "", "FF\n"},
        // Each stage of the channel reports its box as a title line and a text line; a box stops
        // the cycle.
        {Args(missing), 1,
         "Erro no ficheiro: COM3\nFuncao: Abrir|Erro:" + Tool().missingCom3Error + "\n",
         "lumbractl: ciclo parado depois do envio 1, que falhou\n"},
        {Args({"teste", "--porta", "9"}), 2,
         "lumbractl: a zona LIG n\xC3\xA3o tem a linha \"9\" (--porta)\n" + usage, ""},
        {Args({"teste", "--porta", "9"}, "Vazias.par"), 2,
         "lumbractl: a zona LIG n\xC3\xA3o tem a linha \"9\" (--porta)\n", ""},
        {Args({"abrir", "--modo", "1"}, "Vazias.par"), 2, "lumbractl: a zona GAV" + noRows, ""},
        {Args({"executar", "--comando", "1"}, "Vazias.par"), 2,
         "lumbractl: a zona DIS_CMD" + noRows, ""},
        {Args({"teste", "--texto", "seta \xE2\x86\x92 \xCE\xA9"}), 2,
         "lumbractl: o valor de --texto tem caracteres que o Windows-1252 n\xC3\xA3o tem: U+2192 "
         "U+03A9\n",
         ""},
        {{"-FP", Tool().fileName("/nada/Lumbra.par"), "teste"},
         3,
         "Erro a abrir ficheiro\nErro : 52   Nome ou n\xC3\xBAmero de ficheiro incorrecto\n"
         "Ficheiro :   ()\n"
         "lumbractl: ficheiro de par\xC3\xA2metros: " +
             Tool().fileName("/nada/Lumbra.par") + ": n\xC3\xA3o existe\n",
         ""},
        {Args({"abrir", "--bytes"}, "Vazias.par"), 0, "", "", "COM1: \n"},
        {Args({"ciclo", "--bytes"}, "Vazias.par"), 0, "", "", cycle},
        {Args({"executar", "--bytes"}, "Vazias.par"), 0, "", "", "COM2: \n"},
    };
    for (const auto& c : cases) {
        const ToolRun run = RunTool(c.args);
        EXPECT_EQ(run.status, c.status) << run.err;
        EXPECT_EQ(run.err.substr(0, c.errStart.size()), c.errStart);
        EXPECT_TRUE(run.err.ends_with(c.errEnd)) << run.err;
        EXPECT_TRUE(run.out == c.out) << run.out.substr(0, 40);
        if (c.status == 0) {
            EXPECT_EQ(run.err, "");
        }
    }
    for (const char* command : {"teste", "abrir", "ciclo", "executar", "mostrar"}) {
        const ToolRun run = RunTool(Args({command, "--bytes"}, "SemPortas.par"));
        EXPECT_EQ(run.out + run.err + std::to_string(run.status), "0") << command;
    }
    EXPECT_EQ(com1.readAvailable() + com2.readAvailable(), "");
}

// Each value written so that, pasted back as "name [kind]=value" under its zone, it reads back to
// the same bytes; names in UTF-8.
TEST(LumbractlListar, WritesAwkwardValuesSoThatTheyReadBack) {
    const TempDir dir;
    dir.write("Estranho.par",
              kParHeader +
                  "#GAV Gaveta - Modos [CnvChr=0]\r\n"
                  "Literal [L]=chr$(27,112)+\"p\" \r\nSe\xE7\x61 [S]=x<-<-\r\n##\r\n"
                  "#DIS_CMD Comandos\r\n"
                  "Indefinidos [ I ]=chr$(127,129,141,143,144,157,0)\r\n"
                  "Mais [M]=xchr$(43)\r\n##\r\n");
    EXPECT_EQ(RunTool({"-FP", Tool().fileName(dir.file("Estranho.par")), "listar"}).out,
              "GAV\t1\tLiteral\tL\tchr$(27,112)+\"p\" <-\n"
              "GAV\t2\tSe\xC3\xA7\x61\tS\tx<-<-\n"
              "DIS_CMD\t1\tIndefinidos\t I \t"
              "chr$(127)chr$(129)chr$(141)chr$(143)chr$(144)chr$(157)chr$(0)\n"
              "DIS_CMD\t2\tMais\tM\txchr$(43)\n");
}

TEST(LumbractlListar, SaysInOneLineWhatTheEngineReadPastInSilence) {
    std::string manyRows = kParHeader + "#LIG Portas\r\n";
    for (int i = 0; i < 32768; ++i)
        manyRows += "Porta [FIC]=x\r\n";
    const struct {
        std::string bytes;
        std::size_t rows;
        std::string err;
    } cases[] = {
        {std::string(10 << 20, 'a'), 0,
         "lumbractl: aviso: linhas com mais de 32767 caracteres (um \"=\" al\xC3\xA9m desse limite "
         "n\xC3\xA3o \xC3\xA9 lido): 1\n"},
        {manyRows + "##\r\n", 32767,
         "lumbractl: aviso: linhas al\xC3\xA9m das 32767 que uma zona pode ter, ignoradas: 1\n"},
        {kParHeader + "#LIG\r\nSauda\xC3\xA7\xC3\xA3o [FIC]=x\r\n##\r\n", 1,
         "lumbractl: aviso: o ficheiro de par\xC3\xA2metros est\xC3\xA1 em UTF-8, n\xC3\xA3o em "
         "Windows-1252: os acentos aparecem como \"\xC3\x83\xC2\xA9\" e saem como dois bytes\n"},
    };
    const long samplePeakKb =
        RunTool({"-FP", Tool().fileName(std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par"),
                 "listar"})
            .peakKb;
    for (const auto& c : cases) {
        const TempDir dir;
        dir.write("p.par", c.bytes);
        const ToolRun run = RunTool({"-FP", Tool().fileName(dir.file("p.par")), "listar"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.err, c.err);
        EXPECT_EQ(Lines(run.out), c.rows);
        // A line is read whole, and kept in few copies: a 10 MB line costs memory in proportion
        // to the file, never without bound.
        if (c.rows == 0 && Tool().measuresMemory) {
            EXPECT_LT(run.peakKb, samplePeakKb + 3 * static_cast<long>(c.bytes.size() >> 10));
        }
    }
}

// The cycle sends its 338 commands in the window's order at the row's speed. A stop signal lets
// the send under way complete, the port closes and the tool ends with 128 + the signal.
TEST_F(Lumbractl, TheCycleSendsInTheWindowsOrderUntilItsEndOrAStopSignal) {
    const std::string sent = CycleBytes();
    const ToolRun whole = RunTool(Args({"ciclo", "--modo", "Ciclo", "--bytes"}));
    EXPECT_EQ(whole.status, 0) << whole.err;
    EXPECT_EQ(whole.err, "");  // standard error is no terminal here: no progress on it
    EXPECT_TRUE(com1.readExactly(sent.size()) == sent);
    EXPECT_EQ(LineSpeed(com1.slavePath()), B9600);
    EXPECT_EQ(Lines(whole.out), 338u);
    EXPECT_EQ(whole.out.substr(0, 21), "COM1: 1B 70 00 0A 0A\n");
    // A small pipe the test does not read yet: after a couple of hundred --bytes lines the tool
    // waits on it, so the cycle cannot end before the signal arrives.
    ToolProcess tool(Args({"ciclo", "--modo", "Ciclo", "--bytes"}), 4096);
    ASSERT_NE(tool.readLine(seconds(30)), "") << "the cycle did not start";
    const int signo = Tool().stopSignal;
    ::kill(tool.pid(), signo);
    const ToolRun run = tool.finish();
    const std::string got = com1.readAvailable();
    EXPECT_EQ(run.status, 128 + signo) << run.err;
    const std::size_t sends = got.size() / 5;
    EXPECT_TRUE(got == sent.substr(0, 5 * sends)) << "a send was cut short";
    EXPECT_LT(sends, 338u);
    EXPECT_EQ(Lines(run.out) + 1, sends);
    EXPECT_EQ(run.err, "lumbractl: ciclo interrompido depois de " + std::to_string(sends) +
                           " de 338 envios\n");
    Tool().expectReleased(com1.slavePath());
}

// Ctrl+C ends a send that waits for a device that takes nothing: the box says the user
// interrupted it (the stall limit would have said "Tempo de espera do dispositivo esgotado") and
// the status is 130.
TEST_F(Lumbractl, CtrlCEndsASendThatWaitsForItsDevice) {
    dir.write("Bloqueio.par", kParHeader + "#LIG Portas\r\nTerminal [FIC]=" +
                                  Tool().com1AsFile(com1.slavePath()) + "\r\n##\r\n");
    com1.fillUntilBlocked();
    ToolProcess tool(Args({"teste"}, "Bloqueio.par"));
    // The tool opens the terminal right before it writes: once it holds it, it is waiting.
    for (int i = 0; i < 400 && !tool.holds(com1.slavePath()); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ASSERT_TRUE(tool.holds(com1.slavePath())) << "the tool never opened " << com1.slavePath();
    ::kill(tool.pid(), SIGINT);
    const ToolRun run = tool.finish();
    EXPECT_EQ(run.status, 130);
    EXPECT_NE(run.err.find("Funcao: Gravar TX|Erro:Interrompido pelo utilizador"),
              std::string::npos)
        << run.err;
}

}  // namespace
}  // namespace lumbra::test
