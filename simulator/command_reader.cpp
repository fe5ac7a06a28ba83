#include "simulator/command_reader.h"

#include <algorithm>
#include <utility>

namespace lumbra::sim {

std::vector<DeviceEvent> CommandReader::feed(std::string_view bytes) {
    // The command cut at the end of the last piece is completed one byte at a time, so that it
    // takes no more of the new bytes than it would have taken had they come together.
    while (!pending_.empty() && !bytes.empty()) {
        pending_ += bytes.front();
        bytes.remove_prefix(1);
        pending_.erase(0, decodeFrom(pending_));
    }
    if (pending_.empty()) pending_.assign(bytes.substr(decodeFrom(bytes)));
    return std::exchange(out_, {});
}

std::vector<DeviceEvent> CommandReader::finish() {
    endRun();
    return std::exchange(out_, {});
}

void CommandReader::report(DeviceEvent event) {
    endRun();
    out_.push_back(std::move(event));
}

std::size_t CommandReader::skip(std::string_view bytes) {
    runOpen_ = true;
    skipped_ = true;
    const std::size_t kept = std::min(bytes.size(), kUnknownBytesKept - run_.size());
    run_.append(bytes.substr(0, kept));
    runMore_ += bytes.size() - kept;
    return bytes.size();
}

std::size_t CommandReader::decodeFrom(std::string_view in) {
    std::size_t done = 0;
    while (done < in.size()) {
        skipped_ = false;
        const std::size_t taken = decodeOne(in.substr(done));
        if (taken == 0) break;
        // Anything the device understood ends the run of unknown bytes before it.
        if (!skipped_) endRun();
        done += taken;
    }
    return done;
}

void CommandReader::endRun() {
    if (!runOpen_) return;
    DeviceEvent e;
    e.device = device_;
    e.kind = EventKind::Unknown;
    e.bytes = std::exchange(run_, {});
    e.moreBytes = std::exchange(runMore_, 0);
    runOpen_ = false;
    out_.push_back(std::move(e));
}

}  // namespace lumbra::sim
