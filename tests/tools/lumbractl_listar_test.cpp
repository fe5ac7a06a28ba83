// "lumbractl listar": the rows of the four zones in UTF-8, each value written so that, pasted back
// as "name [kind]=value" under its zone, it reads back to the same bytes.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/temp_dir.h"
#include "tests/tools/tool_fixture.h"
#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

const std::string kExample = std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par";

std::size_t Lines(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(LumbractlListar, ListsTheSampleRowsZoneByZoneInUtf8) {
    const ToolRun run = RunTool({"-FP", kExample, "listar"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out,
              "LIG\t1\tImpressora s\xC3\xA9rie\tSER\tCOM1,9600,n,8,1\n"
              "LIG\t2\tFicheiro de teste\tFIC\t/tmp/lumbra-impressora.txt\n"
              "LIG\t3\tImpressora paralela\tLPT\t/dev/lp0\n"
              "GAV\t1\tESC p, pino 2\tESC\tchr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)\n"
              "GAV\t2\tESC p, pino 5\tESC\tchr$(27,112,1,25,250)\n"
              "GAV\t3\tImpulso DLE DC4\tDLE\tchr$(16,20,1,0,5)\n"
              "GAV\t4\tCiclo ESC p\tCIC\tchr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])\n"
              "DIS_OPC\t1\tDisplay s\xC3\xA9rie\tSER\tCOM2,9600,n,8,1\n"
              "DIS_OPC\t2\tDisplay em ficheiro\tFIC\t/tmp/lumbra-display.txt\n"
              "DIS_CMD\t1\tLimpar\tCLR\tchr$(12)\n"
              "DIS_CMD\t2\tCursor ao in\xC3\xAD"
              "cio\tHOME\tchr$(11)\n"
              "DIS_CMD\t3\tSauda\xC3\xA7\xC3\xA3o\tMSG\t"
              "chr$(12)Bem-vindo!chr$(13)chr$(10)Obrigado pela visita\n");
}

TEST(LumbractlListar, AwkwardValuesAreWrittenSoThatTheyReadBack) {
    const TempDir dir;
    dir.write("Estranho.par", ParHeader() +
                                  "#GAV Gaveta - Modos [CnvChr=0]\r\n"
                                  "Literal [L]=chr$(27,112)+\"p\" \r\n"
                                  "Seta [S]=x<-<-\r\n"
                                  "##\r\n"
                                  "#DIS_CMD Comandos\r\n"
                                  "Controlo [ c ]=a chr$(9)b\r\n"
                                  "Indefinidos [I]=chr$(127,129,141,143,144,157,0)\r\n"
                                  "Mais [M]=xchr$(43)\r\n"
                                  "Branco [B]=x chr$(32)\r\n"
                                  "Alto [A]=Ol\xE1 \x80\r\n"
                                  "##\r\n");
    const ToolRun run = RunTool({"-FP", dir.file("Estranho.par"), "listar"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "GAV\t1\tLiteral\tL\tchr$(27,112)+\"p\" <-\n"
              "GAV\t2\tSeta\tS\tx<-<-\n"
              "DIS_CMD\t1\tControlo\t c \ta chr$(9)b\n"
              "DIS_CMD\t2\tIndefinidos\tI\t"
              "chr$(127)chr$(129)chr$(141)chr$(143)chr$(144)chr$(157)chr$(0)\n"
              "DIS_CMD\t3\tMais\tM\txchr$(43)\n"
              "DIS_CMD\t4\tBranco\tB\tx  <-\n"
              "DIS_CMD\t5\tAlto\tA\tOl\xC3\xA1 \xE2\x82\xAC\n");
}

TEST(LumbractlListar, SaysInOneLineWhatTheEngineReadPastInSilence) {
    const std::string kOneLongLine = "one line of 10 MB";
    std::string manyRows = ParHeader() + "#LIG Portas\r\n";
    for (int i = 0; i < 32770; ++i)
        manyRows += "Porta [FIC]=x\r\n";
    manyRows += "##\r\n";
    const struct {
        std::string what, bytes;
        std::size_t rows;
        std::string err;
    } cases[] = {
        {kOneLongLine, std::string(10'000'000, 'a'), 0,
         "lumbractl: aviso: linhas com mais de 32767 caracteres, cortadas nesse limite: 1\n"},
        {"rows past a zone's count", manyRows, 32767,
         "lumbractl: aviso: linhas al\xC3\xA9m das 32767 que uma zona pode ter, ignoradas: 3\n"},
        {"a file written in UTF-8",
         ParHeader() + "#LIG\r\nSauda\xC3\xA7\xC3\xA3o [FIC]=x\r\n##\r\n", 1,
         "lumbractl: aviso: o ficheiro de par\xC3\xA2metros est\xC3\xA1 em UTF-8, n\xC3\xA3o em "
         "Windows-1252: os acentos aparecem como \"\xC3\x83\xC2\xA9\" e saem como dois bytes\n"},
    };
    for (const auto& c : cases) {
        const TempDir dir;
        dir.write("p.par", c.bytes);
        const ToolRun run = RunTool({"-FP", dir.file("p.par"), "listar"});
        EXPECT_EQ(run.status, 0) << c.what;
        EXPECT_EQ(run.err, c.err) << c.what;
        if (c.what == kOneLongLine) {
            // The line is held at most to its bound, never whole: the run takes about what one
            // of the sample file takes, far less than the line's 10 MB.
            const ToolRun sample = RunTool({"-FP", kExample, "listar"});
            EXPECT_LT(run.peakKb, sample.peakKb + 4096);
        }
        EXPECT_EQ(Lines(run.out), c.rows) << c.what;
    }
}

}  // namespace
}  // namespace lumbra::test
