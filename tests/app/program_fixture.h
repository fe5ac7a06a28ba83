#pragma once
// The program module started on a parameter file of the test's own, with a command line of its
// own; configuration, channels and command line are back to "not started" around every test.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "channels/PgmFic.h"
#include "tests/app/par_file.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

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
    void SetUp() override { Reset(); }
    void TearDown() override { Reset(); }

    static void Reset() {
        Gb() = LumbraGbState{};
        CanFim();
        SetChannelWriteObserver({});
        platform::SetProgramArgs(0, nullptr);
        platform::OverrideProgramFolder("");
    }

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
