#include "tests/support/pty_pair.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace lumbra::test {
namespace {

using Clock = std::chrono::steady_clock;

// What one read attempt found.
enum class Got { Data, Nothing, SlaveGone };

Got ReadSome(int fd, std::string& into, std::chrono::milliseconds wait) {
    pollfd p{fd, POLLIN, 0};
    const int ready = ::poll(&p, 1, static_cast<int>(wait.count()));
    if (ready <= 0) return Got::Nothing;
    std::array<char, 4096> chunk{};
    const ssize_t n = ::read(fd, chunk.data(), chunk.size());
    if (n > 0) {
        into.append(chunk.data(), static_cast<std::size_t>(n));
        return Got::Data;
    }
    if (n < 0 && (errno == EAGAIN || errno == EINTR)) return Got::Nothing;
    // EIO: no slave is open and nothing is left to read.
    return Got::SlaveGone;
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

PtyPair::~PtyPair() {
    closeMaster();
}

std::string PtyPair::readAvailable(std::chrono::milliseconds quiet) {
    std::string got;
    while (ReadSome(master_, got, quiet) == Got::Data) {
    }
    return got;
}

std::string PtyPair::readExactly(std::size_t count, std::chrono::milliseconds limit) {
    std::string got;
    const auto deadline = Clock::now() + limit;
    while (got.size() < count && Clock::now() < deadline) {
        if (ReadSome(master_, got, std::chrono::milliseconds(50)) == Got::SlaveGone) break;
    }
    return got;
}

void PtyPair::send(const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(master_, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno != EAGAIN && errno != EINTR) {
            ADD_FAILURE() << "writing to the pseudo-terminal failed: errno " << errno;
            return;
        }
        if (n > 0) done += static_cast<std::size_t>(n);
    }
}

void PtyPair::closeMaster() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
}

}  // namespace lumbra::test
