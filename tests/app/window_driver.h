#pragma once
// Runs the whole program in a test the way a technician does: a parameter file written to a real
// folder, a command line with "-FP" and "-COMn", the window started by Form_Load and shown
// offscreen, then driven through its real tabs, lists, boxes and buttons.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "app/LumbraGb.h"
#include "app/qt/LumbraMnu.h"
#include "platform/qt/qt_msg_box.h"
#include "tests/app/app_fixture.h"
#include "tests/support/pty_pair.h"

namespace lumbra::test {

// The program's start as main does it, on the command line set before: the window, Form_Load, then
// shown.
inline std::unique_ptr<LumbraMnu> StartProgram() {
    CanFim();
    Gb() = LumbraGbState{};
    auto window = std::make_unique<LumbraMnu>();
    window->Form_Load();
    window->show();
    return window;
}

// Brings the page holding control to the front by clicking its tab.
inline void ShowPageOf(LumbraMnu& w, const QWidget* control) {
    QTabWidget* tabs = w.ui.tbOpc;
    for (int i = 0; i < tabs->count(); ++i) {
        if (!tabs->widget(i)->isAncestorOf(control)) continue;
        QTabBar* bar = tabs->tabBar();
        QTest::mouseClick(bar, Qt::LeftButton, Qt::NoModifier, bar->tabRect(i).center());
    }
}

// A click of the mouse on a button, on its page.
inline void Click(LumbraMnu& w, QAbstractButton* button) {
    ShowPageOf(w, button);
    QTest::mouseClick(button, Qt::LeftButton);
}

// Chooses entry position of a drop-down list as a user does: opens the list, moves to the entry
// and confirms it with Return. Confirming the entry already selected chooses it again.
inline void Choose(LumbraMnu& w, QComboBox* list, int position) {
    ShowPageOf(w, list);
    list->showPopup();
    QAbstractItemView* view = list->view();
    view->setCurrentIndex(view->model()->index(position, 0));
    QTest::keyClick(view, Qt::Key_Return);
}

// Types any text, one key event per character carrying that character: QTest::keyClicks only
// takes characters it can turn into key codes.
inline void TypeText(QWidget* widget, const QString& text) {
    for (QChar c : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

// Replaces the text of a box by typing: select all, delete, then the text.
inline void Retype(LumbraMnu& w, QLineEdit* box, const QString& text) {
    ShowPageOf(w, box);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(box, Qt::Key_Delete);
    TypeText(box, text);
}

// The display text of every entry of a list.
inline QStringList Entries(const QComboBox* list) {
    QStringList names;
    for (int i = 0; i < list->count(); ++i)
        names << list->itemText(i);
    return names;
}

}  // namespace lumbra::test
