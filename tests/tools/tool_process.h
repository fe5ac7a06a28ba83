#pragma once
// The real lumbractl as a child process: its standard output and error captured through pipes, its
// exit status, and a pseudo-terminal's master side drained while it runs, as a device would.

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace lumbra::test {

struct ToolRun {
    int status = -1;  // the exit status; 128 + n for a child ended by signal n
    long peakKb = 0;  // the most memory the child held at once
    std::string out;
    std::string err;
};

// One run of lumbractl. The child gets no display and no Qt platform from the test's environment,
// so the run shows that the tool needs neither.
class ToolProcess {
  public:
    // stdoutPipeSize > 0 shrinks the pipe of standard output to that many bytes, so that a child
    // that writes more than that waits until finish() reads it.
    explicit ToolProcess(const std::vector<std::string>& args, int stdoutPipeSize = 0);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    pid_t pid() const { return pid_; }
    // The next line of standard output without its line end; "" when none comes within limit.
    // What it does not read stays for finish().
    std::string readLine(std::chrono::milliseconds limit);
    // Reads both pipes to their end and waits for the child.
    ToolRun finish();

  private:
    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
    bool finished_ = false;
};

// Runs lumbractl with args to its end.
ToolRun RunTool(const std::vector<std::string>& args);

// Keeps reading a pseudo-terminal's master side while the object lives. The port opens and
// closes the slave for every send; the gaps between (no slave open) are waited out.
class PtyDrain {
  public:
    explicit PtyDrain(int master);
    ~PtyDrain();
    PtyDrain(const PtyDrain&) = delete;
    PtyDrain& operator=(const PtyDrain&) = delete;

    std::string bytes() const;
    // Waits up to two seconds for count bytes (and for any more to arrive), then stops reading.
    std::string finish(std::size_t count = 0);

  private:
    void run();

    int master_;
    std::atomic<bool> stop_{false};
    mutable std::mutex mutex_;
    std::string bytes_;
    std::thread thread_;
};

}  // namespace lumbra::test
