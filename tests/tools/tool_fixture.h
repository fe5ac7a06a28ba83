#pragma once
// The real lumbractl as a child process (standard output and error through pipes, exit status),
// and a parameter file of our own whose COM1 and COM2 are two pseudo-terminals.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

struct ToolRun {
    int status = -1;  // the exit status; 128 + n for a child ended by signal n
    std::string out;
    std::string err;
    long peakKb = 0;  // the child's peak resident memory
};

// One run of lumbractl. The child gets no display and no Qt platform from the test's environment,
// so the run shows that the tool needs neither.
class ToolProcess {
  public:
    // stdoutPipeSize > 0 shrinks the pipe of standard output, so that a child writing more than
    // that waits until finish() reads it.
    explicit ToolProcess(const std::vector<std::string>& args, int stdoutPipeSize = 0);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    pid_t pid() const { return pid_; }
    // The next line of standard output without its end; "" when none comes within limit.
    std::string readLine(std::chrono::milliseconds limit);
    // Reads both pipes to their end and waits for the child.
    ToolRun finish();

  private:
    pid_t pid_ = -1;
    int out_ = -1;
    int err_ = -1;
};

inline ToolRun RunTool(const std::vector<std::string>& args) {
    return ToolProcess(args).finish();
}

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
                                     "##",
                                     "#GAV Gaveta - Modos [CnvChr=0]",
                                     "Pino 5 [ESC]=chr$(27,112,1,25,250)",
                                     "Ciclo [CIC]=chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])",
                                     "##",
                                     "#DIS_OPC Display",
                                     "Display [SER]=COM2,9600,n,8,1",
                                     "Display em ficheiro [FIC]=" + dir.file("display.txt"),
                                     "##",
                                     "#DIS_CMD Comandos",
                                     "Sauda\xE7\xE3o [MSG]=chr$(12)Ol\xE1!chr$(13,10)",
                                     "##"};
        std::string text = ParHeader();
        for (const std::string& line : lines)
            text += line + "\r\n";
        dir.write("Teste.par", text);
    }

    // The parameter file and both ports, then args.
    std::vector<std::string> Args(const std::vector<std::string>& args) const {
        std::vector<std::string> all = {"-FP",           par, "-COM1", com1.slavePath(), "-COM2",
                                        com2.slavePath()};
        all.insert(all.end(), args.begin(), args.end());
        return all;
    }

    TempDir dir;
    PtyPair com1;  // the printer
    PtyPair com2;
    std::string par;
};

}  // namespace lumbra::test
