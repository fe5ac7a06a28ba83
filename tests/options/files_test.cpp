// Parameter files written: every write gives the target the whole new text or leaves the old one.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/tda_opc.h"
#include "tests/support/recording_msg_sink.h"

namespace lumbra::test {
namespace {

// With limited, files are limited to 4 KiB: the host refuses a write part way, as a full disk does.
void WithSizeLimit(bool limited, const std::function<void()>& work) {
    struct sigaction ignore {
    }, previous{};
    ignore.sa_handler = SIG_IGN;
    ::sigaction(SIGXFSZ, &ignore, &previous);
    rlimit old{};
    ::getrlimit(RLIMIT_FSIZE, &old);
    rlimit small = old;
    if (limited) small.rlim_cur = 4096;
    ::setrlimit(RLIMIT_FSIZE, &small);
    work();
    ::setrlimit(RLIMIT_FSIZE, &old);
    ::sigaction(SIGXFSZ, &previous, nullptr);
}

// 200 lines of 70 bytes: more than the 4 KiB limit lets through.
Words ManyLines() {
    Words many;
    for (int i = 0; i < 200; ++i)
        many.push_back("Linha [L" + std::to_string(i) + "]=" + std::string(60, 'x'));
    return many;
}

class Files : public ::testing::Test {
  protected:
    void TearDown() override {
        EXPECT_EQ(opc.fileCount(), 0) << "every file the test opened is closed";
        EXPECT_TRUE(boxes.boxes().empty()) << "writing shows no message";
    }
    std::string Load(const std::string& bytes) {
        dir.write("p.par", bytes);
        opc.RegPrp(dir.file("p.par"));
        return dir.file("p.par");
    }
    std::string Written() {
        opc.RegExe("", 0);
        return dir.read("p.par");
    }

