#include "common/RunTimeError.h"
#include "common/Value.h"
#include "platform/QtDialogs.h"
#include "platform/form/DataGrid.h"
#include "platform/form/FieldFormat.h"
#include "platform/form/FieldHelpers.h"
#include "shell/PhoneBookSearch.h"
#include "telephony/frmVerwaltungTelefonbuch.h"
#include "tests/screens/ShellFixture.h"
#include "tests/support/StatementLog.h"
#include <QClipboard>
#include <QElapsedTimer>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using common::Value;
using platform::DataGrid;
using test::ShellTest;

TEST(FieldFormat, ShowsFieldsAsTheListsWantThem) {
    const std::tuple<Value, const char16_t*, const char16_t*> cases[] = {
        {Value(-1), u"\"Nein\";\"Ja\"", u"Ja"},
        {Value(0), u"\"Nein\";\"Ja\"", u"Nein"},
        {Value(1), u"\"Nein\";\"Ja\"", u"Nein"},
        {Value(-2.5), u"0.00;\"minus\"", u"minus"},
        {Value(-2.5), u"0.00;0.0", u"2.5"},
        {Value(1234.5), u"0.00 ", u"1234.50 "},
        {Value(-3.0), u"0.00", u"-3.00"},
        {Value(common::Serial{46000}), u"DD/MM/YYYY", u"09/12/2025"},
        {Value(u"kein Datum"), u"DD/MM/YYYY", u"kein Datum"},
        {Value(u"Text"), u"0.00", u"Text"},
        {Value(), u"0.00", u""},
        {Value(12.5), u"", u"12.5"},
    };

    for (const auto& [value, format, shown] : cases)
        EXPECT_EQ(platform::formatField(value, QString::fromUtf16(format)), QString::fromUtf16(shown));
}

namespace {

class ListTest : public ShellTest {
  protected:
    ListTest() {
        start();
        for (const auto& [name, telefon] : {std::pair(u"Meier"_s, u"0441112233"_s),
                                            std::pair(u"Ärni"_s, u"1"_s), std::pair(u""_s, u"0441112233"_s)})
            ConnPhone.Execute(
                u"INSERT INTO tbl_PhoneBook (txt_Name, txt_Vorname, txt_Ort, txt_Telefon, txt_Natel) "
                "VALUES ('%1', 'Eva', 'Bern', '%2', '0790000000')"_s.arg(name, telefon));
        control.setConnection(ConnPhone);
        grid.setDataControl(control);
        grid.formatColumns({{u"Key"_s, 0}, {u"Name"_s, 1500}, {u"Ort"_s, 1500}});
        grid.resize(400, 200);
        grid.show();
    }

    void load(const QString& condition) {
        control.setRecordSource(u"SELECT txt_Telefon, txt_Name, txt_Ort FROM tbl_PhoneBook WHERE "_s +
                                condition);
        control.Refresh();
    }

    platform::DataControl control;
    DataGrid grid;
};

} // namespace

TEST_F(ListTest, RowsAreChosenByMouseAndKeyboard) {
    load(u"txt_Name <> '' ORDER BY txt_Name"_s);
    ASSERT_EQ(grid.rowCount(), 2);
    EXPECT_TRUE(grid.isColumnHidden(0));
    EXPECT_EQ(grid.columnWidth(1) + grid.columnWidth(2), grid.viewport()->width()) << "one fills the width";
    EXPECT_EQ(grid.text(0, 0), u"1"_s) << "the hidden key rides along";
    QSignalSpy chosen(&grid, &DataGrid::rowChosen);
    QSignalSpy activated(&grid, &DataGrid::rowActivated);
    QSignalSpy menu(&grid, &DataGrid::rowContextMenu);
    const auto at = [&](int row) { return grid.visualRect(grid.model()->index(row, 1)).center(); };
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, at(1));
    QTest::keyClick(&grid, Qt::Key_Up);
    QTest::keyClick(&grid, Qt::Key_Up);
    EXPECT_EQ(chosen.size(), 2) << "staying on a row is no choice";
    QTest::keyClick(&grid, Qt::Key_Return);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, at(1));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, QPoint(20, 180));
    EXPECT_EQ(activated.size(), 2);
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, at(0));
    QTest::keyClick(&grid, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(menu.size(), 2);
    EXPECT_EQ(grid.row(), 0);
}

