#include "tools/standalone_commands.h"

#include <cstdio>

#include "app/LumbraCnv.h"
#include "tools/exit_status.h"
#include "tools/serial_port_list.h"
#include "tools/tool_text.h"

namespace lumbra::ctl {

int RunConverter(const OptionTexts& texts) {
    std::string answer;
    if (const auto dec = texts.find("--dec"); dec != texts.end())
        CnvDecHex(dec->second, answer);
    else
        CnvHexDec(texts.at("--hex"), answer);
    PrintLine(stdout, answer);
    return kExitOk;
}

int RunPortas() {
    for (const std::string& line : SerialPortLines()) {
        std::fputs(line.c_str(), stdout);
        std::fputc('\n', stdout);
    }
    std::fflush(stdout);
    return kExitOk;
}

}  // namespace lumbra::ctl
