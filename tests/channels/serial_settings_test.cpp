#include "channels/serial_settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "channels/line_format.h"
#include "channels/serial_device.h"
#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"

namespace lumbra {
namespace {

using P = SerialParity;
using S = SerialStopBits;

TEST(SerialSettingsTest, ReadsWellFormedTextsAndRefusesTheRestLeavingSettingsAlone) {
    const std::pair<const char*, SerialSettings> good[] = {
        {"9600,n,8,1", {9600, P::None, 8, S::One}},
        {"110,o,5,1.5", {110, P::Odd, 5, S::OneAndHalf}},
        {"256000,M,6,2", {256000, P::Mark, 6, S::Two}},
        {" 14400 , s , 4 , 2 ", {14400, P::Space, 4, S::Two}},
    };
    for (const auto& [text, want] : good) {
        SerialSettings got{1, P::Odd, 1, S::Two};
        std::string error;
        EXPECT_TRUE(ParseSerialSettings(text, got, error)) << text << ": " << error;
        EXPECT_EQ(got, want) << text;
    }
    const std::string bad[] = {"",           "9600,n,8",   "9600,x,8,1", "9600,n,9,1",
                               "9600,n,3,1", "9600,n,8,3", "12345",      "99999999999999999999"};
    for (const std::string& text : bad) {
        // The last two are rates nobody supports.
        const bool rate = text.size() >= 5 && text.find(',') == std::string::npos;
        SerialSettings got;
        std::string error;
        EXPECT_FALSE(ParseSerialSettings(rate ? text + ",n,8,1" : text, got, error)) << text;
        EXPECT_EQ(error, rate ? "Baud rate " + text +
                                    " is not supported: use 110, 300, 600, 1200, 2400, 4800, "
                                    "9600, 14400, 19200, 28800, 38400, 56000, 57600, 115200, "
                                    "128000 or 256000"
                              : "Invalid port settings \"" + text +
                                    "\": expected baud,parity,data,stop such as 9600,n,8,1");
        EXPECT_EQ(got, SerialSettings{}) << text;
    }
}

TEST(SerialSettingsTest, DeviceRefusesWhatALineCannotCarry) {
    const std::pair<SerialSettings, std::string> cases[] = {
        {{9600, P::None, 5, S::OneAndHalf}, ""},
        {{9600, P::None, 6, S::Two}, ""},
        {{9600, P::None, 4, S::One}, "4 data bits are not supported by the device"},
        {{9600, P::None, 8, S::OneAndHalf}, "1.5 stop bits need 5 data bits"},
        {{9600, P::None, 5, S::Two}, "2 stop bits cannot be used with 5 data bits (use 1.5)"}};
    for (const auto& [settings, want] : cases) {
        std::string error;
        EXPECT_EQ(SettingsDeviceCanUse(settings, error), want.empty()) << want;
        EXPECT_EQ(error, want);
    }
}

// Everything the format does not own survives in the driver's flags; flow control goes. A
// pseudo-terminal need only keep the stop bits.
TEST(LineFormatTest, PutsDataBitsParityAndStopBitsIntoTheDriverFlags) {
    const struct {
        SerialSettings settings;
        tcflag_t cflag;
        bool parityCheck;
    } cases[] = {{{9600, P::None, 8, S::One}, CS8, false},
                 {{9600, P::Even, 7, S::One}, CS7 | PARENB, true},
                 {{9600, P::Odd, 7, S::Two}, CS7 | PARENB | PARODD | CSTOPB, true},
                 {{9600, P::Mark, 8, S::One}, CS8 | PARENB | CMSPAR | PARODD, true},
                 {{9600, P::Space, 6, S::Two}, CS6 | PARENB | CMSPAR | CSTOPB, true},
                 {{9600, P::None, 5, S::OneAndHalf}, CS5 | CSTOPB, false}};
    const tcflag_t format = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB | CRTSCTS;
    for (const auto& c : cases) {
        termios tio{};
        tio.c_cflag = CS8 | PARENB | PARODD | CSTOPB | CRTSCTS | CREAD | CLOCAL | B19200;
        tio.c_iflag = IXON | IXOFF | IGNPAR | INPCK;
        SetLineFormat(tio, c.settings);
        EXPECT_EQ(tio.c_cflag & format, c.cflag);
        EXPECT_EQ(tio.c_cflag & ~format, tcflag_t{CREAD | CLOCAL | B19200});
        EXPECT_EQ(tio.c_iflag, tcflag_t{IGNPAR} | (c.parityCheck ? tcflag_t{INPCK} : 0));
        EXPECT_TRUE(LineFormatTaken(tio, c.settings, false));
    }
    const SerialSettings sevenEven{9600, P::Even, 7, S::Two};
    termios forced{};
    forced.c_cflag = CS8 | CSTOPB;
    EXPECT_TRUE(LineFormatTaken(forced, sevenEven, true));
    EXPECT_FALSE(LineFormatTaken(forced, sevenEven, false));
    forced.c_cflag = CS8;
    EXPECT_FALSE(LineFormatTaken(forced, sevenEven, true));
}

TEST(SerialDeviceTest, PortNumberNamesTheDeviceGivenOnTheCommandLineOrTheDefault) {
    const struct {
        std::int16_t port;
        const char* commandLine;
        const char* path;
    } cases[] = {{1, "", "/dev/ttyS0"},
                 {2, "-com2 /dev/pts/7 -COM1 /dev/ttyUSB0", "/dev/pts/7"},
                 {1, "-COM12 /dev/x", "/dev/ttyS0"}};
    for (const auto& c : cases)
        EXPECT_EQ(SerialDevicePath(c.port, c.commandLine), c.path);
}

// Says why a device node cannot be used; a user without the rights is told the group to join.
TEST(SerialDeviceTest, SaysWhyADeviceNodeCannotBeUsed) {
    test::TempDir dir;
    dir.write("plain", "x");
    test::PtyPair pty;
    const std::string path = pty.slavePath();
    const std::pair<std::string, std::string> cases[] = {
        {dir.file("none"), " does not exist"}, {dir.file("plain"), " is not a serial device"}};
    for (const auto& [device, why] : cases)
        EXPECT_EQ(DeviceAccessProblem(3, device), "Port 3 (" + device + ")" + why);
    EXPECT_EQ(DeviceAccessProblem(1, path), "");

    if (::geteuid() != 0) GTEST_SKIP() << "giving the device to root needs root";
    ASSERT_EQ(::chown(path.c_str(), 0, 0), 0);
    const std::pair<mode_t, std::string> rights[] = {
        {0660, "): the user must be in the group \"root\" that owns it"},
        {0600, "): only its owner \"root\" may use it"}};
    for (const auto& [mode, why] : rights) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        const std::string want = "No permission to use Port 1 (" + path + why;
        const int result =
            test::RunUnprivileged([&] { return DeviceAccessProblem(1, path) == want ? 0 : 1; });
        if (result == test::kCannotDropRoot) GTEST_SKIP() << "cannot run as an ordinary user";
        EXPECT_EQ(result, 0) << want;
    }
}

}  // namespace
}  // namespace lumbra