TEST_F(ListTest, AHintIsOfThePointersRowOrElseOfTheKeyboards) {
    load(u"txt_Name <> '' ORDER BY txt_Name"_s);
    grid.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&grid));
    grid.clearFocus();
    QSignalSpy noticed(&grid, &DataGrid::rowNoticed);
    grid.setRow(1);
    EXPECT_TRUE(noticed.isEmpty()) << "the keyboard stands elsewhere";
    grid.setFocus();
    const QPointF first = grid.visualRect(grid.model()->index(0, 1)).center();
    QMouseEvent move(QEvent::MouseMove, first, first, Qt::NoButton, {}, {});
    QEvent leave(QEvent::Leave);
    for (QEvent* event : {static_cast<QEvent*>(&move), &leave})
        QCoreApplication::sendEvent(grid.viewport(), event);
    EXPECT_EQ(noticed.value(1).value(0), 0);
    EXPECT_EQ(noticed.value(2).value(0), 1);
}

TEST_F(ListTest, RefreshingSortingAndClosingReachTheGrid) {
    load(u"txt_Name <> ''"_s);
    QSignalSpy chosen(&grid, &DataGrid::rowChosen);
    control.Sort(u"txt_Name ASC"_s);
    EXPECT_EQ(grid.text(0, 1), u"Ärni"_s);
    control.Refresh(u"txt_Name = 'Meier'"_s);
    EXPECT_EQ(grid.rowCount(), 1);
    EXPECT_EQ(grid.text(0, 1), u"Meier"_s);
    load(u"txt_Name = 'nobody'"_s);
    EXPECT_EQ(grid.rowCount(), 0);
    EXPECT_EQ(grid.row(), -1);
    EXPECT_TRUE(grid.value(0, 0).isNull());
    EXPECT_THROW(load(u"txt_Nonsense = 1"_s), std::exception);
    EXPECT_EQ(grid.rowCount(), 0);
    load(u"txt_Name <> ''"_s);
    store::CloseDatabases();
    EXPECT_EQ(grid.rowCount(), 0) << "a closed database leaves rows that cannot be read";
    grid.repaint();
    {
        platform::DataControl passing;
        grid.setDataControl(passing);
    }
    grid.repaint();
    EXPECT_EQ(grid.rowCount(), 0) << "the grid outlives its control";
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(ListTest, PaintingAsksTheStoreNothing) {
    {
        store::Transaction together(ConnMain);
        for (int i = 1001; i <= 1400; ++i)
            ConnMain.Execute(u"INSERT INTO tbl_Verwaltung_Kunden (txt_Firma) VALUES ('F%1')"_s.arg(i));
        together.commit();
    }
    control.setConnection(ConnMain);
    control.setRecordSource(u"SELECT lng_ID, txt_Firma FROM tbl_Verwaltung_Kunden ORDER BY txt_Firma"_s);
    control.Refresh();
    const auto shown = [&](int row) { return grid.model()->index(row, 1).data().toString(); };
    for (const int row : {0, 399, 200}) {
        grid.scrollTo(grid.model()->index(row, 1), DataGrid::PositionAtTop);
        const int first = grid.rowAt(0);
        const int last = grid.rowAt(grid.viewport()->height() - 1);
        const test::StatementLog log(ConnMain);
        grid.viewport()->repaint();
        EXPECT_EQ(shown(first), u"F%1"_s.arg(1001 + first));
        EXPECT_EQ(shown(last), u"F%1"_s.arg(1001 + last));
        EXPECT_EQ(shown(100), u""_s) << "not read yet";
        EXPECT_TRUE(log.statements().isEmpty()) << log.statements().first().toStdString();
    }
    grid.setRow(0);
    grid.keyboardSearch(u"F1100"_s);
    EXPECT_EQ(grid.row(), 99);
}

TEST_F(ListTest, PhoneBookPick) {
    shell::PhoneBookSearch search(app->services());

    const std::tuple<const char16_t*, std::string, QString> cases[] = {
        {u"0441112233", "enter", u"Meier|Bern|0790000000"_s},
        {u"0790000000", "click", u"Meier|Bern|0790000000"_s},
        {u"0441112233", "close", {}},
        {u"0441112233", "escape", {}},
        {u"0441112233", "nameless", {}}};

    for (const auto& [number, how, expected] : cases) {
        int shown = 0;
        QTimer::singleShot(0, [&, how = how] {
            auto* list = qobject_cast<frmVerwaltungTelefonbuch*>(QApplication::activeModalWidget());
            ASSERT_TRUE(list);
            shown = list->findChild<QLabel*>(u"lbl_KundenTotal"_s)->text().toInt();
            auto* rows = list->findChild<DataGrid*>(u"grid_PhoneBook"_s);
            if (how == "enter") {
                QTest::keyClick(rows, Qt::Key_Return);
            } else if (how == "click") {
                QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {},
                                   rows->visualRect(rows->model()->index(0, 0)).center());
            } else if (how == "escape") {
                QTest::keyClick(list, Qt::Key_Escape);
            } else {
                if (how == "nameless") {
                    rows->setRow(1);
                    QTest::keyClick(rows, Qt::Key_Return);
                    EXPECT_TRUE(list->isVisible()) << "a row without a name was picked";
                }
                QTest::mouseClick(list->findChild<QPushButton*>(u"cmdClose"_s), Qt::LeftButton);
            }
        });
        const auto picked = search.FindPhoneBookEntry(QString::fromUtf16(number));
        EXPECT_GE(shown, 2) << how;
        EXPECT_EQ(picked ? picked->txt_Name + u'|' + picked->txt_Ort + u'|' + picked->txt_Natel : QString(),
                  expected)
            << how;
    }
    EXPECT_TRUE(dialogs.said.isEmpty());
    EXPECT_FALSE(search.FindPhoneBookEntry(u"441112233"_s)) << "the leading zero counts in the directory";
    EXPECT_EQ(dialogs.last().text, u"Diese Telefon Nummer steht in keinem Verzeichnis."_s);
    EXPECT_EQ(dialogs.last().title, u"Unbekannte Telefon Nummer"_s);
}

