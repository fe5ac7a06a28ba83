// The pieces of lumbractl that ask Windows: why a parameter file cannot be read, and whether a
// port can be opened (the test prefix points every COM port at nothing).

#include <gtest/gtest.h>

#include <string>

#include "tests/support/temp_dir.h"
#include "tools/parameter_file_check.h"
#include "tools/serial_port_list.h"

namespace lumbra::ctl {
namespace {

TEST(LumbractlParameterFile, SaysWhyAFileCannotBeRead) {
    const test::TempDir dir;
    dir.write("ok.par", "x");
    const struct {
        std::string path, reason;
    } cases[] = {
        {dir.file("ok.par"), ""},
        {dir.file("falta.par"), "n\xE3o existe"},
        {dir.file("falta\\x.par"), "n\xE3o existe"},
        {dir.path(), "\xE9 uma pasta"},
        {"NUL", "\xE9 um dispositivo, n\xE3o um ficheiro"},
        {"\\\\.\\COM9", "\xE9 um dispositivo, n\xE3o um ficheiro"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(UnreadableReason(c.path), c.reason) << c.path;
    EXPECT_FALSE(ScanParameterFile("NUL").utf8);  // never read: not a regular file
}

}  // namespace
}  // namespace lumbra::ctl
