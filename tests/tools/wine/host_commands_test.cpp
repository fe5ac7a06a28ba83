// What depends on the host, as lumbractl.exe does it under Wine: portas lists the prefix's COM
// ports; simular needs pseudo-terminals, which Windows does not have; a console shows the tool's
// characters, which a pipe receives as UTF-8.

#include <string>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

class WindowsHost : public LumbractlFixture {};

// The prefix's ports in number order, COM2 before COM10; none is opened by the listing.
TEST_F(WindowsHost, PortasListsThePortsInNumberOrder) {
    const ToolRun run = RunTool({"portas"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out.rfind("COM1\nCOM2\nCOM3\n", 0), 0u) << run.out.substr(0, 200);
    EXPECT_NE(run.out.find("\nCOM9\nCOM10\n"), std::string::npos);
}

TEST(WindowsHostAlone, SimularIsNotThereWithoutPseudoTerminals) {
    const ToolRun run = RunTool({"simular"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "lumbractl: simular n\xC3\xA3o existe no Windows: os dispositivos virtuais precisam "
              "de pseudo-terminais\n");
}

// Runs the tool on a terminal, which Wine makes the program's console; what the terminal showed.
std::string OnConsole(const Strings& args) {
    PtyPair terminal;
    ToolProcess(args, 0, terminal.slavePath()).finish();
    return terminal.readAvailable();
}

// Written to the console as characters: the same bytes written as they are would show as two
// characters of the console's code page each.
TEST(WindowsHostAlone, AConsoleShowsTheToolsCharacters) {
    const std::string shown = OnConsole({"teste", "--texto", "\xC3\xA9\xE2\x86\x92"});
    EXPECT_NE(shown.find("o Windows-1252 n\xC3\xA3o tem: U+2192"), std::string::npos) << shown;
    EXPECT_NE(shown.find("[OP\xC3\x87\xC3\x95"
                         "ES]"),
              std::string::npos)
        << shown;
}

}  // namespace
}  // namespace lumbra::test
