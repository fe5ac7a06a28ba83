// The file procedures: the name index, paths, and text files on real files and folders.

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "platform/file_handles.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "util/files/name_index.h"
#include "util/files/paths.h"
#include "util/files/text_files.h"

namespace lumbra {
namespace {

using namespace std::string_literals;
using Words = std::vector<std::string>;

std::string Index(const std::vector<std::tuple<std::string, std::int16_t>>& entries) {
    std::string idx;
    for (const auto& [name, pos] : entries) {
        std::int16_t ok = 0;
        IdxAdd(idx, name, pos == 32000 ? 255 : 1, pos, ok);
        EXPECT_EQ(ok, 1) << name;
    }
    return idx;
}

TEST(NameIndex, EntriesAreLaidOutByteForByteAndRefusedWhenTheyWouldBreakTheLayout) {
    EXPECT_EQ(Index({{"PORTA", 3}, {"VEL", 300}}),
              "\x01\x00\x03\x00PORTA\x00\x01\x01\x2C\x00VEL\x00"s);
    // name, kind, position, added
    const std::tuple<std::string, std::int16_t, std::int16_t, std::int16_t> cases[] = {
        {"A", 255, 32000, 1}, {"", 1, 1, 1},      {"A", 0, 1, 0},    {"A", 256, 1, 0},
        {"A", 1, 0, 0},       {"A", 1, 32001, 0}, {"A\0B"s, 1, 1, 0}};
    for (const auto& [name, tip, pos, ok] : cases) {
        std::string idx = "x";
        std::int16_t added = 7;
        IdxAdd(idx, name, tip, pos, added);
        EXPECT_EQ(added, ok) << tip << " " << pos;
        EXPECT_EQ(idx.size(), 1 + (ok == 1 ? 5 + name.size() : 0)) << tip << " " << pos;
    }
    std::int16_t pos = 9;
    IdxPosDec("\x80\x00"s, pos);  // beyond 16 bits: no position
    EXPECT_EQ(pos, 0);
}

TEST(NameIndex, LookupFindsTheFirstEntryOfExactlyThatName) {
    // Position 65 is coded 0, 'A', so that entry begins 0, 'A', 0 before its own name; an entry at
    // 256 ends its code in 0 next to its opening mark, which reads like an empty name.
    const std::string idx =
        Index({{"Z", 65}, {"A", 7}, {"X", 256}, {"DUP", 2}, {"DUP", 5}, {"", 40}, {"K", 32000}});
    const std::tuple<std::string, std::int16_t, std::int16_t> cases[] = {
        {"A", 7, 1}, {"DUP", 2, 1}, {"", 40, 1},  {"K", 32000, 255},
        {"a", 0, 0}, {"DU", 0, 0},  {"UP", 0, 0}, {"ABSENT", 0, 0}};
    for (const auto& [name, pos, tip] : cases) {
        std::int16_t t = 9, p = 9;
        IdxCon(idx, name, t, p);
        EXPECT_EQ(std::make_pair(p, t), std::make_pair(pos, tip)) << "'" << name << "'";
    }
}

TEST(Paths, JoinSplitAndDecompose) {
    const std::tuple<std::string, std::string, std::string> joins[] = {
        {"C:\\a\\", "\\b", "C:\\a\\b"},
        {"", "C:", "C:\\"},
        {"C:", "a", "C:\\a"},
        {"x", "sub/a.par", "x/sub/a.par"},
        {"x", "a.par", "x" + std::string(SepDir) + "a.par"}};
    for (const auto& [dir, nome, expected] : joins) {
        std::string path = "stale";
        PathJun(dir, nome, path);
        EXPECT_EQ(path, expected) << dir << " + " << nome;
    }
    // path, PathSep's folder and name, PathDrv of that folder
    const std::tuple<std::string, Words> splits[] = {
        {"  C:\\a/b.txt  ", {"C:\\a", "b.txt", "C", "\\a"}},
        {"[CFG]LUMBRA.PAR", {"[CFG]", "LUMBRA.PAR", "", "[CFG]"}},
        {"\\\\srv\\share\\Cfg\\x", {"\\\\srv\\share\\Cfg", "x", "\\\\srv", "share\\Cfg"}},
        {"plain.par", {"", "plain.par", "", ""}}};
    for (const auto& [path, parts] : splits) {
        Words got(4, "stale");
        PathSep(path, got[0], got[1]);
        PathDrv(got[0], got[2], got[3]);
        EXPECT_EQ(got, parts) << path;
    }
}

// An extension is one to three characters after the last "."; its position is 16-bit.
TEST(Paths, PathExtFindsOnlyShortExtensionsWithinSixteenBitPositions) {
    const std::string a(32766, 'a'), longExt = a + ".par", tooLong = a + "a.par";
    // name, mode (1 also splits at a blank), base, extension
    const std::tuple<std::string, std::int16_t, std::string, std::string> cases[] = {
        {"Lumbra.par", 0, "Lumbra", "par"},
        {"LUMBRA PAR", 1, "LUMBRA", "PAR"},
        {"LUMBRA PAR", 0, "LUMBRA PAR", ""},
        {"a.b.c", 0, "a.b", "c"},
        {"a.json", 0, "a.json", ""},
        {"PRN", 0, "PRN", ""},
        {".par", 0, "", "par"},
        {longExt, 0, a, "par"},
        {tooLong, 0, tooLong, ""}};
    for (const auto& [nome, mo, base, ext] : cases) {
        std::string b = "stale", e = "stale";
        PathExt(nome, b, e, mo);
        EXPECT_EQ(Words({b, e}), Words({base, ext})) << nome.size() << " mo " << mo;
    }
}

class TextFilesTest : public ::testing::Test {
  protected:
    void TearDown() override { platform::FileCloseAll(); }
    test::TempDir tmp;
    test::RecordingMsgSink sink;
};

TEST_F(TextFilesTest, FicAbrErrorModesDecideBoxAndEnd) {
    const std::tuple<std::int16_t, bool, bool> cases[] = {
        {0, false, false}, {1, false, true}, {2, true, false}, {3, true, true}};
    const std::string fic = tmp.file("Lumbra.par");
    const test::RecordedBox box{
        "Erro a abrir ficheiro",
        "Erro : 53   " + platform::ErrDescription(53) + "\r\nFicheiro :" + fic + "   (LER)",
        platform::MsgIcon::Critical};
    for (const auto& [mode, shows, ends] : cases) {
        sink.clear();
        ASSERT_EQ(platform::FileOpen(5, tmp.file("other"), platform::FileMode::Output), 0);
        std::int16_t err = mode;
        bool ended = false;
        try {
            FicAbr(1, fic, "I", "LER", err);
        } catch (const platform::ProgramEnded&) {
            ended = true;
        }
        EXPECT_EQ(err, platform::kErrFileNotFound) << mode;
        EXPECT_EQ(ended, ends) << mode;
        EXPECT_EQ(sink.boxes(), shows ? std::vector{box} : std::vector<test::RecordedBox>{});
        EXPECT_EQ(platform::FileIsOpen(5), !ends) << mode;  // ending closes every file
        platform::FileCloseAll();
    }
}

TEST_F(TextFilesTest, LinesAreWrittenInTheOpeningModeAndReadBackToTheEnd) {
    // mode, file right after opening, file after two lines
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"O", "", "new\r\n\r\n"}, {"A", "old\r\n", "old\r\nnew\r\n\r\n"}};
    for (const auto& [mo, onOpen, after] : cases) {
        tmp.write("a.txt", "old\r\n");
        std::int16_t err = 3;
        FicAbr(2, tmp.file("a.txt"), mo, "GRV", err);
        EXPECT_EQ(tmp.read("a.txt"), onOpen) << mo;
        FicGrvLin(2, "new", err);
        FicGrvLin(2, "", err);
        EXPECT_EQ(err, 3) << mo;  // left as passed while all goes well
        platform::FileClose(2);
        EXPECT_EQ(tmp.read("a.txt"), after) << mo;
    }
    std::int16_t err = 0;
    Words lines(4);
    FicAbr(1, tmp.file("a.txt"), "I", "", err);
    for (std::string& lin : lines)
        FicLerLin(1, lin, err);
    EXPECT_EQ(lines, Words({"old", "new", "", ""}));
    EXPECT_EQ(err, platform::kErrInputPastEnd);
    err = 0;
    FicAbr(3, "/dev/full", "A", "", err);
    FicGrvLin(3, "x", err);
    EXPECT_EQ(err, platform::kErrDiskFull);
    EXPECT_TRUE(sink.boxes().empty());
}

