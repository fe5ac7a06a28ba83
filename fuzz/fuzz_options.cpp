// Option references: an option list made from the input, then a text with [KEY] references
// replaced by the options' values. The input is "key=value" lines, an empty line, and the text.
// Whatever the keys, values and references, the replacement ends, and a text without "[" comes
// back as it was.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "options/TdaOpc.h"
#include "tests/support/recording_msg_sink.h"
#include "util/text/variant.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    lumbra::test::RecordingMsgSink sink;
    lumbra::TdaOpc opc;
    opc.OpcIni("A");

    std::vector<std::string> keys;
    while (!input.empty()) {
        const std::size_t end = input.find('\n');
        const std::string_view line = input.substr(0, end);
        input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
        if (line.empty()) break;
        const std::size_t eq = line.find('=');
        keys.emplace_back(line.substr(0, eq));
        const std::string value(eq == std::string_view::npos ? "" : line.substr(eq + 1));
        opc.OpcAct(keys.back(), lumbra::Variant(value));
    }

    const std::string text(input);
    std::string replaced;
    opc.OpcSbr(text, replaced);
    if (text.find('[') == std::string::npos && replaced != text) __builtin_trap();

    for (const std::string& key : keys) {
        std::string path;
        opc.OpcPath(key, path);
        lumbra::Variant number = 0.0;
        opc.OpcCon(key, number);
    }
    return 0;
}
