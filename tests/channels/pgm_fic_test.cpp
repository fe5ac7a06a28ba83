// The channel tests: the channel module started, the boxes it shows recorded, and every write it
// reports as gone out collected. Serial port numbers point at devices the way a technician does,
// through "-COMn PATH" on the program's command line; port 1 is a pseudo-terminal.
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <fstream>
#include <thread>

#include "channels/GlbComFr.h"
#include "channels/GlbComFrUi.h"
#include "channels/PgmFic.h"
#include "channels/serial_lock.h"
#include "platform/file_handles.h"
#include "platform/program.h"
#include "platform/qt_codepage.h"
#include "platform/write_stall.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

void MapPorts(const std::vector<std::pair<int, std::string>>& ports) {
    std::vector<std::string> words = {"lumbra"};
    for (const auto& [number, path] : ports)
        words.insert(words.end(), {"-COM" + std::to_string(number), path});
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
}

class ChannelTest : public ::testing::Test {
  protected:
    void SetUp() override {
        CanIni();
        SetChannelWriteObserver([this](const CanReg& channel, std::string_view bytes) {
            reports.push_back(channel.fic + ":" + std::string(bytes));
        });
    }
    void TearDown() override {
        SetChannelWriteObserver({});
        CanFim();
        MapPorts({});
        platform::FileCloseAll();
    }
    test::RecordingMsgSink boxes;
    test::TempDir dir;
    std::vector<std::string> reports;  // "channel name:bytes", one per write that went out
};

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

class FileChannelTest : public ChannelTest {
  protected:
    // Prepares channel 1, opens it, writes tx and closes it again.
    void writeOnce(const std::string& modo, const std::string& path, const std::string& tx,
                   std::int16_t nl = 0) {
        CanFicPrp(1, modo, path, "");
        CanFicAbr(1);
        CanFicGrv(1, tx, nl);
        CanFicFec(1);
    }
};

