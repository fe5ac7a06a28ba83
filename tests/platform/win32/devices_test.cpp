#include <windows.h>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "platform/file_handles.h"
#include "platform/stop_signals.h"
#include "platform/write_stall.h"

namespace lumbra::platform {
namespace {

// A device that takes bytes only when the test reads them: the server end of a named pipe with
// a small buffer, whose client end the program opens by name as it would a printer's.
struct PipeDevice {
    explicit PipeDevice(const std::string& which)
        : name("\\\\.\\pipe\\lumbra-" + std::to_string(::GetCurrentProcessId()) + "-" + which),
          server(::CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX,
                                    PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT, 1, 512, 512, 0,
                                    nullptr)) {}
    ~PipeDevice() { ::CloseHandle(server); }
    // Reads until count bytes came, as a slow device takes them; without a count, what it holds.
    std::string read(std::size_t count = 0) {
        std::string bytes;
        char chunk[100];
        DWORD got = 0, waiting = 0;
        while ((count > 0 ? bytes.size() < count
                          : ::PeekNamedPipe(server, nullptr, 0, nullptr, &waiting, nullptr) &&
                                waiting > 0) &&
               ::ReadFile(server, chunk, sizeof chunk, &got, nullptr) != 0)
            bytes.append(chunk, got);
        return bytes;
    }
    const std::string name;
    const HANDLE server;
};

class DevicesTest : public ::testing::Test {
  protected:
    void SetUp() override { SetWriteStallLimit(std::chrono::milliseconds(300)); }
    void TearDown() override {
        FileCloseAll();
        SetWriteStallLimit({});
    }
};

// A device that stops taking bytes fails the write with "Device timeout", saying how far it got;
// what it did not take is dropped, so the next write reaches it alone. A slow device is waited for.
TEST_F(DevicesTest, AStalledDeviceTimesOutDroppingTheRestAndASlowOneIsNeverCutOff) {
    PipeDevice device("stalled");
    ASSERT_EQ(FileOpen(1, device.name, FileMode::Output), 0);
    const std::string text(64 * 1024, 'x');
    EXPECT_EQ(FileWrite(1, text, false), kErrDeviceTimeout);
    EXPECT_TRUE(FileErrText(kErrDeviceTimeout)
                    .starts_with(ErrDescription(kErrDeviceTimeout) +
                                 ": a porta n\xE3o aceitou nenhum byte"))
        << FileErrText(kErrDeviceTimeout);
    const std::string taken = device.read();
    EXPECT_LT(taken.size(), text.size());
    EXPECT_TRUE(taken == std::string(taken.size(), 'x'));
    EXPECT_EQ(FileWrite(1, "end", true), 0);
    EXPECT_EQ(device.read(), "end\r\n");
    // One that keeps taking them is never cut off, however long it takes.
    std::string read;
    std::thread reader([&] { read = device.read(text.size()); });
    const std::int16_t err = FileWrite(1, text, false);
    EXPECT_EQ(FileClose(1), 0);  // a reader still waiting then meets the end
    reader.join();
    EXPECT_EQ(err, 0);
    EXPECT_TRUE(read == text) << read.size() << " bytes came";
}

volatile LONG ownHandlerRan = 0;

BOOL WINAPI OwnHandler(DWORD) {
    ::InterlockedIncrement(&ownHandlerRan);
    return TRUE;
}

// Ctrl+C, recorded as SIGINT is elsewhere, ends a wait for a device: a write after the grace, a
// read of a pipe at its next step. Once the catcher goes, the handlers from before it hear it
// again. The test takes a console of its own, so that its Ctrl+C reaches nobody else (Wine,
// besides, delivers console events only on a console the program made).
TEST_F(DevicesTest, CtrlCEndsWritesAndReadsThatWaitThenGoesToTheHandlersBeforeTheCatcher) {
    SetWriteStallLimit(std::chrono::milliseconds(60000));
    PipeDevice printer("printer");
    PipeDevice silent("silent");
    ASSERT_EQ(FileOpen(1, printer.name, FileMode::Output), 0);
    ASSERT_EQ(FileOpen(2, silent.name, FileMode::Input), 0);
    // The open never waits for a partner: a pipe that has one already is busy.
    EXPECT_EQ(FileOpen(3, silent.name, FileMode::Input), kErrDeviceUnavailable);
    ::FreeConsole();
    ASSERT_NE(::AllocConsole(), 0);
    ASSERT_NE(::SetConsoleCtrlHandler(OwnHandler, TRUE), 0);
    {
        const StopSignalCatcher catcher;
        EXPECT_FALSE(StopRequested());
        ASSERT_NE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0);
        while (!StopRequested())
            ::Sleep(1);
        EXPECT_EQ(StopSignal(), SIGINT);
        EXPECT_EQ(StopSignalDescriptor(), -1);
        EXPECT_EQ(FileWrite(1, std::string(64 * 1024, 'x'), false), kErrUserInterrupt);
        std::string line = "old";
        EXPECT_EQ(FileReadLine(2, line), kErrUserInterrupt);
        EXPECT_EQ(line, "");
    }
    EXPECT_EQ(ownHandlerRan, 0);
    EXPECT_FALSE(StopRequested());
    ASSERT_NE(::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0);
    while (ownHandlerRan == 0)
        ::Sleep(1);
    ::SetConsoleCtrlHandler(OwnHandler, FALSE);
}

}  // namespace
}  // namespace lumbra::platform
