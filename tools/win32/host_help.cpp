#include "tools/host_help.h"

namespace lumbra::ctl {

const HostHelp& ThisHostHelp() {
    static const HostHelp help = {
        "\\\\.\\COM12\n",

        "Estado de sa\xED"
        "da: 0 tudo correu bem; 1 uma opera\xE7\xE3o numa porta falhou\n"
        "(a mensagem de erro sai no erro padr\xE3o); 2 erro de utiliza\xE7\xE3o; 3 o\n"
        "ficheiro de par\xE2metros n\xE3o abre; 130 interrompido com Ctrl+C (129 ao\n"
        "fechar a consola), depois do envio em curso e com a porta fechada.\n"
        "Uma porta que n\xE3o aceita nenhum byte durante 5 s falha o envio (1).\n",

        "Ctrl+C ou fechar a consola p\xE1ram o\n"
        "ciclo depois do envio em curso (estado de sa\xED"
        "da 130, 129); uma falha na\n"
        "porta tamb\xE9m o p\xE1ra (1).\n",

        "Uso: lumbractl portas\n"
        "\n"
        "As portas s\xE9rie desta m\xE1quina: o nome (COMn), a descri\xE7\xE3o e o\n"
        "fabricante quando se sabem. Nenhuma porta \xE9 aberta para as listar.\n",

        "Uso: lumbractl simular\n"
        "\n"
        "Os dispositivos virtuais (uma impressora de tal\xF5"
        "es com gaveta e um\n"
        "display de cliente) vivem em pseudo-terminais, que o Windows n\xE3o tem:\n"
        "este comando s\xF3 existe no Linux.\n",
    };
    return help;
}

}  // namespace lumbra::ctl
