#include "tools/standalone_commands.h"

#include <cstdio>

#include "app/LumbraCnv.h"
#include "tools/exit_status.h"
#include "tools/serial_port_list.h"
#include "tools/tool_console.h"
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
    std::string text;
    for (const std::string& line : SerialPortLines())
        text += line + "\n";
    WriteText(stdout, text);
    return kExitOk;
}

}  // namespace lumbra::ctl
