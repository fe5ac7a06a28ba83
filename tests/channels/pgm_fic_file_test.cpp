#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/write_stall.h"
#include "tests/channels/channel_fixture.h"
#include "tests/support/pty_pair.h"

namespace lumbra {
namespace {

class FileChannelTest : public test::ChannelTest {
  protected:
    // Prepares channel 1, opens it, writes tx and closes it again.
    void writeOnce(const std::string& modo, const std::string& path, const std::string& tx,
                   std::int16_t nl = 0) {
        CanFicPrp(1, modo, path, "");
        CanFicAbr(1);
        CanFicGrv(1, tx, nl);
        CanFicFec(1);
    }
};

// Output and append write the file byte-exact, with a line end only when nl is exactly 1; the
// other modes refuse the write. modoNum comes from the mode or is kept.
TEST_F(FileChannelTest, EachModeWritesTheFileItNamesOrRefuses) {
    const struct {
        const char* modo;
        const char* stored;
        std::int16_t modoNum;  // 9 = kept from the previous open
        std::int16_t nl;
        const char* content;  // after writing "new" over "old"
    } cases[] = {{"O", "O", 0, 1, "new\r\n"},    {" o ", "O", 0, 0, "new"},
                 {"O:5", "O:5", 5, -1, "new"},   {"o:z", "O:Z", 0, 2, "new"},
                 {"O:", "O:", 0, 0, "new"},      {"A", "A", 0, 1, "oldnew\r\n"},
                 {"A:5", "A:5", 5, 0, "oldnew"}, {"B", "B", 9, 0, "old"},
                 {"X", "X", 9, 0, "old"},        {"", "", 9, 0, "old"}};
    const std::string path = dir.file("f.txt");
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string("mode \"") + c.modo + "\"");
        boxes.clear();
        writeOnce("O:9", path, "");
        dir.write("f.txt", "old");
        reports.clear();
        CanFicPrp(1, c.modo, path, "");
        CanFicAbr(1);
        const CanReg& r = CanTab()[1];
        EXPECT_EQ(r.modo, Variant(c.stored));
        EXPECT_EQ(r.modoAct, c.stored);
        EXPECT_EQ(r.modoNum, c.modoNum);
        EXPECT_TRUE(r.num == 1 && platform::FileIsOpen(1));
        CanFicGrv(1, "new", c.nl);
        CanFicFec(1);
        EXPECT_EQ(dir.read("f.txt"), c.content);
        std::vector<test::RecordedBox> want;
        std::vector<std::string> sent = {path + ":" + (c.nl == 1 ? "new\r\n" : "new")};
        if (std::string(c.content) == "old") {
            want = {{"Erro no ficheiro: " + path, "Funcao: Gravar TX|Erro:Bad file mode"}};
            sent.clear();
        }
        EXPECT_EQ(boxes.boxes(), want);
        EXPECT_EQ(reports, sent);
    }
    // Opening again in the same mode keeps the file and its number.
    CanFicPrp(1, "O", path, "");
    CanFicAbr(1);
    CanFicGrv(1, "kept", 0);
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 1);
    CanFicFec(1);
    EXPECT_EQ(dir.read("f.txt"), "kept");
}

// A failed open leaves the channel looking open until closed; failed writes report nothing as
// gone out.
TEST_F(FileChannelTest, FailuresAreShownUnderTheirFunction) {
    const std::string missing = dir.file("missing/f.txt");
    CanFicPrp(1, "O", missing, "");
    CanFicAbr(1);
    EXPECT_TRUE(CanTab()[1].modoAct == "O" && CanTab()[1].num == 1);
    CanFicAbr(1);
    CanFicGrv(1, "lost", 1);
    CanFicFec(1);
    EXPECT_TRUE(CanTab()[1].modoAct.empty() && CanTab()[1].num == 0);
    writeOnce("I", dir.file("none.txt"), "");
    writeOnce("A", "/dev/full", "x", 1);
    CanFicPrp(2, "O", "", "");
    CanFicAbr(2);
    const std::string in = "Erro no ficheiro: ";
    const std::string badName = "Funcao: Gravar TX|Erro:Bad file name or number";
    const std::vector<test::RecordedBox> want = {
        {in + missing, "Funcao: Abrir|Erro:Path not found"},
        {in + missing, badName},
        {in + dir.file("none.txt"), "Funcao: Abrir|Erro:File not found"},
        {in + dir.file("none.txt"), badName},
        {in + "/dev/full", "Funcao: Gravar TX|Erro:Disk full"},
        {in, "Funcao: Abrir|Erro:Bad file name or number"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_TRUE(reports.empty());
}

// A device that would hold a write for ever, or is missing: each send ends within the stall limit
// with its box, and the channel still closes. Nothing is made where a device is missing.
TEST_F(FileChannelTest, ADeviceThatTakesNothingFailsTheSendWithinTheStallLimit) {
    platform::SetWriteStallLimit(std::chrono::milliseconds(300));
    test::PtyPair unread;
    unread.fillUntilBlocked();
    const std::string missing = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    const std::string timeout =
        R"(Funcao: Gravar TX\|Erro:Device timeout: nothing taken for 0\.[3-9] s )"
        R"(\([0-9]+ of 1048576 bytes taken in [0-9]\.[0-9] s\))";
    const std::string unavailable = R"(Funcao: Abrir\|Erro:Device unavailable)";
    const std::string notOpen = R"(Funcao: Gravar TX\|Erro:Bad file name or number)";
    const struct {
        std::string path;
        std::vector<std::string> boxes;
    } cases[] = {{unread.slavePath(), {timeout}}, {missing, {unavailable, notOpen}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        boxes.clear();
        const auto start = std::chrono::steady_clock::now();
        writeOnce("O", c.path, std::string(1 << 20, 'x'));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(3));
        ASSERT_EQ(boxes.boxes().size(), c.boxes.size());
        for (std::size_t i = 0; i < c.boxes.size(); ++i) {
            EXPECT_EQ(boxes.boxes()[i].title, "Erro no ficheiro: " + c.path);
            EXPECT_THAT(boxes.boxes()[i].text, ::testing::MatchesRegex(c.boxes[i]));
        }
        EXPECT_FALSE(platform::FileIsOpen(1));
    }
    struct stat st {};
    EXPECT_NE(::lstat(missing.c_str(), &st), 0);
    EXPECT_TRUE(reports.empty());
    platform::SetWriteStallLimit({});
}

// Preparing an open channel again takes a new number without closing the first; CanFim closes
// the file of every channel.
TEST_F(FileChannelTest, CanFimClosesTheFileOfEveryChannel) {
    CanFicPrp(1, "O", dir.file("a.txt"), "");
    CanFicAbr(1);
    CanFicPrp(1, "O", dir.file("b.txt"), "");
    EXPECT_EQ(CanTab()[1].modoAct, "");
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 2);
    CanFicPrp(3, "A", dir.file("c.txt"), "");
    CanFicAbr(3);
    CanFicGrv(3, "end", 1);
    CanFim();
    EXPECT_FALSE(platform::FileIsOpen(2) || platform::FileIsOpen(3));
    EXPECT_TRUE(platform::FileIsOpen(1));  // left behind by the second preparation
    EXPECT_EQ(dir.read("c.txt"), "end\r\n");
}

}  // namespace
}  // namespace lumbra
