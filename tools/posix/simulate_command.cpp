#include "tools/simulate_command.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <memory>
#include <system_error>
#include <vector>

#include "simulator/device_options.h"
#include "simulator/event_views.h"
#include "simulator/pty/serve.h"
#include "tools/exit_status.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {
namespace {

int stopWrite = -1;

void OnStop(int) {
    const char byte = 1;
    // Nothing to do when the pipe is full: a stop is already on its way.
    [[maybe_unused]] const ssize_t n = ::write(stopWrite, &byte, 1);
}

// Turns SIGINT and SIGTERM into a byte on a pipe while the object lives, so that the serving loop
// ends between two events and the devices close cleanly.
class StopSignal {
  public:
    StopSignal() {
        if (::pipe2(fds_, O_CLOEXEC | O_NONBLOCK) != 0) return;
        stopWrite = fds_[1];
        struct sigaction action {};
        action.sa_handler = OnStop;
        sigemptyset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        ::sigaction(SIGINT, &action, &previousInt_);
        ::sigaction(SIGTERM, &action, &previousTerm_);
    }
    ~StopSignal() {
        if (fds_[0] < 0) return;
        ::sigaction(SIGINT, &previousInt_, nullptr);
        ::sigaction(SIGTERM, &previousTerm_, nullptr);
        stopWrite = -1;
        ::close(fds_[0]);
        ::close(fds_[1]);
    }
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    int fd() const { return fds_[0]; }

  private:
    int fds_[2] = {-1, -1};
    struct sigaction previousInt_ {};
    struct sigaction previousTerm_ {};
};

void Print(const std::string& utf8) {
    std::fputs(utf8.c_str(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// One batch of events, flushed once: a flood of bytes is a flood of events, and one write per
// batch keeps up with it where one per event would not.
void PrintBatch(const std::vector<sim::DeviceEvent>& events, bool json) {
    if (events.empty()) return;
    for (const sim::DeviceEvent& e : events) {
        std::fputs((json ? sim::EventJson(e) : sim::EventText(e)).c_str(), stdout);
        std::fputc('\n', stdout);
    }
    std::fflush(stdout);
}

}  // namespace

int RunSimular(const OptionTexts& texts, bool json) {
    sim::DeviceOptions o;
    std::string why;
    if (!sim::ReadDeviceOptions(texts, o, why)) {
        std::string cp1252;
        ArgumentToCp1252(why, cp1252);
        return ReportUsageError(cp1252);
    }
    const int printerPort = o.printerPort;
    const int displayPort = o.displayPort;
    const sim::LineSettings& expected = o.expected;

    std::unique_ptr<sim::VirtualDevice> printer;
    std::unique_ptr<sim::VirtualDevice> display;
    try {
        printer = std::make_unique<sim::VirtualDevice>(sim::Device::Printer, expected);
        display =
            std::make_unique<sim::VirtualDevice>(sim::Device::Display, expected, o.displayCharset);
    } catch (const std::system_error& e) {
        PrintLine(stderr, std::string("lumbractl: sem pseudo-terminais: ") + e.what());
        return kExitChannelFailed;
    }

    const StopSignal stop;
    const std::string& printerPath = printer->port().path();
    const std::string& displayPath = display->port().path();
    const std::string options = "-COM" + std::to_string(printerPort) + " " + printerPath + " -COM" +
                                std::to_string(displayPort) + " " + displayPath;
    if (json) {
        Print("{\"event\":\"ports\",\"options\":" + sim::JsonString(options) + ",\"printer\":" +
              sim::JsonString(printerPath) + ",\"display\":" + sim::JsonString(displayPath) + "}");
    } else {
        Print(options);
        Print("impressora e gaveta em " + printerPath + " (COM" + std::to_string(printerPort) +
              "), display em " + displayPath + " (COM" + std::to_string(displayPort) +
              "), ambos a " + sim::SettingsText(expected) + ". Ctrl+C termina.");
    }

    const bool served = sim::ServeDevices(
        {printer.get(), display.get()},
        [json](const std::vector<sim::DeviceEvent>& events) { PrintBatch(events, json); },
        stop.fd());
    if (!served) {
        PrintLine(stderr, "lumbractl: simular parou: as portas deixaram de responder");
        return kExitChannelFailed;
    }
    return kExitOk;
}

}  // namespace lumbra::ctl
