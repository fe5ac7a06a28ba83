#pragma once
// An option table whose zone and option state can be looked at, and the program's command line
// and folder set for one test.

#include <string>
#include <vector>

#include "platform/program.h"
#include "tests/options/open_tda_opc.h"

namespace lumbra::test {

class OpenZones : public OpenTdaOpc {
  public:
    const std::vector<std::string>& lines() const { return regLin; }
    const std::vector<std::string>& options() const { return opcLin; }
    const std::vector<ParReg>& optionTable() const { return opcTab; }
    const std::string& names() const { return idxNom; }

    // The text of option chv.
    std::string option(const std::string& chv) {
        std::string value;
        OpcCon(chv, value);
        return value;
    }
};

// The program runs with these words after its name, from this folder, while the object lives.
class ScopedProgram {
  public:
    explicit ScopedProgram(const std::vector<std::string>& words, const std::string& folder = "") {
        std::vector<const char*> argv{"lumbra"};
        for (const auto& w : words)
            argv.push_back(w.c_str());
        platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
        platform::OverrideProgramFolder(folder);
    }
    ~ScopedProgram() {
        platform::SetProgramArgs(0, nullptr);
        platform::OverrideProgramFolder("");
    }
    ScopedProgram(const ScopedProgram&) = delete;
    ScopedProgram& operator=(const ScopedProgram&) = delete;
};

}  // namespace lumbra::test
