#pragma once
// The program module started on a parameter file of the test's own, with a command line of its
// own; configuration, channels and command line are back to "not started" around every test.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "channels/PgmFic.h"
#include "platform/program.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

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

// Forgets what an earlier run in this process left: configuration, channels, command line, folder.
inline void ResetProgram() {
    CanFim();
    Gb() = LumbraGbState{};
    SetChannelWriteObserver({});
    platform::SetProgramArgs(0, nullptr);
    platform::OverrideProgramFolder("");
}

// The rows of a table as "name|kind|value", row 0 included.
template <typename Row>
std::vector<std::string> Rows(const std::vector<Row>& tab) {
    std::vector<std::string> out;
    for (const Row& r : tab)
        out.push_back(r.txi + "|" + r.ide + "|" + r.vtx);
    return out;
}

class ProgramTest : public ::testing::Test {
  protected:
    void SetUp() override { ResetProgram(); }
    void TearDown() override { ResetProgram(); }

    // Writes Lumbra.par into the test's folder and starts on it through -FP, with more words on
    // the command line after it.
    void Start(const std::vector<std::string>& lines, std::vector<std::string> words = {}) {
        dir.write("Lumbra.par", ParFile(lines));
        words.insert(words.begin(), {"-FP", dir.file("Lumbra.par")});
        SetCommandLine(words);
        LumbraIni();
    }

    TempDir dir;
    RecordingMsgSink boxes;
};

}  // namespace lumbra::test
