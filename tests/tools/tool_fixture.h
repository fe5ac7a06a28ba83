#pragma once
// A parameter file of our own in a temporary folder, and two pseudo-terminals standing in for the
// serial ports COM1 and COM2 it names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

// The five header lines every parameter file starts with.
inline std::string ParHeader() {
    return "'Nome       : Teste.par\r\n'Tipo       : PAR\r\n'Data       : 2026-01-01\r\n"
           "'Versao     : 1.0\r\n'Descricao  : Teste\r\n";
}

// The bytes of each send of the cycle of "Ciclo [CIC]" below: 27, 112, MO, P1, P2.
inline std::string CycleSend(int i) {
    const int mo = i % 2;
    const int p2 = 10 + 20 * ((i / 2) % 13);
    const int p1 = 10 + 20 * (i / 26);
    return std::string("\x1Bp") + static_cast<char>(mo) + static_cast<char>(p1) +
           static_cast<char>(p2);
}

class LumbractlFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        par = dir.file("Teste.par");
        dir.write("Teste.par", ParHeader() +
                                   "#LIG Portas\r\n"
                                   "Impressora [SER]=COM1,9600,n,8,1\r\n"
                                   "Ficheiro [FIC]=" +
                                   dir.file("saida.txt") +
                                   "\r\n"
                                   "Sem pasta [FIC]=" +
                                   dir.file("falta/saida.txt") +
                                   "\r\n"
                                   "Impressora 2 [SER]=COM2,19200,n,8,1\r\n"
                                   "##\r\n"
                                   "#GAV Gaveta - Modos [CnvChr=0]\r\n"
                                   "ESC p [ESC]=chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)\r\n"
                                   "Pino 5 [ESC]=chr$(27,112,1,25,250)\r\n"
                                   "Ciclo [CIC]=chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])\r\n"
                                   "Vazio [NADA]=\r\n"
                                   "##\r\n"
                                   "#DIS_OPC Display\r\n"
                                   "Display [SER]=COM2,9600,n,8,1\r\n"
                                   "Display em ficheiro [FIC]=" +
                                   dir.file("display.txt") +
                                   "\r\n"
                                   "##\r\n"
                                   "#DIS_CMD Comandos\r\n"
                                   "Limpar [CLR]=chr$(12)\r\n"
                                   "Sauda\xE7\xE3o [MSG]=chr$(12)Ol\xE1!chr$(13,10)\r\n"
                                   "##\r\n");
    }

    // The parameter file and both ports, then args.
    std::vector<std::string> Args(const std::vector<std::string>& args) const {
        std::vector<std::string> all = {"-FP",           par, "-COM1", com1.slavePath(), "-COM2",
                                        com2.slavePath()};
        all.insert(all.end(), args.begin(), args.end());
        return all;
    }

    TempDir dir;
    PtyPair com1;
    PtyPair com2;
    std::string par;
};

}  // namespace lumbra::test
