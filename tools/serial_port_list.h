#pragma once
// "lumbractl portas": the serial ports this machine offers, and on Linux whether the user running
// the tool may open each of them (from the device's owner and group, without opening it). Windows
// can only tell by opening a port, which would raise its control lines under a device another
// program drives: there the listing names the ports and never opens one. Each host finds its
// ports its own way (posix/, win32/).

#include <string>
#include <vector>

namespace lumbra::ctl {

// Linux: whether this user may open the device at name (UTF-8, such as /dev/ttyS0), in one phrase:
// "pode abrir", or why not and, for a device its group may use, the group to join. Windows-1252.
std::string PortAccess(const std::string& name);

// The ports, one block of lines each (UTF-8, no line ends): the device path or port name, then
// description, manufacturer, serial number and USB vendor:product where known, then (Linux) the
// access. One line saying so when there is no port.
std::vector<std::string> SerialPortLines();

}  // namespace lumbra::ctl
