#pragma once
// What a virtual device did, as its decoder reports it. One type for both devices, so that the
// views (JSON lines, the terminal, the window) handle a single stream of events in order.

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace lumbra::sim {

enum class Device { Printer, Display };

enum class EventKind {
    Line,      // the printer printed a line
    Cut,       // the printer cut the paper
    Drawer,    // the printer pulsed a cash-drawer pin
    Unknown,   // bytes the device does not understand, skipped (a run of them is one event)
    Screen,    // the display's state after a burst of bytes
    Settings,  // the port was opened with settings the device does not expect
};

// A run of characters of a printed line in a print mode other than plain.
struct TextSpan {
    std::size_t start = 0;  // first character, counted from 0
    std::size_t length = 0;
    bool bold = false;
    bool doubleWidth = false;
    bool doubleHeight = false;
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

// An unknown run carries its first bytes only, and counts the rest: a flood of garbage costs no
// more memory than a short one.
inline constexpr std::size_t kUnknownBytesKept = 64;

inline constexpr int kDisplayRows = 2;
inline constexpr int kDisplayColumns = 20;

struct DeviceEvent {
    Device device = Device::Printer;
    EventKind kind = EventKind::Unknown;

    std::string text;             // Line: the plain characters, UTF-8
    std::vector<TextSpan> spans;  // Line: the characters printed in a mode
    bool partialCut = false;      // Cut
    int pin = 0;                  // Drawer: connector pin 2 or 5
    int onMs = 0;                 // Drawer: pulse on
    int offMs = 0;                // Drawer: pulse off
    std::string bytes;            // Unknown: the first kUnknownBytesKept bytes as they arrived
    std::size_t moreBytes = 0;    // Unknown: how many bytes came after those

    std::array<std::string, kDisplayRows> lines;  // Screen: each row's 20 cells, UTF-8
    int row = 1;                                  // Screen: cursor, from 1
    int column = 1;
    bool cursorVisible = true;

    std::string expected;  // Settings: "9600,n,8,1"
    std::string actual;
};

}  // namespace lumbra::sim
