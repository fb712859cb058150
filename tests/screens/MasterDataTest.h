#pragma once
#include "platform/RegistryStore.h"
#include "platform/ui/DataGrid.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>
#include <ostream>

namespace test {

class NoRegistry : public platform::RegistryStore {
  public:
    QString GetSetting(const QString&, const QString&, const QString&, const QString& fallback) override {
        return fallback;
    }

    void SaveSetting(const QString&, const QString&, const QString&, const QString&) override {}
};

inline bool operator==(const TestDialogs::Said& a, const TestDialogs::Said& b) {
    return a.text == b.text && a.style == b.style && a.title == b.title;
}

inline void PrintTo(const TestDialogs::Said& said, std::ostream* out) {
    *out << '[' << said.title.toStdString() << "] " << said.text.toStdString() << " (" << said.style << ')';
}

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

    platform::ui::DataGrid* grid() { return screen.template findChild<platform::ui::DataGrid*>(); }

    void click(const char16_t* button) {
        ASSERT_TRUE(find<QAbstractButton>(button)->isEnabled());
        QTest::mouseClick(find<QAbstractButton>(button), Qt::LeftButton);
    }

    /// A check box's square lies at its left.
    void tick(const char16_t* box) {
        QTest::mouseClick(find<QCheckBox>(box), Qt::LeftButton, {},
                          QPoint(8, find<QCheckBox>(box)->height() / 2));
    }

    void clickRow(int row) {
        const QModelIndex cell = grid()->model()->index(row, firstShownColumn());
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, grid()->visualRect(cell).center());
    }

    int firstShownColumn() {
        int column = 0;
        while (grid()->isColumnHidden(column))
            ++column;
        return column;
    }

    /// Replaces a text field's content by keyboard.
    void enter(const char16_t* field, const QString& text) {
        auto* edit = find<QLineEdit>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QString text(const char16_t* field) { return find<QLineEdit>(field)->text(); }

    QString chosen(const char16_t* list) { return find<QComboBox>(list)->currentText(); }

    void choose(const char16_t* list, const QString& entry) { find<QComboBox>(list)->setCurrentText(entry); }

    bool ticked(const char16_t* box) { return find<QCheckBox>(box)->isChecked(); }

    static QString focusName() {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    /// The rows on show, shown columns only, as "a|b|c".
    QStringList rows() {
        QStringList lines;
        for (int row = 0; row < grid()->rowCount(); ++row)
            lines << shownRow(
                row, [&](int column) { return grid()->model()->index(row, column).data().toString(); });
        return lines;
    }

    /// "Gruppe 166 left|…" of the shown columns.
    QString columns() {
        return shownRow(0, [&](int column) {
            const auto alignment = Qt::Alignment(
                grid()->model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
            return grid()->model()->headerData(column, Qt::Horizontal).toString() + QLatin1Char(' ') +
                   QString::number(grid()->columnWidth(column) * 15 / 100 * 100) +
                   QString::fromLatin1(alignment & Qt::AlignHCenter ? " centre"
                                       : alignment & Qt::AlignRight ? " right"
                                                                    : " left");
        });
    }

    /// What was said since the last call.
    QList<TestDialogs::Said> said() { return std::exchange(dialogs.said, {}); }

    static QString stored(const QString& sql) { return TestFirm::value(sql); }

    TestFirm firm;
    TestDialogs dialogs;
    TestNavigation navigation;
    NoRegistry registry;
    TestReports reports;
    TestPrinters printers;
    Screen screen;

  private:
    QString shownRow(int, const std::function<QString(int)>& cell) {
        QStringList cells;
        for (int column = 0; column < grid()->model()->columnCount(); ++column)
            if (!grid()->isColumnHidden(column))
                cells << cell(column);
        return cells.join(QLatin1Char('|'));
    }
};

} // namespace test
