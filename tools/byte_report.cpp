#include "tools/byte_report.h"

#include <cstdio>

#include "platform/host_text.h"
#include "tools/tool_console.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {

std::string ByteReportLine(const CanReg& channel, std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex;
    hex.reserve(bytes.size() * 3);
    for (char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (!hex.empty()) hex += ' ';
        hex += kDigits[b >> 4];
        hex += kDigits[b & 0x0F];
    }
    return platform::ToHostText(channel.fic) + ": " + hex;
}

ByteReporter::ByteReporter() {
    SetChannelWriteObserver([](const CanReg& channel, std::string_view bytes) {
        // The bytes line must not run into a progress line on the same terminal.
        EndStatusLine();
        WriteText(stdout, ByteReportLine(channel, bytes) + "\n");
    });
}

ByteReporter::~ByteReporter() {
    SetChannelWriteObserver({});
}

}  // namespace lumbra::ctl
