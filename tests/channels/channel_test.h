#pragma once
// The fixture of the channel tests: the channel module started, the boxes it shows recorded, and
// every write it reports as gone out collected. Serial port numbers point at devices the way a
// technician does, through "-COMn PATH" on the program's command line.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "channels/PgmFic.h"
#include "platform/file_handles.h"
#include "platform/program.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra::test {

inline void MapPorts(const std::vector<std::pair<int, std::string>>& ports) {
    std::vector<std::string> words = {"lumbra"};
    for (const auto& [number, path] : ports)
        words.insert(words.end(), {"-COM" + std::to_string(number), path});
    std::vector<const char*> argv;
    for (const std::string& w : words)
        argv.push_back(w.c_str());
    platform::SetProgramArgs(static_cast<int>(argv.size()), argv.data());
}

class ChannelTest : public ::testing::Test {
  protected:
    void SetUp() override {
        CanIni();
        SetChannelWriteObserver([this](const CanReg& channel, std::string_view bytes) {
            reports.push_back(channel.fic + ":" + std::string(bytes));
        });
    }
    void TearDown() override {
        SetChannelWriteObserver({});
        CanFim();
        MapPorts({});
        platform::FileCloseAll();
    }
    // Prepares, opens, writes and closes file channel 1.
    void writeOnce(const std::string& modo, const std::string& path, const std::string& tx,
                   std::int16_t nl = 0) {
        CanFicPrp(1, modo, path, "");
        CanFicAbr(1);
        CanFicGrv(1, tx, nl);
        CanFicFec(1);
    }
    RecordingMsgSink boxes;
    TempDir dir;
    std::vector<std::string> reports;  // "channel name:bytes", one per write that went out
};

}  // namespace lumbra::test
