#pragma once
// A pseudo-terminal pair standing in for a serial device: the port under test opens the slave by
// its path, and the test reads from the master exactly the bytes that reached the "device". The
// pair holds no descriptor of the slave, so the port under test is its only user.

#include <cstddef>
#include <string>

namespace lumbra::test {

class PtyPair {
  public:
    PtyPair();  // fails the current test when no pair can be made
    ~PtyPair() { closeMaster(); }
    PtyPair(const PtyPair&) = delete;
    PtyPair& operator=(const PtyPair&) = delete;

    const std::string& slavePath() const { return slavePath_; }

    // Everything that arrives until nothing more comes for 200 ms.
    std::string readAvailable();
    // Reads until count bytes arrived, the slave side is closed and empty, or 30 s pass.
    std::string readExactly(std::size_t count);
    // Fills what the pair buffers towards the master until it takes no more, as a device that has
    // stopped reading: every later write to the slave waits.
    void fillUntilBlocked();
    // Takes the device away: the slave's user sees a hang-up.
    void closeMaster();

  private:
    int master_ = -1;
    std::string slavePath_;
};

}  // namespace lumbra::test
