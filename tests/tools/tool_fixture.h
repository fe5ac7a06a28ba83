#pragma once
// A lumbractl run as a child process against a parameter file whose COM1 and COM2 are two
// pseudo-terminals. The same tables run the Linux program and the Windows one under Wine: each
// test program links the ToolTarget (Tool()) that says how its program is started and named.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

using Strings = std::vector<std::string>;

struct ToolRun {
    int status = -1;  // 128 + n for a child ended by signal n
    std::string out, err;
    long peakKb = 0;
};

// How a test program starts its lumbractl and names things for it.
struct ToolTarget {
    Strings launcher;  // the words before the tool's arguments
    // The switches that leave COM3 without a device, and what "Abrir" then says.
    Strings missingCom3;
    std::string missingCom3Error;
    int stopSignal;       // the signal the host sends to stop a cycle
    bool measuresMemory;  // false when the peak memory is a loader's around the tool
    std::function<std::string(const std::string&)> fileName;    // of a file of this machine
    std::function<std::string(const std::string&)> com1AsFile;  // as a file row names it
    // Makes COM1 and COM2 these pseudo-terminals; the switches to pass on every run.
    std::function<Strings(const std::string&, const std::string&)> attachPorts;
    std::function<void(const std::string&)> expectReleased;  // COM1 once the tool ended
};

ToolTarget& Tool();

// The child gets no display, no Qt platform and a UTF-8 locale: the tool needs neither of the
// first two.
class ToolProcess {
  public:
    // stdoutPipeSize > 0 shrinks standard output's pipe, so that the child waits on it. With a
    // terminal (a pseudo-terminal's path) the child's standard streams are that terminal instead.
    explicit ToolProcess(const Strings& args, int stdoutPipeSize = 0,
                         const std::string& terminal = "");
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    pid_t pid() const { return pid_; }
    // Whether the child holds the file at path open now.
    bool holds(const std::string& path) const;
    // The next line of standard output; "" when none comes within limit.
    std::string readLine(std::chrono::milliseconds limit);
    ToolRun finish();

  private:
    pid_t pid_ = -1;
    int out_ = -1, err_ = -1;
};

// lumbractl never ends with status 1 without saying why on standard error; a run that does is a
// loader that could not start it (Wine, now and then, right after its server restarts), and is run
// once more. A real silent failure fails again, and bytes it sent would arrive twice.
inline ToolRun RunTool(const Strings& args) {
    ToolRun run = ToolProcess(args).finish();
    if (run.status == 1 && run.out.empty() && run.err.empty()) run = ToolProcess(args).finish();
    return run;
}

// The line speed a pseudo-terminal was left at (B9600...), by tcgetattr; 0 when unknown.
unsigned LineSpeed(const std::string& slavePath);

inline const std::string kParHeader =
    "'Nome       : Teste.par\r\n'Tipo       : PAR\r\n'Data       : 2026-01-01\r\n"
    "'Versao     : 1.0\r\n'Descricao  : Teste\r\n";

class LumbractlFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        dir.write("Teste.par",
                  kParHeader +
                      "#LIG Portas\r\nImpressora [SER]=COM1,9600,n,8,1\r\n"
                      "Impressora 2 [SER]=COM2,19200,n,8,2\r\n"
                      "Impressora 3 [SER]=COM3,9600,n,8,1\r\n##\r\n"
                      "#GAV Gaveta - Modos [CnvChr=0]\r\nPino 5 [ESC]=chr$(27,112,1,25,250)\r\n"
                      "Ciclo [CIC]=chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])\r\n"
                      "Estranho [H]=chr$(&H1B,&h70,0)+\"a+b\"+\"Sauda\xE7\xE3o\"+chr$(255,128)\r\n"
                      "##\r\n#DIS_OPC Display\r\nDisplay [SER]=COM2,9600,n,8,1\r\n"
                      "Display em ficheiro [FIC]=" +
                      name("display.txt") +
                      "\r\n##\r\n#DIS_CMD Comandos\r\n"
                      "Sauda\xE7\xE3o [MSG]=chr$(12)Ol\xE1!chr$(13,10)\r\n##\r\n");
        ports = Tool().attachPorts(com1.slavePath(), com2.slavePath());
    }

    std::string name(const std::string& file) const { return Tool().fileName(dir.file(file)); }

    // The parameter file of the test's folder and both ports, then args.
    Strings Args(const Strings& args, const std::string& file = "Teste.par") const {
        Strings all = {"-FP", name(file)};
        all.insert(all.end(), ports.begin(), ports.end());
        all.insert(all.end(), args.begin(), args.end());
        return all;
    }

    TempDir dir;
    PtyPair com1, com2;  // COM1 is the printer
    Strings ports;
};

}  // namespace lumbra::test
