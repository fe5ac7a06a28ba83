// The serial ports on Windows, in a prefix whose COM ports all point at nothing: the device a port
// names, and what the open says when the port cannot serve. What reaches a real line is checked
// from outside, on pseudo-terminals the ports are pointed at.
#include <windows.h>

#include "channels/GlbComFr.h"
#include "channels/serial_device.h"
#include "tests/channels/channel_test.h"

namespace lumbra {
namespace {

using test::ChannelTest;
using test::MapPorts;

TEST(SerialDeviceTest, APortNamesItsSerialDeviceByItself) {
    EXPECT_EQ(DefaultSerialDevice(1), "COM1");
    EXPECT_EQ(DefaultSerialDevice(9), "COM9");
}

// A port that cannot serve fails the open with the reason; the write and the close after it find
// the port closed, and nothing is reported as gone out.
TEST_F(ChannelTest, APortThatCannotServeFailsTheOpen) {
    const std::string unusable = " n\xE3o pode ser aberta: Dispositivo indispon\xEDvel";
    const struct {
        const char* device;  // given after -COM2; nullptr: the port's own
        std::string error;
    } cases[] = {{nullptr, "Porta 2 (COM2)" + unusable},
                 {"com7", "Porta 2 (com7)" + unusable},
                 {"\\\\.\\COM12", "Porta 2 (\\\\.\\COM12)" + unusable},
                 {"LUMBRA-SEM-PORTA", "Porta 2 (LUMBRA-SEM-PORTA) n\xE3o existe"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        boxes.clear();
        if (c.device != nullptr) MapPorts({{2, c.device}});
        CanPserPrp(1, "COM2", "9600,n,8,1");
        CanPserAbr(1);
        CanPserEsc(1, "x");
        CanPserFec(1);
        EXPECT_FALSE(CanHostForm()->pSer(1).portOpen());
        const std::string title = "Erro no ficheiro: COM2";
        const std::string notOpen = "Porta 2 n\xE3o est\xE1 aberta";
        const std::vector<test::RecordedBox> want = {{title, "Funcao: Abrir|Erro:" + c.error},
                                                     {title, "Funcao: Escrever|Erro:" + notOpen},
                                                     {title, "Funcao: Fechar|Erro:" + notOpen}};
        EXPECT_EQ(boxes.boxes(), want);
    }
    EXPECT_TRUE(reports.empty());
}

}  // namespace
}  // namespace lumbra
