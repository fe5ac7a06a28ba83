#pragma once
// The line is set before the port opens, so that it keeps the program's settings after the port
// closes. QSerialPort puts back on close whatever settings it found at open; setting the line
// first makes that the program's own, as the original serial control leaves a port: the next
// program, or a device listening at the far end of a pseudo-terminal, sees the line as it was
// used.

#include <string>

#include "channels/serial_settings.h"

namespace lumbra {

// Opens hostPath briefly and sets its speed and character format. Does nothing when the device
// cannot be opened or set: the port's own open reports what is wrong.
void PresetLine(const std::string& hostPath, const SerialSettings& settings);

}  // namespace lumbra
