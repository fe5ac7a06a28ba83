// Channel 1 on the selected connection or display port.

#include "app/LumbraGb.h"
#include "channels/PgmFic.h"
#include "util/text/variant.h"

namespace lumbra {
namespace {

constexpr std::int16_t kChannel = 1;

bool IsSerial(const LinReg& row) {
    return row.ide == "SER";
}

void PortAbr(const LinReg& row, std::int16_t& can) {
    // "COM1,9600,n,8,1": the port before the first comma, its settings after it. A file name
    // keeps its commas; what follows the first one is also the channel's free text.
    const std::size_t comma = row.vtx.find(',');
    const std::string porta = row.vtx.substr(0, comma);
    const std::string rest = comma == std::string::npos ? "" : row.vtx.substr(comma + 1);
    can = kChannel;
    if (!IsSerial(row)) {
        CanFicPrp(can, "O", row.vtx, rest);
        CanFicAbr(can);
    } else {
        CanPserPrp(can, Variant(porta), rest);
        CanPserAbr(can);
    }
}

void PortGrv(const LinReg& row, const std::int16_t& can, const std::string& tx,
             const std::int16_t& nl) {
    if (!IsSerial(row))
        CanFicGrv(can, tx, nl);
    else
        CanPserEsc(can, tx);
}

void PortFec(const LinReg& row, std::int16_t& can) {
    if (!IsSerial(row))
        CanFicFec(can);
    else
        CanPserFec(can);
    can = 0;
}

}  // namespace

// The rows are copied first: a row is never read through a reference that a write could move.
void LumbraLigAbr(std::int16_t& can) {
    const LinReg row = TableRow(Gb().ligTab, Gb().ligIdx);
    PortAbr(row, can);
}

void LumbraLigGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl) {
    const LinReg row = TableRow(Gb().ligTab, Gb().ligIdx);
    PortGrv(row, can, tx, nl);
}

void LumbraLigFec(std::int16_t& can) {
    const LinReg row = TableRow(Gb().ligTab, Gb().ligIdx);
    PortFec(row, can);
}

void LumbraDisAbr(std::int16_t& can) {
    const LinReg row = TableRow(Gb().disTab, Gb().disIdx);
    PortAbr(row, can);
}

void LumbraDisGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl) {
    const LinReg row = TableRow(Gb().disTab, Gb().disIdx);
    PortGrv(row, can, tx, nl);
}

void LumbraDisFec(std::int16_t& can) {
    const LinReg row = TableRow(Gb().disTab, Gb().disIdx);
    PortFec(row, can);
}

}  // namespace lumbra
