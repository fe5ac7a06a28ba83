#include "simulator/device_options.h"

#include <algorithm>
#include <cctype>

namespace lumbra::sim {
namespace {

// The slowest and fastest rates a line speed may be given: what serial drivers take.
constexpr long long kSlowest = 50;
constexpr long long kFastest = 4000000;

bool ReadPort(const std::map<std::string, std::string>& values, const char* name, int& port) {
    const auto it = values.find(name);
    if (it == values.end()) return true;
    const std::string& v = it->second;
    if (v.size() != 1 || v[0] < '1' || v[0] > '9') return false;
    port = v[0] - '0';
    return true;
}

}  // namespace

bool ReadDeviceOptions(const std::map<std::string, std::string>& values, DeviceOptions& options,
                       std::string& error) {
    if (!ReadPort(values, "--impressora", options.printerPort) ||
        !ReadPort(values, "--display", options.displayPort)) {
        error = "--impressora e --display levam uma porta de 1 a 9";
        return false;
    }
    if (options.printerPort == options.displayPort) {
        error = "a impressora e o display precisam de portas diferentes";
        return false;
    }
    if (const auto it = values.find("--velocidade"); it != values.end()) {
        const std::string& v = it->second;
        const bool digits =
            !v.empty() && v.size() <= 7 && std::all_of(v.begin(), v.end(), [](char c) {
                return std::isdigit(static_cast<unsigned char>(c)) != 0;
            });
        const long long baud = digits ? std::stoll(v) : 0;
        if (baud < kSlowest || baud > kFastest) {
            error = "--velocidade leva uma velocidade de 50 a 4000000: " + v;
            return false;
        }
        options.expected.baud = baud;
    }
    if (const auto it = values.find("--pagina-display");
        it != values.end() && !CodePageFromNumber(it->second, options.displayCharset)) {
        error = "--pagina-display leva 1252, 437, 850 ou 860";
        return false;
    }
    return true;
}

}  // namespace lumbra::sim
