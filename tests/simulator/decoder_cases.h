#pragma once
// Feeds a decoder a byte string whole, or cut in two at a given byte, and collects what it reported
// as JSON lines, so that a case states the device's behaviour in the same words scripts read.

#include <string>
#include <string_view>

#include "simulator/display_decoder.h"
#include "simulator/event_views.h"
#include "simulator/printer_decoder.h"

namespace lumbra::sim::test {

// The JSON lines of the events, each ending in "\n".
template <typename Events>
std::string Lines(const Events& events) {
    std::string out;
    for (const DeviceEvent& e : events)
        out += EventJson(e) + "\n";
    return out;
}

// What a fresh printer reports for bytes, fed in two pieces cut at cut (whole when cut is 0).
inline std::string PrinterRun(std::string_view bytes, std::size_t cut = 0) {
    PrinterDecoder printer;
    std::string out = Lines(printer.feed(bytes.substr(0, cut)));
    return out + Lines(printer.feed(bytes.substr(cut)));
}

// The same for a display: its skipped commands, then its screen.
inline std::string DisplayRun(std::string_view bytes, std::size_t cut = 0,
                              CodePage charset = CodePage::Windows1252) {
    DisplayDecoder display(charset);
    std::string out = Lines(display.feed(bytes.substr(0, cut)));
    out += Lines(display.feed(bytes.substr(cut)));
    return out + EventJson(display.screen()) + "\n";
}

}  // namespace lumbra::sim::test
