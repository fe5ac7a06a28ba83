// lumbractl simular on real pseudo-terminals, with the real lumbractl sending to it as the window
// would.

#include <signal.h>

#include <string>
#include <vector>

#include "tests/tools/tool_fixture.h"
#include "tests/tools/tool_process.h"

namespace lumbra::test {
namespace {

using std::chrono::seconds;

// lumbractl simular --json as a child, and the port options it printed first.
class SimularTest : public LumbractlFixture {
  protected:
    void SetUp() override {
        LumbractlFixture::SetUp();
        const std::string ports = simulator.readLine(seconds(10));
        const std::string key = "\"options\":\"";
        const std::size_t at = ports.find(key);
        ASSERT_NE(at, std::string::npos) << ports;
        const std::string options =
            ports.substr(at + key.size(), ports.find('"', at + key.size()) - at - key.size());
        std::size_t start = 0;
        while (start < options.size()) {
            const std::size_t blank = options.find(' ', start);
            mapping.push_back(options.substr(start, blank - start));
            start = blank == std::string::npos ? options.size() : blank + 1;
        }
        ASSERT_EQ(mapping.size(), 4U) << ports;
        EXPECT_EQ(mapping[0], "-COM1");
        EXPECT_EQ(mapping[2], "-COM2");
    }

    // lumbractl on the parameter file with COM1 and COM2 on the virtual devices.
    ToolRun Send(const std::vector<std::string>& args) const {
        std::vector<std::string> all = {"-FP", par};
        all.insert(all.end(), mapping.begin(), mapping.end());
        all.insert(all.end(), args.begin(), args.end());
        return RunTool(all);
    }

    // The simulator's lines until one equals last (included); stops it then with Ctrl+C.
    std::vector<std::string> LinesUntil(const std::string& last) {
        std::vector<std::string> lines;
        for (std::string line; lines.empty() || lines.back() != last;) {
            line = simulator.readLine(seconds(20));
            if (line.empty()) {
                ADD_FAILURE() << "no line " << last;
                break;
            }
            lines.push_back(line);
        }
        ::kill(simulator.pid(), SIGINT);
        const ToolRun end = simulator.finish();
        EXPECT_EQ(end.status, 0) << end.err;
        EXPECT_EQ(end.out, "") << "after " << last;
        return lines;
    }

    ToolProcess simulator{{"simular", "--json"}};
    std::vector<std::string> mapping;
};

TEST_F(SimularTest, AbrirExecutarAndAMismatchShowWhatTheDevicesDid) {
    const std::vector<std::string> expected = {
        R"({"device":"printer","event":"drawer","pin":2,"on_ms":50,"off_ms":500})",
        R"({"device":"display","event":"screen","lines":["Olá!                ","                    "],"cursor":[2,1]})",
        R"({"device":"display","event":"settings","expected":"9600,n,8,1","actual":"19200,n,8,1"})",
        R"({"device":"display","event":"screen","lines":["Olá!                ","Olá                 "],"cursor":[1,1]})",
    };
    // Each send's event is awaited before the next: the display reports its screen once a burst
    // has gone quiet, so two sends close together would show as one screen.
    EXPECT_EQ(Send({"abrir"}).status, 0);
    EXPECT_EQ(simulator.readLine(seconds(20)), expected[0]);
    EXPECT_EQ(Send({"executar", "--comando", "Sauda\xC3\xA7\xC3\xA3o"}).status, 0);
    EXPECT_EQ(simulator.readLine(seconds(20)), expected[1]);
    // The row at 19200 baud on COM2, where the display listens at 9600.
    EXPECT_EQ(Send({"teste", "--porta", "Impressora 2", "--texto", "Ol\xC3\xA1"}).status, 0);
    EXPECT_EQ(LinesUntil(expected[3]), (std::vector<std::string>{expected[2], expected[3]}));
}

}  // namespace
}  // namespace lumbra::test
