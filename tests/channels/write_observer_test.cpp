// The write observer sees exactly the bytes that left through a channel: once per successful write,
// line end included, and never for a write that failed.

#include <gtest/gtest.h>

#include "channels/PgmFic.h"
#include "platform/file_handles.h"
#include "tests/channels/port_map.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {
namespace {

using Strings = std::vector<std::string>;

class WriteObserverTest : public ::testing::Test {
  protected:
    void SetUp() override {
        test::MapPorts({{1, pty.slavePath()}, {2, dir.file("ttyGone")}});
        CanIni();
        SetChannelWriteObserver([this](const CanReg& channel, std::string_view bytes) {
            reports.push_back(channel.fic + ":" + std::string(bytes));
        });
    }
    void TearDown() override {
        SetChannelWriteObserver({});
        CanFim();
        test::MapPorts({});
        platform::FileCloseAll();
    }
    test::TempDir dir;
    test::PtyPair pty;
    test::RecordingMsgSink boxes;
    Strings reports;  // "channel name:bytes", one per report
};

TEST_F(WriteObserverTest, AFileWriteIsReportedWithItsLineEndOnlyWhenItSucceeds) {
    const std::string out = dir.file("out.txt");
    dir.write("in.txt", "old");
    const struct {
        std::string modo, fic, tx;
        std::int16_t nl;
        Strings reported;
    } cases[] = {
        {"O", out, "abc", 1, {out + ":abc\r\n"}},
        {"O", out, "abc", 0, {out + ":abc"}},
        {"A", out, "", 1, {out + ":\r\n"}},
        {"O", "/dev/full", "abc", 1, {}},
        // Open for reading: the write is refused.
        {"I", dir.file("in.txt"), "abc", 1, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.fic + " " + c.modo);
        reports.clear();
        boxes.clear();
        CanFicPrp(1, c.modo, c.fic, "");
        CanFicAbr(1);
        CanFicGrv(1, c.tx, c.nl);
        CanFicFec(1);
        EXPECT_EQ(reports, c.reported);
        EXPECT_EQ(boxes.boxes().size(), c.reported.empty() ? 1U : 0U);
    }
}

TEST_F(WriteObserverTest, ASerialWriteIsReportedOnceWhenItsBytesLeft) {
    const std::string bytes("a\0\xFF\r\n", 5);
    CanPserPrp(1, "COM1", "9600,n,8,1");
    CanPserAbr(1);
    CanPserEsc(1, bytes);
    CanPserFec(1);
    EXPECT_EQ(pty.readExactly(bytes.size()), bytes);
    EXPECT_EQ(reports, Strings{"COM1:" + bytes});

    // A missing device: every stage fails and nothing is reported.
    CanPserPrp(1, "COM2", "9600,n,8,1");
    CanPserAbr(1);
    CanPserEsc(1, bytes);
    CanPserFec(1);
    EXPECT_EQ(boxes.boxes().size(), 3U);
    EXPECT_EQ(reports.size(), 1U);

    // Without an observer the write goes on as before.
    SetChannelWriteObserver({});
    CanPserPrp(1, "COM1", "9600,n,8,1");
    CanPserAbr(1);
    CanPserEsc(1, "x");
    CanPserFec(1);
    EXPECT_EQ(pty.readExactly(1), "x");
    EXPECT_EQ(reports.size(), 1U);
}

}  // namespace
}  // namespace lumbra
