#pragma once
// Which device a serial port number stands for, and why a device cannot be used, in words a
// technician can act on.

#include <cstdint>
#include <string>

namespace lumbra {

// The device of port n (1..9): the word after the switch "-COMn" (either case) in the command
// line, or /dev/ttyS(n-1) when the switch is absent or has no word after it.
std::string SerialDevicePath(std::int16_t port, const std::string& commandLine);

// Paths here are the program's Windows-1252 text, turned into the host's form for the system.

// "Port 2 (/dev/ttyS1)": how the descriptions below name a port.
std::string PortLabel(std::int16_t port, const std::string& path);

// Checks the device node before an open is tried: "" when it exists and this user may read and
// write it; otherwise that it does not exist, that it is not a device, or that the user lacks the
// rights, naming the group that owns the device when joining that group would give them.
std::string DeviceAccessProblem(std::int16_t port, const std::string& path);

}  // namespace lumbra
