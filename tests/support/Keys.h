#pragma once
#include <QApplication>
#include <QTest>

namespace test {

/// Types where the focus is, key by key: an editor that the first key opens has the focus from then on.
inline void typeText(const QString& text) {
    for (const QChar c : text)
        QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
}

} // namespace test
