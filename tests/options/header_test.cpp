// The header of a parameter file and the writing of a new one: the five header lines built from
// their values, written as the start of a file, read back; zone blocks; and a whole new file
// written and read back through the zone walk.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <array>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "options/atomic_file.h"
#include "platform/file_handles.h"
#include "tests/options/file_text.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {
namespace {

class HeaderTdaOpc : public TdaOpc {
  public:
    using TdaOpc::FicAtu;
    using TdaOpc::LerLin;
    const std::vector<std::string>& header() const { return cabLin; }
    const ParReg& current() const { return parAct; }
    std::int16_t fileCount() const { return ficQtd; }
};

const std::string kRule = "'" + std::string(79, '=');
const std::string kDefinicoes =
    "Defini\xE7\xF5"
    "es";
const std::string kConfiguracao = "Configura\xE7\xE3o";

// The header written for C:\Cfg\Lumbra.par with the description "Configuração" and nothing else.
const std::string kExampleHeader =
    Lines({"'Nome       : Lumbra.par", "'Tipo       : PAR", "'Data       : ", "'Versao     : 1.0",
           "'Descricao  : " + kConfiguracao, ""});

class HeaderTest : public ::testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(opc.fileCount(), 0) << "every file the test opened is closed";
        EXPECT_TRUE(boxes.boxes().empty()) << "writing shows no message";
    }

    RecordingMsgSink boxes;
    TempDir dir;
    HeaderTdaOpc opc;
};

TEST_F(HeaderTest, CabPrpBuildsTheFiveLabelledLinesFromTheirValues) {
    const struct {
        std::string fic;
        Variant tip, dt, ver, inf;
        std::array<std::string, 5> values;  // what follows each label
    } cases[] = {
        {"C:\\Cfg\\Lumbra.par",
         "",
         "",
         "",
         kConfiguracao,
         {"Lumbra.par", "PAR", "", "1.0", kConfiguracao}},
        {"C:\\Cfg\\Lumbra.par", "", "", std::int16_t{2}, "", {"Lumbra.par", "PAR", "", "2", ""}},
        {"/srv/cfg/loja.par", " cfg ", "", 1.5, "", {"loja.par", "cfg", "", "1.5", ""}},
        // Only a date given as text is shown.
        {"a.par", "", " 16-07-2003 ", "", "", {"a.par", "PAR", "16-07-2003", "1.0", ""}},
        {"a.par", Variant(), 37818.0, Variant(), Variant(), {"a.par", "PAR", "", "1.0", ""}},
        // Blanks are a value, trimmed to nothing: only "" takes the default.
        {"a.par", "  ", "", "  ", "  Loja 1  ", {"a.par", "", "", "", "Loja 1"}},
    };
    const std::array<std::string, 5> labels = {
        "'Nome       : ", "'Tipo       : ", "'Data       : ", "'Versao     : ", "'Descricao  : "};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fic);
        opc.tboFic(c.fic);
        opc.CabPrp(c.tip, c.dt, c.ver, c.inf);
        ASSERT_EQ(opc.header().size(), 6u);
        EXPECT_EQ(opc.header()[0], "");
        for (std::size_t i = 0; i < 5; ++i)
            EXPECT_EQ(opc.header()[i + 1], labels[i] + c.values[i]);
    }
}

TEST_F(HeaderTest, CabConGivesALineOrItsLabelTrimmed) {
    opc.tboFic("C:\\Cfg\\Lumbra.par");
    opc.CabPrp("", "", "", kConfiguracao);
    const struct {
        std::string mo;
        std::int16_t idx;
        std::string expected;
    } cases[] = {
        {"V", 2, "'Tipo"},
        {"", 3, "'Data       :"},  // the blank after the colon is trimmed away
        {"", 5, "'Descricao  : " + kConfiguracao},
        {"v", 2, "'Tipo       : PAR"},  // only "V" asks for the label
        {"V", 6, ""},
        {"", 0, ""},
    };
    for (const auto& c : cases) {
        std::string txi = "old";
        opc.CabCon(c.mo, c.idx, txi);
        EXPECT_EQ(txi, c.expected) << c.mo << " " << c.idx;
    }
}

