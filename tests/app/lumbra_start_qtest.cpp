// The program's start, re-reading and editing of its parameter file, driven through the real
// window: which file is read, what the lists show afterwards, and how a missing file ends it.

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <filesystem>

#include "tests/app/window_driver.h"
#include "tests/support/recording_msg_sink.h"
#include "tests/support/temp_dir.h"

namespace lumbra {
namespace {

std::string Zones(const std::string& lig, const std::string& gav) {
    return test::ParFile({"#LIG Portas", lig, "##", "#GAV Gaveta - Modos [CnvChr=0]", gav, "##",
                          "#DIS_OPC Display", "Display [FIC]=/dev/null", "##", "#DIS_CMD Comandos",
                          "Limpar [CLR]=chr$(12)", "Cursor [HOME]=chr$(11)", "##"});
}

QStringList Names(std::initializer_list<const char*> utf8) {
    QStringList names;
    for (const char* n : utf8)
        names << QString::fromUtf8(n);
    return names;
}

}  // namespace

class LumbraStartTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;
    QByteArray path_;

  private slots:
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
        path_ = qgetenv("PATH");
    }

    void cleanup() {
        w_.reset();
        test::ResetProgram();
        qputenv("PATH", path_);
        boxes_.reset();
        dir_.reset();
    }

    void theStartFillsEveryListInFileOrderAndSelectsTheFirstEntries() {
        dir_->write("Lumbra.par", Zones("Impress\xE3o [ser]=COM1,9600,n,8,1\r\nFicheiro [FIC]=x",
                                        "Gaveta 1 [ESC]=chr$(7)\r\nGaveta 2 [ESC]=chr$(8)"));
        test::SetCommandLine(dir_->file("Lumbra.par"));
        w_ = test::StartProgram();
        QCOMPARE(test::Entries(w_->ui.cbLigPor), Names({"Impressão", "Ficheiro"}));
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), Names({"Gaveta 1", "Gaveta 2"}));
        QCOMPARE(test::Entries(w_->ui.cbDisPor), Names({"Display"}));
        QCOMPARE(test::Entries(w_->ui.cbDisCmd), Names({"Limpar", "Cursor"}));
        for (const QComboBox* list :
             {w_->ui.cbLigPor, w_->ui.cbGavAbr, w_->ui.cbDisPor, w_->ui.cbDisCmd})
            QCOMPARE(list->currentIndex(), 0);
        QCOMPARE(w_->ui.txGavAbr->text(), QStringLiteral("chr$(7)"));
        QCOMPARE(w_->ui.txLigTst->text(), QString::fromUtf8("Teste de ligação"));
        QCOMPARE(w_->ui.txDisTxm->text(), QStringLiteral("Texto para display"));
        QCOMPARE(w_->ui.laLigRes->text(), QString());
        QCOMPARE(w_->ui.tbOpc->currentIndex(), 0);
        QCOMPARE(w_->frmAct, std::int16_t{0});
        QCOMPARE(Gb().ligIdx, std::int16_t{1});
        QCOMPARE(Gb().gavIdx, std::int16_t{1});
        QCOMPARE(Gb().disIdx, std::int16_t{1});
        QCOMPARE(Gb().ligTab.at(1).ide, std::string("SER"));
        QCOMPARE(w_->ligTx, std::string("Teste de liga\xE7\xE3o"));
        QVERIFY(boxes_->boxes().empty());
    }

    void reReadingRefillsTheListsAndAZoneDeletedKeepsItsRows() {
        dir_->write("other.par",
                    Zones("Porta [FIC]=a", "Gaveta 1 [ESC]=chr$(7)\r\nGaveta 2 [ESC]=x"));
        // A Lumbra.par beside the program must not be read when -FP names another file.
        platform::OverrideProgramFolder(dir_->path());
        dir_->write("Lumbra.par", Zones("Errada [FIC]=b", "Errada [ESC]=y"));
        test::SetCommandLine(dir_->file("other.par"));
        w_ = test::StartProgram();
        QCOMPARE(Gb().cfgFic, dir_->file("other.par"));
        test::Choose(*w_, w_->ui.cbGavAbr, 1);
        test::Choose(*w_, w_->ui.cbDisCmd, 1);

        dir_->write("other.par", test::ParFile({"#LIG Portas", "Nova 1 [FIC]=c", "Nova 2 [FIC]=d",
                                                "##", "#DIS_CMD Comandos", "##"}));
        w_->ui.mnuLerCfg->trigger();
        QCOMPARE(test::Entries(w_->ui.cbLigPor), Names({"Nova 1", "Nova 2"}));
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), Names({"Gaveta 1", "Gaveta 2"}));
        QCOMPARE(w_->ui.cbGavAbr->currentIndex(), 0);
        QCOMPARE(w_->ui.txGavAbr->text(), QStringLiteral("chr$(7)"));
        QCOMPARE(test::Entries(w_->ui.cbDisPor), Names({"Display"}));
        QCOMPARE(w_->ui.cbDisCmd->count(), 0);
        QCOMPARE(Gb().cfgFic, dir_->file("other.par"));
        QVERIFY(boxes_->boxes().empty());
    }

    void aMissingParameterFileEndsTheProgramBeforeTheWindowShows_data() {
        QTest::addColumn<bool>("namedByFp");
        QTest::newRow("no Lumbra.par beside the program") << false;
        QTest::newRow("-FP names a file that is not there") << true;
    }

    void aMissingParameterFileEndsTheProgramBeforeTheWindowShows() {
        QFETCH(bool, namedByFp);
        // The default file exists beside the program but is not the one asked for.
        if (namedByFp) dir_->write("Lumbra.par", Zones("Porta [FIC]=a", "G [ESC]=b"));
        test::SetCommandLine(namedByFp ? dir_->file("missing.par") : std::string());
        platform::OverrideProgramFolder(namedByFp ? dir_->path() : dir_->file("empty"));
        test::ForgetProgramState();
        LumbraMnu window;
        bool ended = false;
        try {
            window.Form_Load();
        } catch (const platform::ProgramEnded&) {
            ended = true;
        }
        QVERIFY(ended);
        QVERIFY(!window.isVisible());
        QCOMPARE(boxes_->endings(), std::vector<int>{1});
        QCOMPARE(boxes_->boxes().size(), std::size_t{1});
        QCOMPARE(boxes_->boxes()[0].title, std::string("Erro a abrir ficheiro"));
        QVERIFY(boxes_->boxes()[0].icon == platform::MsgIcon::Critical);
    }

    void theEditorStartsDetachedOnTheFileReadAsOneArgument_data() {
        QTest::addColumn<bool>("namedByFp");
        QTest::newRow("Lumbra.par in a folder with blanks and shell characters") << false;
        QTest::newRow("the file named by -FP") << true;
    }

    void theEditorStartsDetachedOnTheFileReadAsOneArgument() {
        QFETCH(bool, namedByFp);
        // The desktop's handler stand-in records its arguments, but only once the test lets it:
        // the program must have gone on without waiting for it.
        std::filesystem::create_directory(dir_->file("bin"));
        dir_->write("bin/xdg-open",
                    "#!/bin/sh\n"
                    "here=$(dirname \"$0\")/..\n"
                    "for i in $(seq 200); do [ -e \"$here/go\" ] && break; sleep 0.05; done\n"
                    "printf '%s\\n' \"$#\" \"$@\" > \"$here/record.part\"\n"
                    "mv \"$here/record.part\" \"$here/record\"\n");
        std::filesystem::permissions(dir_->file("bin/xdg-open"), std::filesystem::perms::owner_all);
        qputenv("PATH", QByteArray::fromStdString(dir_->file("bin")) + ":" + path_);

        // The folder as the program names it (Windows-1252) and as the system does (UTF-8).
        const std::string folder = "Configura\xE7\xE3o POS $(touch x); a&b 'c' \"d\" *";
        const QString hostFolder =
            QString::fromUtf8("Configuração POS $(touch x); a&b 'c' \"d\" *");
        std::filesystem::create_directory(dir_->file(hostFolder.toStdString()));
        dir_->write(hostFolder.toStdString() + "/Lumbra.par", Zones("P [FIC]=a", "G [ESC]=b"));
        dir_->write("fp.par", Zones("P [FIC]=a", "G [ESC]=b"));
        test::SetCommandLine(namedByFp ? dir_->file("fp.par") : std::string());
        platform::OverrideProgramFolder(dir_->path() + "/" + folder);
        w_ = test::StartProgram();

        w_->ui.mnuTbCfg->trigger();
        // The handler is still waiting for the go: the program did not wait for it.
        QVERIFY(!dir_->exists("record"));
        dir_->write("go", "");
        QTRY_VERIFY_WITH_TIMEOUT(dir_->exists("record"), 15000);
        const std::string expected =
            namedByFp ? dir_->file("fp.par") : dir_->file(hostFolder.toStdString()) + "/Lumbra.par";
        QCOMPARE(dir_->read("record"), "1\n" + expected + "\n");
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraStartTest)
#include "lumbra_start_qtest.moc"
