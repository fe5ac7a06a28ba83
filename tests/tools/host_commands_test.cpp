// The commands that belong to the Linux host: portas lists this machine's devices, and simular
// serves virtual devices on pseudo-terminals, even under a flood of 20 MB of NUL bytes (read,
// decoded and reported in pieces, within little memory).

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
    const std::size_t at = line.find("\"" + key + "\":\"");
    if (at == std::string::npos) return "";
    const std::size_t from = at + key.size() + 4;
    return line.substr(from, line.find('"', from) - from);
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
class LumbractlTerminal : public LumbractlFixture {};

// On a terminal the cycle shows its progress on one line, rewritten at each send (blanked where
// the last text was longer) and ended once.
TEST_F(LumbractlTerminal, TheCycleShowsItsProgress) {
    PtyPair terminal;
    EXPECT_EQ(
        ToolProcess(Args({"ciclo", "--modo", "Ciclo"}), 0, terminal.slavePath()).finish().status,
        0);
    const std::string shown = terminal.readAvailable();
    // Send 27 is one character shorter than send 26.
    const std::string step27 = "\rciclo 27/338: chr$(27)+\"p\"+chr$(0)+chr$(30)+chr$(10)";
    EXPECT_NE(shown.find(step27 + " " + step27 + "\rciclo 28/338: "), std::string::npos);
    EXPECT_TRUE(shown.ends_with("\rciclo 338/338: chr$(27)+\"p\"+chr$(1)+chr$(250)+chr$(250)\r\n"))
        << ::testing::PrintToString(shown.substr(shown.size() - 80));
}

// simular --json prints the port options for lumbractl first, then one line per device event; the
// display shows its screen once a burst has gone quiet. A flood's unknown bytes come as one event
// or a few (when the sender paused long enough to end a burst), each holding at most 64 of them
// and counting the rest.
TEST_F(Simular, ShowsWhatTheDevicesDidEvenUnderAFlood) {
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
    send({"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"});
    EXPECT_EQ(
        simulator.readLine(seconds(20)),
        R"({"device":"display","event":"screen","lines":["Olá!                ","                    "],"cursor":[2,1]})");

    const std::size_t flood = 20 << 20;
    std::ofstream(JsonText(first, "display"), std::ios::binary)
        << "\x0C" << std::string(flood, '\0') << "Z";
    const std::string head = R"({"device":"display","event":"unknown","bytes":")";
    std::size_t counted = 0;
    std::string line;
    for (int events = 0; events < 100 && line.find("\"Z   ") == std::string::npos; ++events) {
        line = simulator.readLine(seconds(60));
        if (line.rfind(head, 0) != 0) continue;
        const std::size_t hexEnd = line.find('"', head.size());
        EXPECT_LE(hexEnd - head.size(), 64u * 3 - 1) << line;
        const std::size_t more = line.find("\"more_bytes\":");
        counted += (hexEnd - head.size() + 1) / 3 +
                   (more == std::string::npos ? 0 : std::stoull(line.substr(more + 13)));
    }
    EXPECT_EQ(counted, flood);
    EXPECT_EQ(
        line,
        R"({"device":"display","event":"screen","lines":["Z                   ","                    "],"cursor":[1,2]})");
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
