#include "simulator/pty/serve.h"

#include <poll.h>

#include <cerrno>

namespace lumbra::sim {

bool ServeDevices(const std::vector<VirtualDevice*>& devices,
                  const std::function<void(const std::vector<DeviceEvent>&)>& emit, int stopFd) {
    std::vector<pollfd> fds;
    for (const VirtualDevice* d : devices)
        fds.push_back({d->port().masterFd(), POLLIN, 0});
    fds.push_back({stopFd, POLLIN, 0});

    bool inBurst = false;
    for (;;) {
        // Block until bytes come; within a burst, only until it has been quiet for a while.
        const int timeout = inBurst ? static_cast<int>(kBurstQuiet.count()) : -1;
        const int ready = ::poll(fds.data(), fds.size(), timeout);
        if (ready < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        if (fds.back().revents != 0) return true;
        if (ready == 0) {
            for (VirtualDevice* d : devices)
                emit(d->endBurst());
            inBurst = false;
            continue;
        }
        for (std::size_t i = 0; i < devices.size(); ++i) {
            if (fds[i].revents == 0) continue;
            // The port holds its slave open, so a hang-up or error here is the system failing,
            // not the sender closing: stop rather than spin on it.
            if ((fds[i].revents & POLLIN) == 0) return false;
            emit(devices[i]->pump());
            inBurst = true;
        }
    }
}

}  // namespace lumbra::sim
