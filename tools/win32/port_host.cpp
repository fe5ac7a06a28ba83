#include "tools/port_host.h"

namespace lumbra::ctl {

// The communications functions work on their own: no application object, no event loop.
struct PortHost::Parts {};

PortHost::PortHost(const std::string&) {}

PortHost::~PortHost() = default;

}  // namespace lumbra::ctl