TEST_F(HeaderTest, CabCriWritesTheHeaderAndAnEmptyLineClosingAtOnceOnlyWithFec1) {
    for (const std::int16_t fec : {std::int16_t{1}, std::int16_t{0}, std::int16_t{2}}) {
        SCOPED_TRACE(fec);
        opc.tboFic(dir.file("Lumbra.par"));
        opc.CabPrp("", "", "", kConfiguracao);
        opc.CabCri(fec);
        EXPECT_EQ(opc.fileCount(), fec == 1 ? 0 : 1);
        if (fec != 1) {
            EXPECT_TRUE(platform::FileIsOpen(opc.FicAtu()));
            opc.tboFim();
        }
        EXPECT_EQ(dir.read("Lumbra.par"), kExampleHeader);
        EXPECT_EQ(FilesIn(dir), 1u) << "no replacement file is left beside it";
    }
}

// Every way a new file's writing can end: the old content stays until the file is closed whole,
// and a write refused part way (a file-size limit does it as a full disk would) or a file that
// cannot be opened reaches the writer's ok codes and leaves the old file, or none, behind.
TEST_F(HeaderTest, WritingANewFileCommitsItWholeOrKeepsTheOldOne) {
    const std::string old = Lines({"'Nome       : velho"});
    std::vector<std::string> many(1);
    for (int i = 0; i < 200; ++i)
        many.push_back("Linha [L" + std::to_string(i) + "]=" + std::string(60, 'x'));
    const struct {
        std::string fic;
        bool limited;
        std::vector<std::string> zone;
        std::int16_t cabOk, zonOk, fimOk;
        std::string after;
    } cases[] = {
        {dir.file("Lumbra.par"),
         false,
         {"", "A [A]=1"},
         1,
         1,
         1,
         kExampleHeader + Lines({kRule, "#DEF - ", kRule, "A [A]=1", "##", "", ""})},
        {dir.file("Lumbra.par"), true, many, 1, -61, -61, old},
        {dir.file("falta/novo.par"), false, {"", "A [A]=1"}, -76, -52, 1, old},
        {"/dev/full", false, {"", "A [A]=1"}, -61, -61, 1, old},
    };
    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction previous {};
    ASSERT_EQ(::sigaction(SIGXFSZ, &ignore, &previous), 0);
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fic);
        dir.write("Lumbra.par", old);
        rlimit limit = unlimited;
        if (c.limited) limit.rlim_cur = 4096;
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        opc.tboFic(c.fic);
        opc.CabPrp("", "", "", kConfiguracao);
        std::int16_t cabOk = 0, zonOk = 0, fimOk = 0;
        opc.CabCri(0, cabOk);
        opc.RegZon("DEF", c.zone, "", zonOk);
        EXPECT_EQ(dir.read("Lumbra.par"), old) << "nothing shows before the close";
        opc.tboFim(fimOk);
        ::setrlimit(RLIMIT_FSIZE, &unlimited);
        EXPECT_EQ(std::vector<int>({cabOk, zonOk, fimOk}),
                  std::vector<int>({c.cabOk, c.zonOk, c.fimOk}));
        EXPECT_EQ(dir.read("Lumbra.par"), c.after);
        EXPECT_EQ(FilesIn(dir), 1u) << "no replacement file or part written is left";
    }
    ::sigaction(SIGXFSZ, &previous, nullptr);
}

TEST_F(HeaderTest, EveryCloseOfAFileBeingWrittenGivesItsTargetTheWrittenText) {
    const std::string written = kExampleHeader + Lines({kRule, "#DEF - ", kRule, "##", "", ""});
    enum class Close { KvIni, Destroy };
    for (const Close close : {Close::KvIni, Close::Destroy}) {
        SCOPED_TRACE(static_cast<int>(close));
        dir.write("Lumbra.par", "velho\r\n");
        auto writer = std::make_unique<HeaderTdaOpc>();
        writer->tboFic(dir.file("Lumbra.par"));
        writer->CabPrp("", "", "", kConfiguracao);
        writer->CabCri();
        writer->RegZon("DEF", {}, "");
        if (close == Close::KvIni) writer->KvIni();
        writer.reset();
        EXPECT_EQ(dir.read("Lumbra.par"), written);
        EXPECT_EQ(FilesIn(dir), 1u) << "no replacement file survives the close";
    }
}

