// The configuration load on real parameter files: which lines become rows, which file is read, and
// what a missing file does.

#include "app/LumbraGb.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/app/app_fixture.h"

namespace lumbra::test {
namespace {

using Strings = std::vector<std::string>;

// Only lines the engine registers become rows; a zone met twice counts once, its header in any
// case; DEF settings resolve their references and the load makes no folder.
TEST_F(ProgramTest, ZoneLinesBecomeRowsOnlyWhenTheEngineRegistersThem) {
    // clang-format off
    Start({"#LIG Portas - primeira vez", "Velha [FIC]=velha.txt", "##",
           "#lig Portas - Liga\xE7\xE3o", "Porta 1 [ ser ]=COM1,9600,n,8,1", "Porta=COM2",
           "Porta []=COM2", "ab=1", "' Coment\xE1rio [X]=1", "Espa\xE7o [SER]= COM1,9600", "##",
           "#DIS_CMD Display - Comandos", "Porta 1 [ ser ]=COM1,9600,n,8,1", "##",
           "#DEF Geral", "Modo [DbgModo]=1", "Base [DirBas]=" + dir.path() + "/base",
           "Diversos [DirDiv]=[DirBas]/div", "Tempor\xE1ria [DirTmp]=[DirBas]/tmp/x",
           "Op\xE7\xE3o [DirOpc]=opc", "##"});
    // clang-format on
    EXPECT_EQ(Rows(Gb().ligTab),
              (Strings{"||", "Porta 1|SER|COM1,9600,n,8,1", "Espa\xE7o|SER| COM1,9600"}));
    EXPECT_EQ(Rows(Gb().cmdTab), (Strings{"||", "Porta 1| ser |COM1,9600,n,8,1"}));
    // Zones the file does not have were never built.
    EXPECT_TRUE(Gb().gavTab.empty() && Gb().disTab.empty());
    EXPECT_EQ(Strings({Gb().DbgModo, Gb().DirDiv, Gb().DirTmp, Gb().DirOpc}),
              Strings({"1", dir.path() + "/base/div", dir.path() + "/base/tmp/x", "opc"}));
    EXPECT_FALSE(std::filesystem::exists(dir.path() + "/base"));
    EXPECT_TRUE(boxes.boxes().empty());
}

// The file named by -FP is read, else Lumbra.par beside the program, also when read again; a
// missing file ends the program with the box of a failed open (the engine is asked to open "").
TEST_F(ProgramTest, TheFileNamedByFpIsReadElseLumbraParBesideTheProgram) {
    dir.write("Lumbra.par", ParFile({"#LIG P", "Ao lado [FIC]=a", "##"}));
    dir.write("outro.par", ParFile({"#LIG P", "Outro [FIC]=b", "##"}));
    platform::OverrideProgramFolder(dir.path());
    const struct {
        Strings words;
        std::string file, row;
    } cases[] = {{{}, "Lumbra.par", "Ao lado|FIC|a"},
                 {{"-FP", dir.file("outro.par")}, "outro.par", "Outro|FIC|b"}};
    for (const auto& c : cases) {
        Gb() = LumbraGbState{};
        SetCommandLine(c.words);
        LumbraIni();
        EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", c.row}));
        dir.write(c.file, ParFile({"#LIG P", "Novo [FIC]=c", "##"}));
        LumbraIni();
        EXPECT_EQ(Gb().cfgFic, dir.file(c.file));
        EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", "Novo|FIC|c"}));
        std::filesystem::remove(dir.file(c.file));
        EXPECT_THROW(LumbraIni(), platform::ProgramEnded);
    }
    const RecordedBox failed = {"Erro a abrir ficheiro",
                                "Erro : 52   Bad file name or number\r\nFicheiro :   ()"};
    EXPECT_EQ(boxes.boxes(), std::vector<RecordedBox>(2, failed));
    EXPECT_EQ(boxes.endings().size(), 2U);
}

}  // namespace
}  // namespace lumbra::test
