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
#include <QGuiApplication>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "channels/GlbComFr.h"
#include "channels/GlbComFrUi.h"
#include "channels/posix/serial_lock.h"
#include "platform/busy_pointer.h"
#include "platform/posix/line_speed.h"
#include "platform/qt/qt_codepage.h"
#include "platform/write_stall.h"
#include "tests/channels/channel_test.h"
#include "tests/support/pty_pair.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

using test::ChannelTest;
using test::MapPorts;

// A process number as the system's serial programs write it in a lock file: ten characters.
std::string PidText(pid_t pid) {
    const std::string digits = std::to_string(pid);
    return std::string(10 - digits.size(), ' ') + digits;
}

std::string Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The line at path as another program finds it (speed included); set, when given, before.
termios Line(const std::string& path, const termios* set = nullptr) {
    const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios tio{};
    EXPECT_TRUE(set == nullptr || ::tcsetattr(fd, TCSANOW, set) == 0);
    EXPECT_EQ(::tcgetattr(fd, &tio), 0);
    ::close(fd);
    return tio;
}

// A full device fails the write; a missing device node fails the open and is not made.
TEST_F(ChannelTest, DeviceFailuresAreShownUnderTheirFunction) {
    writeOnce("A", "/dev/full", "x", 1);
    const std::string gone = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    writeOnce("O", gone, "x");
    const std::string in = "Erro no ficheiro: ", write = "Funcao: Gravar TX|Erro:";
    const std::vector<test::RecordedBox> want = {
        {in + "/dev/full", write + "Disco cheio"},
        {in + gone, "Funcao: Abrir|Erro:Dispositivo indispon\xEDvel"},
        {in + gone, write + "Nome ou n\xFAmero de ficheiro incorrecto"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_TRUE(reports.empty());
    EXPECT_NE(::access(gone.c_str(), F_OK), 0);
}

// Port 1 is a pseudo-terminal, port 2 a device that does not exist.
class SerialChannelTest : public ChannelTest {
  protected:
    void SetUp() override {
        MapPorts({{1, pty.slavePath()}, {2, dir.file("ttyGone")}});
        ChannelTest::SetUp();
    }
    void openPort(const std::string& settings = "9600,n,8,1") {
        CanPserPrp(1, "COM1", settings);
        CanPserAbr(1);
        ASSERT_TRUE(boxes.boxes().empty()) << boxes.boxes().front().text;
    }
    SerialPortControl& port() { return CanHostForm()->pSer(1); }
    test::PtyPair pty;
};

// Every byte value, in a write far larger than the line buffers; the channel first had a port that
// could not open.
TEST_F(SerialChannelTest, EveryByteArrivesUnchangedEvenWhenClosedRightAfter) {
    CanPserPrp(1, "COM2", "9600,n,8,1");
    CanPserAbr(1);
    ASSERT_EQ(boxes.boxes().size(), 1u);
    boxes.clear();
    openPort("115200,n,8,1");
    std::string payload(64 * 1024, '\0'), got;
    for (std::size_t i = 0; i < payload.size(); ++i)
        payload[i] = static_cast<char>(i * 7 % 256);
    std::thread reader([&] { got = pty.readExactly(payload.size()); });
    CanPserEsc(1, payload);
    CanPserFec(1);
    reader.join();
    EXPECT_TRUE(got == payload) << got.size() << " bytes";
    EXPECT_TRUE(reports == std::vector<std::string>{"COM1:" + payload});
    EXPECT_TRUE(boxes.boxes().empty());
}

// While open the line is raw and ignores its carrier; after the close the next program finds the
// speed used (as its standard code where it has one) and the local-mode flag as found.
TEST_F(SerialChannelTest, LineSettingsReachTheDeviceAndStayForTheNextProgram) {
    const struct {
        const char* settings;
        speed_t code;  // CBAUDEX: a custom rate (the kernel's BOTHER)
        std::int64_t baud;
        bool twoStop;
        std::int16_t dataBits;
    } cases[] = {{"110,O,6,2", B110, 110, true, 6}, {"14400,n,8,1", CBAUDEX, 14400, false, 8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.settings);
        termios before = Line(pty.slavePath());
        before.c_cflag &= ~static_cast<tcflag_t>(CLOCAL);
        Line(pty.slavePath(), &before);
        openPort(c.settings);
        // A pseudo-terminal keeps 8 data bits without parity: those are checked on the port.
        EXPECT_EQ(port().lineSettings().dataBits, c.dataBits);
        termios open{};
        ASSERT_EQ(::tcgetattr(static_cast<int>(port().nativeHandle()), &open), 0);
        EXPECT_EQ(::cfgetospeed(&open), c.code);
        EXPECT_NE(open.c_cflag & CLOCAL, 0u);
        EXPECT_EQ(open.c_lflag & (ICANON | ECHO | ISIG), 0u);
        EXPECT_EQ(open.c_cc[VMIN] + open.c_cc[VTIME], 0);
        CanPserFec(1);
        EXPECT_EQ(port().nativeHandle(), -1);
        const termios after = Line(pty.slavePath());
        EXPECT_EQ(::cfgetospeed(&after), c.code);
        EXPECT_EQ((after.c_cflag & CSTOPB) != 0, c.twoStop);
        EXPECT_EQ(after.c_cflag & CLOCAL, 0u);
        const int fd = ::open(pty.slavePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_EQ(platform::DeviceLineSpeed(fd), c.baud);
        ::close(fd);
    }
}

TEST_F(SerialChannelTest, ADeviceGoneBeforeTheWriteIsReportedAndThePortStillCloses) {
    openPort();
    pty.closeMaster();
    CanPserEsc(1, "lost");
    CanPserFec(1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: COM1", "Funcao: Escrever|Erro:Porta 1 (" + pty.slavePath() +
                                       ") foi desligada durante a escrita"}};
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

// While open, the port holds the device by a lock file naming this process and by flock; both go
// with the close, the lock file only while it still names this process.
TEST_F(SerialChannelTest, AStaleLockIsRemovedAndThePortHoldsTheDeviceWhileOpen) {
    const pid_t gone = ::fork();
    if (gone == 0) ::_exit(0);
    ::waitpid(gone, nullptr, 0);
    const std::string lock = SerialLockPath(pty.slavePath());
    ASSERT_NE(lock, "");
    // A young lock that names no process is waited for, then removed.
    const std::pair<std::string, std::chrono::milliseconds> stale[] = {
        {std::to_string(gone) + "\n", kEmptyLockAge},
        {"", kEmptyLockAge},
        {"sem n\xFAmero", kEmptyLockAge},
        {std::string("\0\x01\xFF", 3), kEmptyLockAge},
        {"", std::chrono::milliseconds(0)}};
    for (const auto& [text, age] : stale) {
        SCOPED_TRACE(text);
        std::ofstream(lock, std::ios::binary) << text;
        std::filesystem::last_write_time(lock, std::filesystem::file_time_type::clock::now() - age);
        openPort();
        EXPECT_EQ(Read(lock), PidText(::getpid()) + "\n");
        const int other = ::open(pty.slavePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
        CanPserFec(1);
        EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
        ::close(other);
        EXPECT_NE(::access(lock.c_str(), F_OK), 0);
    }
    openPort();
    std::ofstream(lock) << gone << "\n";
    CanPserFec(1);
    EXPECT_EQ(::access(lock.c_str(), F_OK), 0);
    ::unlink(lock.c_str());
}

// The line is left as it is, the box naming the holder. A lock file is live however old (the
// serial library takes one over 30 s old for stale).
TEST_F(SerialChannelTest, APortHeldElsewhereOrRefusingItsSettingsIsNeitherOpenedNorWritten) {
    // The port names a link to the device, locked under the device's name or under the link's.
    enum class Held { LockFile, LinkedLockFile, LinkNameLockFile, Flock, Channel, Refused };
    const std::string link = dir.file("ttyLink");
    std::filesystem::create_symlink(pty.slavePath(), link);
    std::string linkName = link;
    std::replace(linkName.begin(), linkName.end(), '/', '_');
    const std::string deviceLock = SerialLockPath(pty.slavePath());
    const std::string linkLock = deviceLock.substr(0, deviceLock.rfind('/')) + "/LCK.." + linkName;
    for (const Held held : {Held::LockFile, Held::LinkedLockFile, Held::LinkNameLockFile,
                            Held::Flock, Held::Channel, Held::Refused}) {
        SCOPED_TRACE(static_cast<int>(held));
        boxes.clear();
        const bool linked = held == Held::LinkedLockFile || held == Held::LinkNameLockFile;
        const std::string device = linked ? link : pty.slavePath();
        const std::string lock = held == Held::LinkNameLockFile ? linkLock : deviceLock;
        MapPorts({{1, device}});
        // This process holds it as another program would: a second open of the device takes
        // flock on its own, and a lock file naming a running process is live.
        const int other = ::open(pty.slavePath().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_TRUE(held != Held::Flock || ::flock(other, LOCK_EX | LOCK_NB) == 0);
        if (held == Held::Channel) openPort();
        const pid_t pid = ::getpid();
        const std::string minicom = PidText(pid) + " minicom root\n";
        const bool lockFile = held == Held::LockFile || linked;
        if (lockFile) {
            std::ofstream(lock) << minicom;
            std::filesystem::last_write_time(
                lock, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(1));
        }
        const tcflag_t flags = Line(pty.slavePath()).c_cflag;
        const char* settings = held == Held::Refused ? "9600,n,4,1" : "9600,n,8,1";
        CanPserPrp(2, "COM1", settings);
        CanPserAbr(2);
        CanPserEsc(2, "x");
        const std::string why =
            held == Held::Refused
                ? std::string(" recusou a configura\xE7\xE3o \"") + settings +
                      "\": 4 bits de dados n\xE3o suportados pelo dispositivo"
                : " em uso pelo processo " + std::to_string(pid) + " (channels_tests)";
        const std::vector<test::RecordedBox> want = {
            {"Erro no ficheiro: COM1", "Funcao: Abrir|Erro:Porta 1 (" + device + ")" + why},
            {"Erro no ficheiro: COM1", "Funcao: Escrever|Erro:Porta 1 n\xE3o est\xE1 aberta"}};
        EXPECT_EQ(boxes.boxes(), want);
        EXPECT_EQ(pty.readAvailable(), "");
        EXPECT_EQ(Line(pty.slavePath()).c_cflag, flags);
        if (lockFile) {
            EXPECT_EQ(Read(lock), minicom);
            ::unlink(lock.c_str());
        } else if (held != Held::Channel) {
            EXPECT_NE(::access(deviceLock.c_str(), F_OK), 0);
        }
        if (held == Held::Channel) CanPserFec(1);
        ::close(other);
    }
}

// With a threshold set, arriving bytes raise OnComm and the form's handler takes them.
TEST_F(SerialChannelTest, ArrivingBytesAreKeptToTheLast1024AndRaiseOnComm) {
    int master = -1, slave = -1;
    char name[64];
    ASSERT_EQ(::openpty(&master, &slave, name, nullptr, nullptr), 0);
    ::close(slave);
    MapPorts({{1, name}});
    openPort();
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
    receive(sent, [&] { return port().inBufferCount() == 1024; });
    EXPECT_EQ(port().commEvent(), comEvNone);
    port().setInputLen(24);
    EXPECT_EQ(port().input(), sent.substr(sent.size() - 1024, 24));
    port().setRThreshold(1);
    receive("abc", [&] { return port().inBufferCount() == 0; });
    EXPECT_EQ(port().commEvent(), comEvReceive);
    // A handler may close the port that calls it.
    port().setOnComm([this] { port().setPortOpen(false); });
    receive("d", [&] { return !port().portOpen(); });
    ::close(master);
    EXPECT_TRUE(boxes.boxes().empty());
}

// A button outside its frame's layout keeps a stray place over the other controls. The panel
// sends on port 1 as it stands when the form loads.
TEST_F(SerialChannelTest, TheWindowLaysOutEveryButtonAndItsPanelsSendOnTheirPorts) {
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

// What the window shows: a character Windows-1252 lacks goes out as '?'; a pause takes every
// hourglass off and puts them all back.
TEST(WindowPiecesTest, CodepageAndHourglass) {
    std::string bytes;
    EXPECT_FALSE(platform::ToCp1252(QString::fromUtf8("a\u2713\u20AC"), bytes));
    EXPECT_EQ(bytes, "a?\x80");
    {
        const platform::BusyPointer outer;
        {
            const platform::BusyPointer inner;
            const platform::BusyPointerPause pause;
            EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        }
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace lumbra