TEST(HeaderEnd, TheImmediateEndOfTheProgramCommitsAFileBeingWritten) {
    RecordingMsgSink boxes;
    TempDir dir;
    HeaderTdaOpc opc;
    opc.tboFic(dir.file("Lumbra.par"));
    opc.CabPrp("", "", "", kConfiguracao);
    opc.CabCri();
    // Error mode 3: a message, then the end of the program.
    EXPECT_THROW(opc.tboPrp(dir.file("falta.par")), platform::ProgramEnded);
    EXPECT_EQ(dir.read("Lumbra.par"), kExampleHeader);
    EXPECT_EQ(FilesIn(dir), 1u);
}

TEST_F(HeaderTest, RegZonWritesTheZoneBlockByteForByte) {
    const struct {
        std::string zon, txi;
        std::vector<std::string> txz;
        std::string expected;
    } cases[] = {
        {"DEF",
         kDefinicoes,
         {"ignorado", "Modo [DbgModo]=0", "Base [DirBas]=C:\\Pos"},
         Lines({kRule, "#DEF - " + kDefinicoes, kRule, "Modo [DbgModo]=0", "Base [DirBas]=C:\\Pos",
                "##", "", ""})},
        // Slot 0 is never written, and an empty array writes no line between the head and "##".
        {"LIG", "", {"so o zero"}, Lines({kRule, "#LIG - ", kRule, "##", "", ""})},
        {"T:TX",
         "a - b",
         {"", "", "  x  "},
         Lines({kRule, "#T:TX - a - b", kRule, "", "  x  ", "##", "", ""})},
    };
    ASSERT_EQ(kRule.size(), 80u);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.zon);
        opc.tboFic(dir.file("z.par"));
        opc.CabPrp("", "", "", "");
        opc.CabCri();
        opc.RegZon(c.zon, c.txz, c.txi);
        opc.tboFim();
        const std::string bytes = dir.read("z.par");
        ASSERT_GE(bytes.size(), 6u * 2u);
        EXPECT_EQ(bytes.substr(bytes.find("\r\n\r\n") + 4), c.expected);
    }
}

TEST_F(HeaderTest, ANewFileReadsBackThroughTheZoneWalkAsWritten) {
    const std::string fic = dir.file("Lumbra.par");
    opc.tboFic(fic);
    opc.CabPrp("", " 16-07-2003", "2.1", "Terminal da loja");
    opc.CabCri();
    opc.RegZon(
        "DEF",
        {"", "Modo de depura\xE7\xE3o [DbgModo]=0", "Direct\xF3rio base [DirBas]=C:\\LUMBRA"},
        kDefinicoes);
    opc.RegZon("TBO",
               {"", "Editor de texto [1:DIV]=[DirBas]\\notepad.exe", "Gaveta [0:GAV]= chr$(27)"},
               "Programas");
    opc.tboFim();

    HeaderTdaOpc reader;
    reader.ZonIni(fic);
    EXPECT_EQ(reader.ficTip(), "PAR");
    std::string line;
    reader.CabCon("", 3, line);
    EXPECT_EQ(line, "'Data       : 16-07-2003");
    reader.CabCon("", 4, line);
    EXPECT_EQ(line, "'Versao     : 2.1");

    std::string ide, tip, txi;
    std::int16_t cnt = 0;
    reader.ZonSeg(ide, tip, cnt, txi);
    EXPECT_EQ(ide, "DEF");
    EXPECT_EQ(tip, "IDE");
    EXPECT_EQ(cnt, 2);
    EXPECT_EQ(txi, kDefinicoes);
    std::string value;
    reader.OpcCon("DirBas", value);
    EXPECT_EQ(value, "C:\\LUMBRA");
    reader.OpcCon("DbgModo", value);
    EXPECT_EQ(value, "0");

    reader.ZonSeg(ide, tip, cnt, txi);
    EXPECT_EQ(ide, "TBO");
    EXPECT_EQ(cnt, 2);
    EXPECT_EQ(txi, "Programas");
    reader.MemConTxp(Variant(std::int16_t{1}), line);
    EXPECT_EQ(line, "Editor de texto [1:DIV]=[DirBas]\\notepad.exe");
    reader.MemConTxp(Variant(std::int16_t{2}), line);
    EXPECT_EQ(line, "Gaveta [0:GAV]= \x1B") << "the reader decodes literals, the writer does not";

    reader.ZonSeg(ide, tip, cnt, txi);
    EXPECT_EQ(ide, "");
    reader.ZonFim();
    EXPECT_EQ(reader.fileCount(), 0);
}

}  // namespace
}  // namespace lumbra::test
