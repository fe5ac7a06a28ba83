#pragma once
// The options both fronts of the virtual devices take (lumbractl simular and lumbra-simulador):
// which port numbers they stand for, the line speed they expect and the display's character set.

#include <map>
#include <string>

#include "simulator/code_page.h"
#include "simulator/line_settings.h"

namespace lumbra::sim {

struct DeviceOptions {
    int printerPort = 1;
    int displayPort = 2;
    LineSettings expected;
    CodePage displayCharset = CodePage::Windows1252;
};

// Reads "--impressora", "--display", "--velocidade" and "--pagina-display" from values (absent
// ones keep their defaults). False with the reason, in Portuguese and UTF-8, in error.
bool ReadDeviceOptions(const std::map<std::string, std::string>& values, DeviceOptions& options,
                       std::string& error);

}  // namespace lumbra::sim
