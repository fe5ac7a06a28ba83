// The pole display's decoder on any bytes cut in any pieces: the same events and the same screen
// as when the bytes come whole.

#include <cstddef>
#include <cstdint>

#include "fuzz/decoder_cuts.h"
#include "simulator/display_decoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using lumbra::fuzz::Check;
    const lumbra::fuzz::CutInput input = lumbra::fuzz::ReadCutInput(data, size);
    lumbra::sim::DisplayDecoder whole;
    lumbra::sim::DisplayDecoder cut;
    Check(lumbra::fuzz::Feed(whole, input, true) == lumbra::fuzz::Feed(cut, input, false));
    Check(lumbra::sim::EventJson(whole.screen()) == lumbra::sim::EventJson(cut.screen()));
    Check(whole.verticalScroll() == cut.verticalScroll());
    return 0;
}