// Output and append write the file byte-exact, with a line end only when nl is exactly 1; the
// other modes refuse the write. modoNum comes from the mode or is kept.
TEST_F(FileChannelTest, EachModeWritesTheFileItNamesOrRefuses) {
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
            want = {{"Erro no ficheiro: " + path, "Funcao: Gravar TX|Erro:Bad file mode"}};
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

// A failed open leaves the channel looking open until closed; failed writes report nothing as
// gone out; nothing is made where a device is missing.
TEST_F(FileChannelTest, FailuresAreShownUnderTheirFunction) {
    const std::string missing = dir.file("missing/f.txt");
    CanFicPrp(1, "O", missing, "");
    CanFicAbr(1);
    EXPECT_TRUE(CanTab()[1].modoAct == "O" && CanTab()[1].num == 1);
    CanFicAbr(1);
    CanFicGrv(1, "lost", 1);
    CanFicFec(1);
    EXPECT_TRUE(CanTab()[1].modoAct.empty() && CanTab()[1].num == 0);
    writeOnce("A", "/dev/full", "x", 1);
    const std::string gone = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    writeOnce("O", gone, "x");
    CanFicPrp(2, "O", "", "");
    CanFicAbr(2);
    const std::string in = "Erro no ficheiro: ";
    const std::string badName = "Funcao: Gravar TX|Erro:Bad file name or number";
    const std::vector<test::RecordedBox> want = {
        {in + missing, "Funcao: Abrir|Erro:Path not found"},
        {in + missing, badName},
        {in + "/dev/full", "Funcao: Gravar TX|Erro:Disk full"},
        {in + gone, "Funcao: Abrir|Erro:Device unavailable"},
        {in + gone, badName},
        {in, "Funcao: Abrir|Erro:Bad file name or number"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_TRUE(reports.empty());
    struct stat st {};
    EXPECT_NE(::lstat(gone.c_str(), &st), 0);
}

// Port 1 is a pseudo-terminal, port 2 a device that does not exist.
class SerialChannelTest : public ChannelTest {
  protected:
    void SetUp() override {
        MapPorts({{1, pty.slavePath()}, {2, dir.file("ttyGone")}});
        ChannelTest::SetUp();
    }
    // Prepares and opens channel 1 on port 1.
    void openPort(const std::string& settings = "9600,n,8,1") {
        CanPserPrp(1, "COM1", settings);
        CanPserAbr(1);
        ASSERT_TRUE(boxes.boxes().empty()) << boxes.boxes().front().text;
    }
    SerialPortControl& port() { return CanHostForm()->pSer(1); }
    std::string label() const { return "Port 1 (" + pty.slavePath() + ")"; }
    test::PtyPair pty;
};

// Every byte value, in a write far larger than the line buffers, arrives unchanged even when the
// port is closed right after it; the write is reported once.
TEST_F(SerialChannelTest, EveryByteArrivesUnchangedEvenWhenClosedRightAfter) {
    openPort("115200,n,8,1");
    std::string payload(64 * 1024, '\0');
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<char>(i * 7 % 256);
    std::string got;
    std::thread reader([&] { got = pty.readExactly(payload.size()); });
    CanPserEsc(1, payload);
    CanPserFec(1);
    reader.join();
    EXPECT_TRUE(got == payload) << got.size() << " bytes";
    EXPECT_TRUE(reports == std::vector<std::string>{"COM1:" + payload});
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(SerialChannelTest, LineSettingsReachTheDevice) {
    openPort("110,O,6,2");
    termios tio{};
    ASSERT_EQ(::tcgetattr(port().descriptor(), &tio), 0);
    EXPECT_EQ(::cfgetospeed(&tio), speed_t{B110});
    EXPECT_NE(tio.c_cflag & CSTOPB, 0u);
    // A pseudo-terminal keeps 8 data bits without parity: those are checked on the port.
    EXPECT_EQ(port().lineSettings().dataBits, 6);
    EXPECT_EQ(port().lineSettings().parity, SerialParity::Odd);
}

// A port that cannot open is reported by the open, the writes after it fail, nothing is reported
// as gone out, and the channel works again once prepared with a port that exists.
TEST_F(SerialChannelTest, APortThatCannotOpenIsReportedAndTheProgramGoesOn) {
    const struct {
        Variant porta;
        std::string error;
    } cases[] = {{"COM2", "Port 2 (" + dir.file("ttyGone") + ") does not exist"},
                 {Variant(std::int16_t{12}), "Port number 12 is outside 1..9"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        boxes.clear();
        CanPserPrp(1, c.porta, "9600,n,8,1");
        CanPserAbr(1);
        CanPserEsc(1, "x");
        CanPserFec(1);
        EXPECT_FALSE(port().portOpen());
        const std::string title = "Erro no ficheiro: " + VlStr(c.porta);
        const std::string notOpen = "Port " + std::to_string(port().commPort()) + " is not open";
        const std::vector<test::RecordedBox> want = {{title, "Funcao: Abrir|Erro:" + c.error},
                                                     {title, "Funcao: Escrever|Erro:" + notOpen},
                                                     {title, "Funcao: Fechar|Erro:" + notOpen}};
        EXPECT_EQ(boxes.boxes(), want);
        boxes.clear();
        openPort();
        CanPserEsc(1, "still here");
        EXPECT_EQ(pty.readExactly(10), "still here");
        CanPserFec(1);
    }
    EXPECT_EQ(reports.size(), std::size(cases));
}

TEST_F(SerialChannelTest, ADeviceGoneBeforeTheWriteIsReportedAndThePortStillCloses) {
    openPort();
    pty.closeMaster();
    CanPserEsc(1, "lost");
    CanPserFec(1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: COM1",
         "Funcao: Escrever|Erro:" + label() + " was disconnected during the write"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_FALSE(port().portOpen());
    EXPECT_TRUE(reports.empty());
}

TEST_F(SerialChannelTest, ADeviceThatStopsTakingDataFailsTheWriteWithinTheStallLimit) {
    openPort();
    platform::SetWriteStallLimit(std::chrono::milliseconds(300));
    // Far more than a pseudo-terminal buffers while nobody reads the other side.
    const auto start = std::chrono::steady_clock::now();
    CanPserEsc(1, std::string(1 << 20, 'x'));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
    platform::SetWriteStallLimit({});
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_THAT(boxes.boxes()[0].text,
                ::testing::MatchesRegex(R"(Funcao: Escrever\|Erro:Port 1 \(.*\) stopped taking )"
                                        R"(data: nothing taken for 0\.[3-9] s \([0-9]+ of 1048576 )"
                                        R"(bytes taken in [0-9]\.[0-9] s\))"));
    EXPECT_TRUE(port().portOpen());
}

// A lock left by a program that is gone never blocks the port; the port's own lock goes with it.
TEST_F(SerialChannelTest, AStaleLockIsRemovedAndThePortOpens) {
    const pid_t gone = ::fork();
    if (gone == 0) ::_exit(0);
    ::waitpid(gone, nullptr, 0);
    const std::string lock = SerialLockPath(pty.slavePath());
    ASSERT_NE(lock, "");
    std::ofstream(lock) << gone << "\n";
    openPort();
    EXPECT_TRUE(port().portOpen());
    CanPserFec(1);
    EXPECT_NE(::access(lock.c_str(), F_OK), 0);
}

// A port held by a live process, here another channel, stays its: the box names the holder.
TEST_F(SerialChannelTest, APortHeldByAnotherChannelIsInUse) {
    openPort();
    CanPserPrp(2, "COM1", "9600,n,8,1");
    CanPserAbr(2);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:" + label() + " is in use by process " +
                                       std::to_string(::getpid()) + " (channels_tests)"}};
    EXPECT_EQ(boxes.boxes(), want);
}

// A button left out of its frame's layout keeps a stray place over the other controls.
TEST_F(SerialChannelTest, EveryButtonIsLaidOutAndShownInsideItsFrame) {
    GlbComFrUi ui{*CanHostForm()};
    ui.show();
    QCoreApplication::processEvents();
    for (const QPushButton* button : ui.findChildren<QPushButton*>()) {
        SCOPED_TRACE(button->text().toStdString());
        const QWidget* frame = button->parentWidget();
        ASSERT_NE(frame->layout(), nullptr);
        EXPECT_GE(frame->layout()->indexOf(button), 0);
        EXPECT_TRUE(button->isVisible() && frame->rect().contains(button->geometry()));
    }
}

// The panel sends its text with CR LF on port 1 as it stands when the form loads; the modem test
// sends AT and closes its port.
TEST_F(SerialChannelTest, PanelAndModemTestSendOnTheirPorts) {
    GlbComFrUi ui{*CanHostForm()};
    ui.txCom->setText(platform::FromCp1252("ABC\xE7"));
    ui.cmPserAbr->click();
    ui.cmPserEnv->click();
    EXPECT_EQ(pty.readExactly(6), "ABC\xE7\r\n");
    ui.cmPserFec->click();
    EXPECT_FALSE(port().portOpen());
    ui.Command1->click();
    EXPECT_EQ(pty.readExactly(3), "AT\r");
    EXPECT_FALSE(CanHostForm()->MSComm1().portOpen());
    EXPECT_TRUE(boxes.boxes().empty());
}

}  // namespace
}  // namespace lumbra
