#pragma once
// The character format of a serial line (data bits, parity, stop bits, no flow control) in the
// terms of the terminal driver.

#include <termios.h>

#include "channels/serial_settings.h"

namespace lumbra {

// Writes the format of settings into tio's flags and leaves every other flag (speed, raw mode) as
// it is. With 5 data bits the driver's two stop bits are 1.5 on the line.
void SetLineFormat(termios& tio, const SerialSettings& settings);

// Whether the driver took the format: tio as read back after SetLineFormat. A pseudo-terminal has
// no line and always keeps 8 data bits without parity, so there only the stop bits count.
bool LineFormatTaken(const termios& tio, const SerialSettings& settings, bool pseudoTerminal);

// Whether fd is the slave side of a pseudo-terminal.
bool IsPseudoTerminal(int fd);

}  // namespace lumbra
