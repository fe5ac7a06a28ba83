// The selection lists as the device buttons read them: each list position reaches its own row,
// a new choice counts at once, and lists left empty by the configuration make the buttons inert.

#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <map>

#include "tests/app/window_driver.h"
#include "tests/support/pty_pair.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {

class LumbraListsTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;

    // Every file in the test's folder but the parameter file, with its bytes.
    std::map<std::string, std::string> outputFiles() const {
        std::map<std::string, std::string> files;
        for (const auto& entry : std::filesystem::directory_iterator(dir_->path())) {
            const std::string name = entry.path().filename().string();
            if (name != "Lumbra.par") files[name] = dir_->read(name);
        }
        return files;
    }

    void pressEveryDeviceButton() {
        test::Click(*w_, w_->ui.cmLigTst);
        test::Click(*w_, w_->ui.cmGavAbr);
        test::Click(*w_, w_->ui.cmAbrCic);
        test::Click(*w_, w_->ui.cmDisExe);
        test::Click(*w_, w_->ui.cmDisTxm);
    }

  private slots:
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
    }

    void cleanup() {
        w_.reset();
        test::ResetProgram();
        boxes_.reset();
        dir_.reset();
    }

    void eachPositionSelectsItsOwnRowEvenUnderTheSameName_data() {
        QTest::addColumn<int>("port");
        QTest::addColumn<int>("command");
        QTest::addColumn<int>("display");
        QTest::newRow("first Porta, first Display, first Comando") << 0 << 0 << 0;
        QTest::newRow("second Porta, second Comando") << 1 << 1 << 0;
        QTest::newRow("second Display") << 0 << 0 << 1;
    }

    void eachPositionSelectsItsOwnRowEvenUnderTheSameName() {
        QFETCH(int, port);
        QFETCH(int, command);
        QFETCH(int, display);
        test::PtyPair first;
        test::PtyPair second;
        dir_->write(
            "Lumbra.par",
            test::ParFile({"#LIG Portas", "Porta [SER]=COM1,9600,n,8,1",
                           "Porta [SER]=COM2,9600,n,8,1", "##", "#DIS_OPC Display",
                           "Display [FIC]=" + dir_->file("d1.txt"),
                           "Display [FIC]=" + dir_->file("d2.txt"), "##", "#DIS_CMD Comandos",
                           "Comando [A]=chr$(49)", "Comando [A]=chr$(50)", "##"}));
        test::SetCommandLine(dir_->file("Lumbra.par"),
                             {{1, first.slavePath()}, {2, second.slavePath()}});
        w_ = test::StartProgram();

        // Each choice is used by the very next button.
        test::Choose(*w_, w_->ui.cbLigPor, port);
        test::Click(*w_, w_->ui.cmLigTst);
        QCOMPARE(first.readAvailable(std::chrono::milliseconds(100)),
                 std::string(port == 0 ? "Teste de liga\xE7\xE3o\r\n" : ""));
        QCOMPARE(second.readAvailable(std::chrono::milliseconds(100)),
                 std::string(port == 1 ? "Teste de liga\xE7\xE3o\r\n" : ""));

        test::Choose(*w_, w_->ui.cbDisPor, display);
        test::Choose(*w_, w_->ui.cbDisCmd, command);
        test::Click(*w_, w_->ui.cmDisExe);
        const std::map<std::string, std::string> expected = {
            {display == 0 ? "d1.txt" : "d2.txt", command == 0 ? "1" : "2"}};
        QVERIFY(outputFiles() == expected);
        QVERIFY(boxes_->boxes().empty());
    }

    void missingOrEmptyZonesLeaveEmptyListsAndButtonsThatDoNothing_data() {
        QTest::addColumn<QStringList>("zones");
        QTest::newRow("no device zones at all")
            << QStringList{"#DEF Geral", "Modo [DbgModo]=0", "##"};
        QTest::newRow("every zone present without lines")
            << QStringList{"#LIG Portas",      "' sem linhas", "##", "#GAV Gaveta",       "##",
                           "#DIS_OPC Display", "Sem tipo=x",   "##", "#DIS_CMD Comandos", "##"};
    }

    void missingOrEmptyZonesLeaveEmptyListsAndButtonsThatDoNothing() {
        QFETCH(QStringList, zones);
        std::vector<std::string> lines;
        for (const QString& z : zones)
            lines.push_back(z.toStdString());
        dir_->write("Lumbra.par", test::ParFile(lines));
        test::SetCommandLine(dir_->file("Lumbra.par"));
        w_ = test::StartProgram();
        for (const QComboBox* list :
             {w_->ui.cbLigPor, w_->ui.cbGavAbr, w_->ui.cbDisPor, w_->ui.cbDisCmd}) {
            QCOMPARE(list->count(), 0);
            QCOMPARE(list->currentIndex(), -1);
        }
        QCOMPARE(w_->ui.txGavAbr->text(), QString());
        pressEveryDeviceButton();
        QCOMPARE(w_->ui.cmAbrCic->text(), QStringLiteral("Ciclo"));
        w_->ui.mnuLerCfg->trigger();
        QVERIFY(boxes_->boxes().empty());
        QVERIFY(outputFiles().empty());
    }

    // With ports configured but no mode or command, the buttons open and close the port and write
    // nothing: the empty row 0 stands for "nothing selected".
    void withPortsButNoModeOrCommandThePortIsOpenedAndNothingWritten() {
        dir_->write(
            "Lumbra.par",
            test::ParFile({"#LIG Portas", "Ficheiro [FIC]=" + dir_->file("lig.txt"), "##",
                           "#DIS_OPC Display", "Display [FIC]=" + dir_->file("dis.txt"), "##"}));
        test::SetCommandLine(dir_->file("Lumbra.par"));
        w_ = test::StartProgram();
        test::Click(*w_, w_->ui.cmGavAbr);
        test::Click(*w_, w_->ui.cmAbrCic);
        test::Click(*w_, w_->ui.cmDisExe);
        const std::map<std::string, std::string> expected = {{"lig.txt", ""}, {"dis.txt", ""}};
        QVERIFY(outputFiles() == expected);
        QVERIFY(boxes_->boxes().empty());
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraListsTest)
#include "lumbra_lists_qtest.moc"
