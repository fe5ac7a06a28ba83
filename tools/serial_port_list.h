#pragma once
// "lumbractl portas": the serial ports this machine offers, and whether the user running the tool
// may open each of them.

#include <string>
#include <vector>

namespace lumbra::ctl {

// Whether this user may open the device at path (UTF-8), in one phrase: "pode abrir", or why not
// and, for a device its group may use, the group to join. Windows-1252.
std::string PortAccess(const std::string& path);

// The ports, one block of lines each (UTF-8, no line ends): the device path, then description,
// manufacturer, serial number and USB vendor:product where known, then the access. One line saying
// so when there is no port.
std::vector<std::string> SerialPortLines();

}  // namespace lumbra::ctl
