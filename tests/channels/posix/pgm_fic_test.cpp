// The channel tests on Linux: pseudo-terminals and device nodes, the locks of other serial
// programs, the receive side, and the host form's window.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <pty.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <thread>

#include "channels/GlbComFr.h"
#include "channels/GlbComFrUi.h"
#include "channels/PgmFic.h"
#include "channels/posix/serial_lock.h"
#include "platform/file_handles.h"
#include "platform/posix/line_speed.h"
#include "platform/program.h"
#include "platform/qt/qt_codepage.h"
#include "platform/write_stall.h"
#include "tests/channels/channel_test.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"
#include "util/text/value.h"

namespace lumbra {
namespace test {

std::vector<OpenRefusal> HostOpenRefusals(const TempDir& dir) {
    return {{"COM2", dir.file("ttyGone"), "9600,n,8,1",
             "Porta 2 (" + dir.file("ttyGone") + ") n\xE3o existe"}};
}

}  // namespace test
namespace {

using test::ChannelTest;
using test::MapPorts;

// A process number as the system's serial programs write it in a lock file: ten characters.
std::string PidText(pid_t pid) {
    const std::string digits = std::to_string(pid);
    return std::string(10 - std::min<std::size_t>(digits.size(), 10), ' ') + digits;
}

// The control flags of the line at path as another program reads them (speed included).
tcflag_t LineFlags(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios tio{};
    ::tcgetattr(fd, &tio);
    ::close(fd);
    return tio.c_cflag;
}

// Another program, a child of the test running until the object goes. Given a device, it holds
// flock on it as picocom does; otherwise it only runs, for a lock file that names it.
class HoldingProcess {
  public:
    explicit HoldingProcess(const std::string& device) {
        int ready[2], done[2];
        if (::pipe(ready) != 0 || ::pipe(done) != 0) return;
        pid_ = ::fork();
        if (pid_ == 0) {
            ::close(ready[0]);
            ::close(done[1]);
            const int fd = device.empty() ? -1 : ::open(device.c_str(), O_RDWR | O_NOCTTY);
            if (!device.empty() && (fd < 0 || ::flock(fd, LOCK_EX | LOCK_NB) != 0)) ::_exit(1);
            char c = 1;
            if (::write(ready[1], &c, 1) != 1) ::_exit(1);
            // Until the test closes its end.
            while (::read(done[0], &c, 1) > 0) {
            }
            ::_exit(0);
        }
        ::close(ready[1]);
        ::close(done[0]);
        done_ = done[1];
        char c = 0;
        EXPECT_EQ(::read(ready[0], &c, 1), 1) << "the holding process did not start";
        ::close(ready[0]);
    }
    ~HoldingProcess() {
        ::close(done_);
        if (pid_ > 0) ::waitpid(pid_, nullptr, 0);
    }
    HoldingProcess(const HoldingProcess&) = delete;
    HoldingProcess& operator=(const HoldingProcess&) = delete;
    pid_t pid() const { return pid_; }

