// The receipt printer's decoder on any bytes cut in any pieces: the same events, the same text
// waiting for its LF and the same code page as when the bytes come whole.

#include <cstddef>
#include <cstdint>

#include "fuzz/decoder_cuts.h"
#include "simulator/printer_decoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using lumbra::fuzz::Check;
    const lumbra::fuzz::CutInput input = lumbra::fuzz::ReadCutInput(data, size);
    lumbra::sim::PrinterDecoder whole;
    lumbra::sim::PrinterDecoder cut;
    Check(lumbra::fuzz::Feed(whole, input, true) == lumbra::fuzz::Feed(cut, input, false));
    Check(whole.pendingText() == cut.pendingText());
    Check(whole.codePage() == cut.codePage());
    return 0;
}
