#include "tools/help_text.h"

#include <map>

namespace lumbra::ctl {
namespace {

const char* const kUsage =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... COMANDO [OP\xC7\xD5"
    "ES]\n"
    "Experimente \"lumbractl --help\".\n";

const char* const kToolHelp =
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
    "                     por exemplo -COM1 /dev/ttyUSB0\n"
    "  --bytes            depois de cada envio, a porta e os bytes enviados\n"
    "  --help             esta ajuda; \"lumbractl COMANDO --help\" explica\n"
    "                     o comando\n"
    "  --version          a vers\xE3o\n"
    "\n"
    "Uma linha escolhe-se pelo n\xFAmero que \"listar\" mostra (1 \xE9 a primeira)\n"
    "ou pelo nome; sem a op\xE7\xE3o vale a primeira linha da zona. Os textos v\xE3o\n"
    "em Windows-1252: um car\xE1"
    "cter que l\xE1 n\xE3o exista \xE9 recusado.\n"
    "\n"
    "Estado de sa\xED"
    "da: 0 tudo correu bem; 1 uma opera\xE7\xE3o numa porta falhou\n"
    "(a mensagem de erro sai no erro padr\xE3o); 2 erro de utiliza\xE7\xE3o; 3 o\n"
    "ficheiro de par\xE2metros n\xE3o abre; 130 interrompido com Ctrl+C (143 com\n"
    "SIGTERM, 129 com SIGHUP), depois do envio em curso e com a porta fechada.\n"
    "Uma porta que n\xE3o aceita nenhum byte durante 5 s falha o envio (1).\n";

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

const char* const kHelpCiclo =
    "Uso: lumbractl [-FP FICHEIRO] [-COMn DISPOSITIVO]... ciclo\n"
    "                 [--porta P] [--modo M] [--bytes]\n"
    "\n"
    "O bot\xE3o \"Ciclo\": envia 338 vezes o comando do modo M para a porta P,\n"
    "com [P1] e [P2] de 10 a 250 (de 20 em 20) e [MO] 0 e 1. Num terminal,\n"
    "o progresso sai no erro padr\xE3o. Ctrl+C, SIGTERM ou SIGHUP p\xE1ram o ciclo\n"
    "depois do envio em curso (estado de sa\xED"
    "da 130, 143, 129); uma falha na porta\n"
    "tamb\xE9m o p\xE1ra (1).\n"
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

const char* const kHelpPortas =
    "Uso: lumbractl portas\n"
    "\n"
    "As portas s\xE9rie desta m\xE1quina: o dispositivo, a descri\xE7\xE3o, o\n"
    "fabricante, o n\xFAmero de s\xE9rie e o USB fabricante:produto quando se\n"
    "sabem, e se este utilizador a pode abrir (se n\xE3o, o grupo a que se\n"
    "deve juntar).\n";

const char* const kHelpSimular =
    "Uso: lumbractl simular [--impressora N] [--display M] [--velocidade B]\n"
    "                       [--pagina-display P] [--json]\n"
    "\n"
    "Uma impressora de tal\xF5"
    "es com gaveta e um display de cliente virtuais, cada\n"
    "um num pseudo-terminal, para experimentar uma configura\xE7\xE3o sem hardware.\n"
    "A primeira linha diz as op\xE7\xF5"
    "es -COMn que ligam as portas da configura\xE7\xE3o a eles;\n"
    "depois mostra o que cada dispositivo faz, at\xE9 Ctrl+C: as linhas\n"
    "impressas (em PC437, ou na p\xE1gina que ESC t escolher), os cortes, os\n"
    "impulsos da gaveta, as duas linhas do display e os comandos que n\xE3o\n"
    "conhece (em hexadecimal). Se a porta for aberta com outra velocidade ou\n"
    "outros bits de paragem, diz-o: um dispositivo real mostraria lixo.\n"
    "  --impressora N     a porta da impressora e da gaveta (sem ela, 1)\n"
    "  --display M        a porta do display (sem ela, 2)\n"
    "  --velocidade B     a velocidade que ambos esperam (sem ela, 9600);\n"
    "                     o formato \xE9 sempre n,8,1\n"
    "  --pagina-display P os caracteres do display: 1252 (sem ela), 437,\n"
    "                     850 ou 860\n"
    "  --json             um objeto JSON por linha, para programas\n"
    "\n"
    "Exemplo, em dois terminais:\n"
    "  $ lumbractl simular\n"
    "  -COM1 /dev/pts/5 -COM2 /dev/pts/6\n"
    "  ...\n"
    "  $ lumbractl -FP Lumbra.par -COM1 /dev/pts/5 -COM2 /dev/pts/6 abrir\n"
    "e o primeiro mostra:\n"
    "  gaveta: impulso no pino 2, 50 ms ligado, 500 ms desligado\n";

}  // namespace

std::string UsageText() {
    return kUsage;
}

std::string ToolHelp() {
    return kToolHelp;
}

std::string CommandHelp(const std::string& command) {
    static const std::map<std::string, const char*> help = {
        {"listar", kHelpListar},       {"teste", kHelpTeste},       {"abrir", kHelpAbrir},
        {"ciclo", kHelpCiclo},         {"executar", kHelpExecutar}, {"mostrar", kHelpMostrar},
        {"converter", kHelpConverter}, {"portas", kHelpPortas},     {"simular", kHelpSimular},
    };
    const auto it = help.find(command);
    return it != help.end() ? it->second : kToolHelp;
}

std::string VersionText() {
    return "lumbractl " LUMBRA_VERSION "\n";
}

}  // namespace lumbra::ctl
