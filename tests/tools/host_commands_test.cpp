// The commands that belong to the Linux host: portas lists this machine's devices, and simular
// serves virtual devices on pseudo-terminals, even under a flood of 20 MB of NUL bytes on each
// port (one event for each, read, decoded and reported in pieces, within little memory).

#include <signal.h>

#include <chrono>
#include <fstream>
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

void Send(const std::string& port, const std::string& bytes) {
    std::ofstream device(port, std::ios::binary);
    device << bytes;
    ASSERT_TRUE(device.flush()) << port;
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
    Strings args = {"-FP", name("Teste.par")};
    std::istringstream words(JsonText(first, "options"));
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

TEST(SimularFlood, AFloodOfUnknownBytesIsFewBoundedEventsAndTakesLittleMemory) {
    ToolProcess simulator({"simular", "--json"});
    const std::string ports = simulator.readLine(seconds(10));
    const std::string printer = JsonText(ports, "printer");
    const std::string display = JsonText(ports, "display");
    ASSERT_FALSE(printer.empty() || display.empty()) << ports;

    const std::size_t flood = 20 << 20;
    // The flood's unknown bytes come as one event, or as a few when the sender paused long enough
    // to end a burst; each holds at most 64 of them and counts the rest, and all add up to the
    // flood. Between them the display may show its (blank) screen, as after any burst.
    const auto counted = [&](const std::string& device, const std::string& last) {
        const std::string head =
            "{\"device\":\"" + device + "\",\"event\":\"unknown\",\"bytes\":\"";
        std::size_t bytes = 0;
        for (int events = 0; events < 100; ++events) {
            const std::string line = simulator.readLine(seconds(60));
            if (line == last) return bytes;
            if (line.rfind(head, 0) == 0) {
                const std::size_t hexEnd = line.find('"', head.size());
                bytes += (hexEnd - head.size() + 1) / 3;
                EXPECT_LE(hexEnd - head.size(), 64u * 3 - 1) << line;
                const std::size_t more = line.find("\"more_bytes\":");
                if (more != std::string::npos) bytes += std::stoull(line.substr(more + 13));
            } else if (line.find("\"event\":\"screen\"") == std::string::npos) {
                ADD_FAILURE() << line;
                return bytes;
            }
        }
        ADD_FAILURE() << device << ": " << last << " never came";
        return bytes;
    };
    // A known byte ends each run.
    Send(display, std::string(flood, '\0') + "Z");
    EXPECT_EQ(
        counted(
            "display",
            R"({"device":"display","event":"screen","lines":["Z                   ","                    "],"cursor":[1,2]})"),
        flood);
    Send(printer, std::string(flood, '\0') + "\n");
    EXPECT_EQ(counted("printer", R"({"device":"printer","event":"line","text":""})"), flood);

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
