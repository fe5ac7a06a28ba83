#include <gmock/gmock.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "channels/GlbComFr.h"
#include "channels/serial_lock.h"
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
// port is closed right after it; the write is reported once; nothing echoes back to the device.
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
    openPort();
    pty.send("ab\r\n\x03");
    EXPECT_EQ(pty.readAvailable(), "");
    // Without an observer the write goes on as before.
    SetChannelWriteObserver({});
    CanPserEsc(1, "x");
    EXPECT_EQ(pty.readExactly(1), "x");
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(SerialChannelTest, LineSettingsReachTheDevice) {
    const struct {
        const char* settings;
        speed_t speed;
        bool twoStopBits;
        std::int16_t dataBits;
        SerialParity parity;
    } cases[] = {
        {"19200,e,7,1", B19200, false, 7, SerialParity::Even},
        {"110,O,6,2", B110, true, 6, SerialParity::Odd},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        openPort(c.settings);
        termios tio{};
        ASSERT_EQ(::tcgetattr(port().descriptor(), &tio), 0);
        EXPECT_EQ(::cfgetospeed(&tio), c.speed);
        EXPECT_EQ((tio.c_cflag & CSTOPB) != 0, c.twoStopBits);
        // A pseudo-terminal keeps 8 data bits without parity: those are checked on the port.
        EXPECT_EQ(port().lineSettings().dataBits, c.dataBits);
        EXPECT_EQ(port().lineSettings().parity, c.parity);
        CanPserFec(1);
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// What the port refuses is reported by the open, the writes after it fail, nothing is reported as
// gone out, and the channel works again once prepared with what the port takes.
TEST_F(SerialChannelTest, APortThatCannotOpenIsReportedAndTheProgramGoesOn) {
    const struct {
        Variant porta;
        const char* settings;
        std::string error;
    } cases[] = {
        {"COM1", "9600,n,8",
         "Invalid port settings \"9600,n,8\": expected baud,parity,data,stop such as 9600,n,8,1"},
        {"COM1", "9600,n,4,1",
         label() + " refused the settings \"9600,n,4,1\": 4 data bits are not supported by the "
                   "device"},
        {"COM2", "9600,n,8,1", "Port 2 (" + dir.file("ttyGone") + ") does not exist"},
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
    for (const std::string& content : {std::string(), std::to_string(gone) + "\n"}) {
        SCOPED_TRACE("lock holding \"" + content + "\"");
        std::ofstream(lock) << content;
        openPort();
        EXPECT_TRUE(port().portOpen());
        CanPserFec(1);
        EXPECT_NE(::access(lock.c_str(), F_OK), 0);
    }
}

TEST_F(SerialChannelTest, APortHeldByAnotherChannelIsInUse) {
    openPort();
    CanPserPrp(2, "COM1", "9600,n,8,1");
    CanPserAbr(2);
    CanPserAbr(1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:" + label() + " is in use by process " +
                                       std::to_string(::getpid()) + " (channels_tests)"},
        {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:Port 1 is already open"}};
    EXPECT_EQ(boxes.boxes(), want);
}

TEST_F(SerialChannelTest, CanFimAndTheEndOfTheProgramCloseOpenPorts) {
    openPort();
    CanFim();
    CanIni();
    openPort();
    EXPECT_THROW(platform::EndProgram(0), platform::ProgramEnded);
    EXPECT_FALSE(port().portOpen());
}

}  // namespace
}  // namespace lumbra
