#pragma once
#include "platform/Services.h"
#include "platform/form/DataGrid.h"
#include "shell/MenuTree.h"
#include "support/Keys.h"
#include "support/TestDialogs.h"
#include "support/TestFirm.h"
#include "support/TestFirmServices.h"
#include "telephony/PhoneBook.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
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

class TestPhoneBook : public telephony::PhoneBook {
  public:
    using PhoneBookEntry = modVerwaltungTelefonbuch::PhoneBookEntry;

    std::optional<PhoneBookEntry> FindPhoneBookEntry(const QString& number) override {
        asked << number;
        return entry;
    }

    std::optional<PhoneBookEntry>
    SearchPhoneBook(const modVerwaltungTelefonbuch::PhoneBookQuery& fields) override {
        asked << fields.number + u'|' + fields.name + u'|' + fields.street + u'|' + fields.postcode + u'|' +
                     fields.town;
        return entry;
    }

    QStringList asked;
    std::optional<PhoneBookEntry> entry;
};

/// A screen on the small firm, worked as a person would: typed, clicked, then looked at.
template <typename Screen, typename Dialogs = TestDialogs> class ScreenTest : public testing::Test {
  protected:
    /// Opens the screen anew.
    template <typename... More> void open(More&... more) {
        screen = std::make_unique<Screen>(
            platform::Services{dialogs, navigation, registry, reports, printers, internet}, more...);
        screen->show();
        screen->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    }

    template <typename Widget = QWidget> Widget* find(QStringView name) {
        auto* found = screen->template findChild<Widget*>(name.toString());
        EXPECT_TRUE(found) << name.toString().toStdString();
        return found;
    }

    platform::DataGrid* grid() { return screen->template findChild<platform::DataGrid*>(); }

    void click(QStringView button) {
        ASSERT_TRUE(find(button)->isEnabled());
        QTest::mouseClick(find(button), Qt::LeftButton);
    }

    /// A check box's square lies at its left.
    void tick(QStringView box) {
        QTest::mouseClick(find(box), Qt::LeftButton, {}, QPoint(8, find(box)->height() / 2));
    }

    void clickRow(int row) { QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, placeOf(row)); }

    void doubleClickRow(int row) {
        clickRow(row);
        QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, placeOf(row));
    }

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

    /// What the mask holds is not deleted while an order refers to it, nor while a pre-order does, and only
    /// after Yes where `question` asks. `table` has "%1" for the two kinds of orders.
    void expectDeletion(const QString& table, const QString& column, const TestDialogs::Said& refusal,
                        const Said& question) {
        for (const char* kind : {"Bestellungen", "Vorbestellungen"}) {
            const QString orders = table.arg(QLatin1String(kind));
            ConnMain.Execute(
                QStringLiteral("INSERT INTO %1(%2) VALUES(%3)").arg(orders, column).arg(screen->key()));
            click(u"cmdDelete");
            EXPECT_EQ(said(), Said{refusal}) << kind;
            ConnMain.Execute(QStringLiteral("DELETE FROM ") + orders);
        }
        const int rows = grid()->rowCount();
        for (const int answer : {platform::kAnswerNo, platform::kAnswerYes}) {
            if (question.isEmpty() && answer == platform::kAnswerNo)
                continue;
            if (!question.isEmpty())
                dialogs.answer(answer);
            click(u"cmdDelete");
            EXPECT_EQ(said(), question);
            EXPECT_EQ(grid()->rowCount(), rows - (answer == platform::kAnswerYes ? 1 : 0));
        }
        EXPECT_EQ(screen->key(), -1);
    }

    int firstShownColumn() {
        int column = 0;
        while (grid()->isColumnHidden(column))
            ++column;
        return column;
    }

    /// Replaces a text field's content by keyboard; what the test keyboard lacks comes as from the clipboard.
    void enter(QStringView field, const QString& text) {
        auto* edit = find<QLineEdit>(field);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        for (const QChar c : text)
            c.unicode() < 0x80 ? QTest::keyClick(edit, c.toLatin1()) : edit->insert(c);
    }

    /// Puts texts into fields that are not looked at on the way.
    void put(std::initializer_list<std::pair<QStringView, QString>> texts) {
        for (const auto& [field, text] : texts)
            find<QLineEdit>(field)->setText(text);
    }

    /// Types on whatever has the focus, as the keyboard does.
    void type(const QString& text) { typeText(text); }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    QString text(QStringView field) { return find<QLineEdit>(field)->text(); }

    QString chosen(QStringView list) { return find<QComboBox>(list)->currentText(); }

    /// Leads the keyboard from field to field by Enter and gives the names it passes.
    QString enterWay(QStringView first, int steps) {
        find(first)->setFocus();
        QStringList way{focusName()};
        for (int i = 0; i < steps; ++i) {
            press(Qt::Key_Return);
            way << focusName();
        }
        return way.join(QLatin1Char(' '));
    }

    void choose(QStringView list, const QString& entry) { find<QComboBox>(list)->setCurrentText(entry); }

    bool ticked(QStringView box) { return find<QCheckBox>(box)->isChecked(); }

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

    /// The hidden keys of the rows on show.
    QString keys() {
        QStringList all;
        for (int row = 0; row < grid()->rowCount(); ++row)
            all << grid()->text(row, 0);
        return all.join(QLatin1Char(' '));
    }

    /// Every button can be reached by a key of its own, on a screen with few of them, and every field by
    /// name. The main window's menus have their keys in every screen.
    void expectReachable(bool everyButton = true) {
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
        for (const auto* label : screen->template findChildren<QLabel*>())
            take(label, label->buddy() ? label->text() : QString());
        for (const auto* button : screen->template findChildren<QAbstractButton*>())
            if (!button->objectName().isEmpty() && button->focusPolicy() != Qt::NoFocus) {
                EXPECT_TRUE(take(button, button->text()) || !everyButton)
                    << button->objectName().toStdString();
            }
        for (const auto* field : screen->template findChildren<QWidget*>())
            if ((field->focusPolicy() & Qt::TabFocus) && !qobject_cast<const QAbstractButton*>(field) &&
                !qobject_cast<const QComboBox*>(field->parentWidget()) &&
                !qobject_cast<const QTabWidget*>(field->parentWidget()) && field->window() == screen.get()) {
                EXPECT_FALSE(field->objectName().isEmpty() || field->accessibleName().isEmpty())
                    << field->metaObject()->className() << field->objectName().toStdString();
            }
    }

    /// What was said since the last call.
    Said said() { return std::exchange(dialogs.said, {}); }

    static QString stored(const QString& sql) { return TestFirm::value(sql); }

    TestFirm firm;
    Dialogs dialogs;
    TestNavigation navigation;
    TestRegistry registry;
    TestReports reports;
    TestPrinters printers;
    TestInternet internet;
    std::unique_ptr<Screen> screen;
};

/// A master-data screen that stands open.
template <typename Screen> class MasterDataTest : public ScreenTest<Screen> {
  protected:
    MasterDataTest() { this->open(); }
};

} // namespace test
