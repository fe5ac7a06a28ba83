#pragma once
// What the option-table tests share: an option table whose reader state can be looked at, and
// parameter files written as the program's own files are (CR LF after every line).

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

class OpenTdaOpc : public TdaOpc {
  public:
    using TdaOpc::FicAtu;
    using TdaOpc::FicFec;
    using TdaOpc::FicNov;
    using TdaOpc::LerLin;
    using TdaOpc::LerLinAtr;
    using TdaOpc::LerLinCnt;

    const ParReg& current() const { return parAct; }
    std::int16_t fileCount() const { return ficQtd; }
    std::int16_t conversion() const { return espAct; }
    void setConversion(std::int16_t act) { espAct = act; }
    const std::string& specials() const { return espLst; }
    const std::vector<std::string>& args() const { return lcArg; }
    const std::vector<ParReg>& memory() const { return memTab; }

    // Reads one logical line; its text.
    std::string next() {
        std::int16_t ok = 0;
        LerLin(ok);
        return parAct.txp;
    }
};

// The lines, each followed by CR LF.
inline std::string CrLf(std::initializer_list<std::string_view> lines) {
    std::string bytes;
    for (const std::string_view line : lines) {
        bytes += line;
        bytes += "\r\n";
    }
    return bytes;
}

// Writes name into dir as a parameter file: five header lines of type PAR, then the body lines.
inline std::string ParameterFile(const TempDir& dir, const std::string& name,
                                 const std::vector<std::string>& body) {
    std::string bytes = CrLf({"'Nome       : x.par", "'Tipo       : PAR",
                              "'Data       : ", "'Versao     : 1.0", "'Descricao  : "});
    for (const auto& line : body)
        bytes += line + "\r\n";
    dir.write(name, bytes);
    return dir.file(name);
}

}  // namespace lumbra::test