TEST(FieldHelpers, DigitsEnterChainAndSelection) {
    QWidget window;
    auto* number = new QLineEdit(&window);
    auto* name = new QLineEdit(&window);
    auto* save = new QPushButton(u"&Speichern"_s, &window);
    int saved = 0;
    QObject::connect(save, &QPushButton::clicked, [&] { ++saved; });
    platform::digitsOnly(*number);
    platform::selectAllOnFocus(*name);
    platform::enterChain({number, name, save});
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    number->setFocus();
    QTest::keyClicks(number, u"07a9 1-x"_s);
    QTest::keyClick(number, 's', Qt::AltModifier);
    EXPECT_EQ(saved, 1) << "a button's letter passes the field of digits";
    QTest::keyClick(number, Qt::Key_Backspace);
    QApplication::clipboard()->setText(u" 44/55 "_s);
    QTest::keyClick(number, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(number->text(), u"0794455"_s);
    name->setText(u"Meier"_s);
    QTest::keyClick(number, Qt::Key_Return);
    EXPECT_TRUE(name->hasFocus());
    EXPECT_EQ(name->selectedText(), u"Meier"_s);
    QTest::keyClick(name, Qt::Key_Enter);
    EXPECT_TRUE(save->hasFocus());
    QTest::keyClick(save, Qt::Key_Return);
    EXPECT_EQ(saved, 2);
}

TEST(FieldHelpers, WhoComesBackFindsTheFieldAsItWasLeft) {
    QMdiArea room;
    auto* screen = new QWidget;
    auto* field = new QLineEdit(screen);
    auto* next = new QLineEdit(screen);
    room.addSubWindow(screen);
    auto* other = new QLineEdit;
    room.addSubWindow(other);
    platform::selectAllOnFocus(*field);
    platform::reformatOnLeave(*field, [](const QString& text) { return text + u'.'; });
    room.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&room));
    QWidget desktop;
    const std::pair<const char*, std::function<void()>> comings[] = {
        {"menu",
         [&] {
             QMenu menu;
             menu.addAction(u"Einfügen"_s);
             menu.popup({});
             menu.close();
         }},
        {"window",
         [&] {
             desktop.show();
             QApplication::setActiveWindow(&desktop);
             QApplication::setActiveWindow(&room);
         }},
        {"screen", [&] {
             other->setFocus();
             room.setActiveSubWindow(room.subWindowList().first());
         }}};
    next->setFocus();
    field->setText(u"Mei"_s);
    field->setFocus();
    EXPECT_EQ(field->selectedText(), u"Mei"_s);
    for (const auto& [name, comeBack] : comings) {
        field->deselect();
        comeBack();
        ASSERT_TRUE(field->hasFocus()) << name;
        QTest::keyClicks(field, u"e"_s);
    }
    EXPECT_EQ(field->text(), u"Meieee"_s);
    next->setFocus();
    EXPECT_EQ(field->text(), u"Meieee."_s);
    QTest::mouseClick(field, Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_EQ(field->selectedText(), u"Meieee."_s);
}

