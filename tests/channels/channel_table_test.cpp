// What the channel module does the same on every system: its table, the numbers it reads, file
// channels, and the port and settings refusals that come before any device is touched.
#include "tests/channels/channel_test.h"

#include "channels/GlbComFr.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

using test::ChannelTest;

#ifdef _WIN32
// The test prefix points every COM port at nothing.
const std::string kUnusable = " n\xE3o pode ser aberta: Dispositivo indispon\xEDvel";
#endif

TEST(ChannelTableTest, EveryOperationIsSilentBeforeCanIniAndAfterCanFim) {
    test::RecordingMsgSink boxes;
    for (int round = 0; round < 2; ++round) {
        if (round == 1) CanIni(), CanFim();
        CanFicPrp(1, "O", "/nonexistent/x", "");
        CanFicAbr(1), CanFicGrv(1, "x", 1), CanFicFec(1);
        CanPserPrp(1, "COM1", "");
        CanPserAbr(1), CanPserEsc(1, "x"), CanPserFec(1);
        EXPECT_TRUE(CanMax() == 0 && CanTab().empty() && CanHostForm() == nullptr);
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// Preparing grows the table and never shrinks it; a second CanIni keeps table and host form.
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
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Canal 1 n\xE3o preparado"},
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Canal 5 n\xE3o preparado"},
        {"Erro no ficheiro: ", "Funcao: Escrever|Erro:Canal 4 n\xE3o preparado"}};
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

// Output and append write byte-exact, a line end only when nl is 1; the other modes refuse.
TEST_F(ChannelTest, EachFileModeWritesTheFileItNamesOrRefuses) {
    const struct {
        const char* modo;
        std::int16_t modoNum;  // 9 = kept from the previous open
        std::int16_t nl;
        const char* content;  // after writing "new" over "old"
    } cases[] = {{"O", 0, 1, "new\r\n"},
                 {"O:5", 5, -1, "new"},
                 {"A", 0, 1, "oldnew\r\n"},
                 {"B", 9, 0, "old"},
                 {"", 9, 0, "old"}};
    const std::string path = dir.file("f.txt");
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string("mode \"") + c.modo + "\"");
        boxes.clear();
        writeOnce("O:9", path, "");
        dir.write("f.txt", "old");
        reports.clear();
        CanFicPrp(1, c.modo, path, "");
        CanFicAbr(1);
        const CanReg& r = CanTab()[1];
        EXPECT_EQ(r.modo, Variant(c.modo));
        EXPECT_EQ(r.modoAct, c.modo);
        EXPECT_EQ(r.modoNum, c.modoNum);
        EXPECT_TRUE(r.num == 1 && platform::FileIsOpen(1));
        CanFicGrv(1, "new", c.nl);
        CanFicFec(1);
        EXPECT_EQ(dir.read("f.txt"), c.content);
        std::vector<test::RecordedBox> want;
        std::vector<std::string> sent = {path + ":" + (c.nl == 1 ? "new\r\n" : "new")};
        if (std::string(c.content) == "old") {
            want = {{"Erro no ficheiro: " + path,
                     "Funcao: Gravar TX|Erro:Modo de ficheiro incorrecto"}};
            sent.clear();
        }
        EXPECT_EQ(boxes.boxes(), want);
        EXPECT_EQ(reports, sent);
    }
    // Opening again in the same mode keeps the file and its number; CanFim closes it.
    CanFicPrp(1, "O", path, "");
    CanFicAbr(1);
    CanFicGrv(1, "kept", 0);
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 1);
    CanFim();
    EXPECT_FALSE(platform::FileIsOpen(1));
    EXPECT_EQ(dir.read("f.txt"), "kept");
}

// The writes after a failed open fail too, and nothing is reported as gone out.
TEST_F(ChannelTest, FileFailuresAreShownUnderTheirFunction) {
    const std::string missing = dir.file("missing/f.txt");
    CanFicPrp(1, "O", missing, "");
    CanFicAbr(1);
    EXPECT_TRUE(CanTab()[1].modoAct == "O" && CanTab()[1].num == 1);
    CanFicAbr(1);
    CanFicGrv(1, "lost", 1);
    CanFicFec(1);
    EXPECT_TRUE(CanTab()[1].modoAct.empty() && CanTab()[1].num == 0);
    CanFicPrp(2, "O", "", "");
    CanFicAbr(2);
    const std::string in = "Erro no ficheiro: ";
    const std::vector<test::RecordedBox> want = {
        {in + missing, "Funcao: Abrir|Erro:Caminho n\xE3o encontrado"},
        {in + missing, "Funcao: Gravar TX|Erro:Nome ou n\xFAmero de ficheiro incorrecto"},
        {in, "Funcao: Abrir|Erro:Nome ou n\xFAmero de ficheiro incorrecto"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_TRUE(reports.empty());
}

// Reported before any device is touched; the write and the close after it find the port closed.
TEST_F(ChannelTest, APortThatCannotOpenIsReportedByTheOpen) {
    const struct {
        Variant porta;
        std::string device;  // for port 2; "" for its own
        const char* par;
        std::string error;
    } cases[] = {
#ifdef _WIN32
        {"COM2", "", "9600,n,8,1", "Porta 2 (COM2)" + kUnusable},
        {"COM2", "com7", "9600,n,8,1", "Porta 2 (com7)" + kUnusable},
        {"COM2", "\\\\.\\COM12", "9600,n,8,1", "Porta 2 (\\\\.\\COM12)" + kUnusable},
        {"COM2", "LUMBRA-SEM-PORTA", "9600,n,8,1", "Porta 2 (LUMBRA-SEM-PORTA) n\xE3o existe"},
#else
        {"COM2", dir.file("ttyGone"), "9600,n,8,1",
         "Porta 2 (" + dir.file("ttyGone") + ") n\xE3o existe"},
#endif
        {Variant(std::int16_t{12}), "", "9600,n,8,1", "N\xFAmero de porta 12 fora de 1..9"},
        {"COM3", "", "",
         "Configura\xE7\xE3o inv\xE1lida \"\": use velocidade,paridade,dados,paragem como "
         "9600,n,8,1"},
        {"COM3", "", "9601,n,8,1",
         "Velocidade 9601 n\xE3o suportada: use 110, 300, 600, 1200, 2400, 4800, 9600, 14400, "
         "19200, 28800, 38400, 56000, 57600, 115200, 128000 ou 256000"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        boxes.clear();
        if (!c.device.empty()) test::MapPorts({{2, c.device}});
        CanPserPrp(1, c.porta, c.par);
        CanPserAbr(1);
        CanPserEsc(1, "x");
        CanPserFec(1);
        const SerialPortControl& port = CanHostForm()->pSer(1);
        EXPECT_FALSE(port.portOpen());
        const std::string title = "Erro no ficheiro: " + VlStr(c.porta);
        const std::string notOpen =
            "Porta " + std::to_string(port.commPort()) + " n\xE3o est\xE1 aberta";
        const std::vector<test::RecordedBox> want = {{title, "Funcao: Abrir|Erro:" + c.error},
                                                     {title, "Funcao: Escrever|Erro:" + notOpen},
                                                     {title, "Funcao: Fechar|Erro:" + notOpen}};
        EXPECT_EQ(boxes.boxes(), want);
    }
    EXPECT_TRUE(reports.empty());
}

}  // namespace
}  // namespace lumbra
