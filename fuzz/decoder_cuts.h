#pragma once
// What the decoder targets share: the input is a cut plan and the bytes of a device. Its first
// byte says how many of the next bytes (up to 7) are piece lengths, used in turn; the rest are
// the bytes. A decoder fed them whole and one fed them in those pieces must report the same
// events, the same as JSON lines, and a run of unknown bytes keeps at most its first 64.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "simulator/device_event.h"
#include "simulator/event_views.h"

namespace lumbra::fuzz {

inline void Check(bool holds) {
    if (!holds) __builtin_trap();
}

// The events as JSON lines, each checked on the way.
template <typename Events>
void AddLines(const Events& events, std::string& lines) {
    for (const sim::DeviceEvent& e : events) {
        if (e.kind == sim::EventKind::Unknown) {
            Check(!e.bytes.empty() && e.bytes.size() <= sim::kUnknownBytesKept);
            Check(e.moreBytes == 0 || e.bytes.size() == sim::kUnknownBytesKept);
        }
        lines += sim::EventJson(e);
        lines += '\n';
    }
}

struct CutInput {
    std::string_view lengths;  // piece lengths, used in turn; none: one byte at a time
    std::string_view bytes;
};

inline CutInput ReadCutInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view in(reinterpret_cast<const char*>(data), size);
    if (in.empty()) return {};
    const std::size_t n = std::min<std::size_t>(static_cast<unsigned char>(in[0]) % 8, size - 1);
    return {in.substr(1, n), in.substr(1 + n)};
}

// What decoder reports for bytes fed in the input's pieces (whole when whole), then ended as a
// burst ends. A piece of length 0 is an empty call, followed by one byte so that feeding goes on.
template <typename Decoder>
std::string Feed(Decoder& decoder, const CutInput& input, bool whole) {
    std::string lines;
    std::string_view rest = input.bytes;
    if (whole) {
        AddLines(decoder.feed(rest), lines);
        rest = {};
    }
    for (std::size_t turn = 0; !rest.empty(); ++turn) {
        const std::size_t length =
            input.lengths.empty()
                ? 1
                : static_cast<unsigned char>(input.lengths[turn % input.lengths.size()]);
        AddLines(decoder.feed(rest.substr(0, length)), lines);
        rest.remove_prefix(std::min(length, rest.size()));
        if (length == 0) {
            AddLines(decoder.feed(rest.substr(0, 1)), lines);
            rest.remove_prefix(1);
        }
    }
    AddLines(decoder.finish(), lines);
    return lines;
}

}  // namespace lumbra::fuzz
