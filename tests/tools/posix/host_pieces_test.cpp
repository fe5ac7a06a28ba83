// The pieces of lumbractl that ask this Linux host: who may open a device, who may read a file.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/support/pty_pair.h"
#include "tests/support/temp_dir.h"
#include "tests/support/unprivileged.h"
#include "tools/parameter_file_check.h"
#include "tools/serial_port_list.h"

namespace lumbra::ctl {
namespace {

TEST(LumbractlPortAccess, SaysWhoMayOpenTheDevice) {
    test::PtyPair pty;
    EXPECT_EQ(PortAccess(pty.slavePath()), "pode abrir");
    EXPECT_EQ(PortAccess("/nada/tty").rfind("n\xE3o pode abrir: ", 0), 0u);

    // A device of the group "dialout" (or whichever group the file gets), readable by its group
    // only, seen by an ordinary user.
    test::TempDir dir;
    ::chmod(dir.path().c_str(), 0755);
    dir.write("tty", "");
    const std::string tty = dir.file("tty");
    ::chmod(tty.c_str(), 0660);
    const int groupOnly = test::RunUnprivileged(
        [&] { return PortAccess(tty).rfind("sem permiss\xE3o: junte-se ao grupo \"", 0) == 0; });
    ::chmod(tty.c_str(), 0600);
    const int ownerOnly = test::RunUnprivileged([&] {
        return PortAccess(tty) == "sem permiss\xE3o: s\xF3 o dono do dispositivo o pode abrir";
    });
    if (groupOnly == test::kCannotDropRoot) GTEST_SKIP() << "cannot give up root";
    EXPECT_EQ(groupOnly, 1);
    EXPECT_EQ(ownerOnly, 1);
}

TEST(LumbractlParameterFile, SaysWhenTheUserMayNotReadIt) {
    test::TempDir dir;
    ::chmod(dir.path().c_str(), 0755);
    dir.write("fechado.par", "x");
    ::chmod(dir.file("fechado.par").c_str(), 0200);
    const int refused = test::RunUnprivileged(
        [&] { return UnreadableReason(dir.file("fechado.par")) == "sem permiss\xE3o de leitura"; });
    if (refused == test::kCannotDropRoot) GTEST_SKIP() << "cannot give up root";
    EXPECT_EQ(refused, 1);
}

}  // namespace
}  // namespace lumbra::ctl