    RecordingMsgSink boxes;
    TempDir dir;
    OpenTdaOpc opc;
};

TEST_F(Files, RegPrpKeepsLinesAsWrittenAndRegExeEndsEachWithCrLf) {
    // However long a line is, it comes back byte for byte.
    const std::string comment = "'" + std::string(40000, '\xE7');
    const std::string fic =
        Load("a +\r\n+ b\r\nCmd [CMD]=chr$(27)\rso LF\n" + comment + "\r\nfim sem terminador");
    EXPECT_EQ(opc.records(), (Words{fic, "a +", "+ b", "Cmd [CMD]=chr$(27)", "so LF", comment,
                                    "fim sem terminador"}));
    std::string past = "x";
    opc.RegConIdx(7, past);
    EXPECT_EQ(past, "") << "beyond the last record";
    EXPECT_EQ(Written(),
              Lines({"a +", "+ b", "Cmd [CMD]=chr$(27)", "so LF", comment, "fim sem terminador"}));
}

TEST_F(Files, RegConFindsVariablesByTheNameAfterTheirKind) {
    // A line whose "=" comes too early is no assignment and names nothing.
    const std::tuple<std::string, std::string, Variant, Variant, std::int16_t> cases[] = {
        {"Vel [N:VEL]=9600", "VEL", "", "9600", 1},
        {"Vel [ vel ]=9600", " Vel ", "", "9600", 1},
        {"Vel [VEL]= &H1B", "VEL", 0.0, 27.0, 1},
        {"Vel [VEL]=99999", "VEL", std::int16_t{7}, std::int16_t{0}, 0},
        {"V [=1", "V", "x", "", 1}};
    for (const auto& [line, var, entry, expected, ok] : cases) {
        Load(Lines({line}));
        Variant vp = entry;
        std::int16_t got = -1;
        opc.RegCon(var, vp, got);
        EXPECT_EQ(std::make_tuple(vp, got), std::make_tuple(expected, ok)) << line;
        opc.RegExe("", 0);
    }
}

// RegVarAlt: the blanks after the old "=" go with the old value, and so does a later "="; a
// nameless record is never found. Null: RegVarEli, then lpz 0 keeps the mark, 1 drops it, 2 writes
// nothing.
TEST_F(Files, RecordsChangedAppendedOrEliminatedAreWrittenBack) {
    const Words three = {"A [A]=1", "Vel [N:VEL]=9600", "C [C]=3"};
    const std::tuple<Words, std::string, Variant, std::int16_t, std::int16_t, Words> cases[] = {
        {{"Vel [VEL]=9600"}, "vel", std::int16_t{19200}, 0, 0, {"Vel [VEL]=19200"}},
        {{"Porta [PORTA] = a=b"}, "PORTA", " c ", 0, 0, {"Porta [PORTA] = c "}},
        {{"Vel [VEL]=9600"}, " Novo ", 1.5, 1, 0, {"Vel [VEL]=9600", "??? [ Novo ]=1.5"}},
        {{"' coment\xE1rio"}, "", "x", 0, 0, {"' coment\xE1rio"}},
        {three, "vel", Variant::null(), 0, 0, {"A [A]=1", "\xAB\xBB", "C [C]=3"}},
        {three, "vel", Variant::null(), 0, 1, {"A [A]=1", "C [C]=3"}},
        {three, "vel", Variant::null(), 0, 2, {}}};
    for (const auto& [file, var, vp, cri, lpz, expected] : cases) {
        Load(Lines(file));
        vp.isNull() ? opc.RegVarEli(var) : opc.RegVarAlt(var, vp, cri);
        std::int16_t ok = 0;
        opc.RegExe("", lpz, ok);
        EXPECT_EQ(std::make_tuple(ok, dir.read("p.par")), std::make_tuple(1, Lines(expected)));
    }
}

TEST_F(Files, AfterRegExeTheStaleIndexFindsAndChangesNothing) {
    const std::string old = Lines({"Vel [VEL]=9600", "X [X]=1"});
    Load(old);
    opc.RegExe("", 0);
    Variant v = std::string("x");
    opc.RegCon("VEL", v);
    opc.RegVarAlt("VEL", "1", 1);
    opc.RegVarEli("X");
    opc.RegCabAlt(1, "x");
    EXPECT_TRUE(opc.records().empty());
    std::int16_t ok = 0;
    opc.RegExe("", 0, ok);  // nothing loaded and no name given: nothing written
    EXPECT_EQ(std::make_tuple(v, ok < 0, dir.read("p.par")),
              std::make_tuple(Variant(""), true, old));

    // One record appended while the index still names VEL as record 1: nothing to eliminate.
    Load(old);
    opc.RegExe("", 0);
    opc.RegVarAlt("NOVO", "1", 1);
    opc.RegVarEli("VEL");
    EXPECT_EQ(opc.records(), Words{"??? [NOVO]=1"});
    opc.RegExe(dir.file("q.par"), 0);
}

TEST_F(Files, RecordsBeyond32000AreKeptButNotFound) {
    Words lines(31999, "'");
    lines.insert(lines.end(), {"Penultimo [P]=1", "Ultimo [U]=1"});
    const std::string bytes = Lines(lines);
    Load(bytes);
    Variant p = std::string("x"), u = std::string("x");
    opc.RegCon("P", p);
    opc.RegCon("U", u);
    EXPECT_EQ(std::make_tuple(p, u), std::make_tuple(Variant("1"), Variant("")));
    opc.RegVarAlt("U", "2", 0);
    EXPECT_EQ(Written(), bytes);
}

// The ways RegExe ends a write: the target gets the records whole, or keeps what it held.
TEST_F(Files, RegExeWritesTheTargetWholeOrLeavesItAsItWas) {
    const std::string before = Lines({"A [A]=1"}), after = Lines({"A [A]=2"});
    const std::string big = Lines(ManyLines());
    // The name of another file is taken as given, its blanks included.
    const std::string copy = "novo/pasta/copia.par ";
    // what (Other: folders are made), content, target, ok, files in the folder after
    enum What { InPlace, Stale, Other, Reading, Full };
    const std::tuple<What, std::string, std::string, std::int16_t, std::size_t> cases[] = {
        {InPlace, before, "", 1, 1},
        {Stale, before, "", 1, 1},
        {Other, before, dir.file(copy), 1, 2},
        {Reading, before, "", -platform::kErrFileAlreadyOpen, 1},
        {Full, big, "", -platform::kErrDiskFull, 1}};
    for (const auto& [what, content, target, ok, files] : cases) {
        SCOPED_TRACE(what);
        std::filesystem::remove_all(dir.file("novo"));
        const std::string fic = Load(content);
        if (what == Stale) dir.write("p.par.grv~", "restos");
        opc.RegVarAlt("A", "2", 1);
        OpenTdaOpc reader;
        if (what == Reading) reader.tboPrp(fic);
        std::int16_t got = 0;
        WithSizeLimit(what == Full, [&] { opc.RegExe(target, 0, got); });
        reader.tboFim();
        EXPECT_EQ(got, ok);
        EXPECT_EQ(dir.read("p.par"), ok == 1 && target.empty() ? after : content);
        EXPECT_EQ(dir.read(copy), target.empty() ? "" : after);
        EXPECT_EQ(FilesIn(dir), files);
    }
}

const std::string kRule = "'" + std::string(79, '=');
const std::string kConfiguracao = "Configura\xE7\xE3o";
// The header written for Lumbra.par with the description "Configuração", then a DEF zone.
std::string NewFile(const std::string& name, const Words& body) {
    return Lines({"'Nome       : Lumbra.par", "'Tipo       : PAR",
                  "'Data       : ", "'Versao     : 1.0", "'Descricao  : " + kConfiguracao, "",
                  kRule, "#DEF - " + name, kRule}) +
           Lines(body) + Lines({"##", "", ""});
}

// A new file: the old content stays until it is closed whole; a failed write keeps the old one.
TEST_F(Files, WritingANewFileCommitsItWholeOrKeepsTheOldOne) {
    const std::string old = Lines({"'Nome       : velho"}), fic1 = dir.file("Lumbra.par");
    const Words zone = {"", "A [A]=1"};
    enum How { Plain, Limited, ReadOnly };
    // Slot 0 of the zone's lines is never written.
    const std::tuple<std::string, How, Words, int, int, int, std::string> cases[] = {
        {fic1, Plain, {"x", "A [A]=1"}, 1, 1, 1, NewFile("Geral", {"A [A]=1"})},
        {fic1, Limited, ManyLines(), 1, -61, -61, old},
        {dir.file("falta/novo.par"), Plain, zone, -76, -76, -76, old},
        {dir.file("novo.par"), ReadOnly, zone, -70, -70, -70, old},
        {"/dev/full", Plain, zone, -61, -61, -61, old},
        {"", Plain, zone, -52, -52, -52, old}};
    const ScopedCurrentDir inDir(dir.path());
    for (const auto& [fic, how, lines, cab, zon, fim, after] : cases) {
        // Root writes whatever a folder's permissions say.
        if (how == ReadOnly && ::geteuid() == 0) continue;
        dir.write("Lumbra.par", old);
        std::int16_t cabOk = 0, zonOk = 0, fimOk = 0;
        if (how == ReadOnly) ::chmod(dir.path().c_str(), 0555);
        WithSizeLimit(how == Limited, [&] {
            opc.tboFic(fic);
            opc.CabPrp("", "", "", kConfiguracao);
            opc.CabCri(0, cabOk);
            opc.RegZon("DEF", lines, "Geral", zonOk);
            EXPECT_EQ(dir.read("Lumbra.par"), old) << "nothing shows before the close";
            opc.tboFim(fimOk);
        });
        ::chmod(dir.path().c_str(), 0755);
        EXPECT_EQ(std::make_tuple(cabOk, zonOk, fimOk, dir.read("Lumbra.par")),
                  std::make_tuple(cab, zon, fim, after))
            << fic;
        EXPECT_EQ(FilesIn(dir), 1u) << "no replacement file or part written is left";
    }
    std::string label, line;
    opc.CabCon("V", 5, label);
    opc.CabCon("", 2, line);
    EXPECT_EQ(label + "|" + line, "'Descricao|'Tipo       : PAR");
}

TEST_F(Files, EveryCloseOfAFileBeingWrittenGivesItsTargetTheWrittenText) {
    const std::string written = NewFile("", {});
    enum class Close { KvIni, Destroy, ProgramEnd };
    for (const Close close : {Close::KvIni, Close::Destroy, Close::ProgramEnd}) {
        dir.write("Lumbra.par", "velho\r\n");
        auto writer = std::make_unique<OpenTdaOpc>();
        writer->tboFic(dir.file("Lumbra.par"));
        writer->CabPrp("", "", "", kConfiguracao);
        writer->CabCri();
        writer->RegZon("DEF", {}, "");
        if (close == Close::KvIni) writer->KvIni();
        // Error mode 3: a message, then the end of the program.
        if (close == Close::ProgramEnd) {
            EXPECT_THROW(writer->tboPrp(dir.file("falta.par")), platform::ProgramEnded);
            EXPECT_EQ(dir.read("Lumbra.par"), written);
            boxes.clear();
        }
        writer.reset();
        EXPECT_EQ(dir.read("Lumbra.par"), written) << static_cast<int>(close);
        EXPECT_EQ(FilesIn(dir), 1u) << "no replacement file survives the close";
    }
}

}  // namespace
}  // namespace lumbra::test
