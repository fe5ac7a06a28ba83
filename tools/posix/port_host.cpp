#include "tools/port_host.h"

#include <QCoreApplication>

namespace lumbra::ctl {

struct PortHost::Parts {
    explicit Parts(const std::string& programName)
        : name(programName), argv{name.data(), nullptr} {}
    std::string name;
    int argc = 1;
    char* argv[2];
    // Qt keeps argc and argv: they live as long as the application object.
    QCoreApplication app{argc, argv};
};

PortHost::PortHost(const std::string& programName) : parts_(std::make_unique<Parts>(programName)) {}

PortHost::~PortHost() = default;

}  // namespace lumbra::ctl
