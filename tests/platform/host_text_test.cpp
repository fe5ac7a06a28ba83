#include "platform/host_text.h"

#include <gtest/gtest.h>

#include <string>

namespace lumbra::platform {
namespace {

TEST(HostTextTest, EveryByteComesBackFromTheHostForm) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    EXPECT_EQ(FromHostText(ToHostText(all)), all);
    EXPECT_EQ(HostPath("Cfg\\Liga\xE7\xE3o\\\x80"), "Cfg/Liga\xC3\xA7\xC3\xA3o/\xE2\x82\xAC");
}

TEST(HostTextTest, HostTextBecomesWindows1252WithQuestionMarksAndBrokenBytesKept) {
    const std::pair<std::string, std::string> cases[] = {
        {"a\xE2\x9C\x93", "a?"},           // a character Windows-1252 lacks
        {"\xF0\x9F\x98\x80", "?"},         // four bytes, one character
        {"caf\xE9", "caf\xE9"},            // already one byte per character
        {"\xE2\x82", "\xE2\x82"},          // cut short
        {"\xED\xA0\x80", "\xED\xA0\x80"},  // a surrogate is no character
    };
    for (const auto& [host, text] : cases)
        EXPECT_EQ(FromHostText(host), text) << host;
}

}  // namespace
}  // namespace lumbra::platform