TEST_F(TextFilesTest, FicExiAndFicAbrOkTellPresentMissingAndUnreachable) {
    tmp.write("a.par", "x");
    // file, FicExi, FicAbrOk for reading
    const std::tuple<std::string, std::int16_t, std::int16_t> cases[] = {
        {tmp.file("a.par"), 1, 1}, {tmp.file("b.par"), 0, -53}, {tmp.file("a.par/x"), -76, -76}};
    for (const auto& [fic, exi, ok] : cases) {
        std::int16_t got = 9, opened = 9;
        FicExi(fic, got);
        FicAbrOk(3, fic, "I", opened);
        platform::FileClose(3);
        EXPECT_EQ(std::make_pair(got, opened), std::make_pair(exi, ok)) << fic;
    }
    EXPECT_EQ(platform::FreeFile(), 1);  // nothing left open
}

TEST(FoldersAlongTest, ListsEveryFolderFromTheTop) {
    const std::tuple<std::string, Words> cases[] = {
        {"C:\\Dados\\Cfg", {"C:\\", "C:\\Dados", "C:\\Dados\\Cfg"}},
        {"\\\\srv\\share", {"\\\\srv", "\\\\srv\\share"}},
        {"/tmp/a/", {"/", "/tmp", "/tmp/a"}},
        {"C:\\a/b", {"C:\\", "C:\\a", "C:\\a\\b"}},
        {"Novo\\Sub", {"Novo", "Novo\\Sub"}},
        // More pieces than a 16-bit count holds: no folder at all, rather than a walk past them.
        {std::string(32768, '/'), {}}};
    for (const auto& [dir, steps] : cases)
        EXPECT_EQ(FoldersAlong(dir), steps) << dir.substr(0, 20);
}

