#include "tools/help_text.h"

#include <map>

#include "tools/host_help.h"

namespace lumbra::ctl {
namespace {

const char* const kUsage =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO [OP\xC7\xD5"
    "ES]\n"
    "Experimente \"lumbractl --help\".\n";

// The help without a command, around the host's device example and exit statuses.
const char* const kToolHelpHead =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO [OP\xC7\xD5"
    "ES]\n"
    "\n"
    "Faz na linha de comandos o que faz a janela \"Configura\xE7\xE3o para POS\":\n"
    "envia aos dispositivos configurados no ficheiro de par\xE2metros o teste\n"
    "de liga\xE7\xE3o, a abertura da gaveta e os comandos do display.\n"
    "\n"
    "Comandos:\n"
    "  listar      as linhas das zonas LIG, GAV, DIS_OPC e DIS_CMD\n"
    "  teste       o teste de liga\xE7\xE3o, para uma porta da zona LIG\n"
    "  abrir       abre a gaveta com um modo da zona GAV\n"
    "  ciclo       os 338 envios do \"Ciclo\" da gaveta\n"
    "  executar    um comando da zona DIS_CMD, para o display\n"
    "  mostrar     um texto, para o display\n"
    "  converter   converte entre decimal e hexadecimal\n"
    "  portas      as portas s\xE9rie desta m\xE1quina\n"
    "  simular     uma impressora com gaveta e um display virtuais\n"
    "\n"
    "Op\xE7\xF5"
    "es gerais:\n"
    "  -FP FICHEIRO       o ficheiro de par\xE2metros\n"
    "                     (sem -FP: Lumbra.par na pasta do programa)\n"
    "  -COMn DISPOSITIVO  a porta COMn (n de 1 a 9) \xE9 este dispositivo,\n"
    "                     por exemplo -COM1 ";
const char* const kToolHelpMiddle =
    "  --bytes            depois de cada envio, a porta e os bytes enviados\n"
    "  --help             esta ajuda; \"lumbractl COMANDO --help\" explica\n"
    "                     o comando\n"
    "  --version          a vers\xE3o\n"
    "\n"
    "Uma linha escolhe-se pelo n\xFAmero que \"listar\" mostra (1 \xE9 a primeira)\n"
    "ou pelo nome; sem a op\xE7\xE3o vale a primeira linha da zona, e numa zona\n"
    "sem linhas nenhuma, como na janela: sem porta n\xE3o se envia nada, sem\n"
    "modo ou comando a porta abre e fecha sem nada escrito. Os textos v\xE3o\n"
    "em Windows-1252: um car\xE1"
    "cter que l\xE1 n\xE3o exista \xE9 recusado.\n"
    "\n";

const char* const kHelpListar =
    "Uso: lumbractl [-FP FICHEIRO] listar\n"
    "\n"
    "Uma linha por cada linha configurada, zonas LIG, GAV, DIS_OPC e\n"
    "DIS_CMD por esta ordem:\n"
    "  ZONA <TAB> N <TAB> nome <TAB> tipo <TAB> valor\n"
    "Os bytes de controlo saem escritos chr$(N), de modo que\n"
    "\"nome [tipo]=valor\" se pode colar de volta num ficheiro de par\xE2metros.\n";

const char* const kHelpTeste =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... teste\n"
    "                 [--porta P] [--texto T] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Teste de liga\xE7\xE3o\": envia o texto T e CR LF para a porta P.\n"
    "  --porta P   uma linha da zona LIG, pelo n\xFAmero ou pelo nome\n"
    "              (sem ela, a primeira)\n"
    "  --texto T   o texto (sem ela, \"Teste de liga\xE7\xE3o\")\n"
    "  --bytes     mostra os bytes enviados\n";

const char* const kHelpAbrir =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... abrir\n"
    "                 [--porta P] [--modo M] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Abrir\": envia o comando do modo M para a porta P, preparado\n"
    "como a janela o prepara (sem \"+\", chr$( convertido, sem aspas).\n"
    "  --porta P   uma linha da zona LIG, pelo n\xFAmero ou pelo nome\n"
    "              (sem ela, a primeira)\n"
    "  --modo M    uma linha da zona GAV, pelo n\xFAmero ou pelo nome\n"
    "              (sem ela, a primeira)\n"
    "  --bytes     mostra os bytes enviados\n";

// The help of ciclo, around what stops it on this host.
const char* const kHelpCicloHead =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... ciclo\n"
    "                 [--porta P] [--modo M] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Ciclo\": envia 338 vezes o comando do modo M para a porta P,\n"
    "com [P1] e [P2] de 10 a 250 (de 20 em 20) e [MO] 0 e 1. Num terminal,\n"
    "o progresso sai no erro padr\xE3o. ";
const char* const kHelpCicloTail =
    "  --porta P   uma linha da zona LIG, pelo n\xFAmero ou pelo nome\n"
    "              (sem ela, a primeira)\n"
    "  --modo M    uma linha da zona GAV, pelo n\xFAmero ou pelo nome\n"
    "              (sem ela, a primeira)\n"
    "  --bytes     mostra os bytes de cada envio\n";

const char* const kHelpExecutar =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... executar\n"
    "                 [--display D] [--comando C] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Executar\": envia o comando C, tal como foi lido, para a porta\n"
    "de display D.\n"
    "  --display D   uma linha da zona DIS_OPC, pelo n\xFAmero ou pelo nome\n"
    "                (sem ela, a primeira)\n"
    "  --comando C   uma linha da zona DIS_CMD, pelo n\xFAmero ou pelo nome\n"
    "                (sem ela, a primeira)\n"
    "  --bytes       mostra os bytes enviados\n";

const char* const kHelpMostrar =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... mostrar\n"
    "                 [--display D] [--texto T] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Mostrar\": envia o texto T, sem mais nada, para a porta de\n"
    "display D.\n"
    "  --display D   uma linha da zona DIS_OPC, pelo n\xFAmero ou pelo nome\n"
    "                (sem ela, a primeira)\n"
    "  --texto T     o texto (sem ela, \"Texto para display\")\n"
    "  --bytes       mostra os bytes enviados\n";

const char* const kHelpConverter =
    "Uso: lumbractl converter --dec V\n"
    "     lumbractl converter --hex V\n"
    "\n"
    "A \"Convers\xE3o de base\": mostra o que a outra caixa mostraria, \"Erro\"\n"
    "inclu\xED"
    "do.\n"
    "  --dec V   o n\xFAmero decimal V, em hexadecimal\n"
    "  --hex V   o n\xFAmero hexadecimal V, em decimal\n";

}  // namespace

std::string UsageText() {
    return kUsage;
}

std::string ToolHelp() {
    const HostHelp& host = ThisHostHelp();
    return std::string(kToolHelpHead) + host.deviceExample + kToolHelpMiddle + host.exitStatuses;
}

std::string CommandHelp(const std::string& command) {
    const HostHelp& host = ThisHostHelp();
    const std::map<std::string, std::string> help = {
        {"listar", kHelpListar},
        {"teste", kHelpTeste},
        {"abrir", kHelpAbrir},
        {"ciclo", std::string(kHelpCicloHead) + host.cycleStops + kHelpCicloTail},
        {"executar", kHelpExecutar},
        {"mostrar", kHelpMostrar},
        {"converter", kHelpConverter},
        {"portas", host.portas},
        {"simular", host.simular},
    };
    const auto it = help.find(command);
    return it != help.end() ? it->second : ToolHelp();
}

std::string VersionText() {
    return "lumbractl " LUMBRA_VERSION "\n";
}

}  // namespace lumbra::ctl
