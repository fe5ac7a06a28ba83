#pragma once
// The events of the virtual devices as text: one JSON object per event for scripts (English keys,
// UTF-8), and the Portuguese lines a technician reads in a terminal.

#include <string>

#include "simulator/device_event.h"

namespace lumbra::sim {

// {"device":"printer","event":"drawer","pin":2,"on_ms":50,"off_ms":500}, without a line end; a
// long run of unknown bytes: {"device":"display","event":"unknown","bytes":"00 00 ...",
// "more_bytes":20971456}.
std::string EventJson(const DeviceEvent& event);

// "gaveta: impulso no pino 2, 50 ms ligado, 500 ms desligado"; the display's screen is its two
// rows in a frame, over several lines. Ends without a line end.
std::string EventText(const DeviceEvent& event);

// text as a JSON string, quotes included; text is UTF-8.
std::string JsonString(const std::string& text);

// "1B 74 10".
std::string HexBytes(const std::string& bytes);

}  // namespace lumbra::sim
