#include "tests/support/pty_pair.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <thread>

namespace lumbra::test {
namespace {

// Appends what one read finds within wait; false when nothing came or the slave side is closed
// and empty (EIO), which readExactly tells apart through gone.
bool ReadSome(int fd, std::string& into, std::chrono::milliseconds wait, bool* gone = nullptr) {
    pollfd p{fd, POLLIN, 0};
    if (::poll(&p, 1, static_cast<int>(wait.count())) <= 0) return false;
    std::array<char, 4096> chunk{};
    const ssize_t n = ::read(fd, chunk.data(), chunk.size());
    if (n > 0) into.append(chunk.data(), static_cast<std::size_t>(n));
    if (n <= 0 && gone != nullptr) *gone = !(n < 0 && (errno == EAGAIN || errno == EINTR));
    return n > 0;
}

}  // namespace

PtyPair::PtyPair() {
    int slave = -1;
    std::array<char, 128> name{};
    if (::openpty(&master_, &slave, name.data(), nullptr, nullptr) != 0) {
        ADD_FAILURE() << "openpty failed: errno " << errno;
        master_ = -1;
        return;
    }
    slavePath_ = name.data();
    ::close(slave);
    ::fcntl(master_, F_SETFL, ::fcntl(master_, F_GETFL) | O_NONBLOCK);
}

void PtyPair::fillUntilBlocked() {
    const int slave = ::open(slavePath_.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY);
    if (slave < 0) {
        ADD_FAILURE() << "cannot open " << slavePath_ << ": errno " << errno;
        return;
    }
    termios raw{};
    ::tcgetattr(slave, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(slave, TCSANOW, &raw);
    const std::array<char, 4096> chunk{};
    // The kernel moves what it holds to the master's side in the background and makes room again:
    // the pair is full only when a whole round, after a pause, takes nothing.
    for (int round = 0; round < 50; ++round) {
        std::size_t now = 0;
        for (ssize_t n = 0; (n = ::write(slave, chunk.data(), chunk.size())) > 0;)
            now += static_cast<std::size_t>(n);
        if (now == 0) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ::close(slave);
}

std::string PtyPair::readAvailable() {
    std::string got;
    while (ReadSome(master_, got, std::chrono::milliseconds(200))) {
    }
    return got;
}

std::string PtyPair::readExactly(std::size_t count) {
    std::string got;
    bool gone = false;
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (got.size() < count && !gone && std::chrono::steady_clock::now() < deadline)
        ReadSome(master_, got, std::chrono::milliseconds(50), &gone);
    return got;
}

void PtyPair::closeMaster() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
}

}  // namespace lumbra::test
