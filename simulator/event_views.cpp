#include "simulator/event_views.h"

#include <cstdio>

namespace lumbra::sim {
namespace {

const char* DeviceKey(Device device) {
    return device == Device::Printer ? "printer" : "display";
}

const char* DeviceName(Device device) {
    return device == Device::Printer ? "impressora" : "display";
}

std::string Bool(bool b) {
    return b ? "true" : "false";
}

std::string SpansJson(const DeviceEvent& e) {
    std::string out = "[";
    for (const TextSpan& s : e.spans) {
        if (out.size() > 1) out += ',';
        out += "{\"start\":" + std::to_string(s.start + 1) +
               ",\"length\":" + std::to_string(s.length) + ",\"bold\":" + Bool(s.bold) +
               ",\"double_width\":" + Bool(s.doubleWidth) +
               ",\"double_height\":" + Bool(s.doubleHeight) + "}";
    }
    return out + "]";
}

// "negrito 1-5, largura dupla 7-9": where the line's print modes apply, by character from 1.
std::string SpansText(const DeviceEvent& e) {
    std::string out;
    for (const TextSpan& s : e.spans) {
        std::string modes;
        auto add = [&modes](bool on, const char* name) {
            if (!on) return;
            if (!modes.empty()) modes += " e ";
            modes += name;
        };
        add(s.bold, "negrito");
        add(s.doubleWidth, "largura dupla");
        add(s.doubleHeight, "altura dupla");
        if (!out.empty()) out += ", ";
        out += modes + " " + std::to_string(s.start + 1) + "-" + std::to_string(s.start + s.length);
    }
    return out;
}

std::string ScreenText(const DeviceEvent& e) {
    std::string bar;
    for (int i = 0; i < kDisplayColumns; ++i)
        bar += "\u2500";
    std::string out = "display: cursor na linha " + std::to_string(e.row) + ", coluna " +
                      std::to_string(e.column) + (e.cursorVisible ? "" : " (escondido)") + "\n";
    out += "  \u250C" + bar + "\u2510\n";
    for (const std::string& line : e.lines)
        out += "  \u2502" + line + "\u2502\n";
    out += "  \u2514" + bar + "\u2518";
    return out;
}

}  // namespace

std::string JsonString(const std::string& text) {
    std::string out = "\"";
    for (char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (u < 0x20) {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\u%04X", u);
            out += esc;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

std::string HexBytes(const std::string& bytes) {
    std::string out;
    for (char c : bytes) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned char>(c));
        if (!out.empty()) out += ' ';
        out += hex;
    }
    return out;
}

std::string EventJson(const DeviceEvent& e) {
    std::string out = "{\"device\":\"" + std::string(DeviceKey(e.device)) + "\",\"event\":";
    switch (e.kind) {
        case EventKind::Line:
            out += "\"line\",\"text\":" + JsonString(e.text);
            if (!e.spans.empty()) out += ",\"spans\":" + SpansJson(e);
            break;
        case EventKind::Cut:
            out += "\"cut\"";
            if (e.partialCut) out += ",\"partial\":true";
            break;
        case EventKind::Drawer:
            out += "\"drawer\",\"pin\":" + std::to_string(e.pin) +
                   ",\"on_ms\":" + std::to_string(e.onMs) +
                   ",\"off_ms\":" + std::to_string(e.offMs);
            break;
        case EventKind::Unknown:
            out += "\"unknown\",\"bytes\":" + JsonString(HexBytes(e.bytes));
            if (e.moreBytes > 0) out += ",\"more_bytes\":" + std::to_string(e.moreBytes);
            break;
        case EventKind::Screen:
            out += "\"screen\",\"lines\":[" + JsonString(e.lines[0]) + "," +
                   JsonString(e.lines[1]) + "],\"cursor\":[" + std::to_string(e.row) + "," +
                   std::to_string(e.column) + "]";
            if (!e.cursorVisible) out += ",\"cursor_visible\":false";
            break;
        case EventKind::Settings:
            out += "\"settings\",\"expected\":" + JsonString(e.expected) +
                   ",\"actual\":" + JsonString(e.actual);
            break;
    }
    return out + "}";
}

std::string EventText(const DeviceEvent& e) {
    const std::string device = DeviceName(e.device);
    switch (e.kind) {
        case EventKind::Line: {
            std::string out = "impressora: \u2502" + e.text;
            if (!e.spans.empty()) out += "  (" + SpansText(e) + ")";
            return out;
        }
        case EventKind::Cut:
            return e.partialCut ? "impressora: \u2702 corte parcial do papel"
                                : "impressora: \u2702 corte do papel";
        case EventKind::Drawer:
            return "gaveta: impulso no pino " + std::to_string(e.pin) + ", " +
                   std::to_string(e.onMs) + " ms ligado, " + std::to_string(e.offMs) +
                   " ms desligado";
        case EventKind::Unknown:
            return device + ": comando desconhecido: " + HexBytes(e.bytes) +
                   (e.moreBytes > 0 ? " e mais " + std::to_string(e.moreBytes) + " bytes" : "");
        case EventKind::Screen:
            return ScreenText(e);
        case EventKind::Settings:
            return device + ": o dispositivo espera " + e.expected + "; a porta foi aberta a " +
                   e.actual;
    }
    return {};
}

}  // namespace lumbra::sim
