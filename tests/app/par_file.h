#pragma once
// A parameter file of the test's own and the command line the program reads.

#include <string>
#include <vector>

#include "platform/program.h"

namespace lumbra::test {

// A parameter file: the five header lines, then lines, every line ended by CR LF. Lines are
// Windows-1252 bytes, as the technician's editor saves them.
inline std::string ParFile(const std::vector<std::string>& lines) {
    std::string text =
        "'Nome       : Lumbra.par\r\n'Tipo       : PAR\r\n'Data       : 2026-11-23\r\n"
        "'Versao     : 1.0\r\n'Descricao  : Configura\xE7\xE3o para POS\r\n";
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

// The program's command line: these words after its name.
inline void SetCommandLine(const std::vector<std::string>& words) {
    std::vector<const char*> argv{"lumbra"};
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
}

}  // namespace lumbra::test
