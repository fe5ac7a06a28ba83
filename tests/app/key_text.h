#pragma once
// Types any text into a widget, one key event per character carrying that character, because
// QTest::keyClicks only takes characters it can turn into key codes.

#include <QString>
#include <QTest>
#include <QWidget>

namespace lumbra::testing {

inline void TypeText(QWidget* widget, const QString& text) {
    for (QChar c : text) {
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
}

}  // namespace lumbra::testing
