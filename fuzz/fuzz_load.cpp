// A whole parameter file loaded as the program loads it: opened, walked zone by zone, every
// record of an IDE zone asked for and split, the lines of a TX zone taken, the DEF zone's options
// read, and closed. Whatever the file holds, the walk ends, counts stay within 0..32767, no record
// holds more than the file did, and no numbered file is left open.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "options/TdaOpc.h"
#include "platform/file_handles.h"
#include "tests/support/recording_msg_sink.h"
#include "util/text/variant.h"

namespace {

void Check(bool holds) {
    if (!holds) __builtin_trap();
}

// The folder of the input file: memory (/dev/shm) where there is one. On a disk, truncating and
// rewriting the file for every input waits for the disk, and the run tries a tenth of the inputs.
std::filesystem::path InputFolder() {
    std::error_code ec;
    if (std::filesystem::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0)
        return "/dev/shm";
    return std::filesystem::temp_directory_path();
}

// The one file every input is written to, removed when the run ends.
class InputFile {
  public:
    InputFile()
        : path_((InputFolder() / ("lumbra-fuzz-load-" + std::to_string(::getpid()) + ".par"))
                    .string()) {}
    ~InputFile() {
        std::error_code ec;
        std::filesystem::remove(path_, ec);
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    const std::string& write(const std::uint8_t* data, std::size_t size) {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        return path_;
    }

  private:
    std::string path_;
};

void ReadIdeZone(lumbra::TdaOpc& opc, const std::string& ide, std::int16_t cnt,
                 std::size_t fileSize) {
    for (int r = 1; r <= cnt; ++r) {
        std::string txp;
        std::int16_t exi = 0;
        opc.MemConTxp(lumbra::Variant(static_cast<std::int16_t>(r)), txp, exi);
        Check(exi == 1 && txp.size() <= fileSize);
        std::string txi;
        std::string name;
        std::string vtx;
        std::int16_t ptx = 0;
        opc.ParPrep(txp, txi, name, vtx, ptx);
        Check(ptx >= 0);
    }
    if (ide == "DEF") {
        for (const char* key : {"DbgModo", "DirBas", "DirDiv", "DirTmp", "DirOpc"}) {
            std::string path;
            opc.OpcPath(key, path);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static InputFile file;
    const std::string& fic = file.write(data, size);
    lumbra::test::RecordingMsgSink sink;
    try {
        lumbra::TdaOpc opc;
        opc.ZonIni(fic);
        std::string ide;
        std::string tip;
        std::string txi;
        std::int16_t cnt = 0;
        opc.ZonSeg(ide, tip, cnt, txi);
        while (!ide.empty()) {
            Check(cnt >= 0);
            if (tip == "TX") {
                std::vector<std::string> lines;
                opc.ZonArr("TX", cnt, lines);
                Check(lines.size() == static_cast<std::size_t>(cnt) + 1);
            } else {
                ReadIdeZone(opc, ide, cnt, size);
            }
            opc.ZonSeg(ide, tip, cnt, txi);
        }
        opc.ZonFim();
    } catch (const lumbra::platform::ProgramEnded&) {
        // The file it was given could not be opened: the engine's own ending, not a crash.
    }
    Check(lumbra::platform::FreeFile() == 1);
    return 0;
}
