#pragma once
// Why a device node cannot serve as a serial port, in words a technician can act on, asked before
// an open is tried.

#include <cstdint>
#include <string>

namespace lumbra {

// "" when the device node at path (the program's Windows-1252 text) exists and this user may read
// and write it; otherwise that it does not exist, that it is not a device, or that the user lacks
// the rights, naming the group that owns the device when joining that group would give them.
std::string DeviceAccessProblem(std::int16_t port, const std::string& path);

}  // namespace lumbra
