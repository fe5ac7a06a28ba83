#include "platform/write_stall.h"

#include <algorithm>

#include "platform/stop_signals.h"

namespace lumbra::platform {
namespace {

std::chrono::milliseconds& Limit() {
    static std::chrono::milliseconds limit = kDefaultWriteStallLimit;
    return limit;
}

}  // namespace

std::chrono::milliseconds WriteStallLimit() {
    return Limit();
}

void SetWriteStallLimit(std::chrono::milliseconds limit) {
    Limit() = limit.count() > 0 ? limit : kDefaultWriteStallLimit;
}

WriteWatch::WriteWatch(std::size_t total)
    : total_(total), start_(std::chrono::steady_clock::now()), lastProgress_(start_) {}

void WriteWatch::taken(std::size_t taken) {
    if (taken <= taken_) return;
    taken_ = taken;
    lastProgress_ = std::chrono::steady_clock::now();
}

bool WriteWatch::stalled() const {
    return std::chrono::steady_clock::now() - lastProgress_ >= WriteStallLimit();
}

bool WriteWatch::stopped() {
    if (!StopRequested()) return false;
    const auto now = std::chrono::steady_clock::now();
    if (!stopSeen_) stopSeen_ = now;
    return now - *stopSeen_ >= kStopGrace;
}

std::chrono::milliseconds WriteWatch::nextWait(std::chrono::milliseconds step) const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        lastProgress_ + WriteStallLimit() - std::chrono::steady_clock::now());
    // At least 1 ms, so that a caller waiting for the last moment does not spin.
    return std::clamp(left, std::chrono::milliseconds(1), step);
}

std::string WriteWatch::stallText() const {
    const auto now = std::chrono::steady_clock::now();
    return "a porta n\xE3o aceitou nenhum byte durante " + SecondsText(now - lastProgress_) +
           " s (" + std::to_string(taken_) + " de " + std::to_string(total_) +
           " bytes enviados em " + SecondsText(now - start_) + " s)";
}

std::string SecondsText(std::chrono::steady_clock::duration d) {
    const auto tenths = std::chrono::duration_cast<std::chrono::milliseconds>(d).count() / 100;
    return std::to_string(tenths / 10) + "," + std::to_string(tenths % 10);
}

}  // namespace lumbra::platform
