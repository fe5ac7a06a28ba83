#pragma once
// Which device a serial port number stands for, and how the descriptions of its failures name it.

#include <cstdint>
#include <string>

namespace lumbra {

// The device of port n (1..9): the word after the switch "-COMn" (either case) in the command
// line, or DefaultSerialDevice(n) when the switch is absent or has no word after it.
std::string SerialDevicePath(std::int16_t port, const std::string& commandLine);

// The device port n names by itself: /dev/ttyS(n-1) on Linux, COMn on Windows.
std::string DefaultSerialDevice(std::int16_t port);

// "Porta 2 (/dev/ttyS1)": how the descriptions of a port's failures name it.
std::string PortLabel(std::int16_t port, const std::string& path);

}  // namespace lumbra
