// The option table object: its state after creation, the header consumed on opening, the stack of
// nested files, and the files it closes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "tests/options/open_tda_opc.h"
#include "tests/support/recording_msg_sink.h"

namespace lumbra::test {
namespace {

TEST(TdaOpcObject, ConsumesFiveHeaderLinesAndTakesTheTypeFromTheSecond) {
    const struct {
        std::string bytes, ficTip, sixth;
    } cases[] = {
        {CrLf({"'Nome : t", "'Tipo       : PAR", "", "", "", "Sexta [S] = 6"}), "PAR",
         "Sexta [S] = 6"},
        {CrLf({"'Nome : t", "'Tipo:   cfg  ", "", "", "", "Sexta"}), "CFG", "Sexta"},
        {CrLf({"'Nome : t", "  sem dois pontos  ", "", "", "", "Sexta"}), "SEM DOIS PONTOS",
         "Sexta"},
        {CrLf({"A [A]=1", "'Tipo : a:b", "C [C]=3", "D [D]=4", "E [E]=5", "F [F]=6"}), "A:B",
         "F [F]=6"},
        // A short header: the missing lines read as "" and the file is at its end.
        {CrLf({"'Nome : t"}), "", ""},
        {CrLf({"'Nome : t", "'Tipo : PAR", "'Data : 1"}), "PAR", ""},
    };
    for (const auto& c : cases) {
        TempDir dir;
        dir.write("t.par", c.bytes);
        OpenTdaOpc opc;
        opc.tboPrp(dir.file("t.par"), "LER");
        EXPECT_EQ(opc.ficTbo(), dir.file("t.par"));
        EXPECT_EQ(opc.ficTip(), c.ficTip);
        EXPECT_EQ(opc.next(), c.sixth) << c.ficTip;
    }
}

TEST(TdaOpcObject, ReadsNestedFilesBackInOrder) {
    TempDir dir;
    OpenTdaOpc opc;
    opc.tboPrp(ParameterFile(dir, "a.par", {"A1", "A2", "A3"}));
    const std::int16_t first = opc.FicAtu();
    EXPECT_EQ(opc.next(), "A1");
    opc.tboPrp(ParameterFile(dir, "b.par", {"B1", "B2"}));
    EXPECT_EQ(opc.fileCount(), 2);
    EXPECT_EQ(opc.next(), "B1");
    opc.tboFim();
    EXPECT_EQ(opc.FicAtu(), first);
    EXPECT_EQ(opc.next(), "A2");
    opc.tboFim();
    EXPECT_EQ(opc.FicAtu(), -1);
    EXPECT_FALSE(platform::FileIsOpen(first));
}

TEST(TdaOpcObject, DestructionAndKvFimCloseEveryFileOnTheStack) {
    for (const bool destroy : {true, false}) {
        TempDir dir;
        const std::string path = ParameterFile(dir, "a.par", {});
        auto* opc = new OpenTdaOpc;
        opc->tboPrp(path);
        const std::int16_t a = opc->FicAtu();
        opc->tboPrp(path);
        const std::int16_t b = opc->FicAtu();
        if (destroy) {
            delete opc;
        } else {
            opc->KvFim();
            EXPECT_EQ(opc->fileCount(), 0);
            EXPECT_TRUE(opc->memory().empty());
            delete opc;
        }
        EXPECT_FALSE(platform::FileIsOpen(a));
        EXPECT_FALSE(platform::FileIsOpen(b));
    }
}

TEST(TdaOpcObject, KvIniResetsTheTablesButLeavesOpenFilesOpen) {
    TempDir dir;
    std::int16_t a = 0;
    {
        OpenTdaOpc opc;
        opc.tboPrp(ParameterFile(dir, "a.par", {}));
        a = opc.FicAtu();
        opc.MemOpcReg("X", Variant("1"));
        std::string txi = "i [CnvChr=0]";
        std::int16_t usa = 0;
        opc.OpcEspUsa(txi, usa);

        opc.KvIni();
        EXPECT_EQ(opc.fileCount(), 0);
        EXPECT_EQ(opc.memory().size(), 1U);
        EXPECT_EQ(opc.conversion(), 1);
    }
    EXPECT_TRUE(platform::FileIsOpen(a)) << "off the stack, so not closed by destruction";
    platform::FileClose(a);
}

TEST(TdaOpcObject, AFileThatCannotBeOpenedEndsTheProgramAfterTheMessage) {
    TempDir dir;
    const struct {
        std::string path, error;
    } cases[] = {
        {dir.file("falta.par"), "Erro : 53   File not found"},
        {dir.file("pasta/falta.par"), "Erro : 76   Path not found"},
    };
    for (const auto& c : cases) {
        RecordingMsgSink sink;
        OpenTdaOpc opc;
        EXPECT_THROW(opc.tboPrp(c.path, "CFG"), platform::ProgramEnded);
        ASSERT_EQ(sink.boxes().size(), 1U);
        EXPECT_EQ(sink.boxes()[0].title, "Erro a abrir ficheiro");
        EXPECT_THAT(sink.boxes()[0].text, ::testing::HasSubstr(c.error));
        EXPECT_THAT(sink.boxes()[0].text, ::testing::HasSubstr("Ficheiro :" + c.path + "   (CFG)"));
    }
}

}  // namespace
}  // namespace lumbra::test
