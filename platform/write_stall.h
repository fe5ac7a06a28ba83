#pragma once
// The one bound on every write to a device: a device that has taken no byte of a write for
// WriteStallLimit() has stalled (a printer out of paper, a terminal whose far side never reads, a
// port held by flow control), and the write fails there. A slow device that keeps taking bytes is
// never cut off, however long the write, and a stalled one never holds the program longer than the
// limit. Everything runs on the one user-interface thread, so this bound is what keeps a dead
// device from freezing the window.
//
// The limit is 5 s: longer than any working printer or display pauses between two bytes, short
// enough that a technician sees the failure before reaching for the power switch. A program may
// lower it (the tests do, to stay quick).
//
// A stop signal (stop_signals.h) lets the write under way finish if it can within kStopGrace, so a
// healthy send is never cut in two; a write still waiting then gives up.

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace lumbra::platform {

inline constexpr std::chrono::milliseconds kDefaultWriteStallLimit{5000};
inline constexpr std::chrono::milliseconds kStopGrace{300};

std::chrono::milliseconds WriteStallLimit();
// A limit of 0 or less gives the default back.
void SetWriteStallLimit(std::chrono::milliseconds limit);

// Follows one write of total bytes from its start: how many the device has taken, and since when
// it has taken none.
class WriteWatch {
  public:
    explicit WriteWatch(std::size_t total);

    // The device has now taken taken bytes in all; more than before restarts the stall clock.
    void taken(std::size_t taken);
    bool stalled() const;
    // True once a stop signal came kStopGrace ago or more and the write is still not done.
    bool stopped();
    // How long the next wait for the device may last: until the stall, and never more than step,
    // so that a stop signal is seen in time.
    std::chrono::milliseconds nextWait(std::chrono::milliseconds step) const;

    // What happened, with the times actually waited: "a porta não aceitou nenhum byte durante
    // 5,0 s (12 de 4096 bytes enviados em 7,3 s)".
    std::string stallText() const;

  private:
    std::size_t total_;
    std::size_t taken_ = 0;
    std::chrono::steady_clock::time_point start_;
    std::chrono::steady_clock::time_point lastProgress_;
    std::optional<std::chrono::steady_clock::time_point> stopSeen_;
};

// Seconds with one decimal, after a decimal comma as the user's texts write them: "5,0".
std::string SecondsText(std::chrono::steady_clock::duration d);

}  // namespace lumbra::platform
