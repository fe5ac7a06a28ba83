// The drawer cycle's 338 sends against one pseudo-terminal, three ways: through the program's own
// path (substitute, prepare, open channel 1, write, close), with a bare QSerialPort doing the same
// port work, and with plain POSIX calls. The bare QSerialPort loop is the yardstick: the channel
// layer should stay within 1.1 times its time, which the layer-against-QSerialPort run measures
// with both taken in turns. The preparation of the commands alone is timed too. Every way is
// checked once, before timing, to deliver exactly the bytes of a cycle to the far end.
//
// Needs a QApplication (the serial ports live on a hidden form); runs on Qt's offscreen platform
// unless QT_QPA_PLATFORM says otherwise.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QApplication>
#include <QSerialPort>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "app/LumbraGb.h"
#include "app/device_actions.h"
#include "channels/PgmFic.h"
#include "platform/msg_box.h"
#include "platform/program.h"

namespace {

using Clock = std::chrono::steady_clock;

// The mode as the zone GAV stores it when read with the literal expansion off.
constexpr const char* kCycleMode = "chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])";
constexpr std::int16_t kModeRow = 1;
constexpr std::int16_t kPortRow = 1;

// The bytes of each send, built straight from the cycle's loops (P1 outer, P2 middle, MO inner),
// not through the program's own substitution, so the check before timing means something.
const std::vector<std::string>& CycleBytes() {
    static const std::vector<std::string> sends = [] {
        std::vector<std::string> all;
        for (int p1 = 10; p1 <= 250; p1 += 20) {
            for (int p2 = 10; p2 <= 250; p2 += 20) {
                for (int mo = 0; mo <= 1; ++mo) {
                    all.push_back({'\x1B', 'p', static_cast<char>(mo), static_cast<char>(p1),
                                   static_cast<char>(p2)});
                }
            }
        }
        return all;
    }();
    return sends;
}

std::uint64_t CycleByteCount() {
    std::uint64_t n = 0;
    for (const std::string& s : CycleBytes())
        n += s.size();
    return n;
}

// A pseudo-terminal whose master side is read empty by a thread of its own, so that the sends never
// wait for room. The slave side stays open here for the whole run: between two sends nobody else
// holds it, and a master without any slave opener reads as hung up and would spin the reader.
class PtyLine {
  public:
    PtyLine() {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0)
            Fail("posix_openpt");
        char name[128] = {};
        if (::ptsname_r(master_, name, sizeof name) != 0) Fail("ptsname_r");
        path_ = name;
        slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (slave_ < 0) Fail("open slave");
        // Raw from the start: the line discipline must not turn the byte 10 into CR LF.
        termios tio{};
        if (::tcgetattr(slave_, &tio) != 0) Fail("tcgetattr");
        ::cfmakeraw(&tio);
        if (::tcsetattr(slave_, TCSANOW, &tio) != 0) Fail("tcsetattr");
        reader_ = std::thread([this] { drain(); });
    }
    ~PtyLine() {
        stop_ = true;
        reader_.join();
        ::close(slave_);
        ::close(master_);
    }
    PtyLine(const PtyLine&) = delete;
    PtyLine& operator=(const PtyLine&) = delete;

    const std::string& slavePath() const { return path_; }
    std::uint64_t received() const { return received_.load(); }

    // Waits up to a second for the total count of bytes read to reach total; the pseudo-terminal
    // hands bytes to the master side a moment after the write returns.
    bool waitFor(std::uint64_t total) const {
        const auto deadline = Clock::now() + std::chrono::seconds(1);
        while (received() < total) {
            if (Clock::now() >= deadline) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return received() == total;
    }

    void startCapture() {
        const std::lock_guard<std::mutex> lock(captureMutex_);
        captured_.clear();
        capturing_ = true;
    }
    std::string stopCapture() {
        const std::lock_guard<std::mutex> lock(captureMutex_);
        capturing_ = false;
        return std::move(captured_);
    }

  private:
    [[noreturn]] static void Fail(const char* what) {
        std::fprintf(stderr, "pseudo-terminal: %s: %s\n", what, std::strerror(errno));
        std::exit(1);
    }

    void drain() {
        char buffer[4096];
        while (!stop_) {
            pollfd p{master_, POLLIN, 0};
            if (::poll(&p, 1, 50) <= 0) continue;
            if ((p.revents & POLLIN) == 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
                continue;
            }
            const ssize_t n = ::read(master_, buffer, sizeof buffer);
            if (n <= 0) continue;
            {
                const std::lock_guard<std::mutex> lock(captureMutex_);
                if (capturing_) captured_.append(buffer, static_cast<std::size_t>(n));
            }
            received_ += static_cast<std::uint64_t>(n);
        }
    }

    int master_ = -1;
    int slave_ = -1;
    std::string path_;
    std::atomic<bool> stop_{false};
    std::atomic<std::uint64_t> received_{0};
    std::mutex captureMutex_;
    bool capturing_ = false;
    std::string captured_;
    std::thread reader_;
};

PtyLine* line = nullptr;

// Channel failures arrive as message boxes; here they are counted, and the first one kept to say
// why a run was thrown away.
class CountingMsgSink : public lumbra::platform::MsgSink {
  public:
    void show(const std::string& title, const std::string& text,
              lumbra::platform::MsgIcon /*icon*/) override {
        if (count_++ == 0) first_ = title + " / " + text;
    }
    [[noreturn]] void endProgram(int status) override { std::exit(status); }

