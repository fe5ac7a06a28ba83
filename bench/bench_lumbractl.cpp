// One drawer opening from the command line, whole process: "lumbractl -FP file -COM1 /dev/pts/N
// abrir" started with posix_spawn and waited for, against /usr/bin/printf writing the same five
// bytes to the same pseudo-terminal (its standard output opened on the device through the spawn's
// file actions, no shell). The device side is drained all the time, as a drawer would take the
// bytes. Wall-clock time: the work happens in the child processes.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

namespace fs = std::filesystem;

// The bytes of the sample's first drawer mode, chr$(27)+"p"+chr$(0)+chr$(25)+chr$(250).
constexpr const char* kDrawerBytes = "\\033p\\000\\031\\372";

// A pseudo-terminal standing in for the drawer's port, read all the time, and a parameter file
// whose first LIG row is that port and whose first GAV row is the drawer command.
class Device {
  public:
    Device()
        : dir_(fs::temp_directory_path() / ("lumbra-bench-ctl-" + std::to_string(::getpid()))) {
        fs::create_directories(dir_);
        par_ = (dir_ / "Lumbra.par").string();
        std::ofstream out(par_, std::ios::binary);
        out << "'Nome       : Lumbra.par\r\n'Tipo       : PAR\r\n'Data       : \r\n"
            << "'Versao     : 1.0\r\n'Descricao  : Gaveta\r\n"
            << "#LIG Portas - Liga\xE7\xE3o\r\nImpressora [SER]=COM1,9600,n,8,1\r\n##\r\n"
            << "#GAV Gaveta - Modos [CnvChr=0]\r\n"
            << "ESC p [ESC]=chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)\r\n##\r\n";
        out.close();

        int slave = -1;
        std::array<char, 128> name{};
        if (::openpty(&master_, &slave, name.data(), nullptr, nullptr) != 0) return;
        slavePath_ = name.data();
        ::close(slave);
        ::fcntl(master_, F_SETFL, ::fcntl(master_, F_GETFL) | O_NONBLOCK);
        reader_ = std::thread([this] { drain(); });
    }
    ~Device() {
        stop_ = true;
        if (reader_.joinable()) reader_.join();
        if (master_ >= 0) ::close(master_);
        std::error_code ec;
        fs::remove_all(dir_, ec);
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    bool ok() const { return master_ >= 0; }
    const std::string& par() const { return par_; }
    const std::string& slavePath() const { return slavePath_; }
    std::size_t received() const { return received_; }

  private:
    void drain() {
        std::array<char, 4096> chunk{};
        while (!stop_) {
            pollfd p{master_, POLLIN, 0};
            if (::poll(&p, 1, 10) <= 0) continue;
            const ssize_t n = ::read(master_, chunk.data(), chunk.size());
            if (n > 0)
                received_ += static_cast<std::size_t>(n);
            else
                std::this_thread::sleep_for(std::chrono::microseconds(200));  // no slave open
        }
    }

    fs::path dir_;
    std::string par_;
    std::string slavePath_;
    int master_ = -1;
    std::atomic<bool> stop_{false};
    std::atomic<std::size_t> received_{0};
    std::thread reader_;
};

Device& TheDevice() {
    static Device device;
    return device;
}

// Runs argv with standard output on stdoutPath (O_WRONLY) and standard error on /dev/null; the exit
// status, or -1.
int Spawn(const std::vector<std::string>& args, const std::string& stdoutPath) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 1, stdoutPath.c_str(), O_WRONLY | O_NOCTTY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::vector<char*> argv;
    for (const std::string& a : args)
        argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    pid_t pid = -1;
    const int rc = ::posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) return -1;
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void BM_LumbractlAbrir(benchmark::State& state) {
    Device& d = TheDevice();
    if (!d.ok()) state.SkipWithError("no pseudo-terminal");
    const std::vector<std::string> args = {LUMBRACTL_PATH, "-FP",         d.par(),
                                           "-COM1",        d.slavePath(), "abrir"};
    for (auto _ : state) {
        if (Spawn(args, "/dev/null") != 0) state.SkipWithError("lumbractl failed");
    }
    state.counters["bytes_at_device"] = static_cast<double>(d.received());
}
BENCHMARK(BM_LumbractlAbrir)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_PrintfAbrir(benchmark::State& state) {
    Device& d = TheDevice();
    if (!d.ok()) state.SkipWithError("no pseudo-terminal");
    const std::vector<std::string> args = {"/usr/bin/printf", kDrawerBytes};
    for (auto _ : state) {
        if (Spawn(args, d.slavePath()) != 0) state.SkipWithError("printf failed");
    }
}
BENCHMARK(BM_PrintfAbrir)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
