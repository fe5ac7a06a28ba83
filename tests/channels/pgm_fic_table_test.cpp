#include <gtest/gtest.h>

#include "channels/GlbComFr.h"
#include "channels/PgmFic.h"
#include "tests/support/recording_msg_sink.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

TEST(ChannelTableTest, EveryOperationIsSilentBeforeCanIniAndAfterCanFim) {
    test::RecordingMsgSink boxes;
    for (int round = 0; round < 2; ++round) {
        if (round == 1) CanIni(), CanFim();
        CanFicPrp(1, "O", "/nonexistent/x", "");
        CanFicAbr(1);
        CanFicGrv(1, "x", 1);
        CanFicFec(1);
        CanPserPrp(1, "COM1", "");
        CanPserAbr(1);
        CanPserEsc(1, "x");
        CanPserFec(1);
        EXPECT_EQ(CanMax(), 0);
        EXPECT_TRUE(CanTab().empty());
        EXPECT_EQ(CanHostForm(), nullptr);
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// Channels 1..10 exist; preparing one grows the table to it and never shrinks it; a second CanIni
// keeps the table and the host form; a channel beyond the table was never prepared.
TEST(ChannelTableTest, PreparingGrowsTheTableWithinOneToTen) {
    test::RecordingMsgSink boxes;
    CanIni();
    GlbComFr* form = CanHostForm();
    ASSERT_NE(form, nullptr);
    CanFicAbr(1);
    CanFicPrp(3, "O", "c.txt", "");
    CanPserPrp(2, "COM2", "9600,n,8,1");
    CanIni();
    EXPECT_EQ(CanHostForm(), form);
    ASSERT_EQ(CanTab().size(), 4u);
    EXPECT_EQ(form->pSer(2).commPort(), 2);
    CanFicAbr(5);
    CanPserEsc(4, "x");
    CanFicPrp(10, "O", "ten.txt", "");
    CanFicPrp(0, "O", "zero.txt", "");
    CanFicPrp(11, "O", "eleven.txt", "");
    CanFicAbr(11);
    CanDim(-1);
    EXPECT_EQ(CanTab().size(), 11u);
    EXPECT_EQ(CanTab()[0].fic, "");
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Channel 1 was not prepared"},
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Channel 5 was not prepared"},
        {"Erro no ficheiro: ", "Funcao: Escrever|Erro:Channel 4 was not prepared"}};
    EXPECT_EQ(boxes.boxes(), want);
    CanFim();
}

TEST(ChannelTableTest, CanPserNumAndCanModNumReadTheirNumbers) {
    const std::pair<Variant, std::int16_t> ports[] = {
        {"2", 2},      {"COM10", 1},      {"COMX", 1},        {" com4: ", 4},
        {"COM4 :", 1}, {Variant(2.5), 2}, {Variant(-3.0), 1}, {Variant(std::int16_t{0}), 1}};
    for (const auto& [porta, want] : ports)
        EXPECT_EQ(CanPserNum(porta), want) << VlStr(porta);
    const std::pair<const char*, std::int16_t> modes[] = {
        {"O:", 0},    {"O:128", 128}, {"O:70000", 0}, {"R:2.5", 2},
        {"R:3.5", 4}, {"O:1:2", 1},   {"O:&H1B", 27}, {"O:x", 0}};
    for (const auto& [m, want] : modes)
        EXPECT_EQ(CanModNum(m), want) << m;
}

}  // namespace
}  // namespace lumbra
