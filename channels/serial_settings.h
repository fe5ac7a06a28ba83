#pragma once
// The settings text of a serial port, "baud,parity,data,stop" ("9600,n,8,1"), read into its parts.
// Reading checks the form and the rate; whether a device can do what the text asks is a second
// question (SettingsDeviceCanUse), asked when the settings reach the device.

#include <array>
#include <cstdint>
#include <string>

namespace lumbra {

enum class SerialParity { None, Even, Odd, Mark, Space };
enum class SerialStopBits { One, OneAndHalf, Two };

struct SerialSettings {
    std::int32_t baud = 9600;
    SerialParity parity = SerialParity::None;
    std::int16_t dataBits = 8;
    SerialStopBits stopBits = SerialStopBits::One;

    friend bool operator==(const SerialSettings&, const SerialSettings&) = default;
};

// The rates a port accepts: the serial control's published list with the rates every PC UART
// has, from 110 to 256000 baud.
inline constexpr std::array<std::int32_t, 16> kStandardBaudRates = {
    110,   300,   600,   1200,  2400,  4800,   9600,   14400,
    19200, 28800, 38400, 56000, 57600, 115200, 128000, 256000};

// Reads text as four fields separated by ",": a rate of kStandardBaudRates, a parity letter (n,
// e, o, m or s, either case), 4 to 8 data bits, and 1, 1.5 or 2 stop bits. Blanks around a field
// are allowed. On failure returns false, leaves settings unchanged and says why in error.
bool ParseSerialSettings(const std::string& text, SerialSettings& settings, std::string& error);

// Whether a serial device on this system can run with these settings: 4 data bits do not exist
// here, and the line has 1.5 stop bits exactly when it has 5 data bits and asks for more than one
// stop bit (so 1.5 needs 5 data bits and 2 needs 6 or more). False with the reason in error.
bool SettingsDeviceCanUse(const SerialSettings& settings, std::string& error);

}  // namespace lumbra