    int count() const { return count_; }
    const std::string& first() const { return first_; }

  private:
    int count_ = 0;
    std::string first_;
};

// The program's configuration for the cycle: connection port "COM1,9600,n,8,1" (mapped to the
// pseudo-terminal on the command line) and the cycle's drawer mode, both selected.
void SelectCycleRows() {
    lumbra::LumbraGbState& gb = lumbra::Gb();
    gb.ligTab = {lumbra::LinReg{}, lumbra::LinReg{"", "Gaveta", "SER", "COM1,9600,n,8,1"}};
    gb.gavTab = {lumbra::LinReg{}, lumbra::LinReg{"", "Ciclo ESC p", "CIC", kCycleMode}};
    gb.ligIdx = kPortRow;
    gb.gavIdx = kModeRow;
}

// One cycle through the program; "" when no channel operation complained.
std::string LayerCycle() {
    CountingMsgSink sink;
    lumbra::platform::SetMsgSink(&sink);
    lumbra::CycleHooks hooks;
    hooks.send = lumbra::SendDrawerCommand;
    const int sends = lumbra::RunDrawerCycle(kModeRow, hooks);
    lumbra::platform::SetMsgSink(nullptr);
    if (sends != lumbra::kCycleSends) return "the cycle made " + std::to_string(sends) + " sends";
    if (sink.count() > 0) return std::to_string(sink.count()) + " channel errors: " + sink.first();
    return {};
}

std::string PortError(const char* step, const QSerialPort& port) {
    return std::string(step) + ": " + port.errorString().toStdString();
}

// One cycle as a program would write it straight on QSerialPort: the same port object throughout,
// as the channel's control keeps one.
std::string QSerialPortCycle(QSerialPort& port) {
    for (const std::string& bytes : CycleBytes()) {
        if (!port.open(QIODevice::ReadWrite)) return PortError("open", port);
        if (!port.setBaudRate(9600) || !port.setParity(QSerialPort::NoParity) ||
            !port.setDataBits(QSerialPort::Data8) || !port.setStopBits(QSerialPort::OneStop)) {
            const std::string why = PortError("settings", port);
            port.close();
            return why;
        }
        const auto size = static_cast<qint64>(bytes.size());
        if (port.write(bytes.data(), size) != size) {
            const std::string why = PortError("write", port);
            port.close();
            return why;
        }
        while (port.bytesToWrite() > 0) {
            if (!port.waitForBytesWritten(2000)) {
                const std::string why = PortError("waitForBytesWritten", port);
                port.close();
                return why;
            }
        }
        ::tcdrain(port.handle());
        port.close();
    }
    return {};
}

termios RawLine9600() {
    termios tio{};
    ::cfmakeraw(&tio);
    ::cfsetispeed(&tio, B9600);
    ::cfsetospeed(&tio, B9600);
    tio.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CSTOPB | CRTSCTS);
    tio.c_cflag |= CS8 | CLOCAL | CREAD;
    return tio;
}

std::string Errno(const char* step) {
    return std::string(step) + ": " + std::strerror(errno);
}

// One cycle with the system calls alone: the floor under both of the others.
std::string PosixCycle(const std::string& path) {
    const termios tio = RawLine9600();
    for (const std::string& bytes : CycleBytes()) {
        const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (fd < 0) return Errno("open");
        std::string why;
        if (::tcsetattr(fd, TCSANOW, &tio) != 0) why = Errno("tcsetattr");
        std::size_t done = 0;
        while (why.empty() && done < bytes.size()) {
            const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
            if (n < 0 && errno != EINTR) why = Errno("write");
            if (n > 0) done += static_cast<std::size_t>(n);
        }
        if (why.empty() && ::tcdrain(fd) != 0) why = Errno("tcdrain");
        ::close(fd);
        if (!why.empty()) return why;
    }
    return {};
}

// Checks that every byte of `cycles` cycles sent since `before` reached the far end.
bool AllArrived(benchmark::State& state, std::uint64_t before, std::uint64_t cycles) {
    if (line->waitFor(before + cycles * CycleByteCount())) return true;
    state.SkipWithError("the far end did not receive every byte of the cycles");
    return false;
}

