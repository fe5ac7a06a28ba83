#pragma once
// What both virtual devices read their bytes with: the names of the control bytes their command
// sets use, and the loop that decodes whole commands from the bytes received so far, keeping a
// command cut between two reads until its remaining bytes arrive.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/device_event.h"

namespace lumbra::sim {

inline constexpr unsigned char kBs = 0x08;
inline constexpr unsigned char kHt = 0x09;
inline constexpr unsigned char kLf = 0x0A;
inline constexpr unsigned char kHom = 0x0B;
inline constexpr unsigned char kClr = 0x0C;
inline constexpr unsigned char kCr = 0x0D;
inline constexpr unsigned char kDle = 0x10;
inline constexpr unsigned char kDc4 = 0x14;
inline constexpr unsigned char kCan = 0x18;
inline constexpr unsigned char kEsc = 0x1B;
inline constexpr unsigned char kGs = 0x1D;
inline constexpr unsigned char kUs = 0x1F;

inline unsigned char At(std::string_view in, std::size_t i) {
    return static_cast<unsigned char>(in[i]);
}

// Appends bytes to pending and decodes from its front while decodeOne(rest, events) takes a whole
// command (the number of bytes it took; 0 when the command is not complete yet). What is not
// taken stays in pending for the next call.
template <typename DecodeOne>
std::vector<DeviceEvent> DecodePending(std::string& pending, std::string_view bytes,
                                       DecodeOne decodeOne) {
    std::vector<DeviceEvent> out;
    pending.append(bytes);
    std::size_t done = 0;
    while (done < pending.size()) {
        const std::size_t taken = decodeOne(std::string_view(pending).substr(done), out);
        if (taken == 0) break;
        done += taken;
    }
    pending.erase(0, done);
    return out;
}

}  // namespace lumbra::sim
