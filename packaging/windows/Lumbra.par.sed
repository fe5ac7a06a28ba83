# The sample parameter file as it ships for Windows: the same rows, with the file ports and the
# parallel printer named as Windows names them. Applied byte-wise (LC_ALL=C) to the
# Windows-1252 sample; \xE9 is "é".
s#^\(Pasta base \[DirBas\]=\)/tmp/lumbra#\1C:\\Lumbra#
s#^\('   COM1 \).* /dev/ttyS0; com -COM1 /dev/ttyUSB0 \(.*\)$#\1\xE9 a porta COM1 do Windows; com -COM1 COM12 \2#
s#^\(Ficheiro de teste \[FIC\]=\)/tmp/\(lumbra-impressora.txt\)#\1\2#
s#^\(Impressora paralela \[LPT\]=\)/dev/lp0#\1LPT1#
s#^\(Display em ficheiro \[FIC\]=\)/tmp/\(lumbra-display.txt\)#\1\2#
