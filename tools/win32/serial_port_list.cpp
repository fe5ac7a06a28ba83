#include "tools/serial_port_list.h"

#include <windows.h>
// After windows.h, which it builds on.
#include <setupapi.h>

#include <map>
#include <string>
#include <vector>

#include "platform/host_text.h"
#include "platform/win32/wide_text.h"

namespace lumbra::ctl {
namespace {

// The device manager's class "Ports (COM & LPT)".
constexpr GUID kPortsClass = {
    0x4d36e978, 0xe325, 0x11ce, {0xbf, 0xc1, 0x08, 0x00, 0x2b, 0xe1, 0x03, 0x18}};

struct Port {
    std::string description;
    std::string manufacturer;
};

// Ports by number, so that COM2 comes before COM10; the name itself is "COM" and the number.
using Ports = std::map<int, Port>;

// The number of a port name "COMn", 0 for any other name.
int PortNumber(std::wstring_view name) {
    if (name.size() < 4 || name.size() > 6) return 0;
    for (std::size_t i = 0; i < 3; ++i) {
        if ((name[i] & ~0x20) != L"COM"[i]) return 0;
    }
    int n = 0;
    for (const wchar_t c : name.substr(3)) {
        if (c < L'0' || c > L'9') return 0;
        n = n * 10 + (c - L'0');
    }
    return n;
}

// Windows' texts in the tool's UTF-8, through the one codec.
std::string Utf8(std::wstring_view wide) {
    return platform::ToHostText(platform::FromWide(wide));
}

// A text of the registry as it is stored, which need not end in a NUL.
std::wstring StoredText(const std::vector<BYTE>& data, DWORD size) {
    std::wstring text(reinterpret_cast<const wchar_t*>(data.data()), size / sizeof(wchar_t));
    while (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return text;
}

// The serial ports Windows has started: the registry's map of them, one value per port whose data
// is the port's name.
void AddMappedPorts(Ports& ports) {
    HKEY key = nullptr;
    if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ,
                        &key) != ERROR_SUCCESS)
        return;
    std::vector<wchar_t> name(256);
    std::vector<BYTE> data(512);
    for (DWORD i = 0;; ++i) {
        auto nameSize = static_cast<DWORD>(name.size());
        auto dataSize = static_cast<DWORD>(data.size());
        DWORD type = 0;
        const LONG got =
            ::RegEnumValueW(key, i, name.data(), &nameSize, nullptr, &type, data.data(), &dataSize);
        if (got == ERROR_MORE_DATA) continue;  // no port's name is that long
        if (got != ERROR_SUCCESS) break;
        if (type != REG_SZ) continue;
        if (const int n = PortNumber(StoredText(data, dataSize)); n > 0) ports[n];
    }
    ::RegCloseKey(key);
}

std::string DeviceProperty(HDEVINFO set, SP_DEVINFO_DATA& device, DWORD property) {
    std::vector<BYTE> data(1024);
    DWORD type = 0;
    DWORD size = 0;
    if (::SetupDiGetDeviceRegistryPropertyW(set, &device, property, &type, data.data(),
                                            static_cast<DWORD>(data.size()), &size) == 0 ||
        type != REG_SZ)
        return {};
    return Utf8(StoredText(data, size));
}

// What the device manager says of each port it has: its friendly name and its maker, found by
// the port name its device key holds. A port it shows is added, should the map lack it.
void AddDeviceNames(Ports& ports) {
    const HDEVINFO set = ::SetupDiGetClassDevsW(&kPortsClass, nullptr, nullptr, DIGCF_PRESENT);
    if (set == INVALID_HANDLE_VALUE) return;
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD i = 0; ::SetupDiEnumDeviceInfo(set, i, &device) != 0; ++i) {
        const HKEY key =
            ::SetupDiOpenDevRegKey(set, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
        if (key == INVALID_HANDLE_VALUE) continue;
        std::vector<BYTE> data(512);
        auto size = static_cast<DWORD>(data.size());
        DWORD type = 0;
        const bool named = ::RegQueryValueExW(key, L"PortName", nullptr, &type, data.data(),
                                              &size) == ERROR_SUCCESS &&
                           type == REG_SZ;
        ::RegCloseKey(key);
        const int n = named ? PortNumber(StoredText(data, size)) : 0;
        if (n == 0) continue;  // a printer port, or no port at all
        Port& port = ports[n];
        port.description = DeviceProperty(set, device, SPDRP_FRIENDLYNAME);
        port.manufacturer = DeviceProperty(set, device, SPDRP_MFG);
    }
    ::SetupDiDestroyDeviceInfoList(set);
}

}  // namespace

std::vector<std::string> SerialPortLines() {
    Ports ports;
    AddMappedPorts(ports);
    AddDeviceNames(ports);
    std::vector<std::string> lines;
    if (ports.empty()) {
        lines.push_back(
            platform::ToHostText("Nenhuma porta s\xE9rie encontrada nesta m\xE1quina."));
        return lines;
    }
    auto add = [&lines](const char* label, const std::string& utf8) {
        if (!utf8.empty()) lines.push_back("  " + platform::ToHostText(label) + ": " + utf8);
    };
    for (const auto& [n, port] : ports) {
        const std::string name = "COM" + std::to_string(n);
        lines.push_back(name);
        add("descri\xE7\xE3o", port.description);
        add("fabricante", port.manufacturer);
    }
    return lines;
}

}  // namespace lumbra::ctl
