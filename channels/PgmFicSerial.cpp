// Serial channels: the port controls of the host form, driven by channel number.
#include "channels/GlbComFr.h"
#include "channels/PgmFic.h"
#include "channels/channel_table.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

// The port control of a prepared channel; nullptr after reporting under fn when there is none.
SerialPortControl* ControlOf(std::int16_t can, const std::string& fn) {
    if (channel_table::PreparedSlot(can, fn) == nullptr) return nullptr;
    GlbComFr* form = channel_table::HostForm();
    if (form == nullptr || !form->hasPSer(can)) {
        CanErr(can, fn, "Canal " + std::to_string(can) + " sem porta s\xE9rie");
        return nullptr;
    }
    return &form->pSer(can);
}

}  // namespace

void CanPserCri(const std::int16_t& can) {
    if (GlbComFr* form = channel_table::HostForm()) form->loadPSer(can);
}

void CanPserPrp(const std::int16_t& can, const Variant& porta, const std::string& par) {
    if (!channel_table::InRange(can)) return;
    CanDim(can);
    CanPserCri(can);
    CanReg& r = channel_table::Slots()[static_cast<std::size_t>(can)];
    r.num = CanPserNum(porta);
    r.tip = "PS";
    r.modoAct.clear();
    r.fic = VlStr(porta);
    r.par = par;
    GlbComFr* form = channel_table::HostForm();
    if (form == nullptr || !form->hasPSer(can)) return;
    // A port number or settings text the control cannot take is kept by the control and
    // reported by the next open.
    SerialPortControl& control = form->pSer(can);
    control.setCommPort(r.num);
    control.setSettings(par);
}

void CanPserAbr(const std::int16_t& can) {
    SerialPortControl* control = ControlOf(can, "Abrir");
    if (control != nullptr && !control->setPortOpen(true))
        CanErr(can, "Abrir", control->errorText());
}

void CanPserFec(const std::int16_t& can) {
    SerialPortControl* control = ControlOf(can, "Fechar");
    if (control != nullptr && !control->setPortOpen(false))
        CanErr(can, "Fechar", control->errorText());
}

void CanPserEsc(const std::int16_t& can, const std::string& tx) {
    SerialPortControl* control = ControlOf(can, "Escrever");
    if (control == nullptr) return;
    if (!control->output(tx))
        CanErr(can, "Escrever", control->errorText());
    else
        channel_table::Written(can, tx);
}

}  // namespace lumbra
