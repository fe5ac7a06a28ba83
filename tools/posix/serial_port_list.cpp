#include "tools/serial_port_list.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QSerialPortInfo>
#include <cerrno>
#include <cstdio>

#include "platform/file_handles.h"
#include "platform/host_text.h"
#include "platform/posix/accounts.h"
#include "platform/posix/file_errors.h"

namespace lumbra::ctl {
namespace {

std::string Hex4(quint16 n) {
    char text[8];
    std::snprintf(text, sizeof text, "%04x", static_cast<unsigned>(n));
    return text;
}

std::string Utf8(const QString& text) {
    return text.toUtf8().toStdString();
}

}  // namespace

std::string PortAccess(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        return "n\xE3o pode abrir: " +
               platform::ErrDescription(platform::FileErrorFromErrno(errno, path));
    }
    if (::access(path.c_str(), R_OK | W_OK) == 0) return "pode abrir";
    const mode_t groupRw = S_IRGRP | S_IWGRP;
    if ((st.st_mode & groupRw) == groupRw) {
        return "sem permiss\xE3o: junte-se ao grupo \"" +
               platform::FromHostText(platform::GroupName(st.st_gid)) + "\"";
    }
    return "sem permiss\xE3o: s\xF3 o dono do dispositivo o pode abrir";
}

std::vector<std::string> SerialPortLines() {
    std::vector<std::string> lines;
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    if (ports.isEmpty()) {
        lines.push_back(
            platform::ToHostText("Nenhuma porta s\xE9rie encontrada nesta m\xE1quina."));
        return lines;
    }
    auto add = [&lines](const char* label, const std::string& utf8) {
        if (!utf8.empty()) lines.push_back("  " + platform::ToHostText(label) + ": " + utf8);
    };
    for (const QSerialPortInfo& port : ports) {
        const std::string path = Utf8(port.systemLocation());
        lines.push_back(path);
        add("descri\xE7\xE3o", Utf8(port.description()));
        add("fabricante", Utf8(port.manufacturer()));
        add("n\xFAmero de s\xE9rie", Utf8(port.serialNumber()));
        if (port.hasVendorIdentifier() && port.hasProductIdentifier())
            add("USB", Hex4(port.vendorIdentifier()) + ":" + Hex4(port.productIdentifier()));
        add("acesso", platform::ToHostText(PortAccess(path)));
    }
    return lines;
}

}  // namespace lumbra::ctl
