// The Linux lumbractl and the Windows one under Wine, side by side: every device action of the
// sample parameter file, and a few awkward drawer and display commands, write the same bytes at
// the same speed to their ports and the same files.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/tools/tool_fixture.h"

namespace lumbra::test {
namespace {

// What one action left behind.
struct Outcome {
    int status = -1;
    std::string err;
    std::string com1, com2, printerFile, displayFile;
    unsigned speed1 = 0, speed2 = 0;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
}

// One of the two programs with its own ports and folder.
class Side {
  public:
    explicit Side(ToolTarget& tool) : tool_(tool) {}

    // Writes the parameter file, its file ports made files of this side's folder.
    void writeParameterFile(const std::string& bytes) {
        std::string text = Replaced(bytes, "/tmp/lumbra-impressora.txt", name("impressora.txt"));
        text = Replaced(text, "/tmp/lumbra-display.txt", name("display.txt"));
        dir_.write("p.par", text);
    }
    void attach() { ports_ = tool_.attachPorts(com1_.slavePath(), com2_.slavePath()); }

    // Runs the action; port (1, 2; 0 for the files) is where its bytes should go.
    Outcome run(const Strings& action, int port) {
        for (const char* file : {"impressora.txt", "display.txt"})
            std::filesystem::remove(dir_.file(file));
        Strings args = {"-FP", name("p.par")};
        args.insert(args.end(), ports_.begin(), ports_.end());
        args.insert(args.end(), action.begin(), action.end());
        const ToolRun r = RunTool(args, tool_);
        Outcome o;
        o.status = r.status;
        o.err = r.err;
        if (port == 1) o.com1 = com1_.readAvailable();
        if (port == 2) o.com2 = com2_.readAvailable();
        o.speed1 = LineSpeed(com1_.slavePath());
        o.speed2 = LineSpeed(com2_.slavePath());
        o.printerFile = dir_.read("impressora.txt");
        o.displayFile = dir_.read("display.txt");
        return o;
    }
    // What reached the ports besides what the actions were meant to send.
    std::string stray() { return com1_.readAvailable() + com2_.readAvailable(); }

  private:
    std::string name(const std::string& file) const { return tool_.fileName(dir_.file(file)); }

    ToolTarget& tool_;
    TempDir dir_;
    PtyPair com1_, com2_;
    Strings ports_;
};

struct Action {
    Strings args;
    int port;
};

class LinuxAndWindows : public ::testing::Test {
  protected:
    void compare(const std::string& parameterFile, const std::vector<Action>& actions) {
        onLinux.writeParameterFile(parameterFile);
        onWindows.writeParameterFile(parameterFile);
        onLinux.attach();
        onWindows.attach();
        for (const Action& a : actions) {
            std::string what;
            for (const std::string& w : a.args)
                what += w + " ";
            SCOPED_TRACE(what);
            const Outcome l = onLinux.run(a.args, a.port);
            const Outcome w = onWindows.run(a.args, a.port);
            EXPECT_EQ(l.status, 0) << l.err;
            EXPECT_EQ(w.status, 0) << w.err;
            EXPECT_EQ(l.err + w.err, "");
            EXPECT_NE(l.com1 + l.com2 + l.printerFile + l.displayFile, "") << "nothing was sent";
            EXPECT_TRUE(w.com1 == l.com1)
                << "COM1: " << w.com1.size() << " bytes, not " << l.com1.size();
            EXPECT_TRUE(w.com2 == l.com2) << "COM2";
            EXPECT_TRUE(w.printerFile == l.printerFile) << "printer file: " << w.printerFile;
            EXPECT_TRUE(w.displayFile == l.displayFile) << "display file: " << w.displayFile;
            EXPECT_EQ(w.speed1, l.speed1);
            EXPECT_EQ(w.speed2, l.speed2);
        }
        EXPECT_EQ(onLinux.stray(), "");
        EXPECT_EQ(onWindows.stray(), "");
    }

    Side onLinux{LinuxTool()};
    Side onWindows{WineTool()};
};

std::string Sample() {
    std::ifstream in(std::string(LUMBRA_SOURCE_DIR) + "/examples/Lumbra.par", std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST_F(LinuxAndWindows, EveryActionOfTheSampleWritesTheSameBytes) {
    const std::string euro = "Pre\xC3\xA7o: 9,99 \xE2\x82\xAC";
    compare(Sample(), {
                          {{"teste", "--porta", "1"}, 1},
                          {{"teste", "--porta", "2", "--texto", euro}, 0},
                          {{"abrir", "--porta", "1", "--modo", "1"}, 1},
                          {{"abrir", "--porta", "1", "--modo", "2"}, 1},
                          {{"abrir", "--porta", "1", "--modo", "3"}, 1},
                          {{"abrir", "--porta", "1", "--modo", "4"}, 1},
                          {{"abrir", "--porta", "2", "--modo", "2"}, 0},
                          {{"ciclo", "--porta", "1", "--modo", "4"}, 1},
                          {{"executar", "--display", "1", "--comando", "1"}, 2},
                          {{"executar", "--display", "1", "--comando", "2"}, 2},
                          {{"executar", "--display", "1", "--comando", "3"}, 2},
                          {{"executar", "--display", "2", "--comando", "3"}, 0},
                          {{"mostrar", "--display", "1", "--texto", euro}, 2},
                          {{"mostrar", "--display", "2"}, 0},
                      });
}

TEST_F(LinuxAndWindows, AwkwardDrawerAndDisplayCommandsWriteTheSameBytes) {
    const std::string par = ParHeader() +
                            "#LIG P\r\nImpressora [SER]=COM1,19200,n,8,2\r\n"
                            "Ficheiro [FIC]=/tmp/lumbra-impressora.txt\r\n##\r\n"
                            "#GAV G [CnvChr=0]\r\n"
                            "Hexadecimal [H]=chr$(&H1B,&h70,0,&H32,&HFA)\r\n"
                            "Aspas [A]=\"ESC\"+chr$(27)+\"@\"+\"a+b\"\r\n"
                            "Acentos [C]=chr$(27)+\"Sauda\xE7\xE3o\"+chr$(255,128)\r\n##\r\n"
                            "#DIS_OPC D\r\nDisplay [SER]=COM2,4800,n,8,1\r\n"
                            "Ficheiro [FIC]=/tmp/lumbra-display.txt\r\n##\r\n"
                            "#DIS_CMD C\r\n"
                            "Linhas [L]=chr$(12)Pre\xE7o \x80"
                            "chr$(13,10)Ol\xE1\r\n"
                            "Brilho [B]=chr$(31,88,4)\r\n"
                            "Texto [T]=texto \"simples\" + fim \r\n##\r\n";
    compare(par, {
                     {{"abrir", "--modo", "1"}, 1},
                     {{"abrir", "--modo", "2"}, 1},
                     {{"abrir", "--modo", "3"}, 1},
                     {{"abrir", "--porta", "2", "--modo", "3"}, 0},
                     {{"executar", "--comando", "1"}, 2},
                     {{"executar", "--comando", "2"}, 2},
                     {{"executar", "--display", "2", "--comando", "3"}, 0},
                 });
}

}  // namespace
}  // namespace lumbra::test
