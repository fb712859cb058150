#include "screens/OrderScreenFixture.h"
#include "store/SystemSettings.h"
#include <QDir>
#include <QGroupBox>
#include <QTableView>

using namespace Qt::StringLiterals;
using modVerwaltungTelefonbuch::PhoneBookEntry;
using orders::Col;
using platform::CellGrid;
using platform::DataGrid;
using test::TestFirm;
namespace Detail = orders::Detail;

namespace {

class OrderScreenTest : public test::OrderScreen<test::TestDialogs> {};

TEST_F(OrderScreenTest, LinesAreKeyedWithoutTheMouse) {
    search(u"0791234567"_s);
    EXPECT_TRUE(find<QPlainTextEdit>(u"txt_KundenAdresse")->toPlainText().contains(u"Seestrasse 1"_s));
    ASSERT_EQ(focusName(), u"BestellungGrid"_s);
    // Enter passes over a quantity that stands.
    for (const char16_t* keyed : {u"10", u"", u"w", u"2"}) {
        type(QString::fromUtf16(keyed));
        press(Qt::Key_Return);
    }
    press(Qt::Key_F7);
    ASSERT_EQ(focusName(), u"ProdukteGrid"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    press(Qt::Key_F8);
    press(Qt::Key_Return);
    QStringList lines;
    for (int row = 0; row < 5; ++row)
        lines << cell(row, Col::Anzahl) + u' ' + cell(row, Col::Bezeichnung);
    EXPECT_EQ(lines.join(u'|'), u"1 Pizza Hawaii|2 Wein|1 Pizza|1 Knoblauch|0 "_s);
}

TEST_F(OrderScreenTest, AnUnknownCallerIsCapturedQuickly) {
    put({{u"txt_SucheTelefonNummer", u"   "_s}});
    find(u"txt_SucheTelefonNummer")->setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(phoneBook.asked.isEmpty()) << "blanks are no number";
    phoneBook.entry =
        PhoneBookEntry{u"O'Neill"_s, u"Zoë"_s, u"Dorfstr. 3"_s, u"8001"_s, u"Zürich"_s, {}, {}, {}};
    search(u"0441112233"_s);
    EXPECT_TRUE(find(u"box_SchnellerfassungKunde")->isVisible());
    EXPECT_EQ(text(u"txt_KundenTelefonnummer"), u"0441112233"_s);
    EXPECT_EQ(enterWay(u"txt_KundenName", 6),
              u"txt_KundenName txt_KundenVorname txt_KundenStrasse txt_KundenPLZ txt_KundenOrt "
              u"txt_KundenZusatz cmd_ClientSave"_s);
    put({{u"txt_KundenName", u"  "_s}});
    press(Qt::Key_Return);
    EXPECT_EQ(dialogs.last().text, u"Bitte geben Sie einen Namen ein."_s);
    EXPECT_EQ(dialogs.last().title, u"Fehlende Eingabe"_s);
    put({{u"txt_KundenName", u"O'Neill"_s}, {u"txt_KundenZusatz", u"3. Hof"_s}});
    press(Qt::Key_Return);
    EXPECT_FALSE(find(u"box_SchnellerfassungKunde")->isVisible());
    EXPECT_EQ(order().KundenAdresse(),
              u"O'Neill Zoë\r\nDorfstr. 3\r\n8001 Zürich\r\nTel: 0441112233\r\n3. Hof"_s);
    EXPECT_EQ(stored(u"SELECT dbl_Telefon FROM tbl_Verwaltung_Kunden WHERE txt_Name = 'O''Neill'"_s),
              u"441112233"_s);
    EXPECT_TRUE(enabled(u"cmdSave"));

    click(u"cmdCleanMask");
    for (const auto& [number, told] : {std::pair{u""_s, u"Geben Sie zuerst eine Telefon Nummer ein."_s},
                                       {u"441112233"_s, u"Diese Telefon Nummer existiert bereits."_s}}) {
        put({{u"txt_SucheTelefonNummer", number}});
        click(u"cmdKundeSchnellerfassung");
        EXPECT_EQ(dialogs.last().text, told);
    }
}

TEST_F(OrderScreenTest, TakingACallPreparesTheOrderOrTheCapture) {
    screen->takeCall(u"0799999999"_s);
    EXPECT_EQ(order().lng_KundenID, TestFirm::kBruno);
    EXPECT_TRUE(enabled(u"cmdSave"));
    screen->takeCall(u"0445556677"_s);
    EXPECT_EQ(order().detail(Detail::KundenNr), u""_s);
    EXPECT_FALSE(enabled(u"cmdSave"));
    EXPECT_TRUE(find(u"box_SchnellerfassungKunde")->isVisible());
    EXPECT_EQ(text(u"txt_KundenTelefonnummer"), u"0445556677"_s);
    EXPECT_EQ(focusName(), u"txt_KundenName"_s);
    put({{u"txt_KundenName", u"Meier"_s}});
    screen->takeCall(u"0445556688"_s);
    EXPECT_EQ(text(u"txt_KundenName"), u""_s) << "the one who called before";
    screen->takeCall(u"abc"_s);
    EXPECT_EQ(dialogs.last().title, u"Ungültige Telefonnummer"_s);
    // A customer without a number who is handed over clears the mask.
    search(u"0791234567"_s);
    screen->searchNumber({});
    EXPECT_EQ(order().detail(Detail::KundenNr), u""_s);
    EXPECT_FALSE(enabled(u"cmdSave"));
}

TEST_F(OrderScreenTest, ALateDeliveryIsAskedForAndDueOnesAreTold) {
    SysVorbestellungBuchungStatus = 1;
    SysVorbestellungAutomatischZeit = 180;
    const QString question = u"Soll dieser Auftrag als Vorbestellung verbucht werden ?"_s;
    for (const auto& [day, time, answer, told] :
         {std::tuple{u"15/05/2026"_s, u"20:30"_s, platform::kAnswerNo, question},
          {u"15/05/2026"_s, u"20:30"_s, platform::kAnswerYes, question},
          {u"14/05/2026"_s, u"23:00"_s, platform::kAnswerOk,
           u"Dieses Lieferdatum befindet sich in der Vergangenheit."_s}}) {
        search(u"0791234567"_s);
        order().setDetail(Detail::Lieferung, day);
        order().setDetail(Detail::Lieferzeit, time);
        // The second one for the slip of the booking.
        for (int i = 0; answer != platform::kAnswerOk && i < (answer == platform::kAnswerNo ? 2 : 1); ++i)
            dialogs.answer(answer);
        click(u"cmdSave");
        EXPECT_EQ(said().value(0).text, told);
    }
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Bestellungen_Master"_s), 1);
    EXPECT_EQ(TestFirm::count(u"tbl_Auftragswesen_Vorbestellungen_Master"_s), 1);
    EXPECT_EQ(order().detail(Detail::KundenNr), u"1"_s) << "what was refused stays";
    EXPECT_EQ(navigation.alarms, QList<qint64>{1}) << "also with the timer's check off";
    EXPECT_EQ(navigation.messages,
              (QStringList{u"Auftrag 1000 verbucht"_s, u"Als Vorbestellung 1 gespeichert"_s}));
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(OrderScreenTest, BookedOrdersAreLoadedChangedDeletedAndSteppedThrough) {
    for (const char16_t* code : {u"10", u"1"}) {
        search(u"0791234567"_s);
        order().BestellungGrid.endEdit(0, Col::Kurzzeichen, QString::fromUtf16(code));
        dialogs.answer(platform::kAnswerNo);
        press(Qt::Key_F12);
        EXPECT_FALSE(enabled(u"cmdZurueckholen")) << "one that is booked";
        EXPECT_TRUE(QDir(firm.folder() + u"/Data"_s).entryList({u"Auftrag.*"_s}).isEmpty());
    }
    auto* number = find<QLineEdit>(u"txt_AuftragsNr");
    click(u"cmdPreviousTrx");
    EXPECT_EQ(number->text(), u"1000"_s);
    EXPECT_EQ(cell(0, Col::Bezeichnung), u"Pizza Hawaii"_s);
    click(u"cmdPreviousTrx");
    EXPECT_EQ(number->text(), u"1000"_s);
    press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(number->text(), u"1001"_s);
    number->clear();
    click(u"cmdNextTrx");
    EXPECT_EQ(number->text(), u"1001"_s);
    EXPECT_TRUE(enabled(u"cmdVerwaltungSave") && enabled(u"cmdVerwaltungDelete") && enabled(u"cmdPrint"));
    EXPECT_FALSE(enabled(u"cmdSave"));

    click(u"cmdMWStSatz0");
    dialogs.answer(platform::kAnswerYes);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdVerwaltungSave");
    EXPECT_EQ(
        stored(u"SELECT dbl_MWStBetrag FROM tbl_Auftragswesen_Bestellungen_Master WHERE lng_TrxNr = 1001"_s),
        u"0"_s);
    screen->loadBooking(1001);
    dialogs.answer(platform::kAnswerYes);
    click(u"cmdVerwaltungDelete");
    EXPECT_EQ(dialogs.last().text, u"Wollen Sie diese Bestellung löschen ?"_s);
    EXPECT_EQ(navigation.messages.mid(2),
              (QStringList{u"Auftrag 1001 geändert"_s, u"Auftrag 1001 gelöscht"_s}));
    screen->loadBooking(1001);
    EXPECT_EQ(order().detail(Detail::Kurier), u"gelöscht"_s);
    EXPECT_FALSE(enabled(u"cmdVerwaltungSave"));
    click(u"cmdCleanMask");
    EXPECT_EQ(order().detail(Detail::Kurier), u"AB"_s);
    EXPECT_EQ(dialogs.unexpected, 0);
}

TEST_F(OrderScreenTest, DiscountAndVatGoIntoAllLines) {
    order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
    for (const char16_t* wrong : {u"", u"abc", u"1,5"}) {
        dialogs.answerInput(QString::fromUtf16(wrong));
        click(u"cmdRabatt");
        EXPECT_EQ(dialogs.last().text, u"Kein gültiger Rabatt-Satz."_s);
        EXPECT_EQ(dialogs.last().style, platform::kStop);
    }
    dialogs.answerInput(u"10"_s);
    click(u"cmdRabatt");
    EXPECT_DOUBLE_EQ(order().total(orders::TotalRow::Total), 12.0 - 1.2);
    SysMWStSatz1 = 8.5;
    click(u"cmdMWStSatz1");
    EXPECT_EQ(cell(0, Col::MWSt), u"8.5"_s) << "the rate of now";
    EXPECT_NEAR(order().total(orders::TotalRow::MWSt1), 10.8 - 10.8 / 1.085, 0.005);
}

TEST_F(OrderScreenTest, OneClickPicksOnceAndQuantitiesFallBack) {
    auto* products = find<DataGrid>(u"ProdukteGrid");
    find<QComboBox>(u"combo_ProduktAnzahl")->setCurrentIndex(1);
    click(u"cmd_ProduktAnzahlPlus");
    const QPoint first = products->visualRect(products->model()->index(0, 1)).center();
    QTest::mouseClick(products->viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(cell(0, Col::Anzahl), u"3"_s);
    EXPECT_EQ(find<QComboBox>(u"combo_ProduktAnzahl")->currentText(), u"1"_s);
    QTest::mouseDClick(products->viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(cell(2, Col::Ccy), u""_s) << "a double click picks no more than its first click";
    find<QComboBox>(u"combo_PreisGruppe")->setCurrentIndex(1);
    EXPECT_EQ(cell(0, Col::Preis), u"49.5"_s) << "lines in the order keep their prices";

    screen->ClearBestellungMaske();
    find<QComboBox>(u"combo_ExtraAnzahl")->setCurrentIndex(3);
    QTest::keyClick(find(u"ExtrasGrid"), Qt::Key_Return);
    EXPECT_EQ(find<QComboBox>(u"combo_ExtraAnzahl")->currentText(), u"4"_s) << "for the pick that follows";
}

TEST_F(OrderScreenTest, WhatIsKeyedIsOfferedUnderItsCell) {
    const auto offered = [this] {
        QStringList shown;
        const auto* list = screen->findChild<platform::OfferList*>(u"offers"_s);
        for (int row = 0; list && list->isVisible() && row < list->count(); ++row)
            shown << list->offer(row).texts.join(u'|');
        return shown;
    };
    press(Qt::Key_F6);
    type(u"1"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !offered().isEmpty(); }));
    EXPECT_EQ(offered(), (QStringList{u"1|Pizza|14.00"_s, u"10|Pizza Hawaii|16.50"_s}));
    press(Qt::Key_Return);
    EXPECT_EQ(cell(0, Col::Bezeichnung), u"Pizza"_s) << "the first is what the text alone means";
    EXPECT_TRUE(offered().isEmpty());
    press(Qt::Key_Return);
    // Faster than they show.
    type(u"1"_s);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(offered().size(), 2);
    press(Qt::Key_Return);
    EXPECT_EQ(cell(1, Col::Bezeichnung), u"Pizza Hawaii"_s);
    EXPECT_EQ(find<platform::CellGrid>(u"BestellungGrid")->place(), (platform::CellPlace{1, Col::Anzahl}));
    press(Qt::Key_Return);
    // What is typed on counts, not what was chosen before.
    type(u"1"_s);
    press(Qt::Key_Down);
    type(u"0"_s);
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    EXPECT_EQ(cell(2, Col::Bezeichnung), u"Pizza"_s);
    find<platform::CellGrid>(u"BestellungGrid")->goTo({2, Col::Kurzzeichen});
    // Without a second one Down leads on to the next row.
    type(u"W"_s);
    press(Qt::Key_Down);
    EXPECT_EQ(cell(2, Col::Bezeichnung), u"Wein"_s);

    auto* lines = find<platform::CellGrid>(u"BestellungGrid");
    const auto offeredByName = [&](int row) {
        lines->goTo({row, Col::Bezeichnung}, true);
        type(u"K"_s);
        press(Qt::Key_Down);
        return offered();
    };
    EXPECT_EQ(offeredByName(3), (QStringList{u"|Käse|2.00"_s, u"|Käsesauce|1.50"_s, u"|Knoblauch|0.00"_s}));
    auto* list = screen->findChild<platform::OfferList*>(u"offers"_s);
    const QPoint third = list->visualItemRect(list->topLevelItem(2)).center();
    lines->scrollTo(lines->model()->index(60, Col::Anzahl));
    EXPECT_TRUE(offered().isEmpty()) << "its cell is out of sight";
    lines->scrollToTop();
    EXPECT_EQ(offered().size(), 3);
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, third);
    EXPECT_EQ(cell(3, Col::Ccy), u""_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->topLevelItem(2)).center());
    EXPECT_EQ(cell(3, Col::Bezeichnung), u"Knoblauch"_s);
    EXPECT_EQ(cell(3, Col::ExtraID), QString::number(TestFirm::kKnoblauch));
    EXPECT_EQ(cell(3, Col::ProduktID), QString::number(TestFirm::kWein));
    EXPECT_FALSE(offeredByName(4).isEmpty());
    QLineEdit elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    elsewhere.setFocus();
    EXPECT_TRUE(QTest::qWaitFor([&] { return elsewhere.hasFocus(); }));
    EXPECT_TRUE(offered().isEmpty()) << "another screen came to the front";
    screen->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    screen->ClearBestellungMaske();
    EXPECT_TRUE(offeredByName(0).isEmpty()) << "an extra needs a line above";
}

TEST_F(OrderScreenTest, TheCatalogueTellsNameAndPriceUnderPointerAndCursor) {
    const auto told = [this] { return find<QLabel>(u"lbl_Artikel")->text(); };
    auto* grid = find<platform::DataGrid>(u"ProdukteGrid");
    grid->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(told(), u"CHF 16.50   Pizza Hawaii"_s);
    QTest::mouseMove(grid->viewport(), grid->visualRect(grid->model()->index(1, 1)).center());
    EXPECT_EQ(told(), u"CHF 14.00   Pizza"_s);
    find<QComboBox>(u"combo_PreisGruppe")->setCurrentIndex(1);
    EXPECT_EQ(told(), u""_s) << "it cost that in the other group";
    press(Qt::Key_F7);
    press(Qt::Key_Down);
    EXPECT_EQ(told(), u"CHF 17.50   Pizza Hawaii"_s);
    press(Qt::Key_F6);
    EXPECT_EQ(told(), u""_s);
}

TEST_F(OrderScreenTest, ChangingBookedOrdersIsOfferedByRight) {
    for (const bool restricted : {true, false}) {
        SysAnmeldungBenutzer = 1;
        SysEditierungBestellungen = restricted;
        open(phoneBook);
        for (const char16_t* button : {u"cmdVerwaltungSave", u"cmdVerwaltungDelete"})
            EXPECT_EQ(find(button)->isHidden(), restricted);
    }
    // The right falls while they are shown.
    search(u"0791234567"_s);
    order().PickProdukt(TestFirm::kWein, u"W"_s, 1);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdSave");
    const QString booked =
        u"SELECT lng_KundenID, dbl_MWStBetrag FROM tbl_Auftragswesen_Bestellungen_Master"_s;
    const QString before = stored(booked);
    screen->loadBooking(1000);
    SysEditierungBestellungen = true;
    click(u"cmdMWStSatz0");
    for (const char16_t* button : {u"cmdVerwaltungSave", u"cmdVerwaltungDelete"}) {
        dialogs.answer(platform::kAnswerYes);
        dialogs.answer(platform::kAnswerNo);
        click(button);
        EXPECT_EQ(stored(booked), before);
    }
}

TEST_F(OrderScreenTest, OneKeyOrdersWhatTheCustomerHadLastTime) {
    auto* last = find<QTableView>(u"LetzteBestellungenGrid");
    const auto box = [&] { return find<QGroupBox>(u"box_LetzteBestellungen")->accessibleName(); };
    const auto clickOlder = [&] {
        const QPoint second = last->visualRect(last->model()->index(1, 0)).center();
        QTest::mouseClick(last->viewport(), Qt::LeftButton, {}, second);
    };
    search(u"0791234567"_s);
    press(Qt::Key_F4);
    EXPECT_EQ(cell(0, Col::Ccy), u""_s) << "a new customer";
    for (const char16_t* code : {u"10", u"W"}) {
        search(u"0791234567"_s);
        order().BestellungGrid.endEdit(0, Col::Kurzzeichen, QString::fromUtf16(code));
        dialogs.answer(platform::kAnswerNo);
        click(u"cmdSave");
    }
    ConnMain.Execute(u"UPDATE tbl_Verwaltung_Produkte SET flag_Status = True WHERE lng_ID = 3"_s);

    // Before the list is read, into an order whose first line is still being typed.
    search(u"0791234567"_s);
    type(u"G"_s);
    press(Qt::Key_F4);
    EXPECT_EQ(cell(0, Col::Bezeichnung), u"Gutschein"_s);
    EXPECT_EQ(cell(1, Col::Ccy), u""_s);
    EXPECT_EQ(dialogs.last().text, u"Nicht mehr im Angebot:\n1x Wein"_s);
    const qsizetype told = dialogs.said.size();
    QTest::simulateEvent(QApplication::focusWidget(), true, Qt::Key_F4, Qt::NoModifier, QString(), true);
    EXPECT_EQ(dialogs.said.size(), told) << "a key held down";
    EXPECT_EQ(box(), u"Zuletzt bestellt am 15/05/2026"_s);
    press(Qt::Key_F4, Qt::ShiftModifier);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(cell(1, Col::Bezeichnung), u"Pizza Hawaii"_s);
    EXPECT_EQ(QApplication::focusWidget(), find<CellGrid>(u"BestellungGrid"));
    clickOlder();
    EXPECT_EQ(cell(2, Col::Bezeichnung), u"Pizza Hawaii"_s);

    screen->takeCall(u"0799999999"_s);
    EXPECT_EQ(last->model()->rowCount(), 2) << "not on the way of the call";
    clickOlder();
    EXPECT_EQ(cell(0, Col::Ccy), u""_s) << "another customer's";
    EXPECT_TRUE(QTest::qWaitFor([&] { return last->model()->rowCount() == 0; }));
    EXPECT_EQ(box(), u"Letzte Bestellungen"_s);
}

TEST_F(OrderScreenTest, AWebOrderIsKeyedOnceAndWhatIsMissingTold) {
    const desks::WebLine wein{true, TestFirm::kWein, u"2"_s, {}};
    std::vector<desks::WebLine> lines(22, {true, 99, u"1"_s, {}});
    lines.insert(lines.end(), {wein, {true, TestFirm::kBier, u"abc"_s, {}}});
    screen->searchNumber(u"0791234567"_s);
    // An open cell with what it refuses belongs to nothing that follows.
    find<CellGrid>(u"BestellungGrid")->goTo({0, Col::Anzahl});
    type(u"x"_s);
    screen->keyWebOrder({32, lines});
    ASSERT_EQ(dialogs.said.size(), 1);
    EXPECT_TRUE(dialogs.last().text.endsWith(u"1x Produkt 99\nund 2 weitere\n\n"
                                             u"Menge ungültig, bitte im Auftrag prüfen:\nO'Neill's (abc)"_s));
    EXPECT_EQ(cell(0, Col::Bezeichnung) + cell(1, Col::Bezeichnung), u"WeinO'Neill's"_s);
    dialogs.answer(platform::kAnswerNo);
    click(u"cmdSave");
    for (int time = 0; time < 2; ++time) {
        screen->searchNumber(u"0791234567"_s);
        screen->keyWebOrder({32, {wein}});
    }
    press(Qt::Key_F11, Qt::ShiftModifier);
    EXPECT_EQ(dialogs.last().text, u"Diese Internet Bestellung wurde bereits als Auftrag 1000 verbucht."_s);
}

TEST_F(OrderScreenTest, EveryControlCanBeFoundAndReached) {
    expectReachable(false);
}

} // namespace
