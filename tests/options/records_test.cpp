// Records: parameter files loaded line by line, their variables found, changed, added and
// eliminated, and the file written back whole.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/file_text.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"

namespace lumbra::test {
namespace {

class RecordTdaOpc : public TdaOpc {
  public:
    const std::vector<std::string>& records() const { return regLin; }
    const std::string& nameIndex() const { return idxNom; }
    std::int16_t fileCount() const { return ficQtd; }
};

const std::string kEliminated = "\xAB\xBB";

// Eight lines: the header, one empty line, two variables.
const std::string kEight =
    Lines({"'Nome       : Lumbra.par", "'Tipo       : PAR", "'Data       : ", "'Versao     : 1.0",
           "'Descricao  : Loja", "", "Porta [PORTA] = COM1", "Vel [N:VEL]=9600"});

class RecordsTest : public ::testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(opc.fileCount(), 0) << "every file the test opened is closed";
        EXPECT_TRUE(boxes.boxes().empty()) << "editing shows no message";
    }

    // Writes bytes as p.par and loads it.
    std::string Load(const std::string& bytes) {
        dir.write("p.par", bytes);
        opc.RegPrp(dir.file("p.par"));
        return dir.file("p.par");
    }

    RecordingMsgSink boxes;
    TempDir dir;
    RecordTdaOpc opc;
};

TEST_F(RecordsTest, RegPrpKeepsLinesAsWrittenWithoutJoiningOrDecoding) {
    const std::string fic = Load(
        "a +\r\n+ b\r\nCmd [CMD]=chr$(27)+\"x\"\rso LF\ncedilha \xE7\r\n\r\nfim sem terminador");
    const std::vector<std::string> expected = {
        "a +", "+ b", "Cmd [CMD]=chr$(27)+\"x\"", "so LF", "cedilha \xE7", "", "fim sem terminador",
    };
    ASSERT_EQ(opc.records().size(), expected.size() + 1);
    EXPECT_EQ(opc.records()[0], fic);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        std::string txi;
        opc.RegConIdx(static_cast<std::int16_t>(i + 1), txi);
        EXPECT_EQ(txi, expected[i]);
    }
    std::string past = "x";
    opc.RegConIdx(static_cast<std::int16_t>(expected.size() + 1), past);
    EXPECT_EQ(past, "") << "beyond the last record";
    Variant v = std::string();
    opc.RegCon("cmd", v);
    EXPECT_EQ(v, Variant("chr$(27)+\"x\""));
    // Written back, every line ends in CR LF whatever ended it before.
    opc.RegExe("", 0);
    std::string bytes;
    for (const std::string& line : expected)
        bytes += line + "\r\n";
    EXPECT_EQ(dir.read("p.par"), bytes);
}

