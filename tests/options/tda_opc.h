#pragma once
// An option table whose state can be looked at, parameter files, the program's command line.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "platform/program.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

using Words = std::vector<std::string>;

class OpenTdaOpc : public TdaOpc {
  public:
    std::int16_t fileCount() const { return ficQtd; }
    const std::string& specials() const { return espLst; }
    const std::vector<ParReg>& memory() const { return memTab; }
    const std::vector<std::string>& records() const { return regLin; }
    const std::vector<std::string>& options() const { return opcLin; }
    const std::vector<ParReg>& optionTable() const { return opcTab; }
    const std::vector<TboReg>& entries() const { return tboTab; }

    std::string next() {
        std::int16_t ok = 0;
        LerLin(ok);
        return parAct.txp;
    }
    std::string option(const std::string& chv) {
        std::string value;
        OpcCon(chv, value);
        return value;
    }
};

// The lines, each followed by CR LF.
inline std::string Lines(const std::vector<std::string>& lines) {
    std::string bytes;
    for (const auto& line : lines)
        (bytes += line) += "\r\n";
    return bytes;
}

// name in dir: five header lines of type PAR, then the body.
inline std::string ParameterFile(const TempDir& dir, const std::string& name,
                                 const std::vector<std::string>& body) {
    dir.write(name, Lines({"'Nome       : x.par", "'Tipo       : PAR",
                           "'Data       : ", "'Versao     : 1.0", "'Descricao  : "}) +
                        Lines(body));
    return dir.file(name);
}

inline std::vector<std::string> Split(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0, end = 0; end != std::string_view::npos; from = end + 1) {
        end = text.find('\n', from);
        lines.emplace_back(text.substr(from, end - from));
    }
    return lines;
}

// A whole-file write leaves no temporary file behind.
inline std::size_t FilesIn(const TempDir& dir) {
    const std::filesystem::directory_iterator it(dir.path());
    return static_cast<std::size_t>(std::distance(begin(it), end(it)));
}

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
