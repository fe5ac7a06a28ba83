#pragma once
// The commands that work on the loaded configuration: listar, and the window's device actions
// teste ("Teste de ligação"), abrir ("Abrir"), ciclo ("Ciclo"), executar ("Executar") and mostrar
// ("Mostrar"). Each chooses its rows from its options, sets the selected rows as the window's
// lists would, and calls the same action the window calls.

#include <map>
#include <string>

#include "tools/console_msg_sink.h"

namespace lumbra::ctl {

// The option values of a command, in Windows-1252, by option name ("--porta").
using OptionTexts = std::map<std::string, std::string>;

// Runs command after LumbraIni; returns the exit status. A row that cannot be chosen is a usage
// error and sends nothing; a zone without rows, its option left out, is the window's empty list.
int RunConfiguredCommand(const std::string& command, const OptionTexts& texts,
                         const ConsoleMsgSink& sink);

}  // namespace lumbra::ctl
