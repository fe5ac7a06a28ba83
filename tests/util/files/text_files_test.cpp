#include "util/files/text_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "platform/file_handles.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"

namespace lumbra {
namespace {

using platform::ProgramEnded;
using test::RecordedBox;

class TextFilesTest : public ::testing::Test {
  protected:
    void TearDown() override { platform::FileCloseAll(); }
    test::TempDir tmp;
    test::RecordingMsgSink sink;
};

TEST_F(TextFilesTest, FicAbrErrorModesDecideBoxAndEnd) {
    const struct {
        std::int16_t mode;
        bool box, ends;
    } cases[] = {
        {0, false, false}, {1, false, true}, {2, true, false}, {3, true, true}, {7, false, false}};
    const std::string fic = tmp.file("Lumbra.par");
    const RecordedBox box{"Erro a abrir ficheiro",
                          "Erro : 53   File not found\r\nFicheiro :" + fic + "   (LER)",
                          platform::MsgIcon::Critical};
    for (const auto& c : cases) {
        sink.clear();
        ASSERT_EQ(platform::FileOpen(5, tmp.file("other"), platform::FileMode::Output), 0);
        std::int16_t err = c.mode;
        bool ended = false;
        try {
            FicAbr(1, fic, "I", "LER", err);
        } catch (const ProgramEnded&) {
            ended = true;
        }
        EXPECT_EQ(err, platform::kErrFileNotFound) << c.mode;
        EXPECT_EQ(ended, c.ends) << c.mode;
        EXPECT_EQ(sink.boxes(), c.box ? std::vector{box} : std::vector<RecordedBox>{}) << c.mode;
        EXPECT_EQ(platform::FileIsOpen(5), !c.ends) << c.mode;  // ending closes every file
        platform::FileCloseAll();
    }
}

TEST_F(TextFilesTest, FicAbrOpensInItsModeAndLeavesErrAsPassed) {
    const struct {
        std::string mo, onOpen, after;
    } cases[] = {
        {"O", "", "new\r\n\r\n"},  // emptied before anything is written
        {"A", "old\r\n", "old\r\nnew\r\n\r\n"},
    };
    for (const auto& c : cases) {
        tmp.write("a.txt", "old\r\n");
        std::int16_t err = 3;
        FicAbr(2, tmp.file("a.txt"), c.mo, "GRV", err);
        EXPECT_EQ(tmp.read("a.txt"), c.onOpen) << c.mo;
        FicGrvLin(2, "new", err);
        FicGrvLin(2, "", err);
        EXPECT_EQ(err, 3) << c.mo;
        platform::FileClose(2);
        EXPECT_EQ(tmp.read("a.txt"), c.after) << c.mo;
    }
    EXPECT_TRUE(sink.boxes().empty());
}

TEST_F(TextFilesTest, FicAbrOkGivesOneOrMinusTheError) {
    tmp.write("a.txt", "");
    const std::pair<std::string, std::int16_t> cases[] = {
        {tmp.file("a.txt"), 1},
        {tmp.file("no/a.txt"), -76},
    };
    for (const auto& [fic, ok] : cases) {
        std::int16_t got = 0;
        FicAbrOk(3, fic, "I", got);
        EXPECT_EQ(got, ok) << fic;
        platform::FileClose(3);
    }
    EXPECT_TRUE(sink.boxes().empty());
}

TEST_F(TextFilesTest, ReadOnlyFileRefusesOutputWithPermissionDeniedInTheBox) {
    tmp.write("ro.par", "keep");
    ASSERT_EQ(::chmod(tmp.file("ro.par").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(tmp.path().c_str(), 0555), 0);  // the file cannot be deleted either
    const std::string fic = tmp.file("ro.par");
    const int rc = test::RunUnprivileged([&] {
        std::int16_t err = 2;
        FicAbr(1, fic, "O", "GRV", err);
        const std::string text = "Erro : 70   Permission denied\r\nFicheiro :" + fic + "   (GRV)";
        return sink.boxes().size() == 1 && sink.boxes()[0].text == text ? err : 0;
    });
    if (rc == test::kCannotDropRoot) GTEST_SKIP() << "cannot give up root here";
    EXPECT_EQ(rc, platform::kErrPermissionDenied);
    EXPECT_EQ(tmp.read("ro.par"), "keep");
}

TEST_F(TextFilesTest, LinesWrittenToAFullDiskReportDiskFull) {
    std::int16_t err = 0;
    FicAbr(1, "/dev/full", "A", "", err);
    ASSERT_EQ(err, 0);
    FicGrvLin(1, "x", err);
    EXPECT_EQ(err, platform::kErrDiskFull);
}

TEST_F(TextFilesTest, FicLerLinReadsToTheLastLineThenFails) {
    tmp.write("r.txt", "a\r\n\r\nlast");
    std::int16_t err = 0;
    FicAbr(1, tmp.file("r.txt"), "I", "", err);
    std::vector<std::string> lines;
    std::string lin;
    for (int i = 0; i < 3; ++i) {
        FicLerLin(1, lin, err);
        lines.push_back(lin);
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "", "last"}));
    EXPECT_EQ(err, 0);  // untouched while reading succeeds
    FicLerLin(1, lin, err);
    EXPECT_EQ(err, platform::kErrInputPastEnd);
    EXPECT_EQ(lin, "");
}

TEST_F(TextFilesTest, FicExiTellsPresentMissingAndUnreachable) {
    tmp.write("a.par", "x");
    const std::pair<std::string, std::int16_t> cases[] = {
        {tmp.file("a.par"), 1},     {tmp.file("b.par"), 0}, {tmp.file("nofolder/a.par"), -76},
        {tmp.file("a.par/x"), -76}, {tmp.path(), -75},
    };
    for (const auto& [fic, exi] : cases) {
        std::int16_t got = 9;
        FicExi(fic, got);
        EXPECT_EQ(got, exi) << fic;
    }
    EXPECT_EQ(platform::FreeFile(), 1);  // nothing left open
}

TEST(FoldersAlongTest, ListsEveryFolderFromTheTop) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"C:\\Dados\\Cfg", {"C:\\", "C:\\Dados", "C:\\Dados\\Cfg"}},
        {"\\\\srv\\share\\Cfg", {"\\\\srv", "\\\\srv\\share", "\\\\srv\\share\\Cfg"}},
        {"/tmp/a/b/", {"/", "/tmp", "/tmp/a", "/tmp/a/b"}},
        {"\\Dados\\Cfg", {"\\", "\\Dados", "\\Dados\\Cfg"}},
        {"C:\\a/b", {"C:\\", "C:\\a", "C:\\a\\b"}},
        {"Novo\\Sub", {"Novo", "Novo\\Sub"}},
        {"x/y", {"x", "x/y"}},
        {"", {}},
        // More pieces than a 16-bit count holds: no folder at all, rather than a walk past them.
        {std::string(32768, '/'), {}},
    };
    for (const auto& [dir, steps] : cases)
        EXPECT_EQ(FoldersAlong(dir), steps) << dir.substr(0, 20);
    // The walk ends at the first folder longer than asked: the ones after it are longer still.
    EXPECT_EQ(FoldersAlong("a/b/c/d", 3), (std::vector<std::string>{"a", "a/b", "a/b/c"}));
}

