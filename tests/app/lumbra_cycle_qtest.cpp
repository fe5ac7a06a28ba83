// The drawer cycle pressed in the real window: run to its end, stopped by its own button, by
// closing the window, by a stop signal, or from the boxes a missing device raises.

#include <QScopeGuard>
#include <csignal>
#include <thread>

#include "platform/stop_signals.h"
#include "platform/write_stall.h"
#include "tests/app/window_driver.h"

namespace lumbra {

class LumbraCycleTest : public QObject {
    Q_OBJECT

    // Ports: 0 the printer's pseudo-terminal, 1 a missing device, 2 the printer's terminal as a
    // file port, 3 a file.
    std::unique_ptr<test::TempDir> dir_;
    std::unique_ptr<test::PtyPair> printer_;
    std::unique_ptr<test::RecordingMsgSink> boxes_;
    std::unique_ptr<LumbraMnu> w_;
    QMetaObject::Connection hook_;
    const std::string cycle_ = "chr$(27)+\"p\"+chr$([MO])+chr$([P1])+chr$([P2])";

    std::string parFile(const std::string& mode) const {
        return test::ParFile(
            {"#LIG P", "Impressora [SER]=COM1,9600,n,8,1", "Sem dispositivo [SER]=COM3,9600,n,8,1",
             "Terminal [FIC]=" + printer_->slavePath(), "Ficheiro [FIC]=" + dir_->file("gav.txt"),
             "##", "#GAV G - Modos [CnvChr=0]", mode, "##"});
    }

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
        QCOMPARE(Gb().gavTab.at(1).vtx, cycle_);
    }

  private slots:
    void init() {
        dir_ = std::make_unique<test::TempDir>();
        printer_ = std::make_unique<test::PtyPair>();
        boxes_ = std::make_unique<test::RecordingMsgSink>();
        dir_->write("Lumbra.par", parFile("Ciclo [CIC]=" + cycle_));
        test::SetCommandLine(dir_->file("Lumbra.par"),
                             {{1, printer_->slavePath()}, {3, dir_->file("no-such-tty")}});
        w_ = test::StartProgram();
        test::ShowPageOf(*w_, w_->ui.cmAbrCic);
    }

    void cleanup() {
        w_.reset();
        test::ResetProgram();
        boxes_.reset();
        printer_.reset();
        dir_.reset();
    }

    // The button reads "Parar" and the re-read is off while the cycle runs. A second click is the
    // stop, before the next send; a re-read asked for meanwhile is refused, also when the entry's
    // signal comes some other way than through the disabled menu. Stopped, the button starts a new
    // cycle; on a file port, made anew at every send, it ends with the last one. The box keeps the
    // last command sent; choosing the mode again shows the row's own.
    void theButtonStopsTheCycleBeforeTheNextSendAndStartsItAgain() {
        QString caption;
        bool menu = true;
        whenShown(3, [&] {
            caption = w_->ui.cmAbrCic->text(), menu = w_->ui.mnuLerCfg->isEnabled();
            dir_->write("Lumbra.par", parFile("Outro modo [ESC]=chr$(7)"));
            emit w_->ui.mnuLerCfg->triggered();
            clickCycle();
        });
        clickCycle();
        QCOMPARE(caption, QStringLiteral("Parar"));
        QVERIFY(!menu);
        QCOMPARE(printer_->readAvailable(), std::string("\x1Bp\0\n\n\x1Bp\x01\n\n", 10));
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), QStringList{QStringLiteral("Ciclo")});
        verifyCycleIsOver();
        disconnect(hook_);
        test::Choose(*w_, w_->ui.cbLigPor, 3);
        clickCycle();
        QCOMPARE(dir_->read("gav.txt"), std::string("\x1Bp\x01\xFA\xFA"));
        verifyCycleIsOver();
        QCOMPARE(w_->ui.txGavAbr->text(),
                 QStringLiteral("chr$(27)+\"p\"+chr$(1)+chr$(250)+chr$(250)"));
        test::Choose(*w_, w_->ui.cbGavAbr, 0);
        QCOMPARE(w_->ui.txGavAbr->text(), QString::fromStdString(cycle_));
        QVERIFY(boxes_->boxes().empty());
        w_->ui.mnuLerCfg->trigger();
        QCOMPARE(test::Entries(w_->ui.cbGavAbr), QStringList{QStringLiteral("Outro modo")});
    }

    // The terminal as a file port, its far side reading nothing: the first send waits for it. The
    // stop, pressed or closed while it waits, ends the cycle once that send has given up at the
    // stall limit; SIGTERM ends the wait itself and closes the window as "Terminar" does.
    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("box");
        QTest::newRow("Parar") << "Parar"
                               << "Device timeout: nothing taken for 1.";
        QTest::newRow("Terminar") << "Terminar"
                                  << "Device timeout: nothing taken for 1.";
        QTest::newRow("SIGTERM") << "SIGTERM"
                                 << "User interrupt occurred";
    }

    void aSendThatWaitsForItsDeviceEndsTheCycleWhenStopped() {
        QFETCH(QString, how);
        QFETCH(QString, box);
        platform::SetWriteStallLimit(std::chrono::milliseconds(1000));
        const auto restore = qScopeGuard([] { platform::SetWriteStallLimit({}); });
        const platform::StopSignalCatcher stopSignals;
        w_->closeOnStopSignals();
        QSignalSpy unloading(w_.get(), &LumbraMnu::unloading);
        test::Choose(*w_, w_->ui.cbLigPor, 2);
        printer_->fillUntilBlocked();
        std::thread signaller;
        if (how == "SIGTERM") {
            signaller = std::thread([] {
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                ::kill(::getpid(), SIGTERM);
            });
        } else {
            QAbstractButton* button = how == "Parar" ? w_->ui.cmAbrCic : w_->ui.cmFim;
            QTimer::singleShot(100, w_.get(),
                               [button] { QTest::mouseClick(button, Qt::LeftButton); });
        }
        clickCycle();
        if (signaller.joinable()) signaller.join();
        QCOMPARE(boxes_->boxes().size(), std::size_t{1});
        QVERIFY(boxes_->boxes()[0].text.starts_with("Funcao: Gravar TX|Erro:" + box.toStdString()));
        QCOMPARE(w_->cycleRunning(), false);
        QTRY_COMPARE(unloading.count(), how == "Parar" ? 0 : 1);
        QCOMPARE(CanMax() == 0, how != "Parar");  // the channels go with the window
    }

    // Every box a missing device raises during the cycle offers "Parar ciclo", which stops it;
    // outside a cycle the box has OK alone.
    void everyBoxDuringTheCycleOffersItsStopAndChoosingItStopsTheCycle() {
        platform::QtMsgSink windowBoxes;
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
            QAbstractButton* chosen = box->button(QMessageBox::Ok);
            for (QAbstractButton* b : box->buttons())
                chosen = b->text() == QStringLiteral("Parar ciclo") ? b : chosen;
            chosen->click();
        });
        answer.start(5);
        test::Choose(*w_, w_->ui.cbLigPor, 1);
        test::Click(*w_, w_->ui.cmAbrCic);
        verifyCycleIsOver();
        QCOMPARE(seen.filter(QStringLiteral("Funcao: Abrir|")).size(), 1);
        QVERIFY(!buttons.contains(1));
        buttons.clear();
        test::Click(*w_, w_->ui.cmGavAbr);
        QCOMPARE(buttons, QList<int>({1, 1, 1}));
    }
};

}  // namespace lumbra

QTEST_MAIN(lumbra::LumbraCycleTest)
#include "lumbra_cycle_qtest.moc"
