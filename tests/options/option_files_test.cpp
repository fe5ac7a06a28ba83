// Option-table files: the entries of their "TBO" zones selected by group and handed out as a
// matrix with the values' references replaced and split into folder and file name.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "platform/msg_box.h"
#include "tests/options/file_text.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {
namespace {

class TableTdaOpc : public TdaOpc {
  public:
    const std::vector<TboReg>& entries() const { return tboTab; }
    std::int16_t fileCount() const { return ficQtd; }
};

const std::string kHeader =
    Lines({"'Nome       : Programas.tbo", "'Tipo       : TBO",
           "'Data       : ", "'Versao     : 1.0", "'Descricao  : Programas", ""});

const std::string kTable = kHeader + Lines({
                                         "#DEF - Defini\xE7\xF5"
                                         "es",
                                         "Directorio base [DirBas]=C:\\LUMBRA",
                                         "##",
                                         "#TBO - Programas",
                                         "Editor de texto [1:DIV]=[DirBas]\\notepad.exe",
                                         "Calculadora [0:DIV]=calc.exe",
                                         "Gaveta [1:GAV]= [DirBas]\\gav\\abrir.exe ",
                                         "Espaco [ 1:DIV]=x",
                                         "Zero [01:DIV]=y",
                                         "Minusculas [1:div]=z",
                                         "Sem grupo [1]=w",
                                         "Sem colchetes = v",
                                         "' comentario [1:DIV]=c",
                                         "##",
                                         "#LIG - Outra zona",
                                         "Porta [1:DIV]=COM1",
                                         "##",
                                         "#TBO:TX - Texto",
                                         "Texto [1:DIV]=t",
                                         "##",
                                         "#tbo - Mais",
                                         "Outro [1:GAV]=o.exe",
                                         "##",
                                     });

class OptionFilesTest : public ::testing::Test {
  protected:
    void SetUp() override { dir.write("Programas.tbo", kTable); }
    void TearDown() override {
        EXPECT_EQ(opc.fileCount(), 0) << "the file is closed after reading";
        EXPECT_TRUE(boxes.boxes().empty());
    }

    std::vector<std::string> NamesRead() const {
        std::vector<std::string> names;
        for (std::size_t i = 1; i < opc.entries().size(); ++i)
            names.push_back(opc.entries()[i].txi);
        return names;
    }

