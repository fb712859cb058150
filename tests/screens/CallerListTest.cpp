// The caller list, alone and as the way from a missed call to the order screen.
#include "ScreenTest.h"
#include "ShellFixture.h"
#include "common/Clock.h"
#include "masterdata/modVerwaltungKunden.h"
#include "platform/form/FieldHelpers.h"
#include "telephony/frmVerwaltungAnruferListe.h"
#include "telephony/modTelefonie.h"

using namespace Qt::StringLiterals;
using platform::DataGrid;
using test::Said;
using test::ShellTest;

namespace {

class CallerListTest : public test::ScreenTest<frmVerwaltungAnruferListe> {
  protected:
    static void call(const QString& number, int minute) {
        test::TestFirm::setTime(18, minute);
        modTelefonie::RecordCall(number);
    }

    static QString received() {
        return stored(u"SELECT Count(*) AS N FROM tbl_Verwaltung_AnruferListe WHERE flag_Kunde = True"_s);
    }
};

} // namespace

TEST_F(CallerListTest, TheChosenCallAloneIsMarkedAndGoesToTheOrderScreen) {
    call(u""_s, 1);
    call(u"0791234567"_s, 2);
    call(u"0791234567"_s, 3);
    call(u"0447654321"_s, 3);
    open();
    EXPECT_EQ(rows(), (QStringList{u"0447654321|18:03:00|15/05/2026|verpasst"_s,
                                   u"0791234567|18:03:00|15/05/2026|verpasst"_s,
                                   u"0791234567|18:02:00|15/05/2026|verpasst"_s,
                                   u"|18:01:00|15/05/2026|verpasst"_s}));
    QTest::keyClick(grid(), Qt::Key_Down);
    QTest::keyClick(grid(), Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(navigation.openedNumber, u"0791234567"_s);
    EXPECT_TRUE(screen->isHidden());
    open();
    EXPECT_EQ(rows().at(2), u"0791234567|18:02:00|15/05/2026|empfangen"_s);
    EXPECT_EQ(received(), u"1"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(received(), u"2"_s) << "one of two calls in one instant";
}

TEST_F(CallerListTest, EveryNumberClosesTheListAndOnlyANumberGoesOn) {
    const QString sixty(60, u'9');

    const struct {
        QString number;
        QString opened;
    } calls[] = {{u""_s, {}},
                 {u"anonym"_s, {}},
                 {u"044 765 43 21"_s, {}},
                 {u"' OR 1=1 --"_s, {}},
                 {sixty, sixty},
                 {u"+41791234567"_s, u"+41791234567"_s}};

    for (const auto& [number, opened] : calls) {
        ConnMain.Execute(u"DELETE FROM tbl_Verwaltung_AnruferListe"_s);
        call(number, 1);
        navigation.openedNumber.clear();
        open();
        doubleClickRow(0);
        EXPECT_TRUE(screen->isHidden()) << number.toStdString();
        EXPECT_EQ(navigation.openedNumber, opened);
        EXPECT_EQ(received(), u"1"_s) << number.toStdString();
    }
    // A row from elsewhere without a readable instant closes the list all the same.
    for (const char16_t* instant : {u"NULL", u"'kaputt'"}) {
        ConnMain.Execute(u"UPDATE tbl_Verwaltung_AnruferListe SET flag_Kunde = False, lng_Datum = "_s +
                         QString::fromUtf16(instant));
        open();
        doubleClickRow(0);
        EXPECT_TRUE(screen->isHidden());
        EXPECT_EQ(received(), u"0"_s);
    }
    EXPECT_TRUE(dialogs.said.isEmpty());
}

TEST_F(CallerListTest, IsEmptiedOnlyAfterYesAndThenDoesNothing) {
    call(u"0791234567"_s, 1);
    open();
    for (const auto& [answer, left] : {std::pair{platform::kAnswerNo, 1}, {platform::kAnswerYes, 0}}) {
        dialogs.answer(answer);
        click(u"cmdDelete");
        EXPECT_EQ(said(),
                  (Said{{u"Möchten Sie die Anruferliste wirklich löschen?"_s, 4, u"Liste Löschen"_s}}));
        EXPECT_EQ(grid()->rowCount(), left);
        EXPECT_EQ(test::TestFirm::count(u"tbl_Verwaltung_AnruferListe"_s), left);
    }
    QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_TRUE(navigation.openedNumber.isEmpty());
    EXPECT_EQ(grid()->emptyText(), u"Keine Anrufe"_s);
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_TRUE(screen->isHidden());
}

TEST_F(CallerListTest, MissedCallsStandOutAndTellWhoCalled) {
    call(u"0799999999"_s, 1);
    call(u"0791234567"_s, 2);
    modTelefonie::MarkCallTaken(u"0799999999"_s);
    open();
    const auto bold = [&](int row) {
        return grid()->model()->index(row, 1).data(Qt::FontRole).value<QFont>().bold();
    };
    EXPECT_TRUE(bold(0));
    EXPECT_FALSE(bold(1));
    const QString anna = modVerwaltungKunden::GetKundeName(test::TestFirm::kAnna);
    EXPECT_EQ(grid()->model()->index(0, 2).data(Qt::ToolTipRole).toString(), platform::toolTipOf(anna));
    const auto* hint = find<QLabel>(u"AuswahlHinweis");
    EXPECT_TRUE(hint->text().startsWith(anna));
    // A further call stands above, and Enter still takes the one that was marked.
    call(u"0447654321"_s, 3);
    screen->callCame();
    EXPECT_EQ(grid()->rowCount(), 3);
    EXPECT_EQ(grid()->row(), 1);
    EXPECT_TRUE(hint->text().startsWith(anna));
}

TEST_F(ShellTest, AMissedCallBecomesAnOrderThroughPanelMenuAndKey) {
    frmMDI& window = start();
    Q_EMIT line.IncomingCall(u"044"_s, u"0447654321"_s, u""_s);
    auto* panel = find<QPushButton>("ShowTelefonListeCommand");
    ASSERT_TRUE(panel->isEnabled());
    const QWidget* room = window.findChild<QMdiArea*>();
    QString chosen;
    const int roomTop = room->mapToGlobal(QPoint(0, 0)).y();
    const std::function<void()> ways[] = {
        [&] { QTest::mouseClick(panel, Qt::LeftButton); },
        [&] { QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier); },
        [&] { window.menuAction(u"mnAuftragswesenISDNListe"_s)->trigger(); },
    };
    for (const auto& way : ways) {
        asked.clear();
        QApplication::setActiveWindow(&window);
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &window, [&] {
            if (auto* list = qobject_cast<frmVerwaltungAnruferListe*>(QApplication::activeModalWidget())) {
                EXPECT_GE(list->pos().y(), roomTop) << "the waiting number stays in sight";
                auto* calls = list->findChild<DataGrid*>();
                const int rows = calls->rowCount();
                chosen = calls->text(0, 1);
                Q_EMIT line.IncomingCall(u"044"_s, u"0791112233"_s, u""_s);
                EXPECT_EQ(calls->rowCount(), rows + 1);
                QTest::keyClick(calls, Qt::Key_Return);
            }
        });
        watch.start(1);
        way();
        EXPECT_EQ(asked, QStringList{u"search "_s + chosen});
        EXPECT_FALSE(QApplication::activeModalWidget());
    }
    EXPECT_EQ(query(u"SELECT Count(*) FROM tbl_Verwaltung_AnruferListe WHERE flag_Kunde = True"_s), u"3"_s);
}
