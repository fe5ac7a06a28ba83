#include "channels/serial_settings.h"

#include <gtest/gtest.h>

#include "channels/serial_device.h"

namespace lumbra {
namespace {

using P = SerialParity;
using S = SerialStopBits;

TEST(SerialSettingsTest, ReadsWellFormedTextsAndRefusesTheRestLeavingSettingsAlone) {
    const std::pair<const char*, SerialSettings> good[] = {
        {"9600,n,8,1", {9600, P::None, 8, S::One}},
        {"110,o,5,1.5", {110, P::Odd, 5, S::OneAndHalf}},
        {"256000,M,6,2", {256000, P::Mark, 6, S::Two}},
        {" 14400 , s , 4 , 2 ", {14400, P::Space, 4, S::Two}},
    };
    for (const auto& [text, want] : good) {
        SerialSettings got{1, P::Odd, 1, S::Two};
        std::string error;
        EXPECT_TRUE(ParseSerialSettings(text, got, error)) << text << ": " << error;
        EXPECT_EQ(got, want) << text;
    }
    const std::string bad[] = {"",           "9600,n,8",   "9600,x,8,1", "9600,n,9,1",
                               "9600,n,3,1", "9600,n,8,3", "12345",      "99999999999999999999"};
    for (const std::string& text : bad) {
        // The last two are rates nobody supports.
        const bool rate = text.size() >= 5 && text.find(',') == std::string::npos;
        SerialSettings got;
        std::string error;
        EXPECT_FALSE(ParseSerialSettings(rate ? text + ",n,8,1" : text, got, error)) << text;
        EXPECT_EQ(error, rate ? "Velocidade " + text +
                                    " n\xE3o suportada: use 110, 300, 600, 1200, 2400, 4800, "
                                    "9600, 14400, 19200, 28800, 38400, 56000, 57600, 115200, "
                                    "128000 ou 256000"
                              : "Configura\xE7\xE3o inv\xE1lida \"" + text +
                                    "\": use velocidade,paridade,dados,paragem como 9600,n,8,1");
        EXPECT_EQ(got, SerialSettings{}) << text;
    }
}

TEST(SerialSettingsTest, DeviceRefusesWhatALineCannotCarry) {
    const std::pair<SerialSettings, std::string> cases[] = {
        {{9600, P::None, 5, S::OneAndHalf}, ""},
        {{9600, P::None, 6, S::Two}, ""},
        {{9600, P::None, 4, S::One}, "4 bits de dados n\xE3o suportados pelo dispositivo"},
        {{9600, P::None, 8, S::OneAndHalf}, "1,5 bits de paragem exigem 5 bits de dados"},
        {{9600, P::None, 5, S::Two},
         "2 bits de paragem n\xE3o servem com 5 bits de dados (use 1,5)"}};
    for (const auto& [settings, want] : cases) {
        std::string error;
        EXPECT_EQ(SettingsDeviceCanUse(settings, error), want.empty()) << want;
        EXPECT_EQ(error, want);
    }
}

// Without its switch a port names the system's own device for it.
TEST(SerialDeviceTest, PortNumberNamesTheDeviceGivenOnTheCommandLineOrItsOwn) {
#ifdef _WIN32
    const std::string own1 = "COM1", own3 = "COM3", own9 = "COM9";
#else
    const std::string own1 = "/dev/ttyS0", own3 = "/dev/ttyS2", own9 = "/dev/ttyS8";
#endif
    const struct {
        std::int16_t port;
        const char* commandLine;
        std::string path;
    } cases[] = {{1, "", own1},
                 {9, "", own9},
                 {2, "-com2 /dev/pts/7 -COM1 \\\\.\\COM12", "/dev/pts/7"},
                 {1, "-com2 /dev/pts/7 -COM1 \\\\.\\COM12", "\\\\.\\COM12"},
                 {1, "-COM12 /dev/x", own1},
                 {3, "-COM3", own3}};
    for (const auto& c : cases)
        EXPECT_EQ(SerialDevicePath(c.port, c.commandLine), c.path) << c.commandLine;
}

}  // namespace
}  // namespace lumbra
