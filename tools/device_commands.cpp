#include "tools/device_commands.h"

#include <cstdio>
#include <optional>

#include "app/LumbraGb.h"
#include "app/device_actions.h"
#include "tools/cycle_command.h"
#include "tools/exit_status.h"
#include "tools/listing.h"
#include "tools/row_choice.h"
#include "tools/tool_console.h"

namespace lumbra::ctl {
namespace {

// The window's preset texts of the connection test and of the display.

std::string Text(const OptionTexts& texts, const std::string& name, const std::string& fallback) {
    const auto it = texts.find(name);
    return it == texts.end() ? fallback : it->second;
}

// The row option names in zone's table; a usage error (already reported) when it names none. Left
// out in a zone without rows it is row 0, as the window's empty list selects: the action then does
// what the window does with nothing selected.
template <typename Row>
std::optional<std::int16_t> PickRow(const std::vector<Row>& tab, const char* zone,
                                    const OptionTexts& texts, const std::string& option) {
    const std::string wanted = Text(texts, option, "");
    const std::int16_t row = ChooseRow(tab, wanted);
    if (row != 0 || (wanted.empty() && !HasRows(tab))) return row;
    if (tab.size() < 2) {
        ReportUsageError(std::string("a zona ") + zone + " n\xE3o tem linhas configuradas");
    } else {
        ReportUsageError(std::string("a zona ") + zone + " n\xE3o tem a linha \"" + wanted +
                         "\" (" + option + ")");
    }
    return std::nullopt;
}

int Listar() {
    std::string text;
    for (const std::string& line : ListingLines(Gb()))
        text += line + "\n";
    WriteText(stdout, text);
    return kExitOk;
}

int StatusAfterSends(const ConsoleMsgSink& sink) {
    return sink.boxes() > 0 ? kExitChannelFailed : kExitOk;
}

}  // namespace

int RunConfiguredCommand(const std::string& command, const OptionTexts& texts,
                         const ConsoleMsgSink& sink) {
    LumbraGbState& g = Gb();
    if (command == "listar") return Listar();

    if (command == "teste" || command == "abrir" || command == "ciclo") {
        const auto lig = PickRow(g.ligTab, "LIG", texts, "--porta");
        if (!lig) return kExitUsage;
        g.ligIdx = *lig;
        if (command == "teste") {
            SendConnectionTest(Text(texts, "--texto", kLigTstPreset));
            return StatusAfterSends(sink);
        }
        const auto gav = PickRow(g.gavTab, "GAV", texts, "--modo");
        if (!gav) return kExitUsage;
        g.gavIdx = *gav;
        if (command == "ciclo") return RunCycleCommand(sink);
        SendDrawerCommand();
        return StatusAfterSends(sink);
    }

    if (command == "executar" || command == "mostrar") {
        const auto dis = PickRow(g.disTab, "DIS_OPC", texts, "--display");
        if (!dis) return kExitUsage;
        g.disIdx = *dis;
        if (command == "mostrar") {
            SendDisplayText(Text(texts, "--texto", kDisTxmPreset));
            return StatusAfterSends(sink);
        }
        const auto cmd = PickRow(g.cmdTab, "DIS_CMD", texts, "--comando");
        if (!cmd) return kExitUsage;
        SendDisplayText(DisplayCommand(*cmd));
        return StatusAfterSends(sink);
    }
    return ReportUsageError("comando desconhecido: " + command);
}

}  // namespace lumbra::ctl
