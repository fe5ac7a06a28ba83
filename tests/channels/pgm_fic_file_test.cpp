#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "channels/PgmFic.h"
#include "platform/file_handles.h"
#include "platform/write_stall.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {
namespace {

class FileChannelTest : public ::testing::Test {
  protected:
    void SetUp() override { CanIni(); }
    void TearDown() override {
        CanFim();
        platform::FileCloseAll();
    }
    test::RecordingMsgSink boxes;
    test::TempDir dir;
};

TEST_F(FileChannelTest, EachModeOpensTheFileItNamesAndSetsModoNum) {
    const test::RecordedBox badMode{"", "Funcao: Gravar TX|Erro:Bad file mode"};
    const struct {
        const char* modo;
        const char* stored;
        std::int16_t modoNum;  // 9 = kept from the previous open
        const char* content;   // after writing "new" over "old"
        bool refusesWrite;
    } cases[] = {
        {"O", "O", 0, "new", false},      {" o ", "O", 0, "new", false},
        {"O:5", "O:5", 5, "new", false},  {"O:", "O:", 0, "new", false},
        {"o:z", "O:Z", 0, "new", false},  {"A", "A", 0, "oldnew", false},
        {"A:", "A:", 0, "oldnew", false}, {"A:5", "A:5", 5, "oldnew", false},
        {"B", "B", 9, "old", true},       {"R:128", "R:128", 128, "old", true},
        {"X", "X", 9, "old", true},       {"", "", 9, "old", true},
        {"O:~", "O:~", 9, "old", true},   {"o:\xE7", "O:\xC7", 9, "old", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string("mode \"") + c.modo + "\"");
        boxes.clear();
        const std::string path = dir.file("f.txt");
        CanFicPrp(1, "O:9", path, "");
        CanFicAbr(1);
        CanFicFec(1);
        dir.write("f.txt", "old");

        CanFicPrp(1, c.modo, path, "");
        CanFicAbr(1);
        const CanReg& r = CanTab()[1];
        EXPECT_EQ(r.modo, Variant(c.stored));
        EXPECT_EQ(r.modoAct, c.stored);
        EXPECT_EQ(r.modoNum, c.modoNum);
        EXPECT_EQ(r.num, 1);
        EXPECT_TRUE(platform::FileIsOpen(1));
        CanFicGrv(1, "new", 0);
        CanFicFec(1);
        EXPECT_EQ(dir.read("f.txt"), c.content);
        std::vector<test::RecordedBox> want;
        if (c.refusesWrite) want = {{"Erro no ficheiro: " + path, badMode.text}};
        EXPECT_EQ(boxes.boxes(), want);
    }
}

TEST_F(FileChannelTest, OpeningAgainInTheSameModeDoesNothing) {
    CanFicPrp(1, " o ", dir.file("f.txt"), "");
    CanFicAbr(1);
    CanFicGrv(1, "kept", 0);
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 1);
    EXPECT_FALSE(platform::FileIsOpen(2));
    CanFicFec(1);
    EXPECT_EQ(dir.read("f.txt"), "kept");
}

TEST_F(FileChannelTest, AFailedOpenLeavesTheChannelLookingOpenAndWritesFailVisibly) {
    const std::string path = dir.file("missing/f.txt");
    CanFicPrp(1, "O", path, "");
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].modoAct, "O");
    EXPECT_EQ(CanTab()[1].num, 1);
    CanFicAbr(1);
    CanFicGrv(1, "lost", 1);
    CanFicFec(1);
    EXPECT_EQ(CanTab()[1].modoAct, "");
    EXPECT_EQ(CanTab()[1].num, 0);
    const std::string title = "Erro no ficheiro: " + path;
    const std::vector<test::RecordedBox> want = {
        {title, "Funcao: Abrir|Erro:Path not found"},
        {title, "Funcao: Gravar TX|Erro:Bad file name or number"},
    };
    EXPECT_EQ(boxes.boxes(), want);
}

TEST_F(FileChannelTest, InputOfAMissingFileAndAnEmptyNameAreReported) {
    CanFicPrp(1, "I", dir.file("none.txt"), "");
    CanFicAbr(1);
    CanFicPrp(2, "O", "", "");
    CanFicAbr(2);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: " + dir.file("none.txt"), "Funcao: Abrir|Erro:File not found"},
        {"Erro no ficheiro: ", "Funcao: Abrir|Erro:Bad file name or number"},
    };
    EXPECT_EQ(boxes.boxes(), want);
}

