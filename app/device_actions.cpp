#include "app/device_actions.h"

#include <vector>

#include "app/LumbraGb.h"
#include "platform/msg_box.h"
#include "util/text/literal.h"
#include "util/text/split.h"

namespace lumbra {

std::string ConnectionTestLine(const std::string& ligTx) {
    return ligTx + "\r\n";
}

std::string PrepareDrawerCommand(const std::string& vtx) {
    std::vector<std::string> fields;
    std::int16_t n = 0;
    TxArr(vtx, "+", fields, n);
    std::string cmd;
    for (int i = 1; i <= n; ++i)
        cmd += fields[static_cast<std::size_t>(i)];
    TxCnvChr(cmd);
    std::string out;
    TxLpz(0, cmd, "\"", out);
    return out;
}

void SendConnectionTest(const std::string& ligTx) {
    if (!HasRows(Gb().ligTab)) return;
    const std::string line = ConnectionTestLine(ligTx);
    std::int16_t can = 0;
    LumbraLigAbr(can);
    LumbraLigGrv(can, line, 1);
    LumbraLigFec(can);
}

void SendDrawerCommand() {
    if (!HasRows(Gb().ligTab)) return;
    const std::string cmd = PrepareDrawerCommand(TableRow(Gb().gavTab, Gb().gavIdx).vtx);
    std::int16_t can = 0;
    LumbraLigAbr(can);
    LumbraLigGrv(can, cmd, 0);
    LumbraLigFec(can);
}

void SendDisplayText(const std::string& tx) {
    if (!HasRows(Gb().disTab)) return;
    std::int16_t can = 0;
    LumbraDisAbr(can);
    LumbraDisGrv(can, tx, 0);
    LumbraDisFec(can);
}

const std::string& DisplayCommand(std::int16_t k) {
    return TableRow(Gb().cmdTab, k).vtx;
}

CycleStep CycleStepAt(int i) {
    constexpr int kValues = 13;
    const int mo = i % 2;
    const int p2 = (i / 2) % kValues;
    const int p1 = i / (2 * kValues);
    return {10 + 20 * p1, 10 + 20 * p2, mo};
}

std::string SubstituteCyclePlaceholders(const std::string& orig, const CycleStep& step) {
    std::string t = orig;
    for (;;) {
        const std::size_t open = t.find('[');
        if (open == std::string::npos) break;
        const std::size_t close = t.find(']', open + 1);
        if (close == std::string::npos) break;
        const std::string inside = t.substr(open + 1, close - open - 1);
        int value = 0;
        if (inside == "MO")
            value = step.mo;
        else if (inside == "P1")
            value = step.p1;
        else if (inside == "P2")
            value = step.p2;
        else
            break;
        t = t.substr(0, open) + std::to_string(value) + t.substr(close + 1);
    }
    return t;
}

int RunDrawerCycle(std::int16_t row, const CycleHooks& hooks) {
    // The row is addressed by number at every step: the table is never resized during a cycle (a
    // re-read is refused), but a reference held across the callers' event handling would be
    // fragile for no gain.
    auto rowText = [row]() -> std::string* {
        std::vector<LinReg>& tab = Gb().gavTab;
        return row >= 0 && static_cast<std::size_t>(row) < tab.size()
                   ? &tab[static_cast<std::size_t>(row)].vtx
                   : nullptr;
    };
    const std::string orig = rowText() != nullptr ? *rowText() : std::string();
    const platform::MsgBoxStopButton stopInBoxes(kCycleStopCaption);
    const auto ending = [&] { return stopInBoxes.chosen() || (hooks.stopped && hooks.stopped()); };
    std::string lastSent = orig;
    int sends = 0;
    for (int i = 0; i < kCycleSends && !ending(); ++i) {
        const std::string t = SubstituteCyclePlaceholders(orig, CycleStepAt(i));
        if (std::string* vtx = rowText()) *vtx = t;
        if (hooks.shown) hooks.shown(t);
        if (ending()) break;
        if (hooks.send) hooks.send();
        lastSent = t;
        ++sends;
    }
    if (std::string* vtx = rowText()) *vtx = orig;
    if (hooks.over) hooks.over(lastSent);
    return sends;
}

}  // namespace lumbra
