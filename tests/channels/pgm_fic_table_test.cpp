#include <gtest/gtest.h>

#include "channels/GlbComFr.h"
#include "channels/PgmFic.h"
#include "tests/support/recording_msg_sink.h"

namespace lumbra {
namespace {

class ChannelTableTest : public ::testing::Test {
  protected:
    void TearDown() override { CanFim(); }
    test::RecordingMsgSink boxes;
};

TEST_F(ChannelTableTest, EveryOperationIsSilentBeforeCanIniAndAfterCanFim) {
    for (int round = 0; round < 2; ++round) {
        if (round == 1) {
            CanIni();
            CanFim();
        }
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
        EXPECT_TRUE(boxes.boxes().empty());
    }
}

TEST_F(ChannelTableTest, CanIniTwiceKeepsTheFirstTableAndHostForm) {
    CanIni();
    EXPECT_EQ(CanMax(), 10);
    ASSERT_EQ(CanTab().size(), 1u);
    GlbComFr* form = CanHostForm();
    ASSERT_NE(form, nullptr);
    CanFicPrp(2, "O", "a.txt", "");
    CanIni();
    EXPECT_EQ(CanHostForm(), form);
    ASSERT_EQ(CanTab().size(), 3u);
    EXPECT_EQ(CanTab()[2].fic, "a.txt");
}

TEST_F(ChannelTableTest, PreparingGrowsTheTableAndNeverShrinksIt) {
    CanIni();
    CanFicPrp(3, "O", "c.txt", "");
    ASSERT_EQ(CanTab().size(), 4u);
    CanPserPrp(2, "COM2", "9600,n,8,1");
    ASSERT_EQ(CanTab().size(), 4u);
    EXPECT_EQ(CanTab()[3].fic, "c.txt");
    EXPECT_EQ(CanTab()[2].tip, "PS");
    // Outside 1..CanMax nothing happens.
    CanFicPrp(0, "O", "zero.txt", "");
    CanFicPrp(11, "O", "eleven.txt", "");
    CanDim(-1);
    EXPECT_EQ(CanTab().size(), 4u);
    EXPECT_EQ(CanTab()[0].fic, "");
}

TEST_F(ChannelTableTest, OperatingAChannelNeverPreparedShowsTheBox) {
    CanIni();
    CanFicAbr(5);
    CanPserEsc(4, "x");
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Channel 5 was not prepared"},
        {"Erro no ficheiro: ", "Funcao: Escrever|Erro:Channel 4 was not prepared"},
    };
    EXPECT_EQ(boxes.boxes(), want);
}

TEST_F(ChannelTableTest, CanPserNumTakesTheLastCharacterOfTextOrTheNumber) {
    const struct {
        Variant porta;
        std::int16_t want;
    } cases[] = {
        {"COM2", 2},
        {"2", 2},
        {"com3:", 3},
        {"", 1},
        {"COM10", 1},
        {"COMX", 1},
        {" com4: ", 4},
        {"COM4 :", 1},
        {Variant(std::int16_t{4}), 4},
        {Variant(std::int16_t{0}), 1},
        {Variant(2.5), 2},
        {Variant(-3.0), 1},
        {Variant(), 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CanPserNum(c.porta), c.want);
}

TEST_F(ChannelTableTest, CanModNumReadsTheNumberAfterTheFirstColon) {
    const struct {
        const char* m;
        std::int16_t want;
    } cases[] = {
        {"O:", 0},    {"O:128", 128}, {"O:70000", 0}, {"O", 0},       {"A:5", 5},
        {"R:2.5", 2}, {"R:3.5", 4},   {"O:1:2", 1},   {"O:&H1B", 27}, {"O:x", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CanModNum(c.m), c.want) << c.m;
}

TEST_F(ChannelTableTest, CanPserPrpSetsTheRecordAndThePortControlButDoesNotOpen) {
    CanIni();
    CanFicPrp(1, "o:7", "f.txt", "free");
    CanPserPrp(1, "COM2", "9600,n,8,1");
    const CanReg& r = CanTab()[1];
    EXPECT_EQ(r.tip, "PS");
    EXPECT_EQ(r.modoAct, "");
    EXPECT_EQ(r.fic, "COM2");
    EXPECT_EQ(r.num, 2);
    EXPECT_EQ(r.par, "9600,n,8,1");
    EXPECT_EQ(r.modo, Variant("O:7"));
    SerialPortControl& port = CanHostForm()->pSer(1);
    EXPECT_EQ(port.commPort(), 2);
    EXPECT_EQ(port.settings(), "9600,n,8,1");
    EXPECT_FALSE(port.portOpen());

    CanPserPrp(3, Variant(std::int16_t{4}), "");
    EXPECT_EQ(CanTab()[3].fic, "4");
    EXPECT_EQ(CanTab()[3].num, 4);
    EXPECT_TRUE(boxes.boxes().empty());
}

}  // namespace
}  // namespace lumbra
