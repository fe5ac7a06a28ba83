#include "channels/GlbComFr.h"

#include <memory>
#include <utility>

namespace lumbra {

GlbComFr::GlbComFr() : msComm1_(std::make_unique<SerialPortControl>()) {
    pSer_.emplace(std::int16_t{1}, std::make_unique<SerialPortControl>());
    pSer_.at(1)->setOnComm([this] { pSer_OnComm(1); });
}

GlbComFr::~GlbComFr() {
    closeAllPorts();
}

void GlbComFr::FrmPrep(const std::string& /*modo*/, std::vector<Variant>& /*par*/) {}

void GlbComFr::loadPSer(std::int16_t index) {
    if (hasPSer(index)) return;
    auto control = std::make_unique<SerialPortControl>();
    control->copyDesignFrom(*pSer_.at(1));
    control->setOnComm([this, index] { pSer_OnComm(index); });
    pSer_.emplace(index, std::move(control));
}

bool GlbComFr::hasPSer(std::int16_t index) const {
    return pSer_.count(index) != 0;
}

SerialPortControl& GlbComFr::pSer(std::int16_t index) {
    return *pSer_.at(index);
}

void GlbComFr::closeAllPorts() {
    for (auto& [index, control] : pSer_) {
        if (control->portOpen()) control->setPortOpen(false);
    }
    if (msComm1_->portOpen()) msComm1_->setPortOpen(false);
}

void GlbComFr::pSer_OnComm(std::int16_t index) {
    SerialPortControl& port = pSer(index);
    // Only the receive event has work: whatever arrived is taken and dropped. Line changes and
    // error events are ignored.
    if (port.commEvent() != comEvReceive) return;
    port.setInputLen(0);
    port.input();
}

}  // namespace lumbra
