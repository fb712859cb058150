#pragma once
#include "platform/form/DataGrid.h"
#include "shell/MenuTree.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <ostream>

namespace test {

inline bool operator==(const TestDialogs::Said& a, const TestDialogs::Said& b) {
    return a.text == b.text && a.style == b.style && a.title == b.title;
}

inline void PrintTo(const TestDialogs::Said& said, std::ostream* out) {
    *out << '[' << said.title.toStdString() << "] " << said.text.toStdString() << " (" << said.style << ')';
}

using Said = QList<TestDialogs::Said>;

/// A master-data screen on the small firm, worked as a person would: typed, clicked, then looked at.
template <typename Screen> class MasterDataTest : public testing::Test {
  protected:
    MasterDataTest() : screen({dialogs, navigation, registry, reports, printers}) {
        screen.show();
        screen.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    template <typename Widget> Widget* find(const char16_t* name) {
        auto* found = screen.template findChild<Widget*>(QString::fromUtf16(name));
        EXPECT_TRUE(found) << QString::fromUtf16(name).toStdString();
        return found;
    }

    platform::DataGrid* grid() { return screen.template findChild<platform::DataGrid*>(); }

    void click(const char16_t* button) {
        ASSERT_TRUE(find<QAbstractButton>(button)->isEnabled());
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }

    /// A check box's square lies at its left.
    void tick(const char16_t* box) {
        QTest::mouseClick(find<QCheckBox>(box), Qt::LeftButton, {},
                          QPoint(8, find<QCheckBox>(box)->height() / 2));
    }

    void clickRow(int row) { QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, placeOf(row)); }

    QPoint placeOf(int row) {
        return grid()->visualRect(grid()->model()->index(row, firstShownColumn())).center();
    }

    /// The marked row's key; -1 without one.
    qint64 markedKey() {
        const QModelIndexList marked = grid()->selectionModel()->selectedRows();
        return marked.isEmpty() ? -1 : grid()->value(marked.first().row(), 0).toLong();
    }

    /// Clicks the row whose first shown column holds the text.
    void clickRowOf(const QString& text) {
        for (int row = 0; row < grid()->rowCount(); ++row)
            if (grid()->text(row, firstShownColumn()) == text)
                return clickRow(row);
        ADD_FAILURE() << text.toStdString();
    }

    /// Deleting the record in the mask is refused while an order refers to it, and while a pre-order does.
    /// `table` has "%1" for the two kinds.
    void expectKeptForOrders(const QString& table, const QString& column, const TestDialogs::Said& refusal) {
        for (const char* kind : {"Bestellungen", "Vorbestellungen"}) {
            const QString orders = table.arg(QLatin1String(kind));
            ConnMain.Execute(
                QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(orders, column).arg(screen.key()));
            click(u"cmdDelete");
            EXPECT_EQ(said(), Said{refusal}) << kind;
            ConnMain.Execute(QStringLiteral("DELETE FROM ") + orders);
        }
    }

    int firstShownColumn() {
        int column = 0;
        while (grid()->isColumnHidden(column))
            ++column;
        return column;
    }

    /// Replaces a text field's content by keyboard; what the test keyboard lacks comes as from the clipboard.
    void enter(const char16_t* field, const QString& text) {
        auto* edit = find<QLineEdit>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar c : text)
            c.unicode() < 0x80 ? QTest::keyClick(edit, c.toLatin1()) : edit->insert(c);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QString text(const char16_t* field) { return find<QLineEdit>(field)->text(); }

    QString chosen(const char16_t* list) { return find<QComboBox>(list)->currentText(); }

    /// Leads the keyboard from field to field by Enter and gives the names it passes.
    QStringList enterWay(const char16_t* first, int steps) {
        find<QWidget>(first)->setFocus();
        QStringList way{focusName()};
        for (int i = 0; i < steps; ++i) {
            press(Qt::Key_Return);
            way << focusName();
        }
        return way;
    }

    void choose(const char16_t* list, const QString& entry) { find<QComboBox>(list)->setCurrentText(entry); }

    bool ticked(const char16_t* box) { return find<QCheckBox>(box)->isChecked(); }

    static QString focusName() {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    /// The rows on show, shown columns only, as "a|b|c".
    QStringList rows() {
        QStringList lines;
        for (int row = 0; row < grid()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < grid()->model()->columnCount(); ++column)
                if (!grid()->isColumnHidden(column))
                    cells << grid()->model()->index(row, column).data().toString();
            lines << cells.join(QLatin1Char('|'));
        }
        return lines;
    }

    /// Every button and every field can be reached by a key of its own or by name. The main window's menus
    /// have theirs in every screen.
    void expectReachable() {
        QMap<QChar, QString> keys;
        for (const shell::MenuEntry& entry : shell::menuEntries())
            if (const QString caption = QString::fromUtf8(entry.caption);
                !*entry.parent && caption.contains(QLatin1Char('&')))
                keys[caption[caption.indexOf(QLatin1Char('&')) + 1].toLower()] = caption;
        const auto take = [&](const QWidget* widget, const QString& text) {
            const qsizetype mark = text.indexOf(QLatin1Char('&'));
            if (mark < 0)
                return false;
            const QChar key = text[mark + 1].toLower();
            EXPECT_FALSE(keys.contains(key))
                << keys[key].toStdString() << ' ' << widget->objectName().toStdString();
            keys[key] = widget->objectName();
            return true;
        };
        for (const auto* label : screen.template findChildren<QLabel*>())
            take(label, label->buddy() ? label->text() : QString());
        for (const auto* button : screen.template findChildren<QAbstractButton*>())
            if (!button->objectName().isEmpty() && button->focusPolicy() != Qt::NoFocus) {
                EXPECT_TRUE(take(button, button->text())) << button->objectName().toStdString();
            }
        for (const auto* field : screen.template findChildren<QWidget*>())
            if (field->objectName().contains(QLatin1Char('_')) && !qobject_cast<const QLabel*>(field) &&
                (field->focusPolicy() & Qt::TabFocus) && !qobject_cast<const QAbstractButton*>(field)) {
                EXPECT_FALSE(field->accessibleName().isEmpty()) << field->objectName().toStdString();
            }
    }

    /// What was said since the last call.
    Said said() { return std::exchange(dialogs.said, {}); }

    static QString stored(const QString& sql) { return TestFirm::value(sql); }

    TestFirm firm;
    TestDialogs dialogs;
    TestNavigation navigation;
    TestRegistry registry;
    TestReports reports;
    TestPrinters printers;
    Screen screen;
};

} // namespace test
