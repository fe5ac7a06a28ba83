// The commands that belong to the Linux host: portas lists this machine's devices, and simular
// serves virtual devices on pseudo-terminals, even under a flood of 20 MB of NUL bytes on each
// port (one event for each, read, decoded and reported in pieces, within little memory).

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <sstream>
#include <string>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

using std::chrono::seconds;

// The text of "key":"..." in a JSON line.
std::string JsonText(const std::string& line, const std::string& key) {
    const std::string open = "\"" + key + "\":\"";
    const std::size_t at = line.find(open);
    if (at == std::string::npos) return "";
    const std::size_t from = at + open.size();
    return line.substr(from, line.find('"', from) - from);
}

// Writes bytes to a device's port as a sender would: open, write it all, close.
void Send(const std::string& port, const std::string& bytes) {
    const int fd = ::open(port.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(fd, 0) << port;
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        ASSERT_GT(n, 0) << "after " << done << " bytes";
        done += static_cast<std::size_t>(n);
    }
    ::close(fd);
}

TEST(LumbractlPortas, ListsTheDevicesOfThisMachine) {
    const ToolRun portas = RunTool({"portas"});
    EXPECT_EQ(portas.status, 0) << portas.err;
    EXPECT_TRUE(
        portas.out == "Nenhuma porta s\xC3\xA9rie encontrada nesta m\xC3\xA1quina.\n" ||
        (portas.out.rfind("/dev/", 0) == 0 && portas.out.find("  acesso: ") != std::string::npos))
        << portas.out;
}

class Simular : public LumbractlFixture {};

// simular --json prints the port options for lumbractl first, then one line per device event.
TEST_F(Simular, ShowsWhatTheDevicesDid) {
    ToolProcess simulator({"simular", "--json"});
    const std::string first = simulator.readLine(seconds(10));
    const std::string key = "\"options\":\"";
    const std::size_t at = first.find(key);
    ASSERT_NE(at, std::string::npos) << first;
    Strings args = {"-FP", par};
    std::istringstream words(
        first.substr(at + key.size(), first.find('"', at + key.size()) - at - key.size()));
    for (std::string w; words >> w;)
        args.push_back(w);
    ASSERT_EQ(args.size(), 6u) << first;
    const auto send = [&](Strings more) {
        more.insert(more.begin(), args.begin(), args.end());
        EXPECT_EQ(RunTool(more).status, 0);
    };
    send({"abrir"});
    EXPECT_EQ(simulator.readLine(seconds(20)),
              R"({"device":"printer","event":"drawer","pin":5,"on_ms":50,"off_ms":500})");
    // The display shows its screen once the burst of bytes has gone quiet.
    send({"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"});
    EXPECT_EQ(
        simulator.readLine(seconds(20)),
        R"({"device":"display","event":"screen","lines":["Olá!                ","                    "],"cursor":[2,1]})");
    ::kill(simulator.pid(), SIGINT);
    const ToolRun end = simulator.finish();
    EXPECT_EQ(end.status, 0) << end.err;
}

TEST(SimularFlood, AFloodOfUnknownBytesIsOneEventAndTakesLittleMemory) {
    ToolProcess simulator({"simular", "--json"});
    const std::string ports = simulator.readLine(seconds(10));
    const std::string printer = JsonText(ports, "printer");
    const std::string display = JsonText(ports, "display");
    ASSERT_FALSE(printer.empty() || display.empty()) << ports;

    const std::size_t flood = 20 << 20;
    std::string first;
    for (std::size_t i = 0; i < 64; ++i)
        first += i == 0 ? "00" : " 00";
    const std::string unknown =
        "\",\"event\":\"unknown\",\"bytes\":\"" + first + "\",\"more_bytes\":20971456}";
    // A known byte ends each run; the display shows its screen once the burst has gone quiet.
    Send(display, std::string(flood, '\0') + "Z");
    EXPECT_EQ(simulator.readLine(seconds(60)), "{\"device\":\"display" + unknown);
    EXPECT_EQ(
        simulator.readLine(seconds(10)),
        R"({"device":"display","event":"screen","lines":["Z                   ","                    "],"cursor":[1,2]})");
    Send(printer, std::string(flood, '\0') + "\n");
    EXPECT_EQ(simulator.readLine(seconds(60)), "{\"device\":\"printer" + unknown);
    EXPECT_EQ(simulator.readLine(seconds(10)), R"({"device":"printer","event":"line","text":""})");

    ::kill(simulator.pid(), SIGINT);
    const ToolRun end = simulator.finish();
    EXPECT_EQ(end.status, 0) << end.err;
#ifndef __SANITIZE_ADDRESS__
    // The sanitizer's shadow and quarantine would be counted too.
    EXPECT_LT(end.peakKb, 64 * 1024);
#endif
}

}  // namespace
}  // namespace lumbra::test