benchmark::Counter PerSend(std::uint64_t cycles) {
    return benchmark::Counter(static_cast<double>(cycles) * lumbra::kCycleSends,
                              benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Runs cycle once per iteration, then checks that every byte reached the far end.
void TimeCycles(benchmark::State& state, const std::function<std::string()>& cycle) {
    const std::uint64_t before = line->received();
    for (auto _ : state) {
        const std::string why = cycle();
        if (!why.empty()) {
            state.SkipWithError(why.c_str());
            return;
        }
    }
    const auto cycles = static_cast<std::uint64_t>(state.iterations());
    if (AllArrived(state, before, cycles)) state.counters["per_send"] = PerSend(cycles);
}

void BM_CyclePosix(benchmark::State& state) {
    const std::string path = line->slavePath();
    TimeCycles(state, [&path] { return PosixCycle(path); });
}

void BM_CycleQSerialPort(benchmark::State& state) {
    QSerialPort port;
    port.setPortName(QString::fromStdString(line->slavePath()));
    TimeCycles(state, [&port] { return QSerialPortCycle(port); });
}

void BM_CycleChannelLayer(benchmark::State& state) {
    SelectCycleRows();
    TimeCycles(state, LayerCycle);
}

// The layer and the bare QSerialPort loop in turns, layer-bare-bare-layer in every iteration, so
// that both meet the same load in the same order. Every QSerialPort open writes and syncs a lock
// file under /run/lock; where that is a disk rather than memory, the sync dominates a send and
// drifts with whatever else the disk is doing, and runs taken one after the other compare badly.
void BM_CycleLayerVsQSerialPort(benchmark::State& state) {
    SelectCycleRows();
    QSerialPort port;
    port.setPortName(QString::fromStdString(line->slavePath()));
    const std::function<std::string()> bareCycle = [&port] { return QSerialPortCycle(port); };
    const std::function<std::string()> layerCycle = LayerCycle;
    std::chrono::duration<double> layer{0};
    std::chrono::duration<double> bare{0};
    auto timed = [&state](std::chrono::duration<double>& total,
                          const std::function<std::string()>& cycle) {
        const auto start = Clock::now();
        const std::string why = cycle();
        total += Clock::now() - start;
        if (!why.empty()) state.SkipWithError(why.c_str());
        return why.empty();
    };
    const std::uint64_t before = line->received();
    for (auto _ : state) {
        if (!timed(layer, layerCycle) || !timed(bare, bareCycle) || !timed(bare, bareCycle) ||
            !timed(layer, layerCycle))
            return;
    }
    const auto cycles = 2 * static_cast<std::uint64_t>(state.iterations());
    if (!AllArrived(state, before, 2 * cycles)) return;
    const auto n = static_cast<double>(cycles);
    state.counters["layer_s"] = layer.count() / n;
    state.counters["qserialport_s"] = bare.count() / n;
    state.counters["layer_over_qserialport"] = layer.count() / bare.count();
}

// The program's preparation of the 338 commands alone, without any port: how much of the layer's
// time is text work.
void BM_CyclePrepareOnly(benchmark::State& state) {
    for (auto _ : state) {
        for (int i = 0; i < lumbra::kCycleSends; ++i) {
            std::string bytes = lumbra::PrepareDrawerCommand(
                lumbra::SubstituteCyclePlaceholders(kCycleMode, lumbra::CycleStepAt(i)));
            benchmark::DoNotOptimize(bytes);
        }
    }
    state.counters["per_send"] = PerSend(static_cast<std::uint64_t>(state.iterations()));
}

BENCHMARK(BM_CyclePosix)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CycleQSerialPort)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CycleChannelLayer)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CycleLayerVsQSerialPort)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CyclePrepareOnly)->Unit(benchmark::kMicrosecond);

// Runs one cycle of each kind with the far end recording, and compares with the cycle's bytes.
bool DeliversCycle(const char* name, const std::function<std::string()>& cycle) {
    std::string expected;
    for (const std::string& s : CycleBytes())
        expected += s;
    const std::uint64_t before = line->received();
    line->startCapture();
    const std::string why = cycle();
    const bool arrived = line->waitFor(before + expected.size());
    const std::string got = line->stopCapture();
    if (!why.empty() || !arrived || got != expected) {
        std::fprintf(stderr, "%s: the cycle did not deliver its bytes (%zu of %zu)%s%s\n", name,
                     got.size(), expected.size(), why.empty() ? "" : ": ", why.c_str());
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    PtyLine pty;
    line = &pty;
    // The channel layer finds its device the way the program does: "-COM1 PATH" on the command
    // line.
    const std::string& path = pty.slavePath();
    const char* const args[] = {"bench_cycle", "-COM1", path.c_str()};
    lumbra::platform::SetProgramArgs(3, args);
    lumbra::CanIni();
    SelectCycleRows();

    QSerialPort port;
    port.setPortName(QString::fromStdString(path));
    const bool delivered =
        DeliversCycle("posix", [&path] { return PosixCycle(path); }) &&
        DeliversCycle("QSerialPort", [&port] { return QSerialPortCycle(port); }) &&
        DeliversCycle("channel layer", LayerCycle);
    if (delivered) benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    lumbra::CanFim();
    line = nullptr;
    return delivered ? 0 : 1;
}
