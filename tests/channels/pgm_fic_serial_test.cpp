#include <gmock/gmock.h>
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
#include "channels/serial_lock.h"
#include "platform/qt_codepage.h"
#include "platform/write_stall.h"
#include "tests/channels/channel_fixture.h"
#include "tests/support/pty_pair.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

// Port 1 is a pseudo-terminal, port 2 a device that does not exist.
class SerialChannelTest : public test::ChannelTest {
  protected:
    void SetUp() override {
        test::MapPorts({{1, pty.slavePath()}, {2, dir.file("ttyGone")}});
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
        const char* settings;
        std::string error;
    } cases[] = {{"COM2", "9600,n,8,1", "Port 2 (" + dir.file("ttyGone") + ") does not exist"},
                 {Variant(std::int16_t{12}), "9600,n,8,1", "Port number 12 is outside 1..9"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        boxes.clear();
        CanPserPrp(1, c.porta, c.settings);
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
