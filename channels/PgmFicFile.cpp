// File channels: prepare, open in one of the modes, close, write.
#include <optional>

#include "channels/PgmFic.h"
#include "channels/channel_table.h"
#include "platform/file_handles.h"
#include "util/text/value.h"

namespace lumbra {
namespace {

// The host's description for writing to a file that is open for reading or binary access.
const std::string kBadFileMode = "Modo de ficheiro incorrecto";

struct OpenPlan {
    platform::FileMode mode = platform::FileMode::Input;
    std::optional<std::int16_t> modoNum;  // empty: the record keeps its value
};

// True when m sorts from prefix ("O:") to prefix + "z" ("O:z") inclusive, byte by byte.
bool InModeRange(const std::string& m, const std::string& prefix) {
    return m >= prefix && m <= prefix + "z";
}

OpenPlan PlanFor(const std::string& m) {
    using platform::FileMode;
    if (m == "O") return {FileMode::Output, std::int16_t{0}};
    if (InModeRange(m, "O:")) return {FileMode::Output, CanModNum(m)};
    if (m == "A") return {FileMode::Append, std::int16_t{0}};
    if (InModeRange(m, "A:")) return {FileMode::Append, CanModNum(m)};
    if (m == "B") return {FileMode::Binary, std::nullopt};
    if (InModeRange(m, "R:")) return {FileMode::Binary, CanModNum(m)};
    return {FileMode::Input, std::nullopt};
}

}  // namespace

void CanFicPrp(const std::int16_t& can, const std::string& modo, const std::string& fic,
               const std::string& par) {
    if (!channel_table::InRange(can)) return;
    CanDim(can);
    CanReg& r = channel_table::Slots()[static_cast<std::size_t>(can)];
    r.tip = "F";
    r.modoAct.clear();
    r.fic = fic;
    r.modo = Variant(TxMai(modo));
    r.par = par;
}

void CanFicAbr(const std::int16_t& can) {
    CanReg* r = channel_table::PreparedSlot(can, "Abrir");
    if (r == nullptr) return;
    const std::string m = VlStr(r->modo);
    // An empty modoAct means closed, so an empty mode still opens (for input).
    if (!r->modoAct.empty() && m == r->modoAct) return;

    const OpenPlan plan = PlanFor(m);
    // The record first, the open last: a failed open leaves the channel looking open, so the
    // writes that follow fail visibly instead of going elsewhere.
    if (plan.modoNum) r->modoNum = *plan.modoNum;
    r->modoAct = m;
    r->num = platform::FreeFile();
    const std::int16_t err = platform::FileOpen(r->num, r->fic, plan.mode);
    if (err != 0) CanErr(can, "Abrir", platform::FileErrText(err));
}

void CanFicFec(const std::int16_t& can) {
    CanReg* r = channel_table::PreparedSlot(can, "Fechar");
    if (r == nullptr) return;
    const std::int16_t err = platform::FileClose(r->num);
    // The number is released even when the close reports an error.
    r->modoAct.clear();
    r->num = 0;
    if (err != 0) CanErr(can, "Fechar", platform::FileErrText(err));
}

void CanFicGrv(const std::int16_t& can, const std::string& tx, const std::int16_t& nl) {
    CanReg* r = channel_table::PreparedSlot(can, "Gravar TX");
    if (r == nullptr) return;
    if (platform::FileIsOpen(r->num) && r->tip == "F") {
        const platform::FileMode mode = PlanFor(r->modoAct).mode;
        if (mode == platform::FileMode::Binary || mode == platform::FileMode::Input) {
            CanErr(can, "Gravar TX", kBadFileMode);
            return;
        }
    }
    const std::int16_t err = platform::FileWrite(r->num, tx, nl == 1);
    if (err != 0) {
        CanErr(can, "Gravar TX", platform::FileErrText(err));
    } else {
        channel_table::Written(can, nl == 1 ? tx + "\r\n" : tx);
    }
}

}  // namespace lumbra
