// The device buttons of the three pages, pressed in the real window: the bytes that reach a
// pseudo-terminal standing in for the device, or a real file, are exactly what the technician asked
// for.

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "tests/app/window_driver.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {

class LumbraDevicesTest : public QObject {
    Q_OBJECT

  private:
    // Connection ports: 0 the printer's pseudo-terminal, 1 a file, 2 a port with no device.
    // Display ports: 0 the display's pseudo-terminal, 1 a file.
    enum Port { Serial = 0, File = 1, Missing = 2 };

    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::PtyPair> printer_;
    std::unique_ptr<test::PtyPair> display_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;

    std::string missingDevice() const { return dir_->file("no-such-tty"); }

    // What the port received: the pseudo-terminal's bytes, or the file's.
    std::string received(test::PtyPair& pty, int port, const char* file) {
        return port == Serial ? pty.readAvailable(std::chrono::milliseconds(100))
                              : dir_->read(file);
    }

  private slots:
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        printer_ = std::make_unique<test::PtyPair>();
        display_ = std::make_unique<test::PtyPair>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
        dir_->write("Lumbra.par", test::ParFile({
                                      "#LIG Portas - Liga\xE7\xE3o",
                                      "Impressora [SER]=COM1,9600,n,8,1",
                                      "Ficheiro [FIC]=" + dir_->file("lig.txt"),
                                      "Sem dispositivo [SER]=COM3,9600,n,8,1",
                                      "##",
                                      "#GAV Gaveta - Modos [CnvChr=0]",
                                      "ESC p [ESC]=chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)",
                                      "Lista [ESC]=chr$(27,112,0,25,250)",
                                      "Texto [TXT]=\"A\"+chr$(13,10)",
                                      "##",
                                      "#DIS_OPC Display - Portas",
                                      "Display [SER]=COM2,9600,n,8,1",
                                      "Display em ficheiro [FIC]=" + dir_->file("dis.txt"),
                                      "##",
                                      "#DIS_CMD Display - Comandos",
                                      "Limpar [CLR]=chr$(12)",
                                      "##",
                                  }));
        test::SetCommandLine(
            dir_->file("Lumbra.par"),
            {{1, printer_->slavePath()}, {2, display_->slavePath()}, {3, missingDevice()}});
        w_ = test::StartProgram();
    }

    void cleanup() {
        w_.reset();
        test::ResetProgram();
        boxes_.reset();
        display_.reset();
        printer_.reset();
        dir_.reset();
    }

    void connectionTestSendsTheLineAsThePortWantsIt_data() {
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("retype");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("preset text, serial: CR LF once")
            << int(Serial) << false << QString() << QByteArray("Teste de liga\xE7\xE3o\r\n");
        QTest::newRow("preset text, file: the file adds its own line end")
            << int(File) << false << QString() << QByteArray("Teste de liga\xE7\xE3o\r\n\r\n");
        QTest::newRow("typed accents and the euro, one byte each")
            << int(Serial) << true << QString::fromUtf8("Preço 5€ à Hélio")
            << QByteArray("Pre\xE7o 5\x80 \xE0 H\xE9lio\r\n");
        QTest::newRow("characters Windows-1252 lacks are refused by the box")
            << int(Serial) << true << QString::fromUtf8("a→bΩc") << QByteArray("abc\r\n");
        QTest::newRow("emptied box sends the line end only")
            << int(Serial) << true << QString() << QByteArray("\r\n");
    }

    void connectionTestSendsTheLineAsThePortWantsIt() {
        QFETCH(int, port);
        QFETCH(bool, retype);
        QFETCH(QString, typed);
        QFETCH(QByteArray, bytes);
        test::Choose(*w_, w_->ui.cbLigPor, port);
        if (retype) test::Retype(*w_, w_->ui.txLigTst, typed);
        test::Click(*w_, w_->ui.cmLigTst);
        QCOMPARE(QByteArray::fromStdString(received(*printer_, port, "lig.txt")), bytes);
        QVERIFY(boxes_->boxes().empty());
        QCOMPARE(w_->ui.laLigRes->text(), QString());
    }

    void abrirSendsTheCommandDecodedWithoutPlusAndQuotes_data() {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("pieces joined by +") << 0 << QByteArray("\x1Bp\x00\x19\xFA", 5);
        QTest::newRow("one code list") << 1 << QByteArray("\x1Bp\x00\x19\xFA", 5);
        QTest::newRow("quoted text and a line end") << 2 << QByteArray("A\r\n");
    }

    void abrirSendsTheCommandDecodedWithoutPlusAndQuotes() {
        QFETCH(int, mode);
        QFETCH(QByteArray, bytes);
        test::Choose(*w_, w_->ui.cbGavAbr, mode);
        test::Click(*w_, w_->ui.cmGavAbr);
        QCOMPARE(QByteArray::fromStdString(printer_->readAvailable(std::chrono::milliseconds(100))),
                 bytes);
        QVERIFY(boxes_->boxes().empty());
    }

    void displayButtonsSendExactlyTheCommandOrTheText_data() {
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("execute");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("Executar Limpar, read as code 12")
            << int(Serial) << true << QString() << QByteArray("\x0C");
        QTest::newRow("Mostrar the preset text, nothing after it")
            << int(Serial) << false << QString() << QByteArray("Texto para display");
        QTest::newRow("Mostrar on a file port adds no line end")
            << int(File) << false << QString() << QByteArray("Texto para display");
        // Typed notation is not decoded: chr$(12) arrives as its eight characters.
        QTest::newRow("typed text character for character, the arrow refused")
            << int(Serial) << false << QString::fromUtf8("Olá → chr$(12) €")
            << QByteArray("Ol\xE1  chr$(12) \x80");
    }

    void displayButtonsSendExactlyTheCommandOrTheText() {
        QFETCH(int, port);
        QFETCH(bool, execute);
        QFETCH(QString, typed);
        QFETCH(QByteArray, bytes);
        test::Choose(*w_, w_->ui.cbDisPor, port);
        if (!typed.isEmpty()) test::Retype(*w_, w_->ui.txDisTxm, typed);
        test::Click(*w_, execute ? w_->ui.cmDisExe : w_->ui.cmDisTxm);
        QCOMPARE(QByteArray::fromStdString(received(*display_, port, "dis.txt")), bytes);
        QVERIFY(boxes_->boxes().empty());
    }

    void aMissingDeviceIsReportedAndTheProgramGoesOn() {
        test::Choose(*w_, w_->ui.cbLigPor, Missing);
        test::Click(*w_, w_->ui.cmGavAbr);
        // Each step of open, write, close reports its own failure and the next step still runs.
        QStringList operations;
        for (const test::RecordedBox& box : boxes_->boxes()) {
            QCOMPARE(box.title, std::string("Erro no ficheiro: COM3"));
            QVERIFY(box.icon == platform::MsgIcon::Critical);
            operations << QString::fromStdString(box.text).section(QLatin1Char('|'), 0, 0);
        }
        QCOMPARE(operations, QStringList({"Funcao: Abrir", "Funcao: Escrever", "Funcao: Fechar"}));
        QVERIFY(boxes_->boxes()[0].text.find(missingDevice()) != std::string::npos);
        QVERIFY(boxes_->endings().empty());

        // The next action on a working port is untouched by the failure.
        boxes_->clear();
        test::Choose(*w_, w_->ui.cbLigPor, Serial);
        test::Click(*w_, w_->ui.cmGavAbr);
        QCOMPARE(printer_->readAvailable(std::chrono::milliseconds(100)),
                 std::string("\x1Bp\x00\x19\xFA", 5));
        QVERIFY(boxes_->boxes().empty());
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraDevicesTest)
#include "lumbra_devices_qtest.moc"
