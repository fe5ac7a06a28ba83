// The main window driven through its real controls on Qt's offscreen platform: one path per list,
// button, box and menu entry, from the parameter file to the bytes a device or a file receives; the
// drawer cycle run to its end, stopped by its own button, by closing the window, by a stop signal,
// or from the boxes a missing device raises.

#include <QCursor>
#include <QFontInfo>
#include <QLabel>
#include <QListWidget>
#include <QScopeGuard>
#include <csignal>
#include <filesystem>
#include <thread>

#include "platform/qt/qt_codepage.h"
#include "platform/stop_signals.h"
#include "platform/write_stall.h"
#include "tests/app/layout_table.h"
#include "tests/app/window_cases.h"
#include "tests/app/window_driver.h"

namespace lumbra {

class LumbraWindowTest : public QObject {
    Q_OBJECT

  private:
    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::PtyPair> printer_;
    std::unique_ptr<test::PtyPair> display_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;
    QMetaObject::Connection hook_;
    const std::string cycle_ = test::kCycleCommand;

    static QStringList Utf8(const char* lines) { return QString::fromUtf8(lines).split('|'); }

    // Runs action from the window's events once the cycle shows its k-th command, after k - 1
    // sends.
    void whenShown(int k, std::function<void()> action) {
        disconnect(hook_);
        auto shown = std::make_shared<int>(0);
        hook_ = connect(w_->ui.txGavAbr, &QLineEdit::textChanged, w_.get(), [=, this] {
            if (++*shown == k) QTimer::singleShot(0, w_.get(), action);
        });
    }

    void clickCycle() { QTest::mouseClick(w_->ui.cmAbrCic, Qt::LeftButton); }

    void verifyCycleIsOver() {
        QCOMPARE(w_->ui.cmAbrCic->text(), QStringLiteral("Ciclo"));
        QVERIFY(w_->ui.mnuLerCfg->isEnabled());
        QCOMPARE(Gb().gavTab.at(3).vtx, cycle_);
    }

    // The cycle's mode chosen, its page in front.
    void chooseCycle() { test::Choose(*w_, w_->ui.cbGavAbr, 2); }

  private slots:
    // Two rows of each list share a name: the position chosen, not the name, picks the row.
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        printer_ = std::make_unique<test::PtyPair>();
        display_ = std::make_unique<test::PtyPair>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
        // The shared zones, with one more connection port: a terminal reached as a file.
        std::vector<std::string> lines = test::WindowParLines(dir_->path(), '/');
        lines.insert(lines.begin() + 4, "Terminal [FIC]=" + printer_->slavePath());
        dir_->write("Lumbra.par", test::ParFile(lines));
        test::SetCommandLine({"-FP", dir_->file("Lumbra.par"), "-COM1", printer_->slavePath(),
                              "-COM2", display_->slavePath(), "-COM3", dir_->file("no-such-tty")});
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

