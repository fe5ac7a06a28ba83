#include "tools/lumbractl.h"

#include <cstdio>
#include <optional>
#include <vector>

#include "app/LumbraGb.h"
#include "options/TdaOpc.h"
#include "platform/host_text.h"
#include "platform/msg_box.h"
#include "platform/program.h"
#include "platform/stop_signals.h"
#include "tools/byte_report.h"
#include "tools/console_msg_sink.h"
#include "tools/device_commands.h"
#include "tools/exit_status.h"
#include "tools/help_text.h"
#include "tools/parameter_file_check.h"
#include "tools/port_host.h"
#include "tools/simulate_command.h"
#include "tools/standalone_commands.h"
#include "tools/tool_args.h"
#include "tools/tool_text.h"
#include "util/files/paths.h"
#include "util/text/chars.h"

namespace lumbra::ctl {
namespace {

void PrintText(std::FILE* out, std::string text) {
    if (!text.empty() && text.back() == '\n') text.pop_back();
    PrintLine(out, text);
}

// Closes every channel and port when the command is done, however it ended.
class ProgramSession {
  public:
    ProgramSession() = default;
    ~ProgramSession() { LumbraFim(); }
    ProgramSession(const ProgramSession&) = delete;
    ProgramSession& operator=(const ProgramSession&) = delete;
};

// The file the engine looks for: the one after "-FP" (the first, in any case), otherwise
// Lumbra.par in the tool's own folder.
std::string SoughtParameterFile(const ToolArgs& a) {
    for (std::size_t i = 1; i + 1 < a.engineArgs.size(); ++i) {
        if (UpperCase(a.engineArgs[i]) == "-FP") return platform::FromHostText(a.engineArgs[i + 1]);
    }
    std::string path;
    PathJun(platform::ProgramFolder(), "Lumbra.par", path);
    return path;
}

// What the engine passed over without a word, one line each.
void WarnAboutParameterFile() {
    const LumbraGbState& g = Gb();
    const ParameterFileScan scan = ScanParameterFile(platform::HostPath(g.cfgFic));
    if (scan.longLines > 0) {
        PrintLine(
            stderr,
            "lumbractl: aviso: linhas com mais de 32767 caracteres (um \"=\" al\xE9m desse limite "
            "n\xE3o \xE9 lido): " +
                std::to_string(scan.longLines));
    }
    const std::int64_t dropped = g.cfgOpc ? g.cfgOpc->DroppedRows() : 0;
    if (dropped > 0) {
        PrintLine(stderr,
                  "lumbractl: aviso: linhas al\xE9m das 32767 que uma zona pode ter, ignoradas: " +
                      std::to_string(dropped));
    }
    if (scan.utf8) {
        PrintLine(stderr,
                  "lumbractl: aviso: o ficheiro de par\xE2metros est\xE1 em UTF-8, n\xE3o em "
                  "Windows-1252: os acentos aparecem como \"\xC3\xA9\" e saem como dois bytes");
    }
}

int RunWithConfiguration(const ToolArgs& a, const OptionTexts& texts) {
    // Only the engine's own switches reach the command line it reads: a text such as
    // --texto "-FP x" must not name the parameter file.
    std::vector<const char*> engineArgv;
    for (const std::string& arg : a.engineArgs)
        engineArgv.push_back(arg.c_str());
    platform::SetProgramArgs(static_cast<int>(engineArgv.size()), engineArgv.data());

    const PortHost ports(a.engineArgs.front());

    // Ctrl+C, SIGTERM and SIGHUP stop the command after the send under way and close the ports
    // (the session goes first, the catcher after it), so no port stays locked behind the tool.
    const platform::StopSignalCatcher stopSignals;
    ConsoleMsgSink sink;
    const ProgramSession session;
    try {
        LumbraIni();
    } catch (const platform::ProgramEnded&) {
        // The engine has shown its open-failure message, which names no file when none was found:
        // say which one was looked for, and why it could not be read.
        const std::string sought = SoughtParameterFile(a);
        const std::string why = UnreadableReason(platform::HostPath(sought));
        PrintLine(stderr, "lumbractl: ficheiro de par\xE2metros: " + sought +
                              (why.empty() ? "" : ": " + why));
        return kExitNoParameterFile;
    }
    WarnAboutParameterFile();
    std::optional<ByteReporter> reporter;
    if (a.bytes) reporter.emplace();
    // A signal that came while the configuration loaded stops the command before its first send.
    if (platform::StopRequested()) return StoppedBySignalStatus();
    int status = kExitChannelFailed;
    try {
        status = RunConfiguredCommand(a.command, texts, sink);
    } catch (const platform::ProgramEnded&) {
        status = kExitChannelFailed;
    }
    return platform::StopRequested() ? StoppedBySignalStatus() : status;
}

}  // namespace

int RunLumbraCtl(const std::vector<std::string>& args) {
    std::vector<const char*> argv;
    for (const std::string& arg : args)
        argv.push_back(arg.c_str());
    const ParsedArgs parsed = ParseToolArgs(static_cast<int>(argv.size()), argv.data());
    if (!parsed.error.empty()) return ReportUsageError(parsed.error);
    const ToolArgs& a = parsed.args;
    if (a.version) {
        PrintText(stdout, VersionText());
        return kExitOk;
    }
    if (a.help) {
        PrintText(stdout, a.command.empty() ? ToolHelp() : CommandHelp(a.command));
        return kExitOk;
    }

    OptionTexts texts;
    for (const auto& [name, value] : a.options) {
        std::string bytes;
        if (!ArgumentToCp1252(value, bytes)) {
            return ReportUsageError(
                "o valor de " + name +
                " tem caracteres que o Windows-1252 n\xE3o tem: " + UnencodableCharacters(value));
        }
        texts[name] = bytes;
    }

    if (a.command == "converter") return RunConverter(texts);
    if (a.command == "portas") return RunPortas();
    if (a.command == "simular") return RunSimular(texts, a.json);
    return RunWithConfiguration(a, texts);
}

}  // namespace lumbra::ctl
