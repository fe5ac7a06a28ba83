#include <sys/stat.h>
#include <unistd.h>

#include "tests/channels/channel_fixture.h"

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
        std::int16_t modoNum;  // 9 = kept from the previous open
        std::int16_t nl;
        const char* content;  // after writing "new" over "old"
    } cases[] = {{"O", 0, 1, "new\r\n"},
                 {"O:5", 5, -1, "new"},
                 {"A", 0, 1, "oldnew\r\n"},
                 {"B", 9, 0, "old"},
                 {"", 9, 0, "old"}};
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
        EXPECT_EQ(r.modo, Variant(c.modo));
        EXPECT_EQ(r.modoAct, c.modo);
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
    // Opening again in the same mode keeps the file and its number; CanFim closes it.
    CanFicPrp(1, "O", path, "");
    CanFicAbr(1);
    CanFicGrv(1, "kept", 0);
    CanFicAbr(1);
    EXPECT_EQ(CanTab()[1].num, 1);
    CanFim();
    EXPECT_FALSE(platform::FileIsOpen(1));
    EXPECT_EQ(dir.read("f.txt"), "kept");
}

// A failed open leaves the channel looking open until closed; failed writes report nothing as
// gone out; nothing is made where a device is missing.
TEST_F(FileChannelTest, FailuresAreShownUnderTheirFunction) {
    const std::string missing = dir.file("missing/f.txt");
    CanFicPrp(1, "O", missing, "");
    CanFicAbr(1);
    EXPECT_TRUE(CanTab()[1].modoAct == "O" && CanTab()[1].num == 1);
    CanFicAbr(1);
    CanFicGrv(1, "lost", 1);
    CanFicFec(1);
    EXPECT_TRUE(CanTab()[1].modoAct.empty() && CanTab()[1].num == 0);
    writeOnce("A", "/dev/full", "x", 1);
    const std::string gone = "/dev/lumbra-sem-dispositivo-" + std::to_string(::getpid());
    writeOnce("O", gone, "x");
    CanFicPrp(2, "O", "", "");
    CanFicAbr(2);
    const std::string in = "Erro no ficheiro: ";
    const std::string badName = "Funcao: Gravar TX|Erro:Bad file name or number";
    const std::vector<test::RecordedBox> want = {
        {in + missing, "Funcao: Abrir|Erro:Path not found"},
        {in + missing, badName},
        {in + "/dev/full", "Funcao: Gravar TX|Erro:Disk full"},
        {in + gone, "Funcao: Abrir|Erro:Device unavailable"},
        {in + gone, badName},
        {in, "Funcao: Abrir|Erro:Bad file name or number"}};
    EXPECT_EQ(boxes.boxes(), want);
    EXPECT_TRUE(reports.empty());
    struct stat st {};
    EXPECT_NE(::lstat(gone.c_str(), &st), 0);
}

}  // namespace
}  // namespace lumbra