TEST_F(RecordsTest, RegConFindsVariablesByTheNameAfterTheirKind) {
    const struct {
        std::string line, var;
        Variant entry, expected;
        std::int16_t ok;
    } cases[] = {
        {"Vel [N:VEL]=9600", "VEL", std::string(), "9600", 1},
        {"Vel [ vel ]=9600", " Vel ", std::string(), "9600", 1},
        // The blank after the colon stays with the name, which "VEL" then does not find.
        {"Vel [N: VEL]=9600", "VEL", std::string("x"), "", 1},
        {"Porta [PORTA] = COM1 ", "PORTA", std::string(), " COM1 ", 1},
        {"Vel [VEL]= &H1B", "VEL", 0.0, 27.0, 1},
        {"Porta [PORTA]=COM1", "PORTA", 5.0, 0.0, 1},
        {"Vel [VEL]=99999", "VEL", std::int16_t{7}, std::int16_t{0}, 0},
        {"Nada [X]=1", "VEL", std::int16_t{7}, std::int16_t{0}, 1},
        // A line whose "=" comes too early is no assignment and names nothing.
        {"V [=1", "V", std::string("x"), "", 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        Load(Lines({c.line}));
        Variant vp = c.entry;
        std::int16_t ok = -1;
        opc.RegCon(c.var, vp, ok);
        EXPECT_EQ(vp, c.expected);
        EXPECT_EQ(ok, c.ok);
    }
}

TEST_F(RecordsTest, RegVarAltChangesOrAppendsRecordsAndRegExeWritesThem) {
    const struct {
        const char* what;
        std::string line, var;
        Variant vp;
        std::int16_t cri;
        std::string expected;
    } cases[] = {
        {"number", "Vel [VEL]=9600", "vel", std::int16_t{19200}, 0, Lines({"Vel [VEL]=19200"})},
        {"blanks after = dropped", "Porta [PORTA] = COM1", "PORTA", "COM2", 0,
         Lines({"Porta [PORTA] =COM2"})},
        {"later = replaced too", "Cmd [CMD]=a=b", "CMD", " c ", 0, Lines({"Cmd [CMD]= c "})},
        {"kind prefix", "Vel [N:VEL]=9600", "VEL", 1.5, 0, Lines({"Vel [N:VEL]=1.5"})},
        {"name with blank not found", "Vel [N: VEL]=9600", "VEL", "1", 0,
         Lines({"Vel [N: VEL]=9600"})},
        {"missing, no Cri", "Vel [VEL]=9600", "novo", "x", 0, Lines({"Vel [VEL]=9600"})},
        {"missing, Cri", "Vel [VEL]=9600", "novo", "x", 1,
         Lines({"Vel [VEL]=9600", "??? [novo]=x"})},
        // A record without a name is never found, not even by an empty name.
        {"empty name", "' coment\xE1rio", "", "x", 0, Lines({"' coment\xE1rio"})},
        {"appended name as passed", "Vel [VEL]=9600", " Novo ", std::int16_t{3}, 1,
         Lines({"Vel [VEL]=9600", "??? [ Novo ]=3"})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Load(Lines({c.line}));
        opc.RegVarAlt(c.var, c.vp, c.cri);
        opc.RegExe("", 0);
        EXPECT_EQ(dir.read("p.par"), c.expected);
    }
}

TEST_F(RecordsTest, ANewRecordIsNotIndexedSoASecondCallAppendsAgain) {
    Load(Lines({"Vel [VEL]=9600"}));
    opc.RegVarAlt("NOVO", "a", 1);
    opc.RegVarAlt("NOVO", "b", 1);
    Variant v = std::string("x");
    opc.RegCon("NOVO", v);
    EXPECT_EQ(v, Variant(""));
    opc.RegExe("", 0);
    EXPECT_EQ(dir.read("p.par"), Lines({"Vel [VEL]=9600", "??? [NOVO]=a", "??? [NOVO]=b"}));
}

TEST_F(RecordsTest, RegVarEliMarksTheRecordAndRegExeDropsOrKeepsTheMark) {
    const struct {
        std::int16_t lpz;
        std::string expected;
    } cases[] = {
        {0, Lines({"A [A]=1", kEliminated, "C [C]=3"})},
        {1, Lines({"A [A]=1", "C [C]=3"})},
        // Any other lpz writes no record at all.
        {2, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.lpz);
        Load(Lines({"A [A]=1", "Vel [N:VEL]=9600", "C [C]=3"}));
        opc.RegVarEli("vel");
        std::string txi;
        opc.RegConIdx(2, txi);
        EXPECT_EQ(txi, kEliminated);
        std::int16_t ok = 0;
        opc.RegExe("", c.lpz, ok);
        EXPECT_EQ(ok, 1);
        EXPECT_EQ(dir.read("p.par"), c.expected);
    }
}

TEST_F(RecordsTest, RegCabAltReplacesTheValueAfterTheFirstColon) {
    const struct {
        std::int16_t idx;
        std::string expected;
    } cases[] = {
        {5, "'Descricao  : Nova"},
        {7, "Porta [PORTA] = COM1"},  // no colon: unchanged
        {8, "Vel [N: Nova"},          // the first colon, wherever it is
        {0, ""},                      // slot 0 has no colon in its name here
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.idx);
        Load(kEight);
        opc.RegCabAlt(c.idx, "Nova");
        std::string txi;
        opc.RegConIdx(c.idx, txi);
        if (c.idx == 0) {
            EXPECT_EQ(txi, dir.file("p.par"));
        } else {
            EXPECT_EQ(txi, c.expected);
        }
        opc.RegExe("", 0);
    }
    Load(kEight);
    opc.RegCabAlt(5, "Nova");
    opc.RegExe("", 0);
    std::string expected = kEight;
    expected.replace(expected.find("Loja"), 4, "Nova");
    EXPECT_EQ(dir.read("p.par"), expected);
}

TEST_F(RecordsTest, RegExeReleasesTheRecordsAndLeavesTheIndexStale) {
    Load(kEight);
    const std::string index = opc.nameIndex();
    ASSERT_FALSE(index.empty());
    opc.RegExe("", 0);
    EXPECT_TRUE(opc.records().empty());
    EXPECT_EQ(opc.nameIndex(), index);

    // The stale index names records that are gone: nothing is found and nothing is changed.
    std::string txi = "x";
    opc.RegConIdx(1, txi);
    EXPECT_EQ(txi, "");
    Variant v = std::string("x");
    std::int16_t ok = 0;
    opc.RegCon("VEL", v, ok);
    EXPECT_EQ(v, Variant(""));
    EXPECT_EQ(ok, 1);
    opc.RegVarAlt("VEL", "1", 1);
    opc.RegVarEli("VEL");
    opc.RegCabAlt(1, "x");
    EXPECT_TRUE(opc.records().empty());
    EXPECT_EQ(dir.read("p.par"), kEight);

    // Writing again with nothing loaded and no name given writes nothing anywhere.
    opc.RegExe("", 0, ok);
    EXPECT_LT(ok, 0);
    EXPECT_EQ(FilesIn(dir), 1u);

    // One record appended again, while the stale index still names VEL as record 1: the
    // elimination finds no such record and touches nothing.
    Load(Lines({"Vel [VEL]=9600"}));
    opc.RegExe("", 0);
    opc.RegVarAlt("NOVO", "1", 1);
    opc.RegVarEli("VEL");
    EXPECT_EQ(opc.records(), std::vector<std::string>{"??? [NOVO]=1"});
}

// The ways RegExe ends a write on a real folder: the target gets the records whole, or keeps what
// it held, and no replacement file is left beside it.
TEST_F(RecordsTest, RegExeWritesTheTargetWholeOrLeavesItAsItWas) {
    const std::string before = Lines({"'1", "'2", "'3", "'4", "'5", "A [A]=1"});
    const std::string after = Lines({"'1", "'2", "'3", "'4", "'5", "A [A]=2"});
    // The name of another file is taken as given, its blanks included.
    const std::string copy = "novo/pasta/copia.par ";
    const struct {
        const char* what;
        std::string target;
        bool stale, reading;
        std::int16_t ok;
        std::string loaded;
        std::size_t files;
    } cases[] = {
        {"in place", "", false, false, 1, after, 1},
        {"a stale replacement file is replaced", "", true, false, 1, after, 1},
        {"another file, its folders made", dir.file(copy), false, false, 1, before, 2},
        {"a file open for reading is refused", "", false, true, -platform::kErrFileAlreadyOpen,
         before, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        std::filesystem::remove_all(dir.file("novo"));
        const std::string fic = Load(before);
        if (c.stale) dir.write("p.par.grv~", "restos");
        opc.RegVarAlt("A", "2", 0);
        RecordTdaOpc reader;
        if (c.reading) reader.tboPrp(fic);
        std::int16_t ok = 0;
        opc.RegExe(c.target, 0, ok);
        reader.tboFim();
        EXPECT_EQ(ok, c.ok);
        EXPECT_EQ(dir.read("p.par"), c.loaded);
        if (!c.target.empty()) {
            EXPECT_EQ(dir.read(copy), after);
        }
        EXPECT_EQ(FilesIn(dir), c.files);
    }
}

TEST_F(RecordsTest, RegExeMakesNothingUnderDev) {
    for (const std::string fic : {"/dev/lumbra-falta.par", "/dev/lumbra-falta/x.par"}) {
        Load(Lines({"A [A]=1"}));
        std::int16_t ok = 0;
        opc.RegExe(fic, 0, ok);
        EXPECT_LT(ok, 0) << fic;
    }
    for (const char* made :
         {"/dev/lumbra-falta.par", "/dev/lumbra-falta.par.grv~", "/dev/lumbra-falta"})
        EXPECT_FALSE(std::filesystem::exists(made)) << made;
}

TEST_F(RecordsTest, RegExeToAPipeWritesIntoItWithoutReplacingIt) {
    Load(Lines({"A [A]=1", "B [B]=2"}));
    const std::string pipe = dir.file("tubo");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    ASSERT_GE(reader, 0);
    std::int16_t ok = 0;
    opc.RegExe(pipe, 0, ok);
    EXPECT_EQ(ok, 1);
    char buf[64] = {};
    const ssize_t got = ::read(reader, buf, sizeof buf);
    ::close(reader);
    ASSERT_GT(got, 0);
    EXPECT_EQ(std::string(buf, static_cast<std::size_t>(got)), Lines({"A [A]=1", "B [B]=2"}));
    struct stat st {};
    ASSERT_EQ(::stat(pipe.c_str(), &st), 0);
    EXPECT_TRUE(S_ISFIFO(st.st_mode));
    EXPECT_FALSE(dir.exists("tubo.grv~"));
}

TEST_F(RecordsTest, AWriteThatFailsKeepsTheOldFileWhole) {
    // A file-size limit makes the host refuse the write part way, as a full disk does.
    std::string big;
    for (int i = 0; i < 2000; ++i)
        big += "Linha [L" + std::to_string(i) + "]=" + std::string(40, 'x') + "\r\n";
    Load(big);
    opc.RegVarAlt("L0", "y", 0);

    struct sigaction ignore {};
    ignore.sa_handler = SIG_IGN;
    struct sigaction previous {};
    ASSERT_EQ(::sigaction(SIGXFSZ, &ignore, &previous), 0);
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    rlimit small = old;
    small.rlim_cur = 4096;
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    std::int16_t ok = 0;
    opc.RegExe("", 0, ok);
    ::setrlimit(RLIMIT_FSIZE, &old);
    ::sigaction(SIGXFSZ, &previous, nullptr);

    EXPECT_EQ(ok, -platform::kErrDiskFull);
    EXPECT_EQ(dir.read("p.par"), big);
    EXPECT_EQ(FilesIn(dir), 1u) << "the part written is thrown away";
}

TEST_F(RecordsTest, AFolderThatRefusesNewFilesGetsTheFileWrittenInPlace) {
    const std::string fic = Load(Lines({"A [A]=1"}));
    opc.RegVarAlt("A", "2", 0);
    ASSERT_EQ(::chmod(dir.path().c_str(), 0777), 0);
    ASSERT_EQ(::chmod(fic.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(dir.path().c_str(), 0555), 0);
    const int rc = RunUnprivileged([this] {
        std::int16_t ok = 0;
        opc.RegExe("", 0, ok);
        return ok == 1 ? 0 : 1;
    });
    ::chmod(dir.path().c_str(), 0755);
    if (rc == kCannotDropRoot) GTEST_SKIP() << "cannot run as an ordinary user";
    EXPECT_EQ(rc, 0);
    EXPECT_EQ(dir.read("p.par"), Lines({"A [A]=2"}));
    EXPECT_EQ(FilesIn(dir), 1u);
}

TEST_F(RecordsTest, RecordsBeyond32000AreKeptButNotFound) {
    std::string bytes;
    for (int i = 1; i <= 32000; ++i)
        bytes += "'\r\n";
    bytes += "Ultimo [ULTIMO]=1\r\n";
    Load(bytes);
    EXPECT_EQ(opc.records().size(), 32002u);
    Variant v = std::string("x");
    opc.RegCon("ULTIMO", v);
    EXPECT_EQ(v, Variant(""));
    opc.RegVarAlt("ULTIMO", "2", 0);
    opc.RegExe("", 0);
    EXPECT_EQ(dir.read("p.par"), bytes);
}

TEST_F(RecordsTest, RegPrpOfAMissingFileShowsTheMessageAndEndsTheProgram) {
    EXPECT_THROW(opc.RegPrp(dir.file("falta.par")), platform::ProgramEnded);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].title, "Erro a abrir ficheiro");
    EXPECT_NE(boxes.boxes()[0].text.find("(LER)"), std::string::npos) << boxes.boxes()[0].text;
    EXPECT_EQ(boxes.endings().size(), 1u);
    boxes.clear();
    // The program would have ended; the number reserved for the file is left on the stack.
    opc.KvFim();
}

}  // namespace
}  // namespace lumbra::test