  private:
    pid_t pid_ = -1;
    int done_ = -1;
};

// A full device fails the write; a device node that is missing fails the open, and nothing is
// made in its place.
TEST_F(ChannelTest, DeviceFailuresAreShownUnderTheirFunction) {
    writeOnce("A", "/dev/full", "x", 1);
    const std::string gone = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    writeOnce("O", gone, "x");
    const std::string in = "Erro no ficheiro: ";
    const std::string badName = "Funcao: Gravar TX|Erro:Nome ou n\xFAmero de ficheiro incorrecto";
    const std::vector<test::RecordedBox> want = {
        {in + "/dev/full", "Funcao: Gravar TX|Erro:Disco cheio"},
        {in + gone, "Funcao: Abrir|Erro:Dispositivo indispon\xEDvel"},
        {in + gone, badName}};
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
    std::string label() const { return "Porta 1 (" + pty.slavePath() + ")"; }
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

// While open the line runs at the settings and ignores its carrier; after the close any program
// reads the speed used (as its standard code where it has one) and the local-mode flag as found.
TEST_F(SerialChannelTest, LineSettingsReachTheDeviceAndStayForTheNextProgram) {
    const struct {
        const char* settings;
        speed_t code;
        std::int64_t baud;
        bool twoStop;
        std::int16_t dataBits;
    } cases[] = {{"110,O,6,2", B110, 110, true, 6},
                 // A rate without a code of its own is a custom rate (the kernel's BOTHER).
                 {"14400,n,8,1", CBAUDEX, 14400, false, 8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        const auto line = [&](auto check) {
            const int fd = ::open(pty.slavePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
            termios tio{};
            ASSERT_EQ(::tcgetattr(fd, &tio), 0);
            check(fd, tio);
            ::close(fd);
        };
        line([](int fd, termios tio) {
            tio.c_cflag &= ~static_cast<tcflag_t>(CLOCAL);
            ASSERT_EQ(::tcsetattr(fd, TCSANOW, &tio), 0);
        });
        openPort(c.settings);
        // A pseudo-terminal keeps 8 data bits without parity: those are checked on the port.
        EXPECT_EQ(port().lineSettings().dataBits, c.dataBits);
        termios open{};
        ASSERT_EQ(::tcgetattr(static_cast<int>(port().nativeHandle()), &open), 0);
        EXPECT_EQ(::cfgetospeed(&open), c.code);
        EXPECT_NE(open.c_cflag & CLOCAL, 0u);
        CanPserFec(1);
        line([&](int fd, const termios& after) {
            EXPECT_EQ(::cfgetospeed(&after), c.code);
            EXPECT_EQ(platform::DeviceLineSpeed(fd), c.baud);
            EXPECT_EQ((after.c_cflag & CSTOPB) != 0, c.twoStop);
            EXPECT_EQ(after.c_cflag & CLOCAL, 0u);
        });
    }
}

// After a port that cannot open, the channel works again once prepared with one that can.
TEST_F(SerialChannelTest, AChannelWorksAgainAfterAPortThatCannotOpen) {
    CanPserPrp(1, "COM2", "9600,n,8,1");
    CanPserAbr(1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    boxes.clear();
    openPort();
    CanPserEsc(1, "still here");
    EXPECT_EQ(pty.readExactly(10), "still here");
    CanPserFec(1);
    EXPECT_EQ(reports, std::vector<std::string>{"COM1:still here"});
}

TEST_F(SerialChannelTest, ADeviceGoneBeforeTheWriteIsReportedAndThePortStillCloses) {
    openPort();
    pty.closeMaster();
    CanPserEsc(1, "lost");
    CanPserFec(1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: COM1",
         "Funcao: Escrever|Erro:" + label() + " foi desligada durante a escrita"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_FALSE(port().portOpen());
    EXPECT_TRUE(reports.empty());
}

TEST_F(SerialChannelTest, ADeviceThatStopsTakingDataFailsTheWriteWithinTheStallLimit) {
    openPort();
    platform::SetWriteStallLimit(std::chrono::milliseconds(300));
    // Far more than a pseudo-terminal buffers while nobody reads the other side.
    CanPserEsc(1, std::string(1 << 20, 'x'));
    platform::SetWriteStallLimit({});
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_THAT(boxes.boxes()[0].text,
                ::testing::MatchesRegex(R"(Funcao: Escrever\|Erro:Porta 1 \(.*\): a porta n)"
                                        "\xE3"
                                        R"(o aceitou nenhum byte durante 0,[3-9] s \([0-9]+ de )"
                                        R"(1048576 bytes enviados em [0-9],[0-9] s\))"));
    EXPECT_TRUE(port().portOpen());
}

// A lock whose process is gone, or that names no process once kEmptyLockAge old, never blocks the
// port. While open, the port holds the device as other programs look for it, by a lock file that
// names this process and by flock; both go with the close.
TEST_F(SerialChannelTest, AStaleLockIsRemovedAndThePortHoldsTheDeviceWhileOpen) {
    const pid_t gone = ::fork();
    if (gone == 0) ::_exit(0);
    ::waitpid(gone, nullptr, 0);
    const std::string lock = SerialLockPath(pty.slavePath());
    ASSERT_NE(lock, "");
    const std::string stale[] = {std::to_string(gone) + "\n", "", "sem n\xFAmero",
                                 std::string("\0\x01\xFF", 3)};
    for (const std::string& text : stale) {
        SCOPED_TRACE(text);
        std::ofstream(lock, std::ios::binary) << text;
        std::filesystem::last_write_time(
            lock, std::filesystem::file_time_type::clock::now() - kEmptyLockAge);
        openPort();
        std::ifstream in(lock);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), PidText(::getpid()) + "\n");
        const int other = ::open(pty.slavePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
        CanPserFec(1);
        EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
        ::close(other);
        EXPECT_NE(::access(lock.c_str(), F_OK), 0);
    }
}

// A port held by a running process is never opened nor written, and its line is left as it is:
// held by a lock file however old (the serial library takes one over 30 s old for stale), by flock
// on the device, or by another channel. The box names the holder.
TEST_F(SerialChannelTest, APortHeldElsewhereIsNeitherOpenedNorWritten) {
    // LinkedLockFile: the port names a link to the device, locked under the device's own name.
    enum class Held { LockFile, LinkedLockFile, Flock, Channel };
    const std::string lock = SerialLockPath(pty.slavePath());
    const std::string link = dir.file("ttyLink");
    std::filesystem::create_symlink(pty.slavePath(), link);
    for (const Held held : {Held::LockFile, Held::LinkedLockFile, Held::Flock, Held::Channel}) {
        SCOPED_TRACE(static_cast<int>(held));
        boxes.clear();
        const std::string device = held == Held::LinkedLockFile ? link : pty.slavePath();
        MapPorts({{1, device}});
        std::optional<HoldingProcess> holder;
        pid_t pid = ::getpid();
        if (held == Held::Channel) {
            openPort();
        } else {
            holder.emplace(held == Held::Flock ? pty.slavePath() : "");
            pid = holder->pid();
        }
        const std::string minicom = PidText(pid) + " minicom root\n";
        const bool lockFile = held == Held::LockFile || held == Held::LinkedLockFile;
        if (lockFile) {
            std::ofstream(lock) << minicom;
            std::filesystem::last_write_time(
                lock, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1));
        }
        const tcflag_t flags = LineFlags(pty.slavePath());
        CanPserPrp(2, "COM1", "9600,n,8,1");
        CanPserAbr(2);
        CanPserEsc(2, "x");
        const std::vector<test::RecordedBox> want = {
            {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:Porta 1 (" + device +
                                           ") em uso pelo processo " + std::to_string(pid) +
                                           " (channels_tests)"},
            {"Erro no ficheiro: COM1", "Funcao: Escrever|Erro:Porta 1 n\xE3o est\xE1 aberta"}};
        EXPECT_EQ(boxes.boxes(), want);
        EXPECT_EQ(pty.readAvailable(), "");
        EXPECT_EQ(LineFlags(pty.slavePath()), flags);
        if (lockFile) {
            std::ifstream in(lock);
            EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), minicom);
            ::unlink(lock.c_str());
        }
        if (held == Held::Channel) CanPserFec(1);
    }
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

// What the device sends waits in the receive buffer, of which the last 1024 bytes are kept; with a
// threshold set, arriving bytes raise OnComm and the form's handler takes them.
TEST(SerialReceiveTest, ArrivingBytesAreKeptToTheLast1024AndRaiseOnComm) {
    test::RecordingMsgSink boxes;
    int master = -1, slave = -1;
    char name[64];
    ASSERT_EQ(::openpty(&master, &slave, name, nullptr, nullptr), 0);
    ::close(slave);
    MapPorts({{1, name}});
    CanIni();
    CanPserPrp(1, "COM1", "9600,n,8,1");
    CanPserAbr(1);
    SerialPortControl& port = CanHostForm()->pSer(1);
    // Sends bytes from the device and lets the port take them until done says so.
    const auto receive = [&](const std::string& bytes, const std::function<bool()>& done) {
        ASSERT_EQ(::write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        for (int i = 0; i < 500 && !done(); ++i) {
            QCoreApplication::processEvents();
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        EXPECT_TRUE(done()) << bytes.size() << " bytes sent";
    };
    std::string sent(3000, '\0');
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = static_cast<char>(i % 251);
    receive(sent, [&] { return port.inBufferCount() == 1024; });
    EXPECT_EQ(port.commEvent(), comEvNone);
    port.setInputLen(24);
    EXPECT_EQ(port.input(), sent.substr(sent.size() - 1024, 24));
    port.setRThreshold(1);
    receive("abc", [&] { return port.inBufferCount() == 0; });
    EXPECT_EQ(port.commEvent(), comEvReceive);
    // A handler may close the port that calls it.
    port.setOnComm([&port] { port.setPortOpen(false); });
    receive("d", [&] { return !port.portOpen(); });
    CanFim();
    ::close(master);
    MapPorts({});
    EXPECT_TRUE(boxes.boxes().empty());
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
