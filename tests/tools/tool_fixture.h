#pragma once
// A lumbractl as a child process (standard output and error through pipes, exit status), and a
// parameter file of our own whose COM1 and COM2 are two pseudo-terminals. The same tables run the
// Linux program and the Windows one under Wine: a ToolTarget says how each is started and how it
// names this machine's files and ports; each test program links the one it runs (Tool()).

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

using Strings = std::vector<std::string>;

struct ToolRun {
    int status = -1;  // the exit status; 128 + n for a child ended by signal n
    std::string out;
    std::string err;
    long peakKb = 0;  // the child's peak resident memory
};

// One way of running lumbractl.
class ToolTarget {
  public:
    virtual ~ToolTarget() = default;
    // The program and its arguments that run the tool with args.
    virtual Strings commandLine(const Strings& args) const = 0;
    // The tool's name for the file at hostPath of this machine.
    virtual std::string fileName(const std::string& hostPath) const = 0;
    // Makes the tool's COM1 and COM2 the devices com1 and com2 (pseudo-terminal paths); the
    // switches that do it, to be passed on every run, or none when they need none.
    virtual Strings attachPorts(const std::string& com1, const std::string& com2) = 0;
    // The engine switches that leave COM3 without a device (none when it has none already), and
    // the description the "Abrir" box then gives.
    virtual Strings missingCom3() const = 0;
    virtual std::string missingCom3Error() const = 0;
    // The name under which a file row of the parameter file writes to COM1's device directly.
    virtual std::string com1AsFile(const std::string& com1) const = 0;
    // The signal that asks the tool to stop a cycle, as the host would send it.
    virtual int stopSignal() const = 0;
    // Checks that the tool let go of COM1's device when it stopped.
    virtual void expectReleased(const std::string& com1) const = 0;
    // Whether the child's peak memory is the tool's own (not a loader's around it).
    virtual bool measuresMemory() const = 0;
};

// The tool this test program runs.
ToolTarget& Tool();
// The Linux program; the Windows one under Wine (only the Wine test program has it).
ToolTarget& LinuxTool();
ToolTarget& WineTool();

// One run of a lumbractl. The child gets no display and no Qt platform from the test's
// environment, so the run shows that the tool needs neither, and a UTF-8 locale of its own.
class ToolProcess {
  public:
    // stdoutPipeSize > 0 shrinks the pipe of standard output, so that a child writing more than
    // that waits until finish() reads it.
    explicit ToolProcess(const Strings& args, int stdoutPipeSize = 0,
                         const ToolTarget& target = Tool());
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    pid_t pid() const { return pid_; }
    // Whether the child holds the file at path open now.
    bool holds(const std::string& path) const;
    // The next line of standard output without its end; "" when none comes within limit.
    std::string readLine(std::chrono::milliseconds limit);
    // Reads both pipes to their end and waits for the child.
    ToolRun finish();

  private:
    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
};

inline ToolRun RunTool(const Strings& args, const ToolTarget& target = Tool()) {
    return ToolProcess(args, 0, target).finish();
}

// The line speed a pseudo-terminal was left at (B9600...), by tcgetattr; 0 when unknown.
unsigned LineSpeed(const std::string& slavePath);

// The five header lines every parameter file starts with.
inline std::string ParHeader() {
    return "'Nome       : Teste.par\r\n'Tipo       : PAR\r\n'Data       : 2026-01-01\r\n"
           "'Versao     : 1.0\r\n'Descricao  : Teste\r\n";
}

class LumbractlFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        par = dir.file("Teste.par");
        const std::string lines[] = {"#LIG Portas",
                                     "Impressora [SER]=COM1,9600,n,8,1",
                                     "Impressora 2 [SER]=COM2,19200,n,8,1",
                                     "Impressora 3 [SER]=COM3,9600,n,8,1",
                                     "##",
                                     "#GAV Gaveta - Modos [CnvChr=0]",
                                     "Pino 5 [ESC]=chr$(27,112,1,25,250)",
                                     "Ciclo [CIC]=chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])",
                                     "##",
                                     "#DIS_OPC Display",
                                     "Display [SER]=COM2,9600,n,8,1",
                                     "Display em ficheiro [FIC]=" + name("display.txt"),
                                     "##",
                                     "#DIS_CMD Comandos",
                                     "Sauda\xE7\xE3o [MSG]=chr$(12)Ol\xE1!chr$(13,10)",
                                     "##"};
        std::string text = ParHeader();
        for (const std::string& line : lines)
            text += line + "\r\n";
        dir.write("Teste.par", text);
        ports = Tool().attachPorts(com1.slavePath(), com2.slavePath());
    }

    // The tool's name for a file of the test's folder.
    std::string name(const std::string& file) const { return Tool().fileName(dir.file(file)); }

    // The parameter file (file of the test's folder) and both ports, then args.
    Strings Args(const Strings& args, const std::string& file = "Teste.par") const {
        Strings all = {"-FP", name(file)};
        all.insert(all.end(), ports.begin(), ports.end());
        all.insert(all.end(), args.begin(), args.end());
        return all;
    }

    TempDir dir;
    PtyPair com1;  // the printer
    PtyPair com2;
    std::string par;
    Strings ports;  // what makes the tool's COM1 and COM2 these two
};

}  // namespace lumbra::test