TEST(QtDialogs, AnswersAreTheNumbersOfTheirButtons) {
    const std::tuple<int, Qt::Key, int> cases[] = {
        {platform::kYesNo, Qt::Key_J, platform::kAnswerYes},
        {platform::kYesNo, Qt::Key_N, platform::kAnswerNo},
        {platform::kYesNo, Qt::Key_Escape, platform::kAnswerNo},
        {platform::kRetryCancel + platform::kStop, Qt::Key_W, platform::kAnswerRetry},
        {platform::kRetryCancel, Qt::Key_Escape, platform::kAnswerCancel},
        {platform::kInformation, Qt::Key_Return, platform::kAnswerOk},
    };

    for (const auto& [style, key, answer] : cases) {
        platform::QtDialogs dialogs;
        QTimer::singleShot(0, [&] {
            QWidget* box = QApplication::activeModalWidget();
            ASSERT_TRUE(box);
            QApplication::setActiveWindow(box);
            for (QWidget* target : {box, QApplication::focusWidget()})
                QTest::simulateEvent(target, true, Qt::Key_Return, {}, {}, true);
            ASSERT_TRUE(box->isVisible()) << "answered by a key held down";
            QTest::keyClick(box, key);
            EXPECT_FALSE(box->isVisible()) << "at once";
        });
        EXPECT_EQ(dialogs.MsgBox(u"Frage"_s, style, u"Titel"_s), answer) << style;
    }
}

/// A query that lasts shows a box without a known end after half a second; calls come in meanwhile.
TEST_F(ListTest, AQueryThatLastsIsGivenUpAndTheListStays) {
    ConnPhone.Execute(u"CREATE VIEW view_Buch AS SELECT rowid AS lng_Nr, * FROM tbl_PhoneBook"_s);
    control.setKey(u"lng_Nr"_s);
    control.show(
        u"SELECT txt_Telefon, txt_Name, txt_Ort FROM view_Buch WHERE txt_Name <> '' ORDER BY txt_Name"_s);
    const QString before = control.RecordSource();
    platform::QtDialogs boxes;
    QElapsedTimer time;
    time.start();
    qint64 shownAfter = 0;
    QString bar;
    QTimer call;
    QObject::connect(&call, &QTimer::timeout, &grid, [&] {
        auto* box = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
        if (!box)
            return;
        shownAfter = shownAfter > 0 ? shownAfter : time.elapsed();
        bar = QString::number(box->minimum()) + u' ' + QString::number(box->maximum());
        EXPECT_EQ(grid.text(0, 1), u"Ärni"_s) << "the list can be painted";
        ConnPhone.Execute(u"UPDATE tbl_PhoneBook SET txt_Ort = 'Thun'"_s);
        if (time.elapsed() > 700)
            QTest::mouseClick(box->findChild<QPushButton*>(), Qt::LeftButton);
    });
    call.start(10);
    const QString endless = u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                            "SELECT i, i AS a, i AS b FROM n WHERE i < 0"_s;
    EXPECT_THROW(control.show(endless, boxes.ShowProgress(u"Die Bestellungen werden gelesen …"_s)),
                 platform::GivenUp);
    EXPECT_TRUE(shownAfter >= 500 && shownAfter < 1500) << shownAfter;
    EXPECT_EQ(bar, u"0 0"_s);
    EXPECT_EQ(control.RecordSource(), before);
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_THROW(control.show(u"SELECT txt_Fehlt FROM tbl_PhoneBook"_s, [](qint64, qint64) {}),
                 common::RunTimeError);
    EXPECT_EQ(grid.rowCount(), 2);
    EXPECT_THROW(control.Sort(u"txt_Name DESC"_s, [](qint64, qint64) { throw platform::GivenUp(); }),
                 platform::GivenUp);
    EXPECT_EQ(grid.text(0, 1), u"Ärni"_s);
    control.show(u"SELECT txt_Telefon, txt_Name, txt_Ort FROM tbl_PhoneBook WHERE txt_Name = ''"_s,
                 [](qint64, qint64) {});
    EXPECT_EQ(grid.rowCount(), 1);
    EXPECT_EQ(grid.text(0, 2), u"Thun"_s);
}
