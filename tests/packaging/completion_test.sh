#!/usr/bin/env bash
# Drives lumbractl's bash completion as the shell does (COMP_WORDS, COMP_CWORD, then COMPREPLY)
# against the real lumbractl and a parameter file whose row names hold blanks, accents and the
# shell's special characters. Each reply, read back by the shell, must be the name itself.
#   completion_test.sh LUMBRACTL COMPLETION_SCRIPT
set -uo pipefail
ctl=$1
source "$2"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
par=$work/Lumbra.par
# The parameter file is Windows-1252: "s\xe9rie" is "série", "Sauda\xe7\xe3o" "Saudação".
printf "'Nome : Lumbra.par\r\n'Tipo : PAR\r\n'Data : 2026-11-25\r\n'Versao : 1.0\r\n'Descricao : teste\r\n\r\n%s" \
    "$(printf '#LIG Portas\r\nImpressora s\xe9rie [SER]=COM1,9600,n,8,1\r\nImpressora USB [FIC]=/tmp/x\r\n##\r\n#GAV Gaveta\r\nPino 5 (ESC p) [ESC]=chr$(27)\r\nPino 2 & "ESC" [ESC]=chr$(27)\r\n##\r\n#DIS_OPC Display\r\nDisplay s\xe9rie [SER]=COM2,9600,n,8,1\r\n##\r\n#DIS_CMD Comandos\r\nSauda\xe7\xe3o [MSG]=Ol\xe1\r\nLimpar [CLR]=chr$(12)\r\n##\r\n')" >"$par"
touch "$work/fake-tty"

failures=0
fail() { echo "FAIL [${LC_ALL:-}] $*" >&2; ((failures++)); }
# complete_case "EXPECTED REPLIES, one per line" WORD...: the last word is the one being completed.
complete_case() {
    local expected got
    expected=$(printf '%s' "$1" | sort)
    shift
    COMP_WORDS=("$ctl" "$@") COMP_CWORD=$# COMPREPLY=()
    _lumbractl
    got=$(printf '%s\n' "${COMPREPLY[@]}" | sort)
    [[ $got == "$expected" ]] ||
        fail "completing: $*"$'\n'"  expected: $(printf '%q ' "$expected")"$'\n'"  got: $(printf '%q ' "$got")"
}
# read_back "REPLY" "NAME": the reply, as the shell reads it back, is the one word NAME.
read_back() {
    local -a words
    eval "words=($1)"
    [[ ${#words[@]} -eq 1 && ${words[0]} == "$2" ]] || fail "$1 reads back as ${#words[@]} word(s): ${words[*]}"
}

run_cases() {
    complete_case $'listar\nteste\nabrir\nciclo\nexecutar\nmostrar\nconverter\nportas\nsimular' ""
    complete_case $'converter\nciclo' c
    complete_case $'-COM1\n-COM2\n-COM3\n-COM4\n-COM5\n-COM6\n-COM7\n-COM8\n-COM9' -FP "$par" -C
    complete_case $'--porta\n--texto\n--bytes\n--help' -FP "$par" teste --
    complete_case $'--impressora\n--display\n--velocidade\n--pagina-display\n--json\n--help' simular --
    complete_case $'850\n860' simular --pagina-display 8
    complete_case "" simular --display ""
    complete_case "$work/fake-tty" -FP "$par" -COM1 "$work/fa"
    complete_case "$par" -fp "$work/Lu"
    # Row names of the -FP file: whole, escaped for a bare word, raw inside an open quote.
    complete_case $'Impressora\\ série\nImpressora\\ USB' -FP "$par" abrir --porta Imp
    complete_case $'Impressora série' -FP "$par" teste --porta "\"Impressora s"
    complete_case $'Impressora série' -FP "$par" teste --porta "'Impressora s"
    complete_case $'Impressora\\ série' -FP "$par" teste --porta "Impressora\\ s"
    complete_case $'Pino\\ 5\\ \\(ESC\\ p\\)\nPino\\ 2\\ \\&\\ \\"ESC\\"' -FP "$par" abrir --modo P
    complete_case $'Pino 2 & \\"ESC\\"' -FP "$par" abrir --modo '"Pino 2'
    complete_case $'Display\\ série' -FP "$par" executar --display ""
    complete_case $'Saudação' -FP "$par" executar --comando Sa
    complete_case $'Saudação\nLimpar' -FP "$par" executar --comando = ""
    # The first -FP names the file, as for the program itself.
    complete_case $'Display\\ série' -FP "$par" -FP "$work/nenhum.par" mostrar --display D
    # No parameter file: nothing to offer, and nothing on the terminal.
    complete_case "" -FP "$work/nenhum.par" abrir --porta ""

    read_back 'Impressora\ série' 'Impressora série'
    read_back 'Pino\ 2\ \&\ \"ESC\"' 'Pino 2 & "ESC"'
    read_back '"Pino 2 & \"ESC\""' 'Pino 2 & "ESC"'
}

# The shell takes a word apart by characters in a UTF-8 locale and by bytes in the C one.
for locale in C.UTF-8 C; do
    LC_ALL=$locale run_cases
done
[[ $failures -eq 0 ]] && echo "completion: every case passed"
exit $((failures > 0))
