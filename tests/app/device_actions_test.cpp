// The device actions on real ports: the bytes a pseudo-terminal or a file receives, the drawer
// cycle, the boxes of a failing port, and the actions that have no port to use.

#include "app/device_actions.h"

#include <gtest/gtest.h>

#include <iterator>

#include "tests/app/app_fixture.h"
#include "tests/support/pty_pair.h"

namespace lumbra::test {
namespace {

using Strings = std::vector<std::string>;

const std::string kSerialRow = "S\xE9rie [SER]=COM1,9600,n,8,1";

class DeviceActionTest : public ProgramTest {
  protected:
    // Drawer modes, one per command, on serial port 1, the pseudo-terminal.
    void StartWithModes(const Strings& commands) {
        Strings lines = {"#LIG P", kSerialRow, "##", "#GAV G - Modos [CnvChr=0]"};
        for (const std::string& c : commands)
            lines.push_back("Modo [M]=" + c);
        lines.push_back("##");
        Start(lines, {"-COM1", pty.slavePath()});
        Gb().ligIdx = 1;
    }
    PtyPair pty;
};

// A command sent at once loses its plus signs and quotes and is decoded; the cycle shows it with
// its leading placeholders filled in, step by step.
TEST_F(DeviceActionTest, DrawerCommandsAreDecodedAtSendAndFilledInByTheCycle) {
    const struct {
        std::string command, sent;
        Strings cycle;  // the first, second and last shown; none: the command as written
    } cases[] = {
        {"chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)", std::string("\x1Bp\0\x19\xFA", 5), {}},
        {"\"p\"+[MO]", "p[MO]", {"\"p\"+0", "\"p\"+1", "\"p\"+1"}},
        // A quote can never be sent; a decoded "+" is no separator any more.
        {"chr$(65,34,66)", "AB", {}},
        {"chr$(65,43,66)", "A+B", {}},
        {"[P1]-[P2]-[MO]", "[P1]-[P2]-[MO]", {"10-10-0", "10-10-1", "250-250-1"}},
    };
    Strings commands;
    for (const auto& c : cases)
        commands.push_back(c.command);
    StartWithModes(commands);
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto row = static_cast<std::int16_t>(i + 1);
        Gb().gavIdx = row;
        SendDrawerCommand();
        EXPECT_EQ(pty.readAvailable(), cases[i].sent) << cases[i].command;
        Strings shown;
        RunDrawerCycle(row, {.shown = [&](const std::string& t) { shown.push_back(t); }});
        ASSERT_EQ(shown.size(), 338U);
        const Strings& c = cases[i].cycle;
        EXPECT_EQ(Strings({shown[0], shown[1], shown[337]}),
                  c.empty() ? Strings(3, cases[i].command) : c);
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

// However the cycle ends, the box is left with the last command sent (the row's own when none was)
// and the row has its own command again.
TEST_F(DeviceActionTest, TheCycleLeavesTheLastCommandSentToShow) {
    StartWithModes({"[P1]-[P2]-[MO]"});
    const struct {
        int sends;
        std::string over;
    } cases[] = {{0, "[P1]-[P2]-[MO]"}, {2, "10-10-1"}, {338, "250-250-1"}};
    for (const auto& c : cases) {
        int sent = 0;
        std::string over;
        RunDrawerCycle(1, {.stopped = [&] { return sent == c.sends; },
                           .send = [&] { ++sent; },
                           .over = [&](const std::string& t) { over = t; }});
        EXPECT_EQ(sent, c.sends);
        EXPECT_EQ(over, c.over);
        EXPECT_EQ(Gb().gavTab.at(1).vtx, "[P1]-[P2]-[MO]");
    }
}

// Each stage of open, write, close reports its own failure and the next one still runs.
TEST_F(DeviceActionTest, AFailingPortShowsABoxForEveryStageAndTheSequenceGoesOn) {
    const std::string com1 = "Erro no ficheiro: COM1";
    const std::string notOpen = "|Erro:Porta 1 n\xE3o est\xE1 aberta";
    const std::string missing = dir.file("falta/x.txt");
    const struct {
        std::string row;
        Strings words;
        std::vector<RecordedBox> boxes;
    } cases[] = {
        {kSerialRow,
         {"-COM1", "/nonexistent/tty"},
         {{com1, "Funcao: Abrir|Erro:Porta 1 (/nonexistent/tty) n\xE3o existe"},
          {com1, "Funcao: Escrever" + notOpen},
          {com1, "Funcao: Fechar" + notOpen}}},
        {"Impress\xE3o [FIC]=" + missing,
         {},
         {{"Erro no ficheiro: " + missing, "Funcao: Abrir|Erro:Caminho n\xE3o encontrado"},
          {"Erro no ficheiro: " + missing,
           "Funcao: Gravar TX|Erro:Nome ou n\xFAmero de ficheiro incorrecto"}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row);
        ResetProgram();
        boxes.clear();
        Start({"#LIG P", c.row, "##", "#GAV G", "Modo [M]=\"A\"", "##"}, c.words);
        Gb().ligIdx = 1;
        Gb().gavIdx = 1;
        SendDrawerCommand();
        EXPECT_EQ(boxes.boxes(), c.boxes);
    }
    EXPECT_EQ(pty.readAvailable(), "");
}

// Port zones missing, so their tables never built: no action prepares, opens or writes a
// channel, and none shows a box.
TEST_F(DeviceActionTest, WithoutPortZonesNoActionPreparesAChannel) {
    Start({"#GAV G", "Modo [M]=\"A\"", "##", "#DIS_CMD C", "Limpar [CLR]=chr$(12)", "##"});
    Gb().gavIdx = 1;
    SendConnectionTest("Teste");
    SendDrawerCommand();
    SendDisplayText(DisplayCommand(1));
    EXPECT_EQ(RunDrawerCycle(1, {.send = SendDrawerCommand}), 338);
    EXPECT_TRUE(boxes.boxes().empty());
    EXPECT_EQ(CanTab().size(), 1U) << "a channel was prepared";
}

}  // namespace
}  // namespace lumbra::test