TEST_F(FileChannelTest, WritesALineEndOnlyWhenNlIsExactlyOne) {
    const struct {
        std::int16_t nl;
        const char* content;
    } cases[] = {{1, "ab\r\n"}, {0, "ab"}, {-1, "ab"}, {2, "ab"}};
    for (const auto& c : cases) {
        CanFicPrp(1, "O", dir.file("f.txt"), "");
        CanFicAbr(1);
        CanFicGrv(1, "ab", c.nl);
        CanFicFec(1);
        EXPECT_EQ(dir.read("f.txt"), c.content) << "nl " << c.nl;
    }
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(FileChannelTest, AFullDiskIsReportedByTheWrite) {
    CanFicPrp(1, "A", "/dev/full", "");
    CanFicAbr(1);
    CanFicGrv(1, "x", 1);
    const std::vector<test::RecordedBox> want = {
        {"Erro no ficheiro: /dev/full", "Funcao: Gravar TX|Erro:Disk full"}};
    EXPECT_EQ(boxes.boxes(), want);
}

// Devices that would hold a write (or its open) for ever: each send ends within the stall limit
// with its box, and the channel still closes.
TEST_F(FileChannelTest, ADeviceThatTakesNothingFailsTheSendWithinTheStallLimit) {
    platform::SetWriteStallLimit(std::chrono::milliseconds(300));
    test::PtyPair unread;
    unread.fillUntilBlocked();
    const std::string fifo = dir.file("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string missing = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    const std::string timeout =
        R"(Funcao: Gravar TX\|Erro:Device timeout: nothing taken for 0\.[3-9] s )"
        R"(\([0-9]+ of 1048576 bytes taken in [0-9]\.[0-9] s\))";
    const std::string unavailable = R"(Funcao: Abrir\|Erro:Device unavailable)";
    const std::string notOpen = R"(Funcao: Gravar TX\|Erro:Bad file name or number)";
    const struct {
        const char* what;
        std::string path;
        bool fifoReader;  // a reader that never reads holds the FIFO open
        std::vector<std::string> boxes;
    } cases[] = {
        {"a pseudo-terminal nobody reads", unread.slavePath(), false, {timeout}},
        {"a FIFO whose reader reads nothing", fifo, true, {timeout}},
        {"a FIFO without a reader", fifo, false, {unavailable, notOpen}},
        {"a device missing from /dev", missing, false, {unavailable, notOpen}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        boxes.clear();
        const int reader = c.fifoReader ? ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK) : -1;
        const auto start = std::chrono::steady_clock::now();
        CanFicPrp(1, "O", c.path, "");
        CanFicAbr(1);
        CanFicGrv(1, std::string(1 << 20, 'x'), 0);
        CanFicFec(1);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
        if (reader >= 0) ::close(reader);
        ASSERT_EQ(boxes.boxes().size(), c.boxes.size());
        for (std::size_t i = 0; i < c.boxes.size(); ++i) {
            EXPECT_EQ(boxes.boxes()[i].title, "Erro no ficheiro: " + c.path);
            EXPECT_THAT(boxes.boxes()[i].text, ::testing::MatchesRegex(c.boxes[i]));
        }
        EXPECT_FALSE(platform::FileIsOpen(1));
    }
    // Nothing was made where the device should have been.
    struct stat st {};
    EXPECT_NE(::lstat(missing.c_str(), &st), 0);
    platform::SetWriteStallLimit({});
}

TEST_F(FileChannelTest, PreparingAnOpenChannelAgainTakesANewNumberWithoutClosingTheFirst) {
    CanFicPrp(1, "O", dir.file("a.txt"), "");
    CanFicAbr(1);
    CanFicPrp(1, "O", dir.file("b.txt"), "");
    EXPECT_EQ(CanTab()[1].modoAct, "");
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 2);
    EXPECT_TRUE(platform::FileIsOpen(1));
}

TEST_F(FileChannelTest, CanFimClosesEveryFileChannel) {
    CanFicPrp(1, "O", dir.file("a.txt"), "");
    CanFicAbr(1);
    CanFicPrp(3, "A", dir.file("c.txt"), "");
    CanFicAbr(3);
    CanFicGrv(3, "end", 1);
    ASSERT_TRUE(platform::FileIsOpen(1) && platform::FileIsOpen(2));
    CanFim();
    EXPECT_FALSE(platform::FileIsOpen(1));
    EXPECT_FALSE(platform::FileIsOpen(2));
    EXPECT_EQ(dir.read("c.txt"), "end\r\n");
}

}  // namespace
}  // namespace lumbra
