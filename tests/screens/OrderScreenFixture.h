#pragma once
#include "orders/frmAuftragswesenAuftragserfassung.h"
#include "support/Keys.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace test {

class TestPhoneBook : public telephony::PhoneBook {
  public:
    using PhoneBookEntry = modVerwaltungTelefonbuch::PhoneBookEntry;

    std::optional<PhoneBookEntry> FindPhoneBookEntry(const QString& number) override {
        asked << number;
        return entry;
    }

    std::optional<PhoneBookEntry> SearchPhoneBook(const modVerwaltungTelefonbuch::PhoneBookQuery&) override {
        return {};
    }

    QStringList asked;
    std::optional<PhoneBookEntry> entry;
};

/// The order screen on the small firm, worked as a person would.
template <typename Dialogs> class OrderScreen : public testing::Test {
  protected:
    OrderScreen() : screen({dialogs, navigation, registry, reports, printers}, phoneBook) {
        screen.resize(1360, 600);
        screen.show();
        screen.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    template <typename Widget> Widget* find(const char16_t* name) {
        return screen.findChild<Widget*>(QString::fromUtf16(name));
    }

    void click(const char16_t* name) { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }

    bool enabled(const char16_t* name) { return find<QWidget>(name)->isEnabled(); }

    /// Types on whatever has the focus, as the keyboard does.
    void type(const QString& text) { typeText(text); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    void search(const QString& number) {
        press(Qt::Key_F3);
        type(number);
        press(Qt::Key_Return);
    }

    QString cell(int row, int column) { return screen.order().BestellungGrid.text(row, column); }

    /// Edits a cell of the head and says whether it was taken over.
    QString editHead(orders::DetailCell cell, const QString& text) {
        screen.order().BestellungDetailsGrid.endEdit(cell.row, cell.column, text);
        return screen.order().detail(cell);
    }

    TestFirm firm;
    Dialogs dialogs;
    TestNavigation navigation;
    TestRegistry registry;
    TestReports reports;
    TestPrinters printers;
    TestPhoneBook phoneBook;
    frmAuftragswesenAuftragserfassung screen;
};

} // namespace test
