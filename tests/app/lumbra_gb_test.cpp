// The configuration load on a real parameter file: which lines become rows.

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

}  // namespace
}  // namespace lumbra::test