TEST_F(TextFilesTest, FicPrpGrvCreatesMissingFoldersAndAnEmptyFileOnlyWhenNeeded) {
    test::ScopedCurrentDir cwd(tmp.path());
    tmp.write("kept.par", "keep");
    tmp.write("file", "x");
    // file, what is created, ok
    const std::tuple<std::string, std::string, std::int16_t> cases[] = {
        {tmp.file("Novo/Sub/a.par"), "Novo/Sub/a.par", 1},
        {"Win\\Sub\\c.par", "Win/Sub/c.par", 1},
        {tmp.file("kept.par"), "", 1},
        {tmp.file("file/a.par"), "", 0},  // a file stands where a folder should be
    };
    for (const auto& [fic, created, ok] : cases) {
        std::int16_t got = -1;
        FicPrpGrv(fic, got);
        EXPECT_EQ(got, ok) << fic;
        EXPECT_TRUE(created.empty() || (tmp.exists(created) && tmp.read(created).empty())) << fic;
    }
    EXPECT_EQ(tmp.read("kept.par"), "keep");
    std::int16_t err = -1;
    DirCriArv(tmp.file("a/b/c"), err);
    EXPECT_EQ(err, 0);
    DirCriArv(tmp.file("a/b"), err);
    EXPECT_EQ(err, platform::kErrPathFileAccess);  // the last one existed already
    EXPECT_EQ(platform::FreeFile(), 1);
}

}  // namespace
}  // namespace lumbra