    void theStartFillsEveryListInFileOrderAndSelectsTheFirstEntries() {
        QCOMPARE(test::Entries(w_->ui.cbLigPor),
                 Utf8("Impressão|Impressão|Sem dispositivo|Terminal"));
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), Utf8("ESC p|Texto|Ciclo"));
        QCOMPARE(test::Entries(w_->ui.cbDisCmd), Utf8("Limpar|Cursor"));
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(0)+chr$(25)+chr$(250)"));
        // The selections and the test text are taken in at the start, before any button.
        QCOMPARE(Gb().ligIdx + Gb().gavIdx + Gb().disIdx, 3);
        QCOMPARE(w_->form.ligTx, std::string("Teste de liga\xE7\xE3o"));
        QVERIFY(boxes_->boxes().empty());
    }

    void everyButtonSendsTheChosenRowToItsPort() {
        for (const test::SendCase& c : test::kSendCases) {
            if (c.list != nullptr) test::Choose(*w_, w_->findChild<QComboBox*>(c.list), c.position);
            if (c.box != nullptr)
                test::Retype(*w_, w_->findChild<QLineEdit*>(c.box), platform::FromCp1252(c.typed));
            test::Click(*w_, w_->findChild<QPushButton*>(c.button));
            const std::string device = c.device;
            const std::string got = device == "COM1"   ? printer_->readAvailable()
                                    : device == "COM2" ? display_->readAvailable()
                                                       : dir_->read(device);
            QVERIFY2(got == c.bytes, c.button);
        }
        QVERIFY(boxes_->boxes().empty());
        // What is typed goes out in Windows-1252: the box refuses what the code page lacks.
        test::Retype(*w_, w_->ui.txLigTst, QString::fromUtf8("a→b"));
        QCOMPARE(w_->ui.txLigTst->text(), QStringLiteral("ab"));
    }

    void reReadingRefillsTheLists() {
        dir_->write("Lumbra.par", test::ParFile({"#LIG Portas", "Nova 1 [FIC]=c", "Nova 2 [FIC]=d",
                                                 "##", "#DIS_CMD Comandos", "##"}));
        w_->ui.mnuLerCfg->trigger();
        QCOMPARE(test::Entries(w_->ui.cbLigPor), Utf8("Nova 1|Nova 2"));
        QCOMPARE(w_->ui.cbDisCmd->count(), 0);
        QCOMPARE(Gb().cfgFic, dir_->file("Lumbra.par"));
        QVERIFY(boxes_->boxes().empty());
    }

    // Lumbra.par beside the program, in a folder whose name has blanks and shell characters: the
    // desktop's handler gets it as one argument, and the program does not wait for the handler.
    void theEditorStartsDetachedOnTheFileReadAsOneArgument() {
        std::filesystem::create_directory(dir_->file("bin"));
        dir_->write("bin/xdg-open",
                    "#!/bin/sh\nhere=$(dirname \"$0\")/..\n"
                    "for i in $(seq 200); do [ -e \"$here/go\" ] && break; sleep 0.05; done\n"
                    "printf '%s\\n' \"$#\" \"$@\" > \"$here/record.part\"\n"
                    "mv \"$here/record.part\" \"$here/record\"\n");
        std::filesystem::permissions(dir_->file("bin/xdg-open"), std::filesystem::perms::owner_all);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QByteArray::fromStdString(dir_->file("bin")) + ":" + path);
        // The folder as the program names it (Windows-1252) and as the system does (UTF-8).
        const std::string folder = "Configura\xE7\xE3o POS $(touch x); a&b 'c' \"d\" *";
        const std::string host = dir_->file("Configuração POS $(touch x); a&b 'c' \"d\" *");
        std::filesystem::create_directory(host);
        std::filesystem::copy_file(dir_->file("Lumbra.par"), host + "/Lumbra.par");
        w_.reset();
        test::ResetProgram();
        platform::OverrideProgramFolder(dir_->path() + "/" + folder);
        w_ = test::StartProgram();

        w_->ui.mnuTbCfg->trigger();
        qputenv("PATH", path);
        QVERIFY(!dir_->exists("record"));
        dir_->write("go", "");
        QTRY_VERIFY_WITH_TIMEOUT(dir_->exists("record"), 15000);
        QCOMPARE(dir_->read("record"), "1\n" + host + "/Lumbra.par\n");
    }

    // No xdg-open on the PATH, one that gives up, one that cannot start: a box names the file.
    void withoutAWorkingEditorABoxNamesTheFile_data() {
        QTest::addColumn<QString>("xdgOpen");
        QTest::newRow("missing") << QString();
        QTest::newRow("exits 1") << "#!/bin/sh\nexit 1\n";
        QTest::newRow("cannot start") << "#!/no/such/sh\n";
    }

    void withoutAWorkingEditorABoxNamesTheFile() {
        QFETCH(QString, xdgOpen);
        std::filesystem::create_directory(dir_->file("bin"));
        if (!xdgOpen.isEmpty()) {
            dir_->write("bin/xdg-open", xdgOpen.toStdString());
            std::filesystem::permissions(dir_->file("bin/xdg-open"),
                                         std::filesystem::perms::owner_all);
        }
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QByteArray::fromStdString(dir_->file("bin")));
        w_->ui.mnuTbCfg->trigger();
        qputenv("PATH", path);
        QTRY_COMPARE(boxes_->boxes().size(), std::size_t{1});
        const test::RecordedBox& box = boxes_->boxes()[0];
        QCOMPARE(box.title, std::string("Configura\xE7\xE3o"));
        QCOMPARE(box.text, "N\xE3o foi poss\xEDvel abrir o ficheiro\n" + dir_->file("Lumbra.par") +
                               "\n\nN\xE3o foi encontrado nenhum programa que abra ficheiros de "
                               "texto: instale o pacote xdg-utils e um editor de texto.");
        QVERIFY(box.icon == platform::MsgIcon::Exclamation);
    }

    void typingInOneBoxShowsTheConversionInTheOther() {
        for (const test::ConversionCase& c : test::kConversionCases) {
            auto* box = w_->findChild<QLineEdit*>(c.box);
            const QString typed = QString::fromLatin1(c.typed);
            box->clear();
            QSignalSpy edits(box, &QLineEdit::textChanged);
            test::ShowPageOf(*w_, box);
            test::TypeText(box, typed);
            QCOMPARE(w_->findChild<QLineEdit*>(c.other)->text(), QString::fromLatin1(c.shown));
            // One change per key and exactly the typed text: no conversion came back into the box.
            QCOMPARE(box->text(), typed);
            QCOMPARE(edits.count(), typed.size());
        }
    }

    // "Terminar" in the menu closes the window; a second close does not unload it again.
    void closingUnloadsTheWindowOnce() {
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        w_->ui.mnuFim->trigger();
        QVERIFY(!w_->isVisible());
        w_->close();
        QCOMPARE(unloading.count(), 1);
        QCOMPARE(CanMax(), std::int16_t{0});
    }

    void theMessageListShowsPlainLinesAndKeepsTheNewestInView() {
        const Variant msgs[] = {Variant(" a "), Variant("Liga\xE7\xE3o"), Variant(std::int16_t{-7}),
                                Variant(2.25)};
        for (const auto& m : msgs)
            w_->form.LumbraMsgJun(m);
        w_->form.LumbraMsgSep(2);
        const QStringList lines = Utf8(" a |Ligação|-7|2.25||");
        for (int i = 0; i < lines.size(); ++i)
            QCOMPARE(w_->ui.lbRes->item(i)->text(), lines[i]);
        for (int i = 6; i < 40; ++i)
            w_->form.LumbraMsgJun(Variant(std::int32_t{i}));
        w_->ui.tbOpc->setTabVisible(5, true);
        w_->ui.tbOpc->setCurrentIndex(5);
        QCOMPARE(w_->ui.lbRes->indexAt(QPoint(1, 1)).row(), 40 - 16);
    }

    // Every control sits at its documented rectangle at 96 dots per inch, a page's controls
    // measured from the whole tab control; the window keeps its size, and a frame's bold caption
    // does not make its controls bold.
    void everyControlSitsAtItsLayoutRectangleAndBoldStaysOnCaptions() {
        QCOMPARE(w_->centralWidget()->size(),
                 QSize(test::kClientTwips[0] / 15, test::kClientTwips[1] / 15));
        QCOMPARE(w_->windowTitle(), QString::fromUtf8("Configuração para POS"));
        for (const test::ExpectedRect& e : test::kLayoutTwips) {
            const auto* c = w_->findChild<const QWidget*>(QString::fromLatin1(e.name));
            QVERIFY2(c != nullptr, e.name);
            QCOMPARE(c->geometry(), QRect(e.left / 15, e.top / 15, e.width / 15, e.height / 15));
        }
        const QWidget* controls[] = {w_->ui.spLigPor, w_->ui.txLigTst, w_->ui.txCnvDec,
                                     w_->ui.lbRes};
        for (const QWidget* c : controls)
            QVERIFY2(!QFontInfo(c->font()).bold(), qPrintable(c->objectName()));
    }

    // The button reads "Parar" and the re-read is off while the cycle runs. A second click is the
    // stop, before the next send. Stopped, the button starts a new cycle; on a file port, made anew
    // at every send, it ends with the last one. The box keeps the last command sent; choosing the
    // mode again shows the row's own.
    void theButtonStopsTheCycleBeforeTheNextSendAndStartsItAgain() {
        chooseCycle();
        QString caption;
        bool menu = true;
        whenShown(3, [&] {
            caption = w_->ui.cmAbrCic->text(), menu = w_->ui.mnuLerCfg->isEnabled();
            clickCycle();
        });
        clickCycle();
        QCOMPARE(caption, QStringLiteral("Parar"));
        QVERIFY(!menu);
        QCOMPARE(printer_->readAvailable(), std::string("\x1Bp\0\n\n\x1Bp\x01\n\n", 10));
        verifyCycleIsOver();
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(1)+chr$(10)+chr$(10)"));
        disconnect(hook_);
        test::Choose(*w_, w_->ui.cbLigPor, 1);
        clickCycle();
        QCOMPARE(dir_->read("lig.txt"), std::string("\x1Bp\x01\xFA\xFA"));
        verifyCycleIsOver();
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(1)+chr$(250)+chr$(250)"));
        test::Choose(*w_, w_->ui.cbGavAbr, 2);
        QCOMPARE(w_->ui.txGavAbr->text(), QString::fromStdString(cycle_));
        QVERIFY(boxes_->boxes().empty());
    }

    // The terminal as a file port, its far side reading nothing: the first send waits for it.
    // "Terminar" pressed while it waits closes the window once that send has given up at the stall
    // limit; SIGTERM ends the wait itself and closes the window as "Terminar" does.
    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("box");
        QTest::newRow("Terminar") << "Terminar"
                                  << "Tempo de espera do dispositivo esgotado: a porta n";
        QTest::newRow("SIGTERM") << "SIGTERM"
                                 << "Interrompido pelo utilizador";
    }

    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped() {
        chooseCycle();
        QFETCH(QString, how);
        QFETCH(QString, box);
        platform::SetWriteStallLimit(std::chrono::milliseconds(1000));
        const auto restore = qScopeGuard([] { platform::SetWriteStallLimit({}); });
        const platform::StopSignalCatcher stopSignals;
        w_->closeOnStopSignals();
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        test::Choose(*w_, w_->ui.cbLigPor, 3);
        printer_->fillUntilBlocked();
        std::thread signaller;
        if (how == "SIGTERM") {
            signaller = std::thread([] {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                ::kill(::getpid(), SIGTERM);
            });
        } else {
            QTimer::singleShot(100, w_.get(),
                               [this] { QTest::mouseClick(w_->ui.cmFim, Qt::LeftButton); });
        }
        clickCycle();
        if (signaller.joinable()) signaller.join();
        QCOMPARE(boxes_->boxes().size(), std::size_t{1});
        QVERIFY(boxes_->boxes()[0].text.starts_with("Funcao: Gravar TX|Erro:" + box.toStdString()));
        QCOMPARE(w_->cycleRunning(), false);
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(0)+chr$(10)+chr$(10)"));
        QTRY_COMPARE(unloading.count(), 1);
        QCOMPARE(CanMax(), std::int16_t{0});  // the channels go with the window
    }

    // Every box a missing device raises during the cycle offers "Parar ciclo", which stops it at
    // once: the rest of that send shows no box. Outside a cycle the box has OK alone. The
    // hourglass of "Abrir" is off while each box waits, and back as the next one comes.
    void everyBoxDuringTheCycleOffersItsStopAndChoosingItStopsTheCycle() {
        chooseCycle();
        QList<int> pointers;  // the override cursor's shape, -1 for none
        const auto pointer = [&] {
            const QCursor* c = QGuiApplication::overrideCursor();
            pointers << (c == nullptr ? -1 : int(c->shape()));
        };
        struct PointerWatch : platform::QtMsgSink {
            std::function<void()> opening;
            void show(const std::string& title, const std::string& text,
                      platform::MsgIcon icon) override {
                opening();
                QtMsgSink::show(title, text, icon);
            }
        } windowBoxes;
        windowBoxes.opening = pointer;
        platform::SetMsgSink(&windowBoxes);
        const auto restore = qScopeGuard([this] { platform::SetMsgSink(boxes_.get()); });
        QStringList seen;
        QList<int> buttons;
        QTimer answer;
        connect(&answer, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            seen << box->text();
            buttons << int(box->buttons().size());
            pointer();
            QAbstractButton* chosen = box->button(QMessageBox::Ok);
            for (QAbstractButton* b : box->buttons())
                chosen = b->text() == QStringLiteral("Parar ciclo") ? b : chosen;
            chosen->click();
        });
        answer.start(5);
        test::Choose(*w_, w_->ui.cbLigPor, 2);
        test::Click(*w_, w_->ui.cmAbrCic);
        verifyCycleIsOver();
        QCOMPARE(seen.size(), 1);
        QVERIFY(seen[0].startsWith(QStringLiteral("Funcao: Abrir|")));
        QCOMPARE(buttons, QList<int>({2}));
        buttons.clear();
        pointers.clear();
        test::Click(*w_, w_->ui.cmGavAbr);
        QCOMPARE(buttons, QList<int>({1, 1, 1}));
        const int wait = Qt::WaitCursor;
        QCOMPARE(pointers, QList<int>({wait, -1, wait, -1, wait, -1}));
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraWindowTest)
#include "lumbra_window_qtest.moc"
