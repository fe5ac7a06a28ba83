#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "channels/GlbComFr.h"
#include "channels/PgmFic.h"
#include "channels/serial_lock.h"
#include "platform/msg_box.h"
#include "platform/write_stall.h"
#include "tests/channels/port_map.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {
namespace {

class SerialChannelTest : public ::testing::Test {
  protected:
    void SetUp() override {
        test::MapPorts({{1, pty.slavePath()}});
        CanIni();
    }
    void TearDown() override {
        CanFim();
        test::MapPorts({});
    }
    // Prepares and opens channel 1 on port 1, which is the pseudo-terminal.
    void openPort(const std::string& settings = "9600,n,8,1") {
        CanPserPrp(1, "COM1", settings);
        CanPserAbr(1);
        ASSERT_TRUE(boxes.boxes().empty()) << boxes.boxes().front().text;
    }
    SerialPortControl& port() { return CanHostForm()->pSer(1); }
    std::string label() const { return "Port 1 (" + pty.slavePath() + ")"; }

    test::RecordingMsgSink boxes;
    test::PtyPair pty;
};

TEST_F(SerialChannelTest, EveryByteValueArrivesUnchangedAndNothingEchoes) {
    openPort();
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    CanPserEsc(1, all);
    EXPECT_EQ(pty.readExactly(all.size()), all);
    EXPECT_EQ(pty.readAvailable(), "");
    // A device's answer must not come back to it, nor be turned into line ends.
    pty.send("ab\r\n\x03");
    EXPECT_EQ(pty.readAvailable(), "");
    CanPserFec(1);
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(SerialChannelTest, ALargeWriteArrivesWholeEvenWhenClosedRightAfter) {
    openPort("115200,n,8,1");
    std::string payload(64 * 1024, '\0');
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<char>(i * 7 % 251);
    std::string got;
    std::thread reader([&] { got = pty.readExactly(payload.size()); });
    CanPserEsc(1, payload);
    CanPserFec(1);
    reader.join();
    EXPECT_EQ(got.size(), payload.size());
    EXPECT_TRUE(got == payload);
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
        {"9600,n,8,2", B9600, true, 8, SerialParity::None},
        {"110,O,6,2", B110, true, 6, SerialParity::Odd},
        {"57600,s,5,1.5", B57600, true, 5, SerialParity::Space},
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

TEST_F(SerialChannelTest, SettingsThePortRefusesAreReportedAtOpenUntilPreparedAgain) {
    const std::string expected = "\": expected baud,parity,data,stop such as 9600,n,8,1";
    const struct {
        const char* settings;
        std::string error;
    } cases[] = {
        {"", "Invalid port settings \"" + expected},
        {"9600,n,8", "Invalid port settings \"9600,n,8" + expected},
        {"300,q,8,1", "Invalid port settings \"300,q,8,1" + expected},
        {"12345,n,8,1",
         "Baud rate 12345 is not supported: use 110, 300, 600, 1200, 2400, 4800, 9600, 14400, "
         "19200, 28800, 38400, 56000, 57600, 115200, 128000 or 256000"},
        {"9600,n,4,1", label() + " refused the settings \"9600,n,4,1\": 4 data bits are not "
                                 "supported by the device"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        boxes.clear();
        CanPserPrp(1, "COM1", c.settings);
        CanPserAbr(1);
        CanPserEsc(1, "x");
        EXPECT_FALSE(port().portOpen());
        const std::vector<test::RecordedBox> want = {
            {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:" + c.error},
            {"Erro no ficheiro: COM1", "Funcao: Escrever|Erro:Port 1 is not open"},
        };
        EXPECT_EQ(boxes.boxes(), want);
        boxes.clear();
        openPort();
        CanPserFec(1);
    }
}

TEST_F(SerialChannelTest, AMissingDeviceIsReportedAndTheProgramGoesOn) {
    test::TempDir dir;
    test::MapPorts({{1, pty.slavePath()}, {2, dir.file("ttyGone")}});
    CanPserPrp(1, "COM2", "9600,n,8,1");
    CanPserAbr(1);
    CanPserEsc(1, "x");
    CanPserFec(1);
    const std::string title = "Erro no ficheiro: COM2";
    const std::vector<test::RecordedBox> want = {
        {title, "Funcao: Abrir|Erro:Port 2 (" + dir.file("ttyGone") + ") does not exist"},
        {title, "Funcao: Escrever|Erro:Port 2 is not open"},
        {title, "Funcao: Fechar|Erro:Port 2 is not open"},
    };
    EXPECT_EQ(boxes.boxes(), want);
    boxes.clear();
    openPort();
    CanPserEsc(1, "still here");
    EXPECT_EQ(pty.readExactly(10), "still here");
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
        boxes.clear();
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
        {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:Port 1 is already open"},
    };
    EXPECT_EQ(boxes.boxes(), want);
}

TEST_F(SerialChannelTest, APortNumberBeyondNineIsReportedAtOpen) {
    CanPserPrp(1, Variant(std::int16_t{12}), "9600,n,8,1");
    CanPserAbr(1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: 12", "Funcao: Abrir|Erro:Port number 12 is outside 1..9"}};
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
