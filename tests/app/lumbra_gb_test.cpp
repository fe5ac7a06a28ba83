// The configuration load on a real parameter file: which lines become rows.

#include "app/LumbraGb.h"

#include <gtest/gtest.h>

#include "tests/app/app_fixture.h"

namespace lumbra::test {
namespace {

using Strings = std::vector<std::string>;

// Only lines the engine registers become rows; a zone met twice counts once, its header in any
// case.
TEST_F(ProgramTest, ZoneLinesBecomeRowsOnlyWhenTheEngineRegistersThem) {
    // clang-format off
    Start({"#LIG Portas - primeira vez", "Velha [FIC]=velha.txt", "##",
           "#lig Portas - Liga\xE7\xE3o", "Porta 1 [ ser ]=COM1,9600,n,8,1",
           "' Coment\xE1rio [X]=1", "Espa\xE7o [SER]= COM1,9600", "##",
           "#DIS_CMD Display - Comandos", "Porta 1 [ ser ]=COM1,9600,n,8,1", "##"});
    // clang-format on
    EXPECT_EQ(Rows(Gb().ligTab),
              (Strings{"||", "Porta 1|SER|COM1,9600,n,8,1", "Espa\xE7o|SER| COM1,9600"}));
    EXPECT_EQ(Rows(Gb().cmdTab), (Strings{"||", "Porta 1| ser |COM1,9600,n,8,1"}));
    // Zones the file does not have were never built.
    EXPECT_TRUE(Gb().gavTab.empty() && Gb().disTab.empty());
    EXPECT_TRUE(boxes.boxes().empty());
}

}  // namespace
}  // namespace lumbra::test
