#include "tools/host_help.h"

namespace lumbra::ctl {

const HostHelp& ThisHostHelp() {
    static const HostHelp help = {
        "/dev/ttyUSB0\n",

        "Estado de sa\xED"
        "da: 0 tudo correu bem; 1 uma opera\xE7\xE3o numa porta falhou\n"
        "(a mensagem de erro sai no erro padr\xE3o); 2 erro de utiliza\xE7\xE3o; 3 o\n"
        "ficheiro de par\xE2metros n\xE3o abre; 130 interrompido com Ctrl+C (143 com\n"
        "SIGTERM, 129 com SIGHUP), depois do envio em curso e com a porta fechada.\n"
        "Uma porta que n\xE3o aceita nenhum byte durante 5 s falha o envio (1).\n",

        "Ctrl+C, SIGTERM ou SIGHUP p\xE1ram o ciclo\n"
        "depois do envio em curso (estado de sa\xED"
        "da 130, 143, 129); uma falha na porta\n"
        "tamb\xE9m o p\xE1ra (1).\n",

        "Uso: lumbractl portas\n"
        "\n"
        "As portas s\xE9rie desta m\xE1quina: o dispositivo, a descri\xE7\xE3o, o\n"
        "fabricante, o n\xFAmero de s\xE9rie e o USB fabricante:produto quando se\n"
        "sabem, e se este utilizador a pode abrir (se n\xE3o, o grupo a que se\n"
        "deve juntar).\n",

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
        "  gaveta: impulso no pino 2, 50 ms ligado, 500 ms desligado\n",
    };
    return help;
}

}  // namespace lumbra::ctl
