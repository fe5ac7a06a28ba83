#include "channels/serial_settings.h"

#include <algorithm>
#include <vector>

namespace lumbra {
namespace {

std::string TrimSpaces(const std::string& tx) {
    const auto first = tx.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    const auto last = tx.find_last_not_of(' ');
    return tx.substr(first, last - first + 1);
}

std::vector<std::string> Fields(const std::string& text) {
    std::vector<std::string> fields;
    std::string::size_type start = 0;
    while (true) {
        const auto comma = text.find(',', start);
        fields.push_back(TrimSpaces(text.substr(start, comma - start)));
        if (comma == std::string::npos) break;
        start = comma + 1;
    }
    return fields;
}

bool AllDigits(const std::string& tx) {
    return !tx.empty() &&
           std::all_of(tx.begin(), tx.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string RateList() {
    std::string list;
    for (std::size_t i = 0; i < kStandardBaudRates.size(); ++i) {
        if (i > 0) list += (i + 1 == kStandardBaudRates.size()) ? " ou " : ", ";
        list += std::to_string(kStandardBaudRates[i]);
    }
    return list;
}

std::string UnsupportedRate(const std::string& rate) {
    return "Velocidade " + rate + " n\xE3o suportada: use " + RateList();
}

}  // namespace

bool ParseSerialSettings(const std::string& text, SerialSettings& settings, std::string& error) {
    const std::string malformed = "Configura\xE7\xE3o inv\xE1lida \"" + text +
                                  "\": use velocidade,paridade,dados,paragem como 9600,n,8,1";
    const std::vector<std::string> f = Fields(text);
    if (f.size() != 4 || !AllDigits(f[0]) || f[1].size() != 1 || f[2].size() != 1) {
        error = malformed;
        return false;
    }

    SerialSettings read;
    // Longer than any rate: compare as text first, so a long digit run cannot overflow.
    if (f[0].size() > 6) {
        error = UnsupportedRate(f[0]);
        return false;
    }
    read.baud = std::stoi(f[0]);
    if (std::find(kStandardBaudRates.begin(), kStandardBaudRates.end(), read.baud) ==
        kStandardBaudRates.end()) {
        error = UnsupportedRate(f[0]);
        return false;
    }

    switch (f[1][0]) {
        case 'n':
        case 'N':
            read.parity = SerialParity::None;
            break;
        case 'e':
        case 'E':
            read.parity = SerialParity::Even;
            break;
        case 'o':
        case 'O':
            read.parity = SerialParity::Odd;
            break;
        case 'm':
        case 'M':
            read.parity = SerialParity::Mark;
            break;
        case 's':
        case 'S':
            read.parity = SerialParity::Space;
            break;
        default:
            error = malformed;
            return false;
    }

    if (f[2][0] < '4' || f[2][0] > '8') {
        error = malformed;
        return false;
    }
    read.dataBits = static_cast<std::int16_t>(f[2][0] - '0');

    if (f[3] == "1") {
        read.stopBits = SerialStopBits::One;
    } else if (f[3] == "1.5") {
        read.stopBits = SerialStopBits::OneAndHalf;
    } else if (f[3] == "2") {
        read.stopBits = SerialStopBits::Two;
    } else {
        error = malformed;
        return false;
    }

    settings = read;
    return true;
}

bool SettingsDeviceCanUse(const SerialSettings& settings, std::string& error) {
    if (settings.dataBits < 5) {
        error =
            std::to_string(settings.dataBits) + " bits de dados n\xE3o suportados pelo dispositivo";
        return false;
    }
    if (settings.stopBits == SerialStopBits::OneAndHalf && settings.dataBits != 5) {
        error = "1,5 bits de paragem exigem 5 bits de dados";
        return false;
    }
    if (settings.stopBits == SerialStopBits::Two && settings.dataBits == 5) {
        error = "2 bits de paragem n\xE3o servem com 5 bits de dados (use 1,5)";
        return false;
    }
    return true;
}

}  // namespace lumbra
