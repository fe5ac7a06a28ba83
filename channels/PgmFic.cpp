#include "channels/PgmFic.h"

#include <utility>

#include "channels/GlbComFr.h"
#include "channels/channel_table.h"
#include "platform/file_handles.h"
#include "platform/msg_box.h"
#include "util/text/split.h"
#include "util/text/value.h"

namespace lumbra {
namespace channel_table {

std::vector<CanReg>& Slots() {
    static std::vector<CanReg> table;
    return table;
}

GlbComFr*& HostForm() {
    static GlbComFr* form = nullptr;
    return form;
}

std::int16_t& Max() {
    static std::int16_t max = 0;
    return max;
}

bool InRange(std::int16_t can) {
    return can >= 1 && can <= Max();
}

CanReg* PreparedSlot(std::int16_t can, const std::string& fn) {
    if (!InRange(can)) return nullptr;
    if (static_cast<std::size_t>(can) >= Slots().size()) {
        CanErr(can, fn, "Canal " + std::to_string(can) + " n\xE3o preparado");
        return nullptr;
    }
    return &Slots()[static_cast<std::size_t>(can)];
}

ChannelWriteObserver& Observer() {
    static ChannelWriteObserver observer;
    return observer;
}

void Written(std::int16_t can, std::string_view bytes) {
    if (!Observer() || !InRange(can) || static_cast<std::size_t>(can) >= Slots().size()) return;
    Observer()(Slots()[static_cast<std::size_t>(can)], bytes);
}

}  // namespace channel_table

void SetChannelWriteObserver(ChannelWriteObserver observer) {
    channel_table::Observer() = std::move(observer);
}

namespace {

constexpr std::int16_t kChannelCount = 10;

// The program can end at once (EndProgram) without passing through CanFim; its ports must not
// stay open behind it. Hooks run once, so one is registered per run of the module.
bool& EndHookRegistered() {
    static bool registered = false;
    return registered;
}

void CloseHostFormPorts() {
    EndHookRegistered() = false;
    if (GlbComFr* form = channel_table::HostForm()) form->closeAllPorts();
}

}  // namespace

std::int16_t CanMax() {
    return channel_table::Max();
}

const std::vector<CanReg>& CanTab() {
    return channel_table::Slots();
}

GlbComFr* CanHostForm() {
    return channel_table::HostForm();
}

void CanIni() {
    if (channel_table::Max() != 0) return;
    channel_table::Slots().assign(1, CanReg{});
    if (channel_table::HostForm() == nullptr) channel_table::HostForm() = new GlbComFr();
    if (!EndHookRegistered()) {
        EndHookRegistered() = true;
        platform::AtProgramEnd(CloseHostFormPorts);
    }
    channel_table::Max() = kChannelCount;
}

void CanFim() {
    std::vector<CanReg>& table = channel_table::Slots();
    for (std::size_t i = 1; i < table.size(); ++i) {
        // Errors are ignored: the program is stopping.
        if (table[i].tip != "PS" && table[i].num >= 1) platform::FileClose(table[i].num);
    }
    table.clear();
    // Destroying the form closes its ports.
    delete channel_table::HostForm();
    channel_table::HostForm() = nullptr;
    channel_table::Max() = 0;
}

void CanDim(const std::int16_t& can) {
    if (can < 0) return;
    std::vector<CanReg>& table = channel_table::Slots();
    const auto wanted = static_cast<std::size_t>(can) + 1;
    if (wanted > table.size()) table.resize(wanted);
}

std::int16_t CanModNum(const std::string& m) {
    std::string rest = m;
    std::string before;
    std::int16_t found = 0;
    TxSep(rest, ":", before, found);
    // Without ':' the whole text went to before and nothing is left to read.
    std::int16_t n = 0;
    VlNum(Variant(rest), n);
    return n;
}

std::int16_t CanPserNum(const Variant& porta) {
    std::int16_t n = 0;
    if (porta.isText()) {
        std::string rest = TxMai(porta.text());
        std::string designation;
        std::int16_t found = 0;
        TxSep(rest, ":", designation, found);
        const std::string last =
            designation.empty() ? "" : designation.substr(designation.size() - 1);
        VlNum(Variant(last), n);
    } else {
        VlNum(porta, n);
    }
    return n < 1 ? std::int16_t{1} : n;
}

void CanErr(const std::int16_t& can, const std::string& fn, const std::string& err) {
    if (can < 1) return;
    const std::vector<CanReg>& table = channel_table::Slots();
    const auto slot = static_cast<std::size_t>(can);
    const std::string name = slot < table.size() ? table[slot].fic : std::string();
    platform::MsgBox("Erro no ficheiro: " + name, "Funcao: " + fn + "|Erro:" + err,
                     platform::MsgIcon::Critical);
}

}  // namespace lumbra
