// "lumbractl listar": the rows of the four zones, and every printed row, pasted back into a
// parameter file under the same zone header, reads back to the same bytes.

#include <gtest/gtest.h>

#include <QString>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "platform/program.h"
#include "platform/qt_codepage.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "tests/tools/tool_fixture.h"
#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

const std::string kExample = std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par";

std::vector<std::string> Split(const std::string& text, char sep) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(text);
    while (std::getline(in, part, sep))
        parts.push_back(part);
    return parts;
}

std::string Cp1252(const std::string& utf8) {
    return platform::ToCp1252(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The zone header line of zone in a parameter file's text.
std::string ZoneHeader(const std::string& file, const std::string& zone) {
    for (std::string line : Split(file, '\n')) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.rfind("#" + zone, 0) == 0 &&
            (line.size() == zone.size() + 1 || line[zone.size() + 1] == ' '))
            return line;
    }
    ADD_FAILURE() << "no header for " << zone;
    return "#" + zone;
}

struct Row {
    std::string txi, ide, vtx;
    friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& r, std::ostream* os) {
    *os << "{" << ::testing::PrintToString(r.txi) << ", " << ::testing::PrintToString(r.ide) << ", "
        << ::testing::PrintToString(r.vtx) << "}";
}

// Row n of zone as the program's own loader reads the file at path.
Row LoadedRow(const std::string& path, const std::string& zone, std::size_t n) {
    const std::vector<const char*> argv = {"lumbra", "-FP", path.c_str()};
    platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
    const RecordingMsgSink sink;
    LumbraGbState& g = Gb();
    g.ligTab.clear();
    g.gavTab.clear();
    g.disTab.clear();
    g.cmdTab.clear();
    LumbraCfgLer("");
    EXPECT_TRUE(sink.boxes().empty());
    auto pick = [n](const auto& tab) {
        return n < tab.size() ? Row{tab[n].txi, tab[n].ide, tab[n].vtx} : Row{"?", "?", "?"};
    };
    if (zone == "LIG") return pick(g.ligTab);
    if (zone == "GAV") return pick(g.gavTab);
    if (zone == "DIS_OPC") return pick(g.disTab);
    return pick(g.cmdTab);
}

// Pastes every line of listar's output as "name [kind]=value" into a file of its own under the
// zone header of source, and checks that the loader reads it as it read the source's row.
void ExpectEveryLineReadsBack(const std::string& source, const std::string& listing) {
    const std::string file = ReadFile(source);
    const TempDir dir;
    for (const std::string& line : Split(listing, '\n')) {
        const std::vector<std::string> f = Split(line, '\t');
        ASSERT_EQ(f.size(), 5u) << line;
        const std::string pasted = Cp1252(f[2] + " [" + f[3] + "]=" + f[4]);
        dir.write("Colado.par",
                  ParHeader() + ZoneHeader(file, f[0]) + "\r\n" + pasted + "\r\n##\r\n");
        EXPECT_EQ(LoadedRow(dir.file("Colado.par"), f[0], 1),
                  LoadedRow(source, f[0], std::stoul(f[1])))
            << line;
    }
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
    ExpectEveryLineReadsBack(dir.file("Estranho.par"), run.out);
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
        EXPECT_EQ(Split(run.out, '\n').size(), c.rows) << c.what;
    }
}

}  // namespace
}  // namespace lumbra::test
