#pragma once
// What the host's serial ports need around the commands that use them: on Linux, Qt's core
// application object, through whose event loop the port events travel (the tool loads no window
// system); on Windows the communications functions need nothing.

#include <memory>
#include <string>

namespace lumbra::ctl {

class PortHost {
  public:
    // programName: the tool's own name, as the host's application object wants it.
    explicit PortHost(const std::string& programName);
    ~PortHost();
    PortHost(const PortHost&) = delete;
    PortHost& operator=(const PortHost&) = delete;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace lumbra::ctl
