// The serial ports on Windows, in a prefix whose COM ports all point at nothing. What reaches a
// real line is checked from outside, on pseudo-terminals the ports are pointed at.
#include "tests/channels/channel_test.h"

namespace lumbra::test {

std::vector<OpenRefusal> HostOpenRefusals(const TempDir&) {
    const std::string unusable = " n\xE3o pode ser aberta: Dispositivo indispon\xEDvel";
    return {{"COM2", "", "9600,n,8,1", "Porta 2 (COM2)" + unusable},
            {"COM2", "com7", "9600,n,8,1", "Porta 2 (com7)" + unusable},
            {"COM2", "\\\\.\\COM12", "9600,n,8,1", "Porta 2 (\\\\.\\COM12)" + unusable},
            {"COM2", "LUMBRA-SEM-PORTA", "9600,n,8,1", "Porta 2 (LUMBRA-SEM-PORTA) n\xE3o existe"}};
}

}  // namespace lumbra::test