TEST_F(TextFilesTest, APathOfMorePiecesThanTheCountHoldsCreatesNothing) {
    const std::string slashes(32768, '/');
    std::int16_t err = -1;
    DirCriArv(tmp.path() + slashes + "novo", err);
    EXPECT_EQ(err, 0);
    EXPECT_FALSE(tmp.exists("novo"));
    std::int16_t ok = -1;
    FicPrpGrv(tmp.path() + slashes + "novo/a.par", ok);
    EXPECT_EQ(ok, 0);
    EXPECT_FALSE(tmp.exists("novo"));
}

TEST_F(TextFilesTest, DirCriArvCreatesEveryFolderAlongThePath) {
    std::int16_t err = -1;
    DirCriArv(tmp.file("a/b/c"), err);
    EXPECT_EQ(err, 0);
    EXPECT_TRUE(tmp.exists("a/b/c"));
    DirCriArv(tmp.file("a/b"), err);
    EXPECT_EQ(err, platform::kErrPathFileAccess);  // the last one existed already
}

TEST_F(TextFilesTest, FicPrpGrvCreatesMissingFoldersAndAnEmptyFileOnlyWhenNeeded) {
    test::ScopedCurrentDir cwd(tmp.path());
    tmp.write("kept.par", "keep");
    tmp.write("file", "x");
    const struct {
        std::string fic, created;
        std::int16_t ok;
    } cases[] = {
        {tmp.file("Novo/Sub/a.par"), "Novo/Sub/a.par", 1},
        {"rel/b.par", "rel/b.par", 1},
        {"Win\\Sub\\c.par", "Win/Sub/c.par", 1},
        {"top.par", "top.par", 1},
        {tmp.path(), "", 0},
        {tmp.file("file/a.par"), "", 0},  // a file stands where a folder should be
    };
    for (const auto& c : cases) {
        std::int16_t ok = -1;
        FicPrpGrv(c.fic, ok);
        EXPECT_EQ(ok, c.ok) << c.fic;
        if (c.ok == 1) {
            EXPECT_EQ(tmp.read(c.created), "") << c.fic;
        }
    }
    std::int16_t ok = 0;
    FicPrpGrv(tmp.file("kept.par"), ok);
    EXPECT_EQ(ok, 1);
    EXPECT_EQ(tmp.read("kept.par"), "keep");
    EXPECT_EQ(platform::FreeFile(), 1);
}

}  // namespace
}  // namespace lumbra
