#include "util/files/paths.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lumbra {
namespace {

// One input, two outputs: the shape of most path procedures.
struct Split {
    std::string in;
    std::string first;
    std::string second;
};

TEST(PathJunTest, JoinsWithOneSeparatorOfThePathsOwnKind) {
    const std::string host(SepDir);
    const struct {
        std::string dir, nome, path;
    } cases[] = {
        {"C:\\a", "b.txt", "C:\\a\\b.txt"},
        {"C:\\a\\", "\\b", "C:\\a\\b"},
        {"", "C:", "C:\\"},
        {"x", "", "x"},
        {"\\", "a", "\\a"},
        {"", "\\a", "\\a"},  // no folder: the leading separator stays
        {"C:", "a", "C:\\a"},
        {"/opt/lumbra", "Lumbra.par", "/opt/lumbra/Lumbra.par"},
        {"/tmp/", "/a", "/tmp/a"},
        {"/", "", "/"},
        {"x", "sub/a.par", "x/sub/a.par"},
        {"x", "a.par", "x" + host + "a.par"},
    };
    for (const auto& c : cases) {
        std::string path = "stale";
        PathJun(c.dir, c.nome, path);
        EXPECT_EQ(path, c.path) << c.dir << " + " << c.nome;
    }
    std::string same = "C:\\a";
    PathJun(same, "b", same);
    EXPECT_EQ(same, "C:\\a\\b");
}

TEST(PathSepTest, SplitsTheTrimmedPathAtItsLastSeparatorOrBracket) {
    const Split cases[] = {
        {"C:\\a\\b.txt", "C:\\a", "b.txt"},
        {"[CFG]LUMBRA.PAR", "[CFG]", "LUMBRA.PAR"},
        {"\\x", "", "x"},
        {"C:\\", "C:", ""},
        {"  C:\\a\\b  ", "C:\\a", "b"},
        {"plain.par", "", "plain.par"},
        {"/tmp/x/a.par", "/tmp/x", "a.par"},
        {"C:\\a/b.txt", "C:\\a", "b.txt"},
    };
    for (const auto& c : cases) {
        std::string dir = "stale", nome = "stale";
        PathSep(c.in, dir, nome);
        EXPECT_EQ(dir + "|" + nome, c.first + "|" + c.second) << c.in;
    }
}

TEST(PathDrvTest, SplitsOffTheDriveOrServer) {
    const Split cases[] = {
        {"C:\\Cfg", "C", "\\Cfg"}, {"\\\\srv\\share\\Cfg", "\\\\srv", "share\\Cfg"},
        {"Cfg", "", "Cfg"},        {"\\\\srv", "\\\\", "srv"},
        {"/tmp/x", "", "/tmp/x"},
    };
    for (const auto& c : cases) {
        std::string drv = "stale", dir2 = "stale";
        PathDrv(c.in, drv, dir2);
        EXPECT_EQ(drv + "|" + dir2, c.first + "|" + c.second) << c.in;
    }
}

TEST(PathExtTest, FindsOnlyShortExtensionsAndWithModeOneSplitsAtABlank) {
    const std::pair<std::string, std::int16_t> positions[] = {
        {"a.b.c", 4}, {"arquivo", 0}, {"", 0}, {"a.json", 0}, {".par", 1}, {"abc.", 4},
    };
    for (const auto& [nome, pos] : positions) {
        std::int16_t got = -1;
        PathPosExt(nome, got);
        EXPECT_EQ(got, pos) << nome;
    }
    const struct {
        Split s;
        std::int16_t mo;
    } cases[] = {
        {{"Lumbra.par", "Lumbra", "par"}, 1},
        {{"LUMBRA PAR", "LUMBRA", "PAR"}, 1},
        {{"dados.json", "dados.json", ""}, 1},
        {{"LUMBRA PAR", "LUMBRA PAR", ""}, 0},
        {{" a . b ", "a", "b"}, 1},
    };
    for (const auto& c : cases) {
        std::string base = "stale", ext = "stale";
        PathExt(c.s.in, base, ext, c.mo);
        EXPECT_EQ(base + "|" + ext, c.s.first + "|" + c.s.second) << c.s.in << " mo " << c.mo;
    }
    std::string nome;
    PathNomExt("Lumbra", "par", nome);
    EXPECT_EQ(nome, "Lumbra.par");
    PathNomExt("Lumbra", "", nome);
    EXPECT_EQ(nome, "Lumbra");
}

TEST(PathDecTest, GivesTheSixPartsAndKeepsExtraSlots) {
    std::vector<std::string> partes;
    PathDec("C:\\Cfg\\Lumbra.par", partes);
    EXPECT_EQ(partes, (std::vector<std::string>{"C:\\Cfg\\Lumbra.par", "C", "\\Cfg", "Lumbra.par",
                                                "Lumbra", "par"}));
    partes.assign(8, "x");
    partes[0] = "/tmp/a.txt";
    PathDec(partes[0], partes);  // the path may come from the array itself
    EXPECT_EQ(partes,
              (std::vector<std::string>{"/tmp/a.txt", "", "/tmp", "a.txt", "a", "txt", "x", "x"}));
}

}  // namespace
}  // namespace lumbra
