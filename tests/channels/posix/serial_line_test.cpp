// The serial line on Linux: the character format in the terminal driver's flags, why a device
// node cannot serve, and the lock a port holds on it.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "channels/posix/device_access.h"
#include "channels/posix/line_format.h"
#include "channels/posix/serial_lock.h"
#include "channels/serial_device.h"
#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"

namespace lumbra {
namespace {

using P = SerialParity;
using S = SerialStopBits;

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

// Says why a device node cannot be used; a user without the rights is told the group to join.
TEST(SerialDeviceTest, SaysWhyADeviceNodeCannotBeUsed) {
    test::TempDir dir;
    dir.write("plain", "x");
    test::PtyPair pty;
    const std::string path = pty.slavePath();
    const std::pair<std::string, std::string> cases[] = {
        {dir.file("none"), " n\xE3o existe"},
        {dir.file("plain"), " n\xE3o \xE9 um dispositivo s\xE9rie"}};
    for (const auto& [device, why] : cases)
        EXPECT_EQ(DeviceAccessProblem(3, device), "Porta 3 (" + device + ")" + why);
    EXPECT_EQ(DeviceAccessProblem(1, path), "");

    if (::geteuid() != 0) GTEST_SKIP() << "giving the device to root needs root";
    ASSERT_EQ(::chown(path.c_str(), 0, 0), 0);
    const std::pair<mode_t, std::string> rights[] = {
        {0660, ") sem permiss\xE3o: o utilizador tem de estar no grupo \"root\""},
        {0600, ") sem permiss\xE3o: s\xF3 o dono \"root\" a pode usar"}};
    for (const auto& [mode, why] : rights) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        const std::string want = "Porta 1 (" + path + why;
        const int result =
            test::RunUnprivileged([&] { return DeviceAccessProblem(1, path) == want ? 0 : 1; });
        if (result == test::kCannotDropRoot) GTEST_SKIP() << "cannot run as an ordinary user";
        EXPECT_EQ(result, 0) << want;
    }
}

// A descriptor flock cannot lock at all (here none) leaves the device to its lock file alone.
TEST(SerialLockTest, TakingAnotherDeviceGivesTheFirstBack) {
    test::TempDir dir;
    const std::string first = dir.file("ttyA"), second = dir.file("ttyB");
    const auto locked = [](const std::string& device) {
        return ::access(SerialLockPath(device).c_str(), F_OK) == 0;
    };
    SerialLock lock;
    ASSERT_TRUE(lock.takeFile(first) && locked(first) && lock.takeFile(second));
    EXPECT_TRUE(!locked(first) && locked(second));
    EXPECT_TRUE(lock.takeDevice(-1, second));
    EXPECT_EQ(lock.inUse(), "");
    lock.release();
    EXPECT_FALSE(locked(second));
}

// The lock folders are made read-only for one process.
TEST(SerialLockDeathTest, WithoutAWritableLockFolderTheDeviceGoesWithoutALockFile) {
    // Only in a mount namespace of the child's own: never over this machine's folders.
    const pid_t probe = ::fork();
    if (probe == 0) ::_exit(::unshare(CLONE_NEWNS) == 0 ? 0 : 1);
    int status = -1;
    ::waitpid(probe, &status, 0);
    if (status != 0) GTEST_SKIP() << "making the lock folders read-only needs a mount namespace";
    test::PtyPair pty;
    EXPECT_EXIT(
        {
            if (::unshare(CLONE_NEWNS) != 0) std::exit(3);
            if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) std::exit(4);
            for (const char* folder : {"/var/lock", "/etc/locks", "/var/spool/locks",
                                       "/var/spool/uucp", "/tmp", "/var/tmp", "/run/lock"})
                ::mount("none", folder, "tmpfs", MS_RDONLY, nullptr);
            SerialLock lock;
            const bool none = SerialLockPath(pty.slavePath()).empty();
            std::exit(none ? (lock.takeFile(pty.slavePath()) ? 0 : 1) : 2);
        },
        ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace lumbra
