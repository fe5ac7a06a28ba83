// The configuration load on real parameter files: which lines become rows, which file is read, and
// what a missing file does.

#include "app/LumbraGb.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "options/TdaOpc.h"
#include "tests/app/program_fixture.h"

namespace lumbra::test {
namespace {

using Strings = std::vector<std::string>;

TEST_F(ProgramTest, ZoneLinesBecomeRowsOnlyWhenTheEngineRegistersThem) {
    Start({
        "#LIG Portas - primeira vez",
        "Velha [FIC]=velha.txt",
        "##",
        "#lig Portas - Liga\xE7\xE3o",
        "Porta 1 [ ser ]=COM1,9600,n,8,1",
        "Porta=COM2",
        "Porta []=COM2",
        "ab=1",
        "' Coment\xE1rio [X]=1",
        "Espa\xE7o [SER]= COM1,9600",
        "##",
        "#DIS_CMD Display - Comandos",
        "Porta 1 [ ser ]=COM1,9600,n,8,1",
        "##",
    });
    EXPECT_EQ(Rows(Gb().ligTab),
              (Strings{"||", "Porta 1|SER|COM1,9600,n,8,1", "Espa\xE7o|SER| COM1,9600"}));
    for (const LinReg& row : Gb().ligTab)
        EXPECT_EQ(row.rsv, "");
    EXPECT_EQ(Rows(Gb().cmdTab), (Strings{"||", "Porta 1| ser |COM1,9600,n,8,1"}));
    // Zones the file does not have were never built.
    EXPECT_TRUE(Gb().gavTab.empty());
    EXPECT_TRUE(Gb().disTab.empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(ProgramTest, ReadingAgainTakesTheEditedZonesAndKeepsTheRowsOfDeletedOnes) {
    Start({"#LIG P", "Um [FIC]=a", "##", "#GAV G", "Modo [ESC]=chr$(7)", "##"});
    const TdaOpc* opc = Gb().cfgOpc.get();
    const GlbComFr* form = CanHostForm();

    dir.write("Lumbra.par",
              ParFile({"#LIG P", "Um [FIC]=a", "Dois [SER]=COM2", "##", "#DIS_OPC D", "##"}));
    LumbraIni();
    EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", "Um|FIC|a", "Dois|SER|COM2"}));
    EXPECT_EQ(Rows(Gb().gavTab), (Strings{"||", "Modo|ESC|\x07"}));
    EXPECT_EQ(Rows(Gb().disTab), (Strings{"||"}));
    // The same option table and the same channel table serve every load.
    EXPECT_EQ(Gb().cfgOpc.get(), opc);
    EXPECT_EQ(CanHostForm(), form);
}

TEST_F(ProgramTest, TheFileNamedByFpIsReadElseLumbraParBesideTheProgram) {
    dir.write("Lumbra.par", ParFile({"#LIG P", "Ao lado [FIC]=a", "##"}));
    dir.write("outro.par", ParFile({"#LIG P", "Outro [FIC]=b", "##"}));
    platform::OverrideProgramFolder(dir.path());
    const struct {
        Strings words;
        std::string file, row;
    } cases[] = {
        {{}, "Lumbra.par", "Ao lado|FIC|a"},
        {{"-FP", dir.file("outro.par")}, "outro.par", "Outro|FIC|b"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        Gb() = LumbraGbState{};
        SetCommandLine(c.words);
        LumbraIni();
        EXPECT_EQ(Gb().cfgFic, dir.file(c.file));
        EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", c.row}));
        // Reading the configuration again finds the same file.
        dir.write(c.file, ParFile({"#LIG P", "Novo [FIC]=c", "##"}));
        LumbraIni();
        EXPECT_EQ(Gb().cfgFic, dir.file(c.file));
        EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", "Novo|FIC|c"}));
    }
}

TEST_F(ProgramTest, AMissingParameterFileEndsTheProgramWithTheOpenFailureBox) {
    platform::OverrideProgramFolder(dir.path());
    const Strings cases[] = {{}, {"-FP", dir.file("falta.par")}};
    for (const Strings& words : cases) {
        SCOPED_TRACE(words.size());
        boxes.clear();
        Gb() = LumbraGbState{};
        SetCommandLine(words);
        EXPECT_THROW(LumbraIni(), platform::ProgramEnded);
        // The engine is asked to open "": no file was found.
        const std::vector<RecordedBox> want = {
            {"Erro a abrir ficheiro", "Erro : 52   Bad file name or number\r\nFicheiro :   ()"}};
        EXPECT_EQ(boxes.boxes(), want);
        EXPECT_EQ(boxes.endings().size(), 1U);
        EXPECT_TRUE(Gb().ligTab.empty());
    }
}

TEST_F(ProgramTest, DefSettingsResolveTheirReferencesAndTheLoadMakesNoFolder) {
    Start({
        "#DEF Geral - Configura\xE7\xE3o",
        "Modo de depura\xE7\xE3o [DbgModo]=1",
        "Base [DirBas]=" + dir.path() + "/base",
        "Diversos [DirDiv]=[DirBas]/div",
        "Tempor\xE1ria [DirTmp]=[DirBas]/tmp/x",
        "Op\xE7\xE3o [DirOpc]=opc",
        "##",
    });
    EXPECT_EQ(Gb().DbgModo, "1");
    EXPECT_EQ(Gb().DirBas, dir.path() + "/base");
    EXPECT_EQ(Gb().DirDiv, dir.path() + "/base/div");
    EXPECT_EQ(Gb().DirTmp, dir.path() + "/base/tmp/x");
    EXPECT_EQ(Gb().DirOpc, "opc");
    EXPECT_FALSE(std::filesystem::exists(dir.path() + "/base"));
}

TEST_F(ProgramTest, TheSampleFileLoadsTheRowsItDescribes) {
    const std::string sample = std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par";
    SetCommandLine({"-FP", sample});
    LumbraIni();
    EXPECT_EQ(Gb().cfgFic, sample);
    EXPECT_EQ(Gb().DirTmp, "/tmp/lumbra/saida");
    EXPECT_EQ(Rows(Gb().ligTab), (Strings{"||", "Impressora s\xE9rie|SER|COM1,9600,n,8,1",
                                          "Ficheiro de teste|FIC|/tmp/lumbra-impressora.txt",
                                          "Impressora paralela|LPT|/dev/lp0"}));
    // Read without conversion: the code lists and the cycle's markers stay as written.
    EXPECT_EQ(
        Rows(Gb().gavTab),
        (Strings{"||", "ESC p, pino 2|ESC|chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)",
                 "ESC p, pino 5|ESC|chr$(27,112,1,25,250)", "Impulso DLE DC4|DLE|chr$(16,20,1,0,5)",
                 "Ciclo ESC p|CIC|chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])"}));
    EXPECT_EQ(Rows(Gb().disTab), (Strings{"||", "Display s\xE9rie|SER|COM2,9600,n,8,1",
                                          "Display em ficheiro|FIC|/tmp/lumbra-display.txt"}));
    // Read with conversion: the values are the bytes the display receives.
    EXPECT_EQ(Rows(Gb().cmdTab), (Strings{"||", "Limpar|CLR|\x0C",
                                          "Cursor ao in\xED"
                                          "cio|HOME|\x0B",
                                          "Sauda\xE7\xE3o|MSG|\x0C"
                                          "Bem-vindo!\r\nObrigado pela visita"}));
    EXPECT_TRUE(boxes.boxes().empty());
}

}  // namespace
}  // namespace lumbra::test