    RecordingMsgSink boxes;
    TempDir dir;
    TableTdaOpc opc;
};

TEST_F(OptionFilesTest, TheGroupSelectionPicksEntriesInFileOrder) {
    using Names = std::vector<std::string>;
    const struct {
        std::string grv;
        Names names;
    } cases[] = {
        // The TX zone registers nothing: its one line reads record 1 left by the LIG zone.
        {"",
         {"Editor de texto", "Calculadora", "Gaveta", "Espaco", "Zero", "Minusculas", "Sem grupo",
          "Porta", "Outro"}},
        {"*", {"Editor de texto", "Gaveta", "Minusculas", "Sem grupo", "Porta", "Outro"}},
        {"DIV,GAV", {"Editor de texto", "Gaveta", "Porta", "Outro"}},
        {"DIV, GAV", {"Editor de texto", "Porta"}},  // " GAV" is no group
        {"div", {"Minusculas"}},
        {"DIV", {"Editor de texto", "Porta"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.grv);
        std::int16_t nop = -1;
        opc.tbOpcPrp(dir.file("Programas.tbo"), c.grv, "TBO", nop);
        EXPECT_EQ(NamesRead(), c.names);
        EXPECT_EQ(nop, static_cast<std::int16_t>(c.names.size()));
        ASSERT_FALSE(opc.entries().empty());
        EXPECT_EQ(opc.entries()[0].txi, "") << "slot 0 stays empty";
    }
}

TEST_F(OptionFilesTest, EntriesKeepFlagGroupAndValueAsWritten) {
    opc.tbOpcPrp(dir.file("Programas.tbo"), "", "TBO");
    const struct {
        std::size_t i;
        std::string txi, flg, grp, vtx;
    } cases[] = {
        {1, "Editor de texto", "1", "DIV", "[DirBas]\\notepad.exe"},
        {3, "Gaveta", "1", "GAV", " [DirBas]\\gav\\abrir.exe "},
        {4, "Espaco", " 1", "DIV", "x"},
        {7, "Sem grupo", "1", "", "w"},
    };
    ASSERT_EQ(opc.entries().size(), 10u);
    for (const auto& c : cases) {
        const TboReg& e = opc.entries()[c.i];
        EXPECT_EQ(e.txi, c.txi);
        EXPECT_EQ(e.flg, c.flg) << c.txi;
        EXPECT_EQ(e.grp, c.grp) << c.txi;
        EXPECT_EQ(e.vtx, c.vtx) << c.txi;
    }
}

TEST_F(OptionFilesTest, TbOpcProFillsTheTenColumnsOfEachRow) {
    opc.tbOpcPrp(dir.file("Programas.tbo"), "", "TBO");
    TdaOpc::TboMat m;
    std::int16_t nop = 0;
    opc.tbOpcPro(m, nop, 100);
    ASSERT_EQ(nop, 9);
    for (const auto& column : m)
        ASSERT_EQ(column.size(), 10u);

    using Row = std::vector<std::string>;
    const struct {
        std::size_t i;
        Row row;
    } cases[] = {
        {1,
         {"1", "Editor de texto", "DIV", "[DirBas]\\notepad.exe", "", "C:\\LUMBRA\\notepad.exe",
          "C:\\LUMBRA", "notepad.exe", "", ""}},
        {2, {"0", "Calculadora", "DIV", "calc.exe", "", "calc.exe", "", "calc.exe", "", ""}},
        // Column 3 is trimmed, column 5 keeps the value's blanks, 6 and 7 cut the trimmed text.
        {3,
         {"1", "Gaveta", "GAV", "[DirBas]\\gav\\abrir.exe", "", " C:\\LUMBRA\\gav\\abrir.exe ",
          "C:\\LUMBRA\\gav", "abrir.exe", "", ""}},
        {0, {"", "", "", "", "", "", "", "", "", ""}},
    };
    for (const auto& c : cases) {
        Row row;
        for (const auto& column : m)
            row.push_back(column[c.i]);
        EXPECT_EQ(row, c.row) << "row " << c.i;
    }
}

TEST_F(OptionFilesTest, TbOpcProStopsAtMax) {
    opc.tbOpcPrp(dir.file("Programas.tbo"), "*", "TBO");
    const struct { std::int16_t max, nop; } cases[] = {{0, 0}, {2, 2}, {7, 6}, {-3, 0}};
    for (const auto& c : cases) {
        TdaOpc::TboMat m;
        m[4] = {"velho", "velho", "velho"};
        std::int16_t nop = -1;
        opc.tbOpcPro(m, nop, c.max);
        EXPECT_EQ(nop, c.nop) << c.max;
        for (const auto& column : m) {
            ASSERT_EQ(column.size(), static_cast<std::size_t>(c.nop) + 1) << c.max;
            EXPECT_EQ(column[0], "");
        }
        if (c.nop >= 2) {
            EXPECT_EQ(m[1][2], "Gaveta");
        }
    }
}

TEST_F(OptionFilesTest, EachReadReplacesTheTableAndADefZoneLoadsTheOptions) {
    opc.tbOpcPrp(dir.file("Programas.tbo"), "", "TBO");
    ASSERT_EQ(opc.entries().size(), 10u);
    std::string base;
    opc.OpcCon("DirBas", base);
    EXPECT_EQ(base, "C:\\LUMBRA");

    dir.write("vazio.tbo", kHeader + Lines({"#LIG", "Porta [1:DIV]=COM1", "##"}));
    std::int16_t nop = -1;
    opc.tbOpcPrp(dir.file("vazio.tbo"), "", "TBO", nop);
    EXPECT_EQ(nop, 0);
    EXPECT_EQ(opc.entries().size(), 1u);
}

}  // namespace
}  // namespace lumbra::test
